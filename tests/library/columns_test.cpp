// Columns: every shape of texts, values in and out, facts over several calls, room that ends.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "abi/missing_value.h"
#include "tests/library/opened_layout.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/seed.h"

namespace {

using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;

constexpr std::string_view texts[] = {"1.234",  "1.234,5", "",  "k.A.", "5",
                                      "12,345", "9,5",     " ", "1E999"};
constexpr std::size_t count = std::size(texts);
constexpr std::array<std::uint8_t, count> codes_expected = {
    JWNLS_OK, JWNLS_OK, JWNLS_MISSING, JWNLS_UNREAD, JWNLS_MISSING /* by the bitmap */,
    JWNLS_OK, JWNLS_OK, JWNLS_MISSING, JWNLS_RANGE};
constexpr std::uint8_t validity[] = {0b11101111, 0b1};

// The texts one behind the other, and their offsets.
struct Joined {
  std::string bytes;
  std::vector<std::int32_t> offsets = {0};
  std::vector<std::int64_t> large_offsets = {0};
  std::vector<jwnls_text> views;

  Joined() {
    for (const std::string_view text : texts) {
      bytes += text;
      offsets.push_back(static_cast<std::int32_t>(bytes.size()));
      large_offsets.push_back(static_cast<std::int64_t>(bytes.size()));
      views.push_back({text.data(), text.size()});
    }
  }

  [[nodiscard]] std::array<jwnls_texts, 3> shapes() const {
    const jwnls_texts none = {sizeof none, count, nullptr, nullptr, nullptr, nullptr, validity};
    std::array<jwnls_texts, 3> all = {none, none, none};
    all[0].texts = views.data();
    all[1].bytes = bytes.data();
    all[1].offsets = offsets.data();
    all[2].bytes = bytes.data();
    all[2].large_offsets = large_offsets.data();
    return all;
  }
};

TEST(Columns, NumbersAreReadFromEveryShape) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  const Joined joined;
  for (const jwnls_texts& shape : joined.shapes()) {
    std::array<double, count> values = {};
    std::array<std::uint8_t, count> codes = {};
    jwnls_column_facts facts = {};
    facts.size = sizeof facts;
    for (std::size_t call = 1; call <= 2; ++call) {  // the facts of both add up
      EXPECT_EQ(jwnls_read_numbers(layout.get(), &shape, values.data(), codes.data(), &facts), 2U);
      EXPECT_EQ(codes, codes_expected);
      EXPECT_EQ(values[1], 1234.5);
      EXPECT_EQ(values[5], 12.345);
      for (const std::size_t i : {2u, 3u, 4u, 7u, 8u}) EXPECT_NE(jwnls_is_missing(values[i]), 0);
      EXPECT_EQ(facts.read, 4 * call);
      EXPECT_EQ(facts.refused, 2 * call);
      EXPECT_EQ(facts.missing, 3 * call);
      EXPECT_EQ(facts.two_ways, 2 * call);
      EXPECT_EQ(facts.deciding, 2 * call);
      EXPECT_EQ(facts.first_refused, 3U);
      EXPECT_EQ(facts.first_two_ways, 0U);
    }
    EXPECT_EQ(jwnls_read_numbers(layout.get(), &shape, values.data(), nullptr, nullptr), 2U);
  }
}

TEST(Columns, FactsKeepToTheSizeOfTheCaller) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_INTEGER);
  const jwnls_text text = {"7", 1};
  const jwnls_texts one = {sizeof one, 1, &text, nullptr, nullptr, nullptr, nullptr};
  jwnls_column_facts facts;
  std::memset(&facts, 0, sizeof facts);
  facts.missing = 77;
  facts.size = offsetof(jwnls_column_facts, missing);
  std::int64_t value = 0;
  EXPECT_EQ(jwnls_read_integers(layout.get(), &one, &value, nullptr, &facts), 0U);
  EXPECT_EQ(facts.read, 1U);
  EXPECT_EQ(facts.missing, 77U);
  facts.size = sizeof facts;
  facts.missing = 0;
  EXPECT_EQ(jwnls_read_integers(layout.get(), &one, &value, nullptr, &facts), 0U);
  EXPECT_EQ(facts.read, 2U);
  EXPECT_EQ(facts.first_refused, 2U);  // as many as there are texts: none
}

