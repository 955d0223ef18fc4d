// What a locale says about currencies: their symbols and decimals.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_CURRENCY_DATA_H_
#define JWNLS_LIBRARY_LOCALE_DATA_CURRENCY_DATA_H_

#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_record.h"
#include "library/locale_data/number_data.h"

namespace jwnls::library {

/// A symbol, and at which of its ends a blank stands between it and a digit.
struct CurrencySymbol {
  std::string text;
  bool blank_before = true;
  bool blank_behind = true;
};

struct CurrencyData {
  std::string code;  // "EUR"
  CurrencySymbol symbol, narrow;
  int decimals = 2;
  std::string decimal, group;  // of money in this currency; empty: those of all money
  Affixes positive, negative;  // of amounts in it; without the currency's sign: those of all
};

/// A currency in the locale that a record was made for; one that the database does not know is
/// written as its code. Throws bad_alloc.
[[nodiscard]] CurrencyData currency_data(const LocaleRecord& record, std::string_view code);

/// A currency as a record has it, in whose layout data the texts stand.
struct CurrencyRow {
  std::string_view code, symbol, narrow;
  unsigned flags = 0;  // as in the section: where blanks stand, and whether there is more
  std::string_view decimal, group;
  AffixTexts positive, negative;

  [[nodiscard]] int decimals() const noexcept { return static_cast<int>(flags >> 5); }
};

/// Every currency of which the database says more than its code. Throws bad_alloc.
[[nodiscard]] std::vector<CurrencyRow> all_currencies(const LocaleRecord& record);

/// Whether another currency than that of a code is written with a symbol.
[[nodiscard]] bool has_another_with_symbol(const LocaleRecord& record, std::string_view code,
                                           std::string_view symbol) noexcept;

/// The code of the currency that the record says is the locale's own: "XXX" where there is none.
[[nodiscard]] std::string own_currency(const LocaleRecord& record);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_CURRENCY_DATA_H_
