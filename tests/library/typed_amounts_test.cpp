// Amounts as people type them: every form of the grammar, in 40 locales, is read to its value.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "library/layouts/layout.h"
#include "library/locale_data/currency_data.h"
#include "library/numbers/quick_scan.h"
#include "library/numbers/scan_number.h"
#include "tests/library/opened_layout.h"
#include "tests/support/seed.h"

namespace {

using namespace jwnls::library;
using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;

constexpr const char* locales[] = {
    "de_DE", "en_US", "fr_FR", "es_ES", "it_IT", "pt_BR", "nl_NL", "sv_SE", "da_DK", "nb_NO",
    "fi_FI", "pl_PL", "cs_CZ", "hu_HU", "tr_TR", "ru_RU", "uk_UA", "el_GR", "he_IL", "ar_EG",
    "fa_IR", "hi_IN", "en_IN", "th_TH", "vi_VN", "id_ID", "ja_JP", "ko_KR", "zh_CN", "de_CH",
    "fr_CH", "de_AT", "en_GB", "en_ZA", "pt_PT", "et_EE", "lt_LT", "ro_RO", "bg_BG", "es_MX"};

class TypedAmounts : public testing::Test {
 protected:
  std::size_t pick(std::size_t count) { return random_() % count; }
  std::string blank() { return pick(3) == 0 ? "" : pick(2) == 0 ? " " : "\u00A0"; }

  struct Locale {
    OpenedLayout layout;
    CurrencyData currency;
    std::string decimal;
    std::vector<std::string> groups;
  };

  static Locale open(const char* name) {
    Locale locale;
    locale.layout = open_layout(name, JWNLS_AMOUNT);
    const jwnls::LocaleRecord& record = *locale.layout->locale->record;
    locale.currency = currency_data(record, jwnls_layout_currency(locale.layout.get()));
    locale.decimal = locale.layout->number.style.decimal.text<char>();
    const std::string group(locale.layout->number.style.group.text<char>());
    locale.groups = {"", group};
    if (group == "\u00A0") locale.groups = {"", "\u00A0", "\u202F", " ", "\u2009"};
    if (group == "\u2019") locale.groups = {"", "\u2019", "'"};
    return locale;
  }

  // Digits with groups of the locale's sizes.
  static std::string grouped(const std::string& digits, GroupSizes sizes,
                             const std::string& group) {
    std::string text;
    std::size_t left = digits.size();
    for (const char digit : digits) {
      const bool here = left < digits.size() && left >= sizes.primary &&
                        (left - sizes.primary) % sizes.secondary == 0;
      if (here) text += group;
      text += digit;
      --left;
    }
    return text;
  }

  std::string core(const Locale& locale, std::int64_t cents, int decimals) {
    std::string digits = std::to_string(cents);
    const auto behind = static_cast<std::size_t>(decimals);
    if (digits.size() <= behind) digits.insert(0, behind + 1 - digits.size(), '0');
    const std::string integers = digits.substr(0, digits.size() - behind);
    std::string text = grouped(integers, locale.layout->number.syntax.sizes[0],
                               locale.groups[pick(locale.groups.size())]);
    if (behind != 0) text += locale.decimal + digits.substr(digits.size() - behind);
    return text;
  }

  std::string unit(const Locale& locale) {
    switch (pick(4)) {
      case 0:
        return locale.currency.symbol.text;
      case 1:
        return locale.currency.narrow.text;
      case 2:
        return locale.currency.code;
      default:
        return "";
    }
  }

  // One of the places that a sign, or parentheses, and the unit have.
  std::string typed(const std::string& number, const std::string& unit, bool negative) {
    const bool in_front = pick(2) == 0;
    const std::string whole = in_front ? unit + blank() + number : number + blank() + unit;
    if (!negative) return pick(10) == 0 ? "+" + whole : whole;
    constexpr const char* signs[] = {"-", "\u2212", "\u2013"};
    const std::string sign = signs[pick(3)];
    switch (pick(6)) {
      case 0:
        return sign + blank() + whole;
      case 1:
        return whole + blank() + sign;
      case 2:
        return in_front ? unit + blank() + sign + number : number + sign + blank() + unit;
      case 3:
        return "(" + whole + ")";
      case 4:
        return in_front ? unit + blank() + "(" + number + ")" : "(" + number + ")" + blank() + unit;
      default:
        return in_front ? unit + sign + blank() + number : number + blank() + sign + unit;
    }
  }

  std::mt19937_64 random_{jwnls::test::test_seed(20'261'122)};
};

TEST_F(TypedAmounts, AllAreReadToTheirValue) {
  std::vector<Locale> opened;
  for (const char* name : locales) opened.push_back(open(name));
  // JWNLS_TYPED_AMOUNTS makes it more than the suite's.
  const char* const wanted = std::getenv("JWNLS_TYPED_AMOUNTS");
  const int count = wanted != nullptr ? std::atoi(wanted) : 20'000;
  int quick = 0;
  for (int i = 0; i < count; ++i) {
    const Locale& locale = opened[pick(opened.size())];
    const int decimals = pick(4) == 0 ? 0 : locale.currency.decimals;
    const auto cents = static_cast<std::int64_t>(random_() >> (24 + pick(39)));
    const bool negative = pick(3) == 0;
    const std::string text = typed(core(locale, cents, decimals), unit(locale), negative);
    SCOPED_TRACE(locale.layout->description + ": '" + text + "'");
    char decimal[100];
    std::size_t length = 0;
    char currency[4];
    ASSERT_EQ(jwnls_read_decimal(locale.layout.get(), text.data(), text.size(), decimal,
                                 sizeof decimal, &length, currency, nullptr),
              JWNLS_OK);
    EXPECT_EQ(currency, locale.currency.code);
    std::string expected = std::to_string(cents);
    const auto behind = static_cast<std::size_t>(decimals);
    if (expected.size() <= behind) expected.insert(0, behind + 1 - expected.size(), '0');
    if (behind != 0) expected.insert(expected.size() - behind, ".");
    if (negative) expected.insert(0, "-");
    ASSERT_EQ(std::string_view(decimal, length), expected);
    // The quick reader says what the full one says.
    const NumberSyntax& syntax = locale.layout->number.syntax;
    QuickNumber taken;
    if (!scan_between_affixes(syntax, text.data(), text.size(), taken)) continue;
    ++quick;
    ScannedNumber full;
    scan_number(syntax, text, full);
    ASSERT_EQ(full.refusal, Refusal::none);
    ASSERT_EQ(taken.facts, full.facts);
    ASSERT_EQ(taken.negative, full.negative);
    ASSERT_EQ(taken.decimals, full.decimals);
  }
  EXPECT_GT(quick, count / 40);
}

}  // namespace
