// Writes the table by which names of months and weekdays are compared, from the Unicode character
// database.
//
//   letter_folding_generator UnicodeData.txt OUTPUT
//
// A character's folded form: decomposed (also where it is a compatibility character of a letter),
// the marks U+0300 to U+036F dropped, in lower case, with the final sigma as any other, ss for the
// sharp s, i for the dotless one; decimal digits, blanks, apostrophes, hyphens and commas as the
// ASCII ones; marks of direction and joiners dropped. Characters below U+0800 stand in an array,
// those above in a sorted list; a bit of each, 64 to a block, says whether it stands in the list,
// another whether it folds to a digit, a blank or nothing.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Text = std::vector<std::uint32_t>;

struct Character {
  Text decomposition;
  std::uint32_t lower = 0;  // 0: itself
  int digit = -1;
  bool blank = false;
};
using Characters = std::map<std::uint32_t, Character>;

constexpr unsigned array_size = 0x800;
constexpr unsigned block_count = 0x800;  // of 64 characters: none beyond them is in the list

// What the database does not say, or says otherwise than people write.
const std::map<std::uint32_t, Text> of_our_own = {
    {0x00DF, {'s', 's'}}, {0x1E9E, {'s', 's'}}, {0x03C2, {0x03C3}}, {0x0131, {'i'}},
    {0x00B0, {'o'}},  // the degree sign, typed for an ordinal
    {0x00B4, {'\''}},     {0x02B9, {'\''}},     {0x02BB, {'\''}},   {0x02BC, {'\''}},
    {0x05F3, {'\''}},     {0x2018, {'\''}},     {0x2019, {'\''}},   {0x2032, {'\''}},
    {0x05F4, {'"'}},      {0x05BE, {'-'}},      {0x2010, {'-'}},    {0x2011, {'-'}},
    {0x2012, {'-'}},      {0x2013, {'-'}},      {0x2014, {'-'}},    {0x2015, {'-'}},
    {0x2212, {'-'}},      {0x060C, {','}},      {0x3001, {','}},    {0x2E41, {','}},
    {0x00AD, {}},         {0x061C, {}},         {0x200B, {}},       {0x200C, {}},
    {0x200D, {}},         {0x200E, {}},         {0x200F, {}},       {0x202A, {}},
    {0x202B, {}},         {0x202C, {}},         {0x202D, {}},       {0x202E, {}},
    {0x2066, {}},         {0x2067, {}},         {0x2068, {}},       {0x2069, {}},
    {0xFEFF, {}},
};

std::vector<std::string> fields_of(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, ';');) fields.push_back(field);
  fields.resize(15);
  return fields;
}

std::uint32_t code_point(const std::string& text) {
  return static_cast<std::uint32_t>(std::stoul(text, nullptr, 16));
}

// "<compat> 0069 006A" or "0061 0300"; forms that are no letters' (fractions, squares) are left.
Text decomposition_of(const std::string& field) {
  Text parts;
  std::istringstream stream(field);
  for (std::string part; stream >> part;) {
    if (part == "<fraction>" || part == "<circle>" || part == "<square>") return {};
    if (part.front() != '<') parts.push_back(code_point(part));
  }
  return parts;
}

bool read(const char* path, Characters& characters) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::vector<std::string> fields = fields_of(line);
    Character character;
    character.decomposition = decomposition_of(fields[5]);
    if (!fields[13].empty()) character.lower = code_point(fields[13]);
    if (fields[2] == "Nd" && !fields[6].empty()) character.digit = std::stoi(fields[6]);
    character.blank = fields[2] == "Zs";
    characters[code_point(fields[0])] = character;
  }
  return characters.size() > 10000;  // fewer would be another file, or part of it
}

bool is_digit(std::uint32_t c) { return c >= '0' && c <= '9'; }
bool is_digit_or_blank(std::uint32_t c) { return is_digit(c) || c == ' '; }

