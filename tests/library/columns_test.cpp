// Columns: every shape of texts, values in and out, facts over several calls, room that ends.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "abi/missing_value.h"
#include "tests/library/opened_layout.h"

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

}  // namespace
