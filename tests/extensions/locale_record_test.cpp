// Every record that the locale database fills: whole, bounded, and such that its texts can be
// typed.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <span>

#include "host/locales/locale_names.h"
#include "tests/extensions/loaded_extension.h"

namespace jwnls::test {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t head_bytes = offsetof(LocaleRecord, area_2);

std::span<const std::byte> bytes_of(const LocaleRecord& record) {
  return std::as_bytes(std::span(&record, 1));
}

// Without the blanks and marks that nobody types.
bool is_typeable(std::u16string_view text) {
  return text.find_first_of(u"\u00A0\u2009\u200E\u200F\u202F\u061C") == text.npos;
}

// An entry's text is what its length says, and nothing lies behind it.
void expect_text(const TextEntry& entry) {
  ASSERT_GE(entry.length, 1);
  ASSERT_LE(entry.length, text_entry_capacity);
  EXPECT_TRUE(is_typeable(text_of(entry)));
  const auto is_zero = [](char16_t unit) { return unit == 0; };
  EXPECT_TRUE(std::all_of(entry.units + entry.length, std::end(entry.units), is_zero));
}

class LocaleRecordTest : public testing::Test {
 protected:
  // Calls `check` with the record of every locale, its name in the trace.
  template <typename Check>
  void for_each_record(Check check) {
    const auto record = std::make_unique<LocaleRecord>();
    for (const host::LocaleRow& row : host::available_locales()) {
      SCOPED_TRACE(row.name);
      ASSERT_EQ(database_.fill(widened(row.name), *record), Status::ok);
      check(*record, row);
    }
  }

