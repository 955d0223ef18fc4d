// Reading dates, times, datetimes, instants and periods; and what is said of those not read.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_names.h"
#include "library/dates/date_text.h"
#include "library/dates/plain_date.h"
#include "library/dates/service_call.h"
#include "library/layouts/layout.h"
#include "library/locale_data/number_runs.h"
#include "library/moments/moment_text.h"
#include "library/moments/reading.h"
#include "library/moments/time_shape.h"
#include "library/texts/utf8.h"
#include "tests/library/date_cases.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using library::Refusal;

std::string code_word(int code) {
  return code == JWNLS_MISSING ? "missing" : code == JWNLS_RANGE ? "range" : "refuse";
}

std::string fact_words(unsigned facts) {
  std::string words;
  constexpr const char* names[] = {"two_ways", "decides", "buddhist"};
  for (unsigned bit = 0; bit < 3; ++bit) {
    if ((facts >> bit & 1U) == 0) continue;
    if (!words.empty()) words.append(" ");
    words.append(names[bit]);
  }
  return words;
}

// Calls the reader of the layout's kind in one of the encodings.
template <typename Unit>
std::string read(const jwnls_layout* layout, std::basic_string_view<Unit> text,
                 std::uint8_t& facts) {
  constexpr bool wide = sizeof(Unit) == 2;
  const auto call = [&]([[maybe_unused]] auto narrow_call, [[maybe_unused]] auto wide_call,
                        auto& value) {
    if constexpr (wide) {
      return wide_call(layout, text.data(), text.size(), &value, &facts);
    } else {
      return narrow_call(layout, text.data(), text.size(), &value, &facts);
    }
  };
  std::int32_t days = -1;
  std::int64_t microseconds = -1;
  switch (const int kind = jwnls_layout_kind(layout); kind) {
    case JWNLS_DATE:
    case JWNLS_PERIOD: {
      const int code = call(jwnls_read_date, jwnls_read_date_utf16, days);
      EXPECT_TRUE(code == JWNLS_OK || (days == 0 && facts == 0));
      return code == JWNLS_OK ? iso_day(days) : code_word(code);
    }
    case JWNLS_TIME: {
      const int code = call(jwnls_read_time, jwnls_read_time_utf16, microseconds);
      return code == JWNLS_OK ? iso_time(microseconds) : code_word(code);
    }
    default: {
      const int code = call(jwnls_read_datetime, jwnls_read_datetime_utf16, microseconds);
      if (code != JWNLS_OK) return code_word(code);
      return iso_moment(microseconds) + (kind == JWNLS_INSTANT ? "Z" : "");
    }
  }
}

TEST(ReadDates, AnswerTheTable) {
  int read_rows = 0;
  for (const DateCase& row : date_cases()) {
    if (row.direction != "read") continue;
    SCOPED_TRACE(row.locale + " " + row.kind + " " + row.options + ": " + row.input);
    ++read_rows;
    const Layout layout =
        open_layout(row.locale, jwnls_kind_of_name(row.kind.c_str()), row.options);
    std::uint8_t facts = 0xFF;
    EXPECT_EQ(read<char>(layout.get(), row.input, facts), row.answer);
    EXPECT_EQ(fact_words(facts), row.facts);
    std::u16string units(row.input.size(), u'\0');
    units.resize(library::to_utf16(row.input, units.data(), units.size()).value());
    EXPECT_EQ(read<char16_t>(layout.get(), units, facts), row.answer);
    // The explanation has the same code.
    jwnls_error error;
    const int code = library::explain_date(*layout, row.input, &error);
    const bool is_value =
        row.answer != "refuse" && row.answer != "range" && row.answer != "missing";
    EXPECT_EQ(code, error.code);
    EXPECT_EQ(code == JWNLS_OK, is_value) << error.text;
    EXPECT_LE(error.at, row.input.size());
    EXPECT_TRUE(code == JWNLS_OK || error.text[0] != '\0');
  }
  EXPECT_GT(read_rows, 150);
}

