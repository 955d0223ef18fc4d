// The full reader: decides what every text is, and why it is refused.
//
//   text     = pad [ body ] pad
//   body     = [ sign ] core [ exponent ]     with signs=any also  core sign  and  "(" core ")"
//   core     = ( digits | grouped ) [ D [ digits ] ] | D digits
//   grouped  = digits G digits { G digits }   of the locale's sizes; G alike throughout
//   exponent = ( "e" | "E" ) [ "-" | "+" ] digits
//   pad      = { blank | mark }               also between sign and core
//
// Amounts and percentages, with pads between all of it, at most one sign or pair of parentheses, a
// unit or twice the same one (of percentages one), and no exponent:
//
//   body     = [s] [u] [s] core [s] [u] [s] | "(" [u] core [u] ")" | u "(" core ")" | "(" core ")"
//   u core     = as above | of amounts also  digits D dash        "12,- €" u        = the
//   currency's symbol, narrow symbol or ISO code, or the percent sign
//
// A group symbol of another locale counts where it cannot be a decimal symbol: twice, or in front
// of the locale's own decimal symbol.

#ifndef JWNLS_LIBRARY_NUMBERS_SCAN_NUMBER_H_
#define JWNLS_LIBRARY_NUMBERS_SCAN_NUMBER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "library/numbers/number_syntax.h"
#include "library/numbers/refusal.h"

namespace jwnls::library {

struct ScannedNumber {
  Refusal refusal = Refusal::none;
  std::uint8_t facts = 0;  // JWNLS_TWO_WAYS, JWNLS_DECIDES
  bool negative = false;
  char missing = '\0';       // of a module's missing value: '.', '_' or 'A' to 'Z'
  std::size_t at = 0;        // bytes that fit, of what is refused
  std::size_t digits = 0;    // in `text`
  std::size_t decimals = 0;  // of them behind the decimal symbol
  char currency[4] = {};     // of the unit that the text names; "": none
  int exponent = 0;          // within 100,000 of 0, whatever the text says
  char text[longest_text];   // ASCII digits
};

/// Scans the whole text. `number` is as it was made.
void scan_number(const NumberSyntax& syntax, std::string_view text, ScannedNumber& number) noexcept;

/// The same where nobody asks for the reason or the place of a refusal.
void read_number(const NumberSyntax& syntax, std::string_view text, ScannedNumber& number) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_SCAN_NUMBER_H_
