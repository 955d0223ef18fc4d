// Over all locales: numbers, amounts and percentages are written as ICU writes them, byte for byte,
// and what is written is read back.

#include <gtest/gtest.h>
#include <unicode/numberformatter.h>
#include <unicode/ucurr.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/locales/locale_names.h"
#include "tests/library/opened_layout.h"

namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::NumberFormatter;
using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;

constexpr double values[] = {1234.5,       -1234.5, 0.5,       -0.5,   1234567.891,
                             -1234567.891, 0,       12345.678, -12.005};

struct Kind {
  const char* name;
  const char* options;
  int kind;
  UNumberSignDisplay sign;
  // In whose locales something is written otherwise, and why it is right.
  std::set<std::string> exceptions;
};

const Kind kinds[] = {
    {"number", "", JWNLS_NUMBER, UNUM_SIGN_AUTO, {}},
    {"amount", "", JWNLS_AMOUNT, UNUM_SIGN_AUTO, {}},
    // ICU forgets the parentheses where the currency has a pattern of its own (tr, kea), and groups
    // where the locale has no groups (POSIX).
    {"accounting", "accounting", JWNLS_AMOUNT, UNUM_SIGN_ACCOUNTING, {"tr", "kea", "en_US_POSIX"}},
    {"percent", "", JWNLS_PERCENT, UNUM_SIGN_AUTO, {}},
};

std::vector<std::string> locale_names() {
  std::vector<std::string> names;
  for (const auto& row : jwnls::host::available_locales()) names.emplace_back(row.name);
  return names;
}

icu::Locale icu_locale(const std::string& name, bool own_digits) {
  return {(name + (own_digits ? "@numbers=native" : "@numbers=latn")).c_str()};
}

LocalizedNumberFormatter formatter(const Kind& kind, const icu::Locale& locale,
                                   const std::string& currency) {
  auto made = NumberFormatter::withLocale(locale).roundingMode(UNUM_ROUND_HALFUP).sign(kind.sign);
  if (kind.kind == JWNLS_PERCENT) {
    return made.unit(icu::NoUnit::percent()).scale(icu::number::Scale::powerOfTen(2));
  }
  if (kind.kind != JWNLS_AMOUNT) return made;
  UErrorCode error = U_ZERO_ERROR;
  const std::u16string code(currency.begin(), currency.end());
  return made.unit(icu::CurrencyUnit(code.c_str(), error));
}

std::string icu_text(const LocalizedNumberFormatter& formatter, double value) {
  UErrorCode error = U_ZERO_ERROR;
  std::string text;
  formatter.formatDouble(value, error).toString(error).toUTF8String(text);
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  return text;
}

std::string written(const jwnls_layout* layout, double value) {
  char text[200];
  std::size_t length = 0;
  EXPECT_EQ(jwnls_write_number(layout, value, text, sizeof text, &length), JWNLS_OK);
  return {text, length};
}

// Written with the decimals that the layout writes, read back to the same decimal.
void expect_read_back(const jwnls_layout* layout, double value, const std::string& text) {
  char decimal[100];
  char again[200];
  std::size_t length = 0;
  std::size_t written_again = 0;
  ASSERT_EQ(jwnls_read_decimal(layout, text.data(), text.size(), decimal, sizeof decimal, &length,
                               nullptr, nullptr),
            JWNLS_OK)
      << text;
  ASSERT_EQ(jwnls_write_decimal(layout, decimal, length, again, sizeof again, &written_again),
            JWNLS_OK);
  EXPECT_EQ(std::string_view(again, written_again), text);
  double read = 0;
  ASSERT_EQ(jwnls_read_number(layout, text.data(), text.size(), &read, nullptr), JWNLS_OK) << text;
  EXPECT_NEAR(read, value, 0.5000001) << text;  // yen have no decimals
}

TEST(IcuNumbers, EveryLocaleWritesWhatIcuWrites) {
  const std::vector<std::string> locales = locale_names();
  EXPECT_EQ(locales.size(), 805U);
  for (const Kind& kind : kinds) {
    for (const bool own_digits : {false, true}) {
      std::set<std::string> different;
      for (const std::string& name : locales) {
        const std::string words = std::string("exact ") + (own_digits ? "digits=own " : "");
        const OpenedLayout layout = open_layout(name, kind.kind, words + kind.options);
        const auto icu =
            formatter(kind, icu_locale(name, own_digits), jwnls_layout_currency(layout.get()));
        for (const double value : values) {
          const std::string text = written(layout.get(), value);
          const std::string expected = icu_text(icu, value);
          expect_read_back(layout.get(), value, text);
          if (text == expected) continue;
          different.insert(name);
          if (kind.exceptions.count(name) != 0) continue;
          ADD_FAILURE() << name << ' ' << kind.name << ' ' << words << value << ": '" << text
                        << "', ICU '" << expected << "'";
        }
      }
      EXPECT_EQ(different, kind.exceptions) << kind.name;
    }
  }
}

TEST(IcuNumbers, EveryLocaleWritesCurrenciesAsIcuDoes) {
  constexpr const char* currencies[] = {"USD", "EUR", "JPY", "GBP", "CHF", "INR", "KWD",
                                        "KRW", "SEK", "BRL", "TRY", "CVE", "XAU", "XXX"};
  const std::pair<const char*, UNumberUnitWidth> symbols[] = {{"own", UNUM_UNIT_WIDTH_SHORT},
                                                              {"narrow", UNUM_UNIT_WIDTH_NARROW},
                                                              {"code", UNUM_UNIT_WIDTH_ISO_CODE}};
  int texts = 0;
  int same = 0;
  for (const std::string& name : locale_names()) {
    for (const char* currency : currencies) {
      const auto icu = formatter(kinds[1], icu_locale(name, false), currency);
      for (const auto& [symbol, width] : symbols) {
        const OpenedLayout layout = open_layout(
            name, JWNLS_AMOUNT, std::string("exact currency=") + currency + " symbol=" + symbol);
        const auto with_width = icu.unitWidth(width);
        for (const double value : {1234.5, -1234.5}) {
          const std::string text = written(layout.get(), value);
          const std::string expected = icu_text(with_width, value);
          expect_read_back(layout.get(), value, text);
          ++texts;
          same += text == expected ? 1 : 0;
          if (texts - same < 20) {
            EXPECT_EQ(text, expected) << name << ' ' << currency << ' ' << symbol;
          }
        }
      }
    }
  }
  EXPECT_EQ(texts, 3 * 22'540);
  EXPECT_EQ(same, texts);
}

}  // namespace
