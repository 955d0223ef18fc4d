// The tables of tests/cases/: one case a line, its fields between tabs.

#ifndef JWNLS_TESTS_LIBRARY_CASE_ROWS_H_
#define JWNLS_TESTS_LIBRARY_CASE_ROWS_H_

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/encoded.h"

namespace jwnls::test {

// "\s" is a blank, "\u00A0" that character.
inline std::string unescaped(const std::string& text) {
  std::string out;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text.compare(at, 2, "\\s") == 0) {
      out += ' ';
      ++at;
    } else if (text.compare(at, 2, "\\u") == 0) {
      const auto unit = std::strtoul(text.substr(at + 2, 4).c_str(), nullptr, 16);
      out += encoded(std::u16string(1, static_cast<char16_t>(unit)));
      at += 5;
    } else {
      out += text[at];
    }
  }
  return out;
}

struct CaseRow {
  std::string line;                   // as it stands
  std::array<std::string, 8> fields;  // unescaped; those that the line does not have are empty
};

inline std::vector<CaseRow> case_rows(const char* table) {
  std::vector<CaseRow> rows;
  std::ifstream file(std::string(JWNLS_CASES_DIR "/") + table);
  EXPECT_TRUE(file.is_open()) << table;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    CaseRow row;
    row.line = line;
    std::size_t field = 0;
    for (const char each : line) {
      if (each == '\t') {
        ++field;
      } else {
        row.fields.at(field) += each;
      }
    }
    for (std::string& each : row.fields) each = unescaped(each);
    rows.push_back(row);
  }
  return rows;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_CASE_ROWS_H_
