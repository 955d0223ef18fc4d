// The rows of tests/cases/numbers.tsv.

#ifndef JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_
#define JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/case_rows.h"

namespace jwnls::test {

struct NumberCase {
  std::string line;  // as it stands
  std::string locale, kind, options, action, given, expected, facts;

  [[nodiscard]] int kind_number() const { return jwnls_kind_of_name(kind.c_str()); }
  /// The code that `expected` names.
  [[nodiscard]] int code() const {
    return expected == "refuse"    ? JWNLS_UNREAD
           : expected == "missing" ? JWNLS_MISSING
           : expected == "range"   ? JWNLS_RANGE
                                   : JWNLS_OK;
  }
};

inline std::vector<NumberCase> number_cases() {
  std::vector<NumberCase> cases;
  for (const auto& [line, fields] : case_rows("numbers.tsv")) {
    cases.push_back(
        {line, fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6]});
  }
  EXPECT_GT(cases.size(), 200U);
  return cases;
}

/// "-12.5E+3" as value / 10^scale, where it is one.
struct Scaled {
  std::int64_t value = 0;
  std::int32_t scale = 0;
};
inline std::optional<Scaled> scaled_of(std::string text) {
  const auto is_number = [](std::string_view digits, auto& number) {
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number);
    return read.ec == std::errc() && read.ptr == end;
  };
  Scaled scaled;
  if (const std::size_t letter = text.find_first_of("eE"); letter != text.npos) {
    const std::size_t digits = letter + (text[letter + 1] == '+' ? 2 : 1);
    if (!is_number(text.substr(digits), scaled.scale)) return std::nullopt;
    scaled.scale = -scaled.scale;
    text.erase(letter);
  }
  if (const std::size_t point = text.find('.'); point != text.npos) {
    text.erase(point, 1);
    scaled.scale += static_cast<std::int32_t>(text.size() - point);
  }
  if (!is_number(text, scaled.value)) return std::nullopt;
  return scaled;
}

inline std::u16string widened(const std::string& text) {
  std::u16string units;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    unsigned c = bytes == 1 ? lead : lead & (0x7FU >> bytes);
    for (std::size_t j = 1; j < bytes; ++j) {
      c = c << 6 | (static_cast<unsigned char>(text[i + j]) & 0x3FU);
    }
    i += bytes;
    if (c >= 0x10000) {
      units += static_cast<char16_t>(0xD7C0 + (c >> 10));
      c = 0xDC00 + (c & 0x3FF);
    }
    units += static_cast<char16_t>(c);
  }
  return units;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_
