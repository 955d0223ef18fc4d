// Writes character tables as C++ from the Unicode character database.
//
//   character_table_generator UnicodeData.txt module|host OUTPUT
//
// Tables over the 65,536 UTF-16 units. For either: the simple upper-case mapping as pages of 128
// units, equal pages stored once. For the host, the lower-case letters (general category Ll) as
// runs besides.

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr unsigned unit_count = 0x10000;
constexpr unsigned page_size = 128;

struct Characters {
  std::vector<bool> lower = std::vector<bool>(unit_count);
  std::vector<unsigned> upper = std::vector<unsigned>(unit_count);
};

std::vector<std::string> fields_of(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, ';');) fields.push_back(field);
  fields.resize(15);  // the last field is empty as a rule, and not seen by getline
  return fields;
}

bool read(const char* path, Characters& characters) {
  std::ifstream file(path);
  for (unsigned unit = 0; unit < unit_count; ++unit) characters.upper[unit] = unit;
  unsigned lines = 0;
  for (std::string line; std::getline(file, line); ++lines) {
    const std::vector<std::string> fields = fields_of(line);
    const unsigned long code_point = std::stoul(fields[0], nullptr, 16);
    if (code_point >= unit_count) break;
    constexpr unsigned category = 2;
    constexpr unsigned simple_upper_case = 12;
    characters.lower[code_point] = fields[category] == "Ll";
    if (fields[simple_upper_case].empty()) continue;
    const unsigned long upper = std::stoul(fields[simple_upper_case], nullptr, 16);
    if (upper < unit_count) characters.upper[code_point] = static_cast<unsigned>(upper);
  }
  return lines > 10000;  // fewer would be another file, or part of it
}

void write_classes(std::ostream& out, const std::vector<bool>& lower) {
  out << "// Of every unit: 2 for the lower-case letters.\n"
         "const std::uint16_t character_classes[65536] = {";
  for (unsigned unit = 0; unit < unit_count; ++unit) {
    out << (unit % 32 == 0 ? "\n    " : " ") << (lower[unit] ? 2 : 0) << ",";
  }
  out << "\n};\n\n";
}

void write_upper_pages(std::ostream& out, const std::vector<unsigned>& upper) {
  // A page holds what is to be added to each unit, so that most pages are all zero, and equal.
  std::map<std::vector<unsigned>, unsigned> numbers;
  std::vector<std::vector<unsigned>> pages;
  out << "// Which page the upper nine bits of a unit have.\n"
         "const std::uint8_t upper_case_page_of[512] = {";
  for (unsigned high = 0; high < unit_count / page_size; ++high) {
    std::vector<unsigned> page;
    for (unsigned low = 0; low < page_size; ++low) {
      const unsigned unit = high * page_size + low;
      page.push_back((upper[unit] - unit) % unit_count);
    }
    const auto [known, is_new] = numbers.try_emplace(page, static_cast<unsigned>(pages.size()));
    if (is_new) pages.push_back(page);
    out << (high % 16 == 0 ? "\n    " : " ") << known->second << ",";
  }
  out << "\n};\n\n// What is added, modulo 65,536, to the unit of seven lower bits on each page.\n"
         "const std::uint16_t upper_case_pages[][128] = {\n";
  for (const std::vector<unsigned>& page : pages) {
    out << "    {";
    for (unsigned low = 0; low < page_size; ++low) {
      out << (low % 16 == 0 ? "\n        " : " ") << page[low] << ",";
    }
    out << "\n    },\n";
  }
  out << "};\n";
}

}  // namespace

int main(int argument_count, char** arguments) {
  const std::string reader = argument_count == 4 ? arguments[2] : "";
  if (reader != "module" && reader != "host") {
    std::cerr << "usage: character_table_generator UnicodeData.txt module|host OUTPUT\n";
    return EXIT_FAILURE;
  }
  Characters characters;
  if (!read(arguments[1], characters)) {
    std::cerr << arguments[1] << ": not the Unicode character database\n";
    return EXIT_FAILURE;
  }
  const bool for_host = reader == "host";
  const std::string space = for_host ? "jwnls::host" : "jwnls";
  std::ofstream out(arguments[3]);
  out << "// Made by character_table_generator; do not edit.\n\n#include \""
      << (for_host ? "host/lookup/character_tables.h" : "module/text/same_text.h")
      << "\"\n\nnamespace " << space << " {\n\n";
  if (for_host) write_classes(out, characters.lower);
  write_upper_pages(out, characters.upper);
  out << "\n}  // namespace " << space << "\n";
  out.close();
  if (!out) {
    std::cerr << arguments[3] << ": cannot be written\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
