#include "tool/nearest_name.h"

#include <algorithm>
#include <cstdint>

#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t longest_name = 200;  // nobody mistypes more

constexpr char32_t folded(char32_t letter) {
  return letter >= U'A' && letter <= U'Z' ? letter + (U'a' - U'A') : letter;
}

// The characters of UTF-8, capital letters of ASCII as small ones; bytes that are no UTF-8 stand
// for themselves.
std::u32string letters_of(std::string_view text) {
  std::u32string letters;
  for (const char each : text.substr(0, longest_name)) {
    const auto byte = static_cast<std::uint8_t>(each);
    const bool goes_on = (byte & 0xC0U) == 0x80U;
    if (goes_on && !letters.empty() && letters.back() >= 0x80U) {
      letters.back() = (letters.back() << 6U) | (byte & 0x3FU);
    } else {
      letters.push_back(folded(byte));
    }
  }
  return letters;
}

std::size_t distance(const std::u32string& one, const std::u32string& other) {
  const std::size_t columns = other.size() + 1;
  // Rows i - 2, i - 1 and i of the table of distances between the beginnings of both.
  std::vector<std::size_t> before(columns);
  std::vector<std::size_t> above(columns);
  std::vector<std::size_t> row(columns);
  for (std::size_t j = 0; j < columns; ++j) above[j] = j;
  for (std::size_t i = 1; i <= one.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j < columns; ++j) {
      const bool same = one[i - 1] == other[j - 1];
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
      const bool exchanged =
          i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
      if (exchanged) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(above);
    above.swap(row);
  }
  return above.back();
}

std::size_t capped_distance(const std::u32string& one, const std::u32string& other,
                            std::size_t limit) {
  const std::size_t longer = std::max(one.size(), other.size());
  const std::size_t shorter = std::min(one.size(), other.size());
  if (longer - shorter > limit) return limit + 1;
  return std::min(distance(one, other), limit + 1);
}

}  // namespace

std::size_t edit_distance(std::string_view one, std::string_view other, std::size_t limit) {
  return capped_distance(letters_of(one), letters_of(other), limit);
}

std::optional<std::string> nearest_name(std::string_view name,
                                        const std::vector<std::string>& names) {
  const auto letters = letters_of(name);
  if (letters.empty()) return std::nullopt;
  const std::size_t limit = letters.size() < 5 ? 1 : 2;
  constexpr std::size_t least_beginning = 3;
  const std::string* nearest = nullptr;
  std::size_t least = limit + 1;
  const std::string* begun = nullptr;
  for (const std::string& each : names) {
    const auto other = letters_of(each);
    const std::size_t away = capped_distance(letters, other, limit);
    // Of one or two letters nothing is left when one is exchanged.
    if (away < least && away < letters.size()) {
      nearest = &each;
      least = away;
    }
    if (begun == nullptr && letters.size() >= least_beginning && other.starts_with(letters)) {
      begun = &each;
    }
  }
  if (nearest == nullptr) nearest = begun;
  return nearest == nullptr ? std::nullopt : std::optional(*nearest);
}

std::string did_you_mean(std::string_view name, const std::vector<std::string>& names) {
  const auto nearest = nearest_name(name, names);
  return nearest ? "; did you mean " + in_quotes(*nearest) + "?" : std::string();
}

}  // namespace jwnls::tool