// locale, kind, options, text, how many bytes fit, the message up to what the locale writes
struct ExplainCase {
  const char* locale;
  int kind;
  const char* options;
  const char* text;
  std::size_t at;
  const char* message;
};
constexpr ExplainCase explanations[] = {
    {"en_US", JWNLS_DATE, "", "Mon, 15 Mar 2024", 0, "date 'Mon, 15 Mar 2024': is a Friday"},
    {"de_DE", JWNLS_DATE, "", " 30.02.2024", 11, "date '30.02.2024': no such date in the calendar"},
    {"de_DE", JWNLS_DATE, "", "15. Mrz 2024", 4,
     "date '15. Mrz 2024': '15. ' fits, 'Mrz 2024' does not"},
    {"de_DE", JWNLS_DATE, "", "15. M\u00E4rz 2024 x", 15,
     "date '15. M\u00E4rz 2024 x': '15. M\u00E4rz 2024 ' fits, 'x' does not"},
    {"de_DE", JWNLS_DATE, "", "15.03-2024", 2,
     "date '15.03-2024': the marks between the numbers are not those of a date"},
    {"de_DE", JWNLS_DATE, "", "15.\xFF", 0, "date '15.\\xFF': not valid UTF-8"},
    // What is not UTF-8 is told apart up to 200 bytes, which always have room when folded.
    {"de_DE", JWNLS_DATE, "",
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\xFF",
     0,
     "date 'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...': not valid UTF-8"},
    {"de_DE", JWNLS_DATE, "", "ides", 0, "date 'ides': nothing in it is a date"},
    {"sv_SE", JWNLS_DATE, "", "15/3/2024", 5,
     "date '15/3/2024': sv_SE writes the year first: say order=dmy or order=mdy"},
    {"sv_SE", JWNLS_DATE, "", "15/03/2024", 6,
     "date '15/03/2024': sv_SE writes the year first: say order=dmy or order=mdy"},
    {"sv_SE", JWNLS_DATETIME, "", "15/03/2024 14:30", 6,
     "datetime '15/03/2024 14:30': sv_SE writes the year first: say order=dmy or order=mdy"},
    {"th_TH", JWNLS_DATE, "", "5/3/67", 4,
     "date '5/3/67': a year of two digits may be one of the Buddhist calendar"},
    {"fa_IR", JWNLS_DATE, "", "1402/12/25", 10,
     "date '1402/12/25': the year 1402 is outside the calendar; is it one of the Persian calendar? "
     "only the Gregorian is read"},
    {"fr_FR", JWNLS_DATE, "", "15 jui 2024", 3,
     "date '15 jui 2024': '15 ' fits, 'jui 2024' does not"},
    {"de_DE", JWNLS_DATETIME, "", "2024-03-15T14:30Z", 17,
     "datetime '2024-03-15T14:30Z': has an offset: say zone=... or read it as an instant"},
    {"de_DE", JWNLS_INSTANT, "", "2024-03-15 14:30", 16,
     "instant '2024-03-15 14:30': has no offset: say zone=..."},
    {"de_DE", JWNLS_INSTANT, "zone=Europe/Berlin", "2024-03-31 02:30", 16,
     "instant '2024-03-31 02:30': the clocks of the zone skip this time"},
    {"en_US", JWNLS_DATETIME, "zone=UTC", "9999-12-31 23:30-05:00", 0,
     "datetime '9999-12-31 23:30-05:00': outside 1582-01-01 to 9999-12-31"},
    {"de_DE", JWNLS_DATE, "", "5. Mai", 6, "date '5. Mai': the year is missing"},
    {"en_US", JWNLS_DATE, "", "2/31", 4, "date '2/31': the year is missing"},
    {"ja_JP", JWNLS_DATE, "", "2024\u5E743\u6708", 11,
     "date '2024\u5E743\u6708': the day is missing"},
    {"en_US", JWNLS_DATE, "", "13/02/2024", 10,
     "date '13/02/2024': no such date in the calendar; order=dmy reads one"},
    {"ja_JP", JWNLS_DATE, "", "\u4EE4\u548C6\u5E743\u670815\u65E5", 0,
     "date '\u4EE4\u548C6\u5E743\u670815\u65E5': no date begins so in ja_JP; dates of the "
     "Japanese calendar are not read"},
    {"de_DE", JWNLS_TIME, "", " 25:00", 1, "time '25:00': hour 25 is none"},
    {"ar_EG", JWNLS_TIME, "", "\u0662:\u0666\u0661", 3,
     "time '\u0662:\u0666\u0661': minute 61 is none"},
    {"de_DE", JWNLS_TIME, "", "14:30 foo", 5, "time '14:30 foo': '14:30' fits, ' foo' does not"},
    {"de_DE", JWNLS_TIME, "", "14:30Z", 5,
     "time '14:30Z': '14:30' fits, 'Z' does not: a time of day has no offset"},
    {"de_DE", JWNLS_TIME, "", "1430", 0, "time '1430': hour '1430' is none"},
    {"de_DE", JWNLS_TIME, "", "14h30", 2, "time '14h30': '14' fits, 'h30' does not"},
    {"de_DE", JWNLS_TIME, "", "foo", 0, "time 'foo': nothing in it is a time of day"},
    {"de_DE", JWNLS_TIME, "", "x 14:61", 0, "time 'x 14:61': no time of day begins so"},
    {"de_DE", JWNLS_TIME, "", "1\xFF", 0, "time '1\\xFF': not valid UTF-8"},
    {"en_US", JWNLS_TIME, "", "14:30 PM", 0,
     "time '14:30 PM': hour 14 does not go with the words beside it"},
    {"en_US", JWNLS_TIME, "", "2 PM", 1, "time '2 PM': the minutes are missing"},
    {"en_US", JWNLS_TIME, "", "Dec 30, 1977, 10:23 AM", 0,
     "time 'Dec 30, 1977, 10:23 AM': '10:23 AM' is a time of day, what stands before it is no part "
     "of one; the kind datetime reads a date, too"},
    {"en_US", JWNLS_TIME, "", "1 2 3 4 10:23", 0,
     "time '1 2 3 4 10:23': '10:23' is a time of day, what stands before it is no part of one; the "
     "kind datetime reads a date, too"},
    {"de_DE", JWNLS_DATETIME, "", "15.03.2024 um 14:61", 17,
     "datetime '15.03.2024 um 14:61': minute 61 is none"},
    {"de_DE", JWNLS_DATETIME, "", "14:30", 0, "datetime '14:30': no date, but a time of day"},
    {"de_DE", JWNLS_DATETIME, "", "15.03.2024", 10, "datetime '15.03.2024': no time of day"},
    {"de_DE", JWNLS_DATETIME, "", "5. Mai, 14:30", 6,
     "datetime '5. Mai, 14:30': the year is missing"},
    {"de_DE", JWNLS_DATETIME, "", "3/15/2024 14:30", 9,
     "datetime '3/15/2024 14:30': no such date in the calendar; order=mdy reads one"},
    {"de_DE", JWNLS_DATE, "", "  ", 0, "a blank text: no value"},
};

