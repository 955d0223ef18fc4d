// The rows of tests/cases/numbers.tsv.

#ifndef JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_
#define JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"

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

// "\s" and "\uXXXX" as the characters that they stand for, in UTF-8.
inline std::string unescaped(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
    } else if (text[++i] == 's') {
      out += ' ';
    } else {
      const auto c =
          static_cast<unsigned>(std::strtoul(text.substr(i + 1, 4).c_str(), nullptr, 16));
      i += 4;
      if (c >= 0x800) out += static_cast<char>(0xE0 | c >> 12);
      if (c >= 0x800) out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
      if (c < 0x800) out += static_cast<char>(0xC0 | c >> 6);
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

inline std::vector<NumberCase> number_cases() {
  std::ifstream file(JWNLS_CASES_DIR "/numbers.tsv");
  EXPECT_TRUE(file.is_open()) << "no table of cases";
  std::vector<NumberCase> cases;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    NumberCase row;
    row.line = line;
    std::istringstream fields(line);
    for (std::string* field : {&row.locale, &row.kind, &row.options, &row.action, &row.given,
                               &row.expected, &row.facts}) {
      std::getline(fields, *field, '\t');
    }
    row.given = unescaped(row.given);
    row.expected = unescaped(row.expected);
    cases.push_back(row);
  }
  EXPECT_GT(cases.size(), 200U);
  return cases;
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
    units += static_cast<char16_t>(c);  // the tables have nothing beyond U+FFFF
  }
  return units;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_NUMBER_CASES_H_