void fold(const Characters& characters, std::uint32_t c, Text& out) {
  if (const auto own = of_our_own.find(c); own != of_our_own.end()) {
    out.insert(out.end(), own->second.begin(), own->second.end());
    return;
  }
  if (c >= 0x300 && c <= 0x36F) return;
  const auto known = characters.find(c);
  if (known == characters.end()) return out.push_back(c);
  const Character& character = known->second;
  if (character.digit >= 0) return out.push_back('0' + static_cast<std::uint32_t>(character.digit));
  if (character.blank) return out.push_back(' ');
  if (!character.decomposition.empty() && !is_digit(character.decomposition.front())) {
    for (const std::uint32_t part : character.decomposition) fold(characters, part, out);
  } else {
    out.push_back(character.lower != 0 ? character.lower : c);
  }
}

// Blocks of forms that no name is written in.
bool left_alone(std::uint32_t c) {
  constexpr std::uint32_t blocks[][2] = {{0x2070, 0x214F},   {0x2150, 0x2BFF},   {0x3100, 0xA63F},
                                         {0xAC00, 0xFAFF},   {0xFB13, 0xFEFE},   {0xFF5F, 0xFFFF},
                                         {0x1D000, 0x1D7CD}, {0x1F000, 0x10FFFF}};
  for (const auto& block : blocks) {
    if (c >= block[0] && c <= block[1]) return true;
  }
  return false;
}

void write_array(std::ostream& out, const Characters& characters) {
  out << "const std::uint16_t folded_letters[" << array_size << "] = {";
  for (unsigned c = 0; c < array_size; ++c) {
    Text folded;
    fold(characters, c, folded);
    const unsigned several = 0xFFFF;
    const unsigned value = folded.empty() ? 0 : folded.size() > 1 ? several : folded.front();
    out << (c % 16 == 0 ? "\n    " : " ") << value << ",";
  }
  out << "\n};\n\n";
}

// Equal blocks once, and for each block which of them is its own.
void write_bits(std::ostream& out, const std::string& name,
                const std::vector<std::uint64_t>& bits) {
  std::vector<std::uint64_t> different;
  out << "const std::uint8_t " << name << "_block_of[" << bits.size() << "] = {";
  for (const std::uint64_t block : bits) {
    auto found = std::find(different.begin(), different.end(), block);
    if (found == different.end()) found = different.insert(found, block);
    out << found - different.begin() << ", ";
  }
  out << "};\nconst std::uint64_t " << name << "_bits[] = {";
  for (const std::uint64_t block : different) out << block << "U, ";
  out << "};\n";
}

void write_list(std::ostream& out, const Characters& characters) {
  unsigned count = 0;
  std::vector<std::uint64_t> bits(block_count);
  std::vector<std::uint64_t> digit_bits(block_count);
  out << "const FoldedCharacter folded_characters[] = {\n";
  for (const auto& [c, character] : characters) {
    Text folded;
    fold(characters, c, folded);
    const bool changed = folded != Text{c};
    if (c < array_size ? folded.size() < 2 : !changed || left_alone(c)) continue;
    if (folded.size() > 3) continue;
    bits.at(c / 64) |= std::uint64_t{1} << c % 64;
    if (folded.empty() || std::any_of(folded.begin(), folded.end(), is_digit_or_blank)) {
      digit_bits.at(c / 64) |= std::uint64_t{1} << c % 64;
    }
    folded.resize(3);
    out << "    {" << c << ", {" << folded[0] << ", " << folded[1] << ", " << folded[2] << "}},\n";
    ++count;
  }
  out << "};\nconst std::size_t folded_character_count = " << count << ";\n\n";
  write_bits(out, "folded", bits);
  write_bits(out, "digit", digit_bits);
}

}  // namespace

int main(int argument_count, char** arguments) {
  if (argument_count != 3) {
    std::cerr << "usage: letter_folding_generator UnicodeData.txt OUTPUT\n";
    return EXIT_FAILURE;
  }
  Characters characters;
  if (!read(arguments[1], characters)) {
    std::cerr << arguments[1] << ": not the Unicode character database\n";
    return EXIT_FAILURE;
  }
  std::ofstream out(arguments[2]);
  out << "// Made by letter_folding_generator; do not edit.\n\n"
         "#include \"library/texts/folding.h\"\n\nnamespace jwnls::library {\n\n";
  write_array(out, characters);
  write_list(out, characters);
  out << "\n}  // namespace jwnls::library\n";
  out.close();
  if (!out) {
    std::cerr << arguments[2] << ": cannot be written\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