TEST(ExplainDate, SaysWhyAndWhere) {
  for (const ExplainCase& row : explanations) {
    const Layout layout = open_layout(row.locale, row.kind, row.options);
    jwnls_error error;
    EXPECT_NE(library::explain_date(*layout, row.text, &error), JWNLS_OK) << row.text;
    const std::string message = error.text;
    EXPECT_EQ(message.substr(0, message.find("; " + std::string(row.locale) + " writes '")),
              row.message);
    EXPECT_EQ(error.at, row.at) << row.text;
    // In UTF-16, too, where `at` counts units.
    std::u16string units(std::strlen(row.text), u' ');
    const auto size = library::to_utf16(row.text, units.data(), units.size());
    if (!size) continue;
    jwnls_error wide;
    EXPECT_NE(jwnls_explain_utf16(layout.get(), units.data(), *size, &wide), JWNLS_OK);
    EXPECT_STREQ(wide.text, error.text);
    char before[64];
    EXPECT_EQ(library::to_utf8({units.data(), wide.at}, before, sizeof before), row.at);
  }
}

// Texts that once took a minute take no time at all, and longer ones are not looked at.
TEST(ReadDates, TakeLittleTimeForAnyText) {
  const Layout layouts[] = {open_layout("de_DE", JWNLS_DATE, ""),
                            open_layout("vi_VN", JWNLS_DATETIME, ""),
                            open_layout("cgg", JWNLS_INSTANT, "zone=Europe/Berlin")};
  for (const Layout& layout : layouts) {
    for (const char* part :
         {"29 ", "29.2", ":", "M\u00E4rz ", " ", "okwaikumi na ", "thg 3 ", ", ", "\xFF"}) {
      for (const std::size_t size : {1000U, 1'000'000U}) {
        std::string text;
        while (text.size() < size) text += part;
        const auto start = std::chrono::steady_clock::now();
        std::uint8_t facts = 0;
        (void)read<char>(layout.get(), text, facts);
        jwnls_error error;
        EXPECT_NE(library::explain_date(*layout, text, &error), JWNLS_OK);
        const auto took = std::chrono::steady_clock::now() - start;
        EXPECT_LT(took, std::chrono::milliseconds(20)) << part << size;
      }
    }
  }
}

