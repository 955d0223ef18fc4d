#include "tool/shielded_values.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

namespace jwnls::tool {
namespace {

constexpr char shield = '\x01';

bool is_hidden_number(const std::string& word) {
  constexpr std::string_view starts[] = {"-0x", "-0X", "-inf", "-Inf", "-INF", "-nan"};
  if (word.size() < 2 || word[0] != '-') return false;
  const bool named = std::isalnum(static_cast<unsigned char>(word[1])) != 0 || word[1] == '-';
  return !named ||
         (word.size() > 2 && std::any_of(std::begin(starts), std::end(starts),
                                         [&](auto start) { return word.starts_with(start); }));
}

}  // namespace

std::vector<std::string> with_shielded_values(std::vector<std::string> words) {
  const auto mark = std::find(words.begin(), words.end(), "--");
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (word > mark || is_hidden_number(*word)) word->insert(word->begin(), shield);
  }
  if (mark != words.end()) words.erase(mark);
  return words;
}

std::string unshielded(std::string word) {
  if (word.starts_with(shield)) word.erase(0, 1);
  return word;
}

std::string without_shields(std::string message) {
  std::erase(message, shield);
  return message;
}

}  // namespace jwnls::tool
