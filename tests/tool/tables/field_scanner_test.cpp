#include "tool/tables/field_scanner.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/seed.h"

namespace jwnls::tool {
namespace {

using Offsets = std::vector<std::uint32_t>;

struct Marks {
  Offsets fields;
  Offsets rows;
  std::uint64_t line_feeds;
  bool inside;
  bool operator==(const Marks&) const = default;
};

template <typename Scan>
Marks marks_of(const std::string& text, const std::vector<std::size_t>& cuts, bool quotes,
               Scan scan) {
  FieldScanner scanner(';', quotes);
  FieldMarks marks;
  std::size_t begin = 0;
  for (const std::size_t end : cuts) {
    (scanner.*scan)(text.data(), begin, end, marks);
    begin = end;
  }
  return {Offsets(marks.fields(), marks.fields() + marks.field_count),
          Offsets(marks.rows(), marks.rows() + marks.row_count), marks.line_feeds,
          scanner.is_inside()};
}

TEST(FieldScanner, FollowsItsRules) {
  const struct {
    const char* text;
    Offsets fields;
    bool inside;
  } rows[] = {{"a;b\n", {1, 3}, false},
              {"\"a;b\";c\n", {5, 7}, false},
              {"\"a\"\";b\";c\n", {7, 9}, false},  // a doubled quote closes nothing
              {"\"a\nb\";c\n", {5, 7}, false},
              {"5\" x;b\n", {4, 6}, false},        // a quote in plain text
              {"\"x\"y;\"b;\"\n", {4, 9}, false},  // text behind a closing quote
              {"\"x\"y\";b\n", {5, 7}, false},
              {" \"x;y\";b\n", {3, 6, 8}, false},  // no field begins with this quote
              {"\"\";\"\"\"\";\n", {2, 7, 8}, false},
              {"a\r\n", {2}, false},
              {"a;\"x;\n", {1}, true}};
  for (const auto& row : rows) {
    const std::string text = row.text;
    const Marks marks = marks_of(text, {text.size()}, true, &FieldScanner::scan_bytes);
    EXPECT_EQ(marks.fields, row.fields) << text;
    EXPECT_EQ(marks.inside, row.inside) << text;
  }
}

// The texts have all that decides, dense and sparse; pieces end anywhere.
TEST(FieldScanner, FindsTheSameBlockByBlockAsByteByByte) {
  std::mt19937_64 random(jwnls::test::test_seed(20240315));
  constexpr std::string_view alphabets[] = {"a;\"\n", "aaaaaaaaaaaa;\"\n", "aaaaaaaaa;;\"\"\n\r",
                                            "aaaaaaaaaaaaaaaaaaaaaaaaaaaa;\n", "a\"\";\"\"\n"};
  for (int round = 0; round < 100'000; ++round) {
    const std::string_view alphabet = alphabets[random() % std::size(alphabets)];
    std::string text(random() % 400, '\0');
    for (char& each : text) each = alphabet[random() % alphabet.size()];
    std::vector<std::size_t> cuts;
    for (std::size_t cut = random() % 200; cut < text.size(); cut += random() % 200) {
      cuts.push_back(cut);
    }
    cuts.push_back(text.size());
    const bool quotes = random() % 8 != 0;
    const Marks expected = marks_of(text, {text.size()}, quotes, &FieldScanner::scan_bytes);
    ASSERT_EQ(marks_of(text, cuts, quotes, &FieldScanner::scan), expected) << text;
    ASSERT_EQ(marks_of(text, cuts, quotes, &FieldScanner::scan_anywhere), expected) << text;
  }
}

}  // namespace
}  // namespace jwnls::tool