  Database database_;
};

// Behind the layout data nothing is written either: who touches no memory takes none.
TEST_F(LocaleRecordTest, EveryByteFromTheHeadToTheEndOfTheLayoutDataIsWritten) {
  const auto second = std::make_unique<LocaleRecord>();
  for_each_record([&](const LocaleRecord& record, const host::LocaleRow& row) {
    ASSERT_EQ(database_.fill(widened(row.name), *second, 0x5A), Status::ok);
    const std::size_t block_bytes = record.area_9[6] + std::size_t{256} * record.area_9[7];
    const std::size_t end = offsetof(LocaleRecord, area_9) + block_bytes;
    ASSERT_LT(end, sizeof record);
    EXPECT_TRUE(std::ranges::equal(bytes_of(record).first(end).subspan(head_bytes),
                                   bytes_of(*second).first(end).subspan(head_bytes)));
    const auto is_untouched = [](std::byte byte) { return byte == std::byte{0x5A}; };
    EXPECT_TRUE(std::ranges::all_of(bytes_of(*second).first(head_bytes), is_untouched));
    EXPECT_TRUE(std::ranges::all_of(bytes_of(*second).subspan(end), is_untouched));
  });
}

TEST_F(LocaleRecordTest, TextsAreThereAndCanBeTyped) {
  for_each_record([](const LocaleRecord& record, const host::LocaleRow& row) {
    const std::span<const TextEntry> lists[] = {
        record.full_weekdays, record.short_weekdays, record.full_months,  record.short_months,
        record.full_quarters, record.short_quarters, record.date_patterns};
    for (const auto& list : lists) std::ranges::for_each(list, expect_text);
    for (const TextEntry* entry :
         {&record.time_pattern, &record.datetime_pattern, &record.style_0_pattern,
          &record.before_noon, &record.after_noon, &record.own_name, &record.language_tag}) {
      expect_text(*entry);
    }
    EXPECT_EQ(text_of(record.own_name), row.own_name);
  });
}

// Recognition learns from "%m" and "%d" in date pattern 1 that the month comes first.
TEST_F(LocaleRecordTest, MonthFirstLocalesSaySoInDatePattern1) {
  std::size_t month_first = 0;
  for_each_record([&](const LocaleRecord& record, const host::LocaleRow& /*row*/) {
    const std::u16string_view pattern = text_of(record.date_patterns[0]);
    if (pattern.find_first_of(u"mO") < pattern.find_first_of(u"dE")) {
      EXPECT_NE(pattern.find(u"%m"), pattern.npos);
      EXPECT_NE(pattern.find(u"%d"), pattern.npos);
      ++month_first;
    }
  });
  EXPECT_GT(month_first, 35u);
}

TEST_F(LocaleRecordTest, SymbolsDiffer) {
  const std::set<std::u16string> groupings = {u"3", u"3;2", u""};
  for_each_record([&](const LocaleRecord& record, const host::LocaleRow& /*row*/) {
    EXPECT_NE(record.decimal_symbol, 0);
    EXPECT_NE(record.grouping_symbol, 0);
    EXPECT_NE(record.grouping_symbol, u'\u202F');
    EXPECT_NE(record.decimal_symbol, record.grouping_symbol);
    EXPECT_TRUE(groupings.contains(std::u16string(grouping_of(record))));
    EXPECT_GE(record.currency_symbol_length, 1u);
    EXPECT_LE(record.currency_symbol_length, 60u);
    const char16_t last = currency_symbol_of(record).back();
    EXPECT_FALSE((last >= u'A' && last <= u'Z') || (last >= u'a' && last <= u'z'));
  });
}

// One locale for each kind. Patterns are compared with ICU's by what they write.
TEST_F(LocaleRecordTest, NumbersHaveTheLocalesSymbols) {
  const auto check = [this](const char* locale, char16_t decimal, char16_t grouping,
                            const char16_t* sizes, const char16_t* currency,
                            const char16_t* currency_code) {
    SCOPED_TRACE(locale);
    const auto record = database_.record(locale);
    EXPECT_EQ(record->decimal_symbol, decimal);
    EXPECT_EQ(record->grouping_symbol, grouping);
    EXPECT_EQ(grouping_of(*record), sizes);
    EXPECT_EQ(currency_symbol_of(*record), currency);
    EXPECT_EQ(text_of(record->currency_code), currency_code);
  };
  check("en_US", u'.', u',', u"3", u"$", u"USD");
  check("de_CH", u'.', u'\u2019', u"3", u"CHF\u00A0", u"CHF");
  check("fr_FR", u',', u'\u00A0', u"3", u"\u20AC", u"EUR");
  check("hi_IN", u'.', u',', u"3;2", u"\u20B9", u"INR");
  check("ja_JP", u'.', u',', u"3", u"\uFFE5", u"JPY");
  check("vi_VN", u',', u'.', u"3", u"\u20AB", u"VND");
  check("ar_001", u'.', u',', u"3", u"¤", u"XXX");
  check("en_US_POSIX", u'.', u',', u"", u"$", u"USD");
}

TEST_F(LocaleRecordTest, UnreadAreasDescribeTheLocale) {
  const auto record = database_.record("zh_Hant_TW");
  EXPECT_EQ(text_of(record->language), u"zh");
  EXPECT_EQ(text_of(record->script), u"Hant");
  EXPECT_EQ(text_of(record->region), u"TW");
  EXPECT_EQ(text_of(record->language_tag), u"zh-Hant-TW");
  EXPECT_EQ(text_of(record->english_name), u"Chinese (Traditional, Taiwan)");
  EXPECT_EQ(text_of(record->parent_name), u"zh_Hant");
  const auto german = database_.record("de_DE");
  EXPECT_EQ(german->first_weekday, 2);    // Monday
  EXPECT_EQ(german->first_week_days, 4);  // as ISO 8601 counts weeks
}

TEST_F(LocaleRecordTest, UnknownNamesFailAndLeaveTheRecordAlone) {
  constexpr std::u16string_view unknown[] = {
      u"",   u"xx",     u"de_de",  u"DE",     u"de-DE",         u"zh_TW",
      u"d",  u"de_D",   u"root",   u"de_DE_", u"en_US_POSIX_X", u"en_US_POSIXPOSIXPOSIX",
      u"dé", u"\0\0"sv, u"de\0"sv, u"ｄｅ",   u"\xD800\xDC00",
  };
  const auto record = std::make_unique<LocaleRecord>();
  for (const std::u16string_view name : unknown) {
    EXPECT_EQ(database_.fill(name, *record), Status::lookup_failed);
    EXPECT_TRUE(std::ranges::all_of(bytes_of(*record),
                                    [](std::byte byte) { return byte == std::byte{0xA5}; }));
  }
}

}  // namespace
}  // namespace jwnls::test
