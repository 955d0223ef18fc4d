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

/// Every currency of which the database says more than its code. Throws bad_alloc.
[[nodiscard]] std::vector<CurrencyData> all_currencies(const LocaleRecord& record);

/// The code of the currency that the record says is the locale's own: "XXX" where there is none.
[[nodiscard]] std::string own_currency(const LocaleRecord& record);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_CURRENCY_DATA_H_
