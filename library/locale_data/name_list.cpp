#include "library/locale_data/name_list.h"

#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

void set_month(NameMeaning& meaning, int month) {
  meaning.two_months = meaning.two_months || (meaning.month != 0 && meaning.month != month);
  meaning.month = static_cast<std::uint8_t>(month);
}

}  // namespace

std::string folded_name(std::string_view name) {
  char bytes[NameList::longest];
  std::string_view folded(bytes, fold_text(name, bytes, sizeof bytes).value_or(0));
  while (!folded.empty() && (folded.back() == '.' || folded.back() == ' ')) folded.remove_suffix(1);
  while (!folded.empty() && folded.front() == ' ') folded.remove_prefix(1);
  return folded.empty() || is_digit(folded.front()) ? "" : std::string(folded);
}

void NameList::add_month(std::string_view name, int month) {
  const std::string folded = folded_name(name);
  if (!folded.empty()) set_month(names[folded], month);
}

void NameList::add_weekday(std::string_view name, int weekday) {
  const std::string folded = folded_name(name);
  if (folded.empty()) return;
  NameMeaning& meaning = names[folded];
  const bool other = meaning.weekday != 0 && meaning.weekday != weekday;
  meaning.weekday = other ? NameMeaning::some_weekday : static_cast<std::uint8_t>(weekday);
}

void NameList::add_word(std::string_view word) {
  const std::string folded = folded_name(word);
  if (!folded.empty()) names[folded].word = true;
}

void NameList::add_foreign_month(std::string_view name, int month) {
  NameMeaning& meaning = names[folded_name(name)];
  if (meaning.month != 0 && !meaning.is_beginning) return;
  meaning.month = static_cast<std::uint8_t>(month);
  meaning.is_beginning = false;
}

void NameList::add_pattern(const PatternParts& pattern, const std::string (&full_months)[12],
                           const std::string (&short_months)[12]) {
  const auto& parts = pattern.parts;
  for (const PatternParts::Part& part : parts) {
    for (const std::string& word : words_of(part.literal)) add_word(word);
  }
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const char directive = parts[i].directive;
    if (directive != 'B' && directive != 'b') continue;
    const std::string before = i > 0 ? letters_at_end(parts[i - 1].literal) : "";
    const std::string behind = i + 1 < parts.size() ? letters_at_begin(parts[i + 1].literal) : "";
    if (before.empty() && behind.empty()) continue;
    const std::string(&months)[12] = directive == 'B' ? full_months : short_months;
    for (int month = 1; month <= 12; ++month) {
      add_month(std::string(before).append(months[month - 1]).append(behind), month);
    }
  }
}

// Beginnings end where a character does, and hold letters alone.
void NameList::add_beginnings(const std::function<bool(const std::string&, int)>& is_free) {
  std::map<std::string, int> months;  // of the beginnings; 0: of none, or of two
  const auto collect = [&months](std::string_view name, int month) {
    std::size_t letters = 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
      if (at > 0 && continues_character(name[at])) continue;
      if (at > 0 && letters >= 3) {
        const auto [known, is_new] = months.try_emplace(std::string(name.substr(0, at)), month);
        if (!is_new && known->second != month) known->second = 0;
      }
      if (!is_letter(name[at])) return;
      ++letters;
    }
  };
  for (const auto& [name, meaning] : names) {
    if (!meaning.is_name()) continue;
    const bool only_month = meaning.month != 0 && !meaning.two_months && meaning.weekday == 0;
    collect(name, only_month ? meaning.month : 0);
  }
  for (const auto& [text, month] : months) {
    if (month == 0 || names.find(text) != names.end() || !is_free(text, month)) continue;
    NameMeaning& meaning = names[text];
    meaning.month = static_cast<std::uint8_t>(month);
    meaning.is_beginning = true;
  }
}

}  // namespace jwnls::library
