// Every record that the locale database fills: whole, bounded, and such that its texts can be
// typed.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <span>

#include "host/locale_names.h"
#include "tests/database/loaded_extension.h"

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
void expect_text(const TextEntry& entry, std::string_view what) {
  ASSERT_GE(entry.length, 1) << what;
  ASSERT_LE(entry.length, text_entry_capacity) << what;
  EXPECT_TRUE(is_typeable(text_of(entry))) << what;
  EXPECT_TRUE(std::all_of(entry.units + entry.length, std::end(entry.units), [](char16_t unit) {
    return unit == 0;
  })) << what;
}

// The directives of a pattern without their "%", each with its modifier; literals left out.
std::vector<std::u16string> directives_of(std::u16string_view pattern) {
  std::vector<std::u16string> directives;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != u'%') continue;
    const std::size_t count = i + 1 < pattern.size() && pattern[i + 1] == u'#' ? 2 : 1;
    directives.emplace_back(pattern.substr(i + 1, count));
    i += count;
  }
  return directives;
}

template <std::size_t size>
std::size_t count_of(const std::vector<std::u16string>& directives,
                     const std::u16string_view (&wanted)[size]) {
  return static_cast<std::size_t>(std::ranges::count_if(directives, [&](const auto& directive) {
    return std::ranges::find(wanted, directive) != std::end(wanted);
  }));
}

void expect_date(std::u16string_view pattern) {
  const auto directives = directives_of(pattern);
  EXPECT_EQ(count_of(directives, {u"Y"}), 1u);
  EXPECT_EQ(count_of(directives, {u"m", u"O", u"b", u"B"}), 1u);
  EXPECT_EQ(count_of(directives, {u"d", u"E"}), 1u);
  EXPECT_EQ(count_of(directives, {u"H", u"#H", u"I", u"#I", u"M", u"S", u"p"}), 0u);
}

