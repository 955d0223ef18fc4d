// Why a text is no number of a layout.

#ifndef JWNLS_LIBRARY_NUMBERS_REFUSAL_H_
#define JWNLS_LIBRARY_NUMBERS_REFUSAL_H_

#include <cstdint>

namespace jwnls::library {

enum class Refusal : std::uint8_t {
  none,
  blank,                // no value, which is no error
  too_long,             // more than longest_text bytes
  not_utf8,             //
  no_number,            // no digit where one must be
  two_signs,            //
  sign_behind,          // "5-" without signs=any
  parenthesis,          // "(5)" without signs=any, or not in a pair
  unit_not_allowed,     // "5 €" in a number
  unit_missing,         // of an amount with unit=required, of a percentage
  two_units,            //
  other_currency,       // another than the layout's
  credit,               // CR or DR, with credit=refuse
  three_decimals,       // of an amount in a currency that has not three
  groups_not_allowed,   // a group symbol, with groups=none
  group_size,           //
  foreign_group,        // one group by a symbol that may be a decimal symbol elsewhere
  mixed_groups,         // two group symbols
  group_in_fraction,    //
  group_led_by_zero,    // "0.123": somebody else's decimals
  decimal_twice,        //
  foreign_decimal,      // the decimal symbol of another locale
  fraction_of_integer,  // a decimal symbol in an integer
  mixed_digits,         // digits of two scripts
  exponent,             // no digits behind the "E", or an exponent in an integer
  trailing,             // something behind the number
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_REFUSAL_H_