TEST(Columns, OffsetsThatFallAreRefused) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  const std::int32_t offsets[] = {0, 2, 1, -1, 3};
  const jwnls_texts bad = {sizeof bad, 4, nullptr, "123", offsets, nullptr, nullptr};
  std::array<double, 4> values = {};
  EXPECT_EQ(jwnls_read_numbers(layout.get(), &bad, values.data(), nullptr, nullptr), 3U);
  EXPECT_EQ(values[0], 12);
}

// Every room: as many as fit are written, the caller goes on from there and loses nothing.
TEST(Columns, WritingGoesOnWhereTheRoomEnded) {
  const OpenedLayout layout = open_layout("fr_FR", JWNLS_NUMBER, "decimals=2");
  const double values[] = {1234.5, jwnls::missing_value(), -0.001, 1e9, 5, 7};
  constexpr std::size_t values_count = 6;
  const std::uint8_t valid[] = {0b101111};
  const std::string expected = "1\u00A0234,50|!|-0,00|1\u00A0000\u00A0000\u00A0000,00|!|7,00|";
  for (std::size_t room = 20; room < 150; ++room) {
    std::string all;
    for (std::size_t done = 0; done < values_count;) {
      std::vector<char> bytes(room);
      std::vector<std::int32_t> offsets(values_count + 1, -1);
      std::vector<std::uint8_t> codes(values_count, 77);
      const std::uint8_t rest = static_cast<std::uint8_t>(valid[0] >> done);
      const jwnls_column column = {sizeof column, bytes.data(), room, offsets.data(),
                                   nullptr,       codes.data(), &rest};
      const std::size_t written =
          jwnls_write_numbers(layout.get(), values + done, values_count - done, &column);
      ASSERT_GT(written, 0U);
      EXPECT_EQ(offsets[0], 0);
      for (std::size_t i = 0; i < written; ++i) {
        ASSERT_LE(offsets[i], offsets[i + 1]);
        ASSERT_LE(static_cast<std::size_t>(offsets[i + 1]), room);
        all.append(bytes.data() + offsets[i], bytes.data() + offsets[i + 1]);
        all += codes[i] == JWNLS_OK ? "|" : "!|";
      }
      done += written;
    }
    ASSERT_EQ(all, expected);
  }
}

TEST(Columns, IntegersAndDecimalsGoInAndOut) {
  const OpenedLayout layout = open_layout("en_IN", JWNLS_INTEGER);
  constexpr std::int64_t values[] = {INT64_MIN, -1, 0, 1234567, INT64_MAX};
  std::array<char, 200> bytes;
  std::array<std::int64_t, 6> offsets;
  jwnls_column column = {sizeof column,  bytes.data(), bytes.size(), nullptr,
                         offsets.data(), nullptr,      nullptr};
  ASSERT_EQ(jwnls_write_integers(layout.get(), values, 5, &column), 5U);
  jwnls_texts written = {sizeof written, 5,      nullptr, bytes.data(), nullptr,
                         offsets.data(), nullptr};
  std::array<std::int64_t, 5> read;
  EXPECT_EQ(jwnls_read_integers(layout.get(), &written, read.data(), nullptr, nullptr), 0U);
  EXPECT_TRUE(std::equal(read.begin(), read.end(), values));

  std::array<char, 200> decimals;
  std::array<std::int32_t, 6> ends;
  const jwnls_column as_decimals = {
      sizeof as_decimals, decimals.data(), decimals.size(), ends.data(), nullptr, nullptr, nullptr};
  ASSERT_EQ(jwnls_read_decimals(layout.get(), &written, &as_decimals, nullptr), 5U);
  EXPECT_EQ(std::string_view(decimals.data() + ends[3], 7), "1234567");
  const jwnls_texts given = {sizeof given, 5,       nullptr, decimals.data(),
                             ends.data(),  nullptr, nullptr};
  std::array<char, 200> again;
  std::array<std::int32_t, 6> again_ends;
  const jwnls_column out = {sizeof out, again.data(), again.size(), again_ends.data(),
                            nullptr,    nullptr,      nullptr};
  ASSERT_EQ(jwnls_write_decimals(layout.get(), &given, &out), 5U);
  EXPECT_EQ(std::string_view(again.data(), static_cast<std::size_t>(again_ends[5])),
            std::string_view(bytes.data(), static_cast<std::size_t>(offsets[5])));
}