void expect_time(std::u16string_view pattern) {
  const auto directives = directives_of(pattern);
  EXPECT_EQ(count_of(directives, {u"H", u"#H", u"I", u"#I"}), 1u);
  EXPECT_EQ(count_of(directives, {u"p"}), count_of(directives, {u"I", u"#I"}));
  EXPECT_EQ(count_of(directives, {u"M"}), 1u);
  EXPECT_EQ(count_of(directives, {u"S"}), 1u);
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

TEST_F(LocaleRecordTest, EveryByteBehindTheHeadIsWrittenAndNoneOfTheHead) {
  const auto second = std::make_unique<LocaleRecord>();
  for_each_record([&](const LocaleRecord& record, const host::LocaleRow& row) {
    ASSERT_EQ(database_.fill(widened(row.name), *second, 0x5A), Status::ok);
    EXPECT_TRUE(std::ranges::equal(bytes_of(record).subspan(head_bytes),
                                   bytes_of(*second).subspan(head_bytes)));
    EXPECT_TRUE(std::ranges::all_of(bytes_of(*second).first(head_bytes),
                                    [](std::byte byte) { return byte == std::byte{0x5A}; }));
  });
}

TEST_F(LocaleRecordTest, TextsAreThereAndCanBeTyped) {
  for_each_record([](const LocaleRecord& record, const host::LocaleRow& row) {
    const auto all = [](const auto& list, std::string_view what) {
      for (const TextEntry& entry : list) expect_text(entry, what);
    };
    all(record.full_weekdays, "full weekday");
    all(record.short_weekdays, "short weekday");
    all(record.full_months, "full month");
    all(record.short_months, "short month");
    all(record.full_quarters, "full quarter");
    all(record.short_quarters, "short quarter");
    all(record.date_patterns, "date pattern");
    expect_text(record.time_pattern, "time pattern");
    expect_text(record.datetime_pattern, "datetime pattern");
    expect_text(record.style_0_pattern, "style-0 pattern");
    expect_text(record.before_noon, "before noon");
    expect_text(record.after_noon, "after noon");
    expect_text(record.area_1, "own name");
    expect_text(record.area_4, "tag");
    EXPECT_EQ(text_of(record.area_1), row.own_name);
  });
}

TEST_F(LocaleRecordTest, PatternsUseWhatFormattingAndInputShare) {
  constexpr std::u16string_view shared[] = {u"Y", u"m", u"O",  u"d", u"E",  u"B", u"b", u"A", u"a",
                                            u"H", u"I", u"#H", u"M", u"#I", u"S", u"p", u"k", u"l"};
  for_each_record([&](const LocaleRecord& record, const host::LocaleRow& /*row*/) {
    const TextEntry* first = record.date_patterns;
    for (const TextEntry* pattern = first; pattern != first + 6; ++pattern) {
      const auto directives = directives_of(text_of(*pattern));
      EXPECT_EQ(count_of(directives, shared), directives.size());
    }
    for (const TextEntry& pattern : record.date_patterns) expect_date(text_of(pattern));
    expect_time(text_of(record.time_pattern));
    EXPECT_EQ(text_of(record.style_0_pattern), text_of(record.time_pattern));

    const std::u16string_view both = text_of(record.datetime_pattern);
    EXPECT_NE(both.find(text_of(record.date_patterns[1])), both.npos);
    EXPECT_NE(both.find(text_of(record.time_pattern)), both.npos);
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

struct Expected {
  const char* locale;
  const char16_t* short_date;
  const char16_t* long_date;
  const char16_t* time;
  char16_t decimal;
  char16_t grouping;
  const char16_t* sizes;
  const char16_t* currency;
  const char16_t* currency_code;
};

// One locale for each replacement.
constexpr Expected replacements[] = {
    {"en_US", u"%m/%d/%Y", u"%B %E, %Y", u"%#I:%M:%S %p", u'.', u',', u"3", u"$", u"USD"},
    {"de_CH", u"%d.%m.%Y", u"%E. %B %Y", u"%H:%M:%S", u'.', u'\u2019', u"3", u"CHF\u00A0", u"CHF"},
    {"fr_FR", u"%d/%m/%Y", u"%E %B %Y", u"%H:%M:%S", u',', u'\u00A0', u"3", u"\u20AC", u"EUR"},
    {"hi_IN", u"%E/%O/%Y", u"%E %B %Y", u"%#I:%M:%S %p", u'.', u',', u"3;2", u"\u20B9", u"INR"},
    {"ja_JP", u"%Y/%m/%d", u"%Y年%O月%E日", u"%#H:%M:%S", u'.', u',', u"3", u"\uFFE5", u"JPY"},
    {"vi_VN", u"%d/%m/%Y", u"%E tháng %O, %Y", u"%H:%M:%S", u',', u'.', u"3", u"\u20AB", u"VND"},
    {"th_TH", u"%E/%O/%Y", u"%E %B ค.ศ. %Y", u"%H:%M:%S", u'.', u',', u"3", u"฿", u"THB"},
    {"ko_KR", u"%Y. %m. %d.", u"%Y년 %O월 %E일", u"%p %#I:%M:%S", u'.', u',', u"3", u"\u20A9",
     u"KRW"},
    {"ar_001", u"%E/%O/%Y", u"%E %B %Y", u"%#I:%M:%S %p", u'.', u',', u"3", u"¤", u"XXX"},
    {"en_US_POSIX", u"%m/%d/%Y", u"%B %E, %Y", u"%#I:%M:%S %p", u'.', u',', u"", u"$", u"USD"},
};

TEST_F(LocaleRecordTest, ReplacementsAreMade) {
  for (const Expected& row : replacements) {
    SCOPED_TRACE(row.locale);
    const auto record = database_.record(row.locale);
    EXPECT_EQ(text_of(record->date_patterns[0]), row.short_date);
    EXPECT_EQ(text_of(record->date_patterns[2]), row.long_date);
    EXPECT_EQ(text_of(record->time_pattern), row.time);
    EXPECT_EQ(record->decimal_symbol, row.decimal);
    EXPECT_EQ(record->grouping_symbol, row.grouping);
    EXPECT_EQ(grouping_of(*record), row.sizes);
    EXPECT_EQ(currency_symbol_of(*record), row.currency);
    TextEntry code;
    std::memcpy(&code, record->area_6, sizeof code);
    EXPECT_EQ(text_of(code), row.currency_code);
  }
}

TEST_F(LocaleRecordTest, UnreadAreasDescribeTheLocale) {
  const auto record = database_.record("zh_Hant_TW");
  const auto text_at = [&](std::size_t offset) {
    std::int64_t length = 0;
    std::memcpy(&length, bytes_of(*record).data() + offset, sizeof length);
    std::u16string text(static_cast<std::size_t>(length), u'\0');
    std::memcpy(text.data(), bytes_of(*record).data() + offset + 8, text.size() * 2);
    return text;
  };
  EXPECT_EQ(text_at(8176), u"zh");
  EXPECT_EQ(text_at(8304), u"Hant");
  EXPECT_EQ(text_at(8432), u"TW");
  EXPECT_EQ(text_at(7912), u"zh-Hant-TW");
  EXPECT_EQ(text_at(9096), u"Chinese (Traditional, Taiwan)");
  EXPECT_EQ(text_at(9224), u"zh_Hant");
  std::int32_t week[2];
  std::memcpy(week, database_.record("de_DE")->area_7, sizeof week);
  EXPECT_EQ(week[0], 2);  // Monday
  EXPECT_EQ(week[1], 4);  // as ISO 8601 counts weeks
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
