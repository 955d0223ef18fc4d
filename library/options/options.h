// The option words of layouts: "style=long zone=Europe/Berlin". One word has one meaning wherever
// it is said, and every word is a row of the table in options.cpp.
//
//   options = { blank } [ word { blank { blank } word } { blank } ]
//   word    = NAME | NAME "=" VALUE           no blank in either; a later word of a name wins

#ifndef JWNLS_LIBRARY_OPTIONS_OPTIONS_H_
#define JWNLS_LIBRARY_OPTIONS_OPTIONS_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace jwnls::library {

// What the words choose between, in the order of their table's values; 0 is the default.
enum Missing : std::uint8_t { missing_blank, missing_module };
enum Groups : std::uint8_t { groups_locale, groups_any, groups_none };
enum Signs : std::uint8_t { signs_front, signs_any };
enum Digits : std::uint8_t { digits_latn, digits_own };
enum Rounding : std::uint8_t { rounding_half_away, rounding_half_even };
enum Unit : std::uint8_t { unit_optional, unit_required };
enum Fraction : std::uint8_t { fraction_currency, fraction_any };
enum Credit : std::uint8_t { credit_refuse, credit_plus, credit_minus };
enum Symbol : std::uint8_t { symbol_own, symbol_narrow, symbol_code, symbol_none };
enum PercentSign : std::uint8_t { percent_sign_required, percent_sign_optional };
enum Order : std::uint8_t { order_locale, order_dmy, order_mdy, order_ymd };
enum Years : std::uint8_t { years_locale, years_four, years_two };
enum Names : std::uint8_t { names_language, names_english };
enum Style : std::uint8_t { style_medium, style_short, style_long, style_full };
enum Overlap : std::uint8_t { overlap_refuse, overlap_first, overlap_second };

struct Options {
  std::uint8_t missing = missing_blank;
  std::uint8_t groups = groups_locale;
  std::uint8_t signs = signs_front;
  std::uint8_t digits = digits_latn;
  std::uint8_t rounding = rounding_half_away;
  std::uint8_t unit = unit_optional;
  std::uint8_t fraction = fraction_currency;
  std::uint8_t credit = credit_refuse;
  std::uint8_t symbol = symbol_own;
  std::uint8_t percent_sign = percent_sign_required;
  std::uint8_t order = order_locale;
  std::uint8_t years = years_locale;
  std::uint8_t names = names_language;
  std::uint8_t style = style_medium;
  std::uint8_t overlap = overlap_refuse;
  // Flags: 0 or 1.
  std::uint8_t no_group = 0;
  std::uint8_t plus = 0;
  std::uint8_t exact = 0;
  std::uint8_t accounting = 0;
  std::uint8_t loose = 0;
  std::uint8_t proved = 0;
  // Numbers.
  std::int32_t decimals = -1;   // -1: as many as the value has, of amounts as many as the currency
  std::int32_t century = 1960;  // the first year of the hundred that two digits stand for
  std::int32_t year_cutoff = 1950;  // the same of periods
  std::int32_t pattern = 0;         // 0: none; 1 to 3: the record's
  // Names.
  std::string currency;  // "": the locale's own; "any"; or an ISO code in capitals
  std::string zone;      // "": none; as given until the layout is open, then canonical
};

/// Reads the words of `text` into `options`.
///   kind  the layout's: JWNLS_NUMBER ...; a word that a kind does not know is an error
/// Throws a Failure that names the word and what may stand there, and bad_alloc.
void read_options(int kind, std::string_view text, Options& options);

/// The words that differ from the defaults, in the order of the table, each behind a blank.
/// Throws bad_alloc.
[[nodiscard]] std::string option_words(int kind, const Options& options);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_OPTIONS_OPTIONS_H_