// What texts were found to be, with the code behind each value.
struct Found {
  std::string all;
  jwnls_column_facts facts = {sizeof(jwnls_column_facts), 0, 0, 0, 0, 0, 0, 0};

  void add(std::string_view value, int code) {
    all.append(value).append("/").append(std::to_string(code)).append(";");
  }
  // As the facts of a column of so many texts.
  void count(std::size_t i, std::size_t texts, int code, std::uint8_t found) {
    const auto count_first = [i](bool is_one, std::size_t& ones, std::size_t& first) {
      if (is_one && ones++ == 0) first = i;
    };
    if (i == 0) facts.first_refused = facts.first_two_ways = texts;
    facts.missing += code == JWNLS_MISSING ? 1 : 0;
    facts.read += code == JWNLS_OK ? 1 : 0;
    facts.deciding += (found & JWNLS_DECIDES) != 0 ? 1 : 0;
    count_first(code != JWNLS_OK && code != JWNLS_MISSING, facts.refused, facts.first_refused);
    count_first((found & JWNLS_TWO_WAYS) != 0, facts.two_ways, facts.first_two_ways);
  }
  void expect_same(const Found& other) const {
    ASSERT_EQ(all, other.all);
    ASSERT_EQ(std::memcmp(&facts, &other.facts, sizeof facts), 0) << all;
  }
};

// Random texts one behind the other, and nothing behind them that may be read.
struct RandomTexts {
  std::vector<char> bytes;
  std::vector<std::int32_t> offsets = {0};

  explicit RandomTexts(std::mt19937_64& random) {
    constexpr std::string_view pieces[] = {"1", "0", "23",  "456", ".789", ",012", ".",         ",",
                                           "'", "-", "7,5", "x",   " ",    "00",   "31.12.2024"};
    for (std::size_t i = 1 + random() % 40; i > 0; --i) {
      for (std::size_t j = random() % 6; j > 0; --j) {
        const std::string_view piece = pieces[random() % std::size(pieces)];
        bytes.insert(bytes.end(), piece.begin(), piece.end());
      }
      offsets.push_back(static_cast<std::int32_t>(bytes.size()));
    }
  }
  [[nodiscard]] std::size_t size() const { return offsets.size() - 1; }
  [[nodiscard]] jwnls_text text(std::size_t i) const {
    return {bytes.data() + offsets[i], static_cast<std::size_t>(offsets[i + 1] - offsets[i])};
  }
  [[nodiscard]] jwnls_texts texts() const {
    static jwnls::test::GuardedBuffer<char> guarded;
    static jwnls::test::GuardedBuffer<std::int32_t> guarded_offsets;
    const char* const held = guarded.hold({bytes.data(), bytes.size()});
    const std::int32_t* const ends =
        std::copy(offsets.begin(), offsets.end(), guarded_offsets.reset(offsets.size()));
    return {sizeof(jwnls_texts), size(), nullptr, held, ends - offsets.size(), nullptr, nullptr};
  }
};