// What is read, or refused, without asking the service is what the service says.
TEST(ReadTimes, ReadAsTheServiceDoes) {
  std::mt19937_64 random(test_seed(20240315));
  const auto below = [&random](std::size_t bound) { return random() % bound; };
  std::array<int, 2> counts = {};
  for (const std::string& name : locale_names()) {
    const Layout layout = open_layout(name, JWNLS_TIME, "");
    const ServiceTable& services = layout->locale->handle->services;
    for (int round = 0; round < 60; ++round) {
      std::array<char, 200> text;
      std::size_t length = 0;
      const auto second = static_cast<std::int64_t>(below(86400));
      (void)jwnls_write_time(layout.get(), second * 1'000'000, text.data(), text.size(), &length);
      std::string mutated(text.data(), length);
      for (std::size_t i = below(3); i > 0; --i) {
        const std::size_t at = below(mutated.size());
        if (below(2) == 0) mutated.erase(at, 1);
        mutated.insert(at, 1, "0123456789: .apmPMx"[below(19)]);
      }
      const std::string_view inner = library::trimmed(mutated);
      if (inner.find('.') != inner.npos) continue;  // fractions are the library's own
      const auto ours = library::read_time_text(*layout->times, inner);
      const auto theirs = library::read_by_service(*layout->locale, services.read_time_8bit,
                                                   services.read_time, 4, inner);
      const bool is_read = theirs && *theirs < 86400;
      ASSERT_EQ(ours.has_value(), is_read) << name << " '" << mutated << "'";
      ++counts[is_read ? 1 : 0];
      if (!is_read) continue;
      ASSERT_EQ(*ours, static_cast<std::int64_t>(*theirs) * 1'000'000) << name << " " << mutated;
    }
  }
  EXPECT_GT(std::min(counts[0], counts[1]), 8'000);
}

// No version of the locales' data has such a half of the day: "ß" has another first byte.
TEST(TimeShape, HasTheOtherCasesOfLettersOfNoScript) {
  LocaleRecord record = *open_layout("en_US", JWNLS_TIME, "")->locale->record;
  record.before_noon = {2, u"\u1E9Ea"};
  const library::TimeShape shape(record);
  for (const auto& [text, is_hopeless] : {std::pair("1:30 \u1E9Ea", false),
                                          {"1:30 \u00DFA", false},
                                          {"1:30 PM", false},
                                          {"1:30 xa", true}}) {
    EXPECT_EQ(shape.is_hopeless(text, library::NumberRuns(text)), is_hopeless) << text;
  }
}

// Not every version of the locales' data has such names.
TEST(DateNames, StandApartThatOnlyTheirMarksTellApart) {
  library::DateNameData data;
  data.add("er", {.month = 2, .two_months = true});
  data.exact = {{"\u1EB8r", 3}};
  const library::DateNames names(data);
  for (const auto& [text, replaced] : {std::pair("15 \u1EB8r 2024", "15 \uE000 2024"),
                                       {"\u1EB8r", "\uE000"},
                                       {"15 x\u1EB8r", "15 x\u1EB8r"},
                                       {"\u1EB8ra 15", "\u1EB8ra 15"},
                                       {"15 Er 2024", "15 Er 2024"}}) {
    std::string copy = text;
    copy.resize(names.replace_exact(copy.data(), copy.size()));
    EXPECT_EQ(copy, replaced);
  }
  ASSERT_NE(names.find("\uE000"), nullptr);
  EXPECT_EQ(names.find("\uE000")->month, 3);
}

TEST(ReadDates, PlainTextsAreReadTheQuickestWay) {
  const Layout layout = open_layout("de_DE", JWNLS_DATE, "");
  for (const char* text : {"4.9.2018", "4.12.2018", "14.9.2018", "04.09.2018", "2018-09-04"}) {
    library::DateRead read;
    EXPECT_TRUE(library::read_plain_date(*layout->dates, text, read)) << text;
    EXPECT_EQ(read.refusal, Refusal::none) << text;
  }
}

// Pieces of dates in any order: where the quick way decides, the full way says the same.
TEST(ReadDates, ReadTheSameQuicklyAndFully) {
  int decided = 0;
  std::mt19937_64 random(test_seed(20240315));
  const auto below = [&random](std::size_t bound) { return random() % bound; };
  for (const char* locale : {"de_DE", "en_US", "es_ES", "ja_JP", "hu_HU", "cgg", "th_TH", "he_IL",
                             "vi_VN", "ar_EG", "pt_PT", "tr_TR", "bg_BG", "eu_ES"}) {
    const Layout layout = open_layout(locale, JWNLS_DATE, "");
    std::vector<std::string> pieces = {" ",    " ",      ".",      ". ",    "/",  "-",      ",",
                                       ", ",   "(",      ")",      "1",     "3",  "15",     "24",
                                       "2024", "2567",   "07",     "st",    "de", "\u00A0", "'",
                                       "x",    "\u0663", "\u5E74", "\u6708"};
    for (const int item : {JWNLS_MONTH, JWNLS_SHORT_MONTH, JWNLS_WEEKDAY, JWNLS_SHORT_WEEKDAY}) {
      for (std::size_t i = 0; i < 7; ++i) {
        std::array<char, 400> text;
        std::size_t length = 0;
        ASSERT_EQ(jwnls_convention(layout.get(), item, i, text.data(), text.size(), &length), 0);
        pieces.emplace_back(text.data(), length);
      }
    }
    for (int round = 0; round < 60'000; ++round) {
      std::string text;
      // Mostly numbers with something between them.
      for (std::size_t i = below(4) + 2; i > 0; --i) {
        text += pieces[below(pieces.size())];
        if (below(3) > 0) text += pieces[10 + below(7)];
        if (below(3) > 0) text += pieces[below(8)];
      }
      const std::string_view inner = library::trimmed(text);
      if (inner.empty()) continue;
      const library::DateRead quick = library::quick_date(*layout->dates, inner);
      if (quick.refusal == Refusal::undecided) continue;
      const library::DateRead full = library::full_date(*layout->dates, inner);
      ++decided;
      ASSERT_EQ(quick.refusal == Refusal::none, full.refusal == Refusal::none)
          << locale << " '" << text << "' " << int(quick.refusal) << " " << int(full.refusal);
      ASSERT_EQ(code_of(quick.refusal), code_of(full.refusal)) << locale << " '" << text << "'";
      if (quick.refusal != Refusal::none) continue;
      ASSERT_TRUE(quick.date.year == full.date.year && quick.date.month == full.date.month &&
                  quick.date.day == full.date.day && quick.facts == full.facts)
          << locale << " '" << text << "'";
    }
  }
  EXPECT_GT(decided, 100'000);
}

}  // namespace
}  // namespace jwnls::test
