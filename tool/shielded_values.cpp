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

// Options whose values may look like options: "-c -3=number", "--null --".
bool takes_any_text(const std::string& word) {
  constexpr std::string_view options[] = {"-c", "--columns", "--null", "--null-out"};
  return std::any_of(std::begin(options), std::end(options),
                     [&word](std::string_view option) { return word == option; });
}

}  // namespace

std::vector<std::string> with_shielded_values(std::vector<std::string> words) {
  const auto mark = std::find(words.begin(), words.end(), "--");
  for (auto word = words.begin(); word != words.end(); ++word) {
    const bool is_text = word != words.begin() && word < mark && takes_any_text(*(word - 1));
    const bool is_value = word > mark || is_hidden_number(*word) || is_text;
    if (is_value) word->insert(word->begin(), shield);
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