void check_decimals(const jwnls_layout* layout, const RandomTexts& texts) {
  constexpr std::size_t longest = 2200;
  Found singly;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    char out[longest];
    std::size_t length = 0;
    std::uint8_t found = 0;
    const int code = jwnls_read_decimal(layout, texts.text(i).bytes, texts.text(i).length, out,
                                        sizeof out, &length, nullptr, &found);
    singly.add({out, length}, code);
    singly.count(i, texts.size(), code, found);
  }
  std::vector<char> room(texts.size() * longest);
  std::vector<std::int32_t> ends(texts.size() + 1);
  std::vector<std::uint8_t> codes(texts.size(), 77);
  const jwnls_column out = {sizeof out, room.data(),  room.size(), ends.data(),
                            nullptr,    codes.data(), nullptr};
  const jwnls_texts given = texts.texts();
  Found column;
  ASSERT_EQ(jwnls_read_decimals(layout, &given, &out, &column.facts), texts.size());
  std::vector<std::int64_t> large_ends(texts.size() + 1);
  jwnls_column large = out;
  large.offsets = nullptr;
  large.large_offsets = large_ends.data();
  ASSERT_EQ(jwnls_read_decimals(layout, &given, &large, nullptr), texts.size());
  EXPECT_TRUE(std::equal(ends.begin(), ends.end(), large_ends.begin()));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    column.add({room.data() + ends[i], static_cast<std::size_t>(ends[i + 1] - ends[i])}, codes[i]);
  }
  column.expect_same(singly);
}

void check_dates(const jwnls_layout* layout, const RandomTexts& texts) {
  Found singly;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    std::int32_t days = 0;
    std::uint8_t found = 0;
    const int code =
        jwnls_read_date(layout, texts.text(i).bytes, texts.text(i).length, &days, &found);
    singly.add(std::to_string(days), code);
    singly.count(i, texts.size(), code, found);
  }
  std::vector<std::int32_t> days(texts.size());
  std::vector<std::uint8_t> codes(texts.size(), 77);
  const jwnls_texts given = texts.texts();
  Found column;
  (void)jwnls_read_dates(layout, &given, days.data(), codes.data(), &column.facts);
  for (std::size_t i = 0; i < texts.size(); ++i) column.add(std::to_string(days[i]), codes[i]);
  column.expect_same(singly);
}

TEST(Columns, AreReadAsTheirTextsAreSingly) {
  std::mt19937_64 random(jwnls::test::test_seed(20240315));
  for (const char* locale : {"de_DE", "en_US", "en_IN", "fr_FR"}) {
    const OpenedLayout numbers = open_layout(locale, JWNLS_NUMBER);
    const OpenedLayout dates = open_layout(locale, JWNLS_DATE);
    for (int round = 0; round < 300; ++round) {
      const RandomTexts texts(random);
      check_decimals(numbers.get(), texts);
      check_dates(dates.get(), texts);
    }
  }
}

// Values through a column of texts and back.
template <typename Value, typename Write, typename Read>
void expect_read_back(const char* locale, int kind, const std::vector<Value>& values, Write write,
                      Read read) {
  const OpenedLayout layout = open_layout(locale, kind);
  std::array<char, 400> bytes;
  std::vector<std::int32_t> offsets(values.size() + 1);
  const jwnls_column column = {sizeof column, bytes.data(), bytes.size(), offsets.data(),
                               nullptr,       nullptr,      nullptr};
  ASSERT_EQ(write(layout.get(), values.data(), values.size(), &column), values.size());
  const jwnls_texts written = {sizeof written, values.size(), nullptr, bytes.data(),
                               offsets.data(), nullptr,       nullptr};
  std::vector<Value> again(values.size());
  EXPECT_EQ(read(layout.get(), &written, again.data(), nullptr, nullptr), 0U);
  EXPECT_EQ(again, values) << locale;
}

TEST(Columns, DatesAndTimesGoInAndOut) {
  constexpr std::int64_t second = 1'000'000;
  const std::vector<std::int64_t> moments = {-86'400 * second, 0, 1'710'513'005 * second};
  expect_read_back<std::int32_t>("pl_PL", JWNLS_DATE, {-1, 0, 19797}, jwnls_write_dates,
                                 jwnls_read_dates);
  expect_read_back("ja_JP", JWNLS_DATETIME, moments, jwnls_write_datetimes, jwnls_read_datetimes);
  expect_read_back<std::int64_t>("en_US", JWNLS_TIME, {0, 43'200 * second, 86'399 * second},
                                 jwnls_write_times, jwnls_read_times);
}

}  // namespace
