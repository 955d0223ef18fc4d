#include "library/dates/date_names.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>

#include "library/dates/date_characters.h"
#include "library/dates/pattern_parts.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// A name as the table has it.
class FoldedName {
 public:
  explicit FoldedName(std::string_view name) {
    size_ = fold_text(name, bytes_.data(), bytes_.size()).value_or(0);
    while (size_ > 0 && (bytes_[size_ - 1] == '.' || bytes_[size_ - 1] == ' ')) --size_;
    while (begin_ < size_ && bytes_[begin_] == ' ') ++begin_;
  }
  [[nodiscard]] std::string_view text() const { return {bytes_.data() + begin_, size_ - begin_}; }

 private:
  std::array<char, DateNames::longest> bytes_;
  std::size_t begin_ = 0;
  std::size_t size_ = 0;
};

bool continues_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

void set_month(NameMeaning& meaning, int month) {
  meaning.two_months = meaning.two_months || (meaning.month != 0 && meaning.month != month);
  meaning.month = static_cast<std::uint8_t>(month);
}

}  // namespace

NameMeaning* DateNames::meaning_of(std::string_view name) {
  // Names that begin with a digit ("3月") are numbers with words of their own.
  if (name.empty() || is_digit(name.front())) return nullptr;
  for (Entry& entry : entries_) {
    if (text_of_entry(entry) == name) return &entry.meaning;
  }
  const auto begin = static_cast<std::uint32_t>(texts_.size());
  texts_.append(name);
  entries_.push_back({key_of(name), begin, static_cast<std::uint16_t>(name.size()), {}});
  return &entries_.back().meaning;
}

void DateNames::add_month(std::string_view name, int month) {
  if (NameMeaning* meaning = meaning_of(FoldedName(name).text())) set_month(*meaning, month);
}

void DateNames::add_weekday(std::string_view name, int weekday) {
  NameMeaning* const meaning = meaning_of(FoldedName(name).text());
  if (meaning == nullptr) return;
  const bool other = meaning->weekday != 0 && meaning->weekday != weekday;
  meaning->weekday = other ? NameMeaning::some_weekday : static_cast<std::uint8_t>(weekday);
}

void DateNames::add_word(std::string_view word) {
  if (NameMeaning* meaning = meaning_of(FoldedName(word).text())) meaning->word = true;
}

void DateNames::prefer_month(std::string_view name, int month) {
  if (NameMeaning* meaning = meaning_of(FoldedName(name).text())) {
    meaning->month = static_cast<std::uint8_t>(month);
    meaning->two_months = false;
  }
}

// Beginnings of names: each that all names which begin so give one month, and no weekday begins
// so. They end where a character does, and hold letters alone.
void DateNames::add_beginnings() {
  struct Beginning {
    std::string text;
    int month;
  };
  std::vector<Beginning> beginnings;
  const auto collect = [&beginnings](std::string_view name, int month) {
    std::size_t letters = 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
      if (at > 0 && continues_character(name[at])) continue;
      if (at > 0 && letters >= 3) beginnings.push_back({std::string(name.substr(0, at)), month});
      if (name[at] == ' ' || name[at] == '.' || is_digit(name[at])) return;
      ++letters;
    }
  };
  for (const Entry& entry : entries_) {
    const NameMeaning& meaning = entry.meaning;
    if (!meaning.is_name()) continue;
    // 0 stands for what is no month, or two: nothing else may begin so.
    const bool only_month = meaning.month != 0 && !meaning.two_months && meaning.weekday == 0;
    collect(text_of_entry(entry), only_month ? meaning.month : 0);
  }
  std::sort(beginnings.begin(), beginnings.end(),
            [](const Beginning& a, const Beginning& b) { return a.text < b.text; });
  const std::size_t known = entries_.size();
  for (std::size_t i = 0; i < beginnings.size();) {
    const Beginning& first = beginnings[i];
    bool unique = first.month != 0;
    for (; i < beginnings.size() && beginnings[i].text == first.text; ++i) {
      unique = unique && beginnings[i].month == first.month;
    }
    const auto is_known = [&](const Entry& entry) { return text_of_entry(entry) == first.text; };
    const auto end = entries_.begin() + static_cast<std::ptrdiff_t>(known);
    if (!unique || std::any_of(entries_.begin(), end, is_known)) continue;
    const auto begin = static_cast<std::uint32_t>(texts_.size());
    texts_.append(first.text);
    Entry entry = {key_of(first.text), begin, static_cast<std::uint16_t>(first.text.size()), {}};
    set_month(entry.meaning, first.month);
    entries_.push_back(entry);
  }
}

// Names with digits, and characters of the private use area in their place.
void DateNames::add_numbered() {
  const std::size_t known = entries_.size();
  for (std::size_t i = 0; i < known; ++i) {
    const std::string name(text_of_entry(entries_[i]));
    if (std::none_of(name.begin(), name.end(), is_digit)) continue;
    char bytes[4];
    const char32_t character = 0xE000 + static_cast<char32_t>(numbered_.size());
    const std::string stand_in(bytes, encode_utf8(character, bytes));
    const NameMeaning meaning = entries_[i].meaning;
    *meaning_of(stand_in) = meaning;
    numbered_.push_back({name, stand_in});
  }
  std::sort(numbered_.begin(), numbered_.end(), [](const Numbered& a, const Numbered& b) {
    return a.name.size() != b.name.size() ? a.name.size() > b.name.size() : a.name < b.name;
  });
}

std::size_t DateNames::replace_numbered(char* folded, std::size_t size,
                                        std::uint16_t* places) const noexcept {
  for (const Numbered& each : numbered_) {
    const std::size_t name = each.name.size();
    const std::size_t stand_in = each.stand_in.size();
    std::size_t at = std::string_view(folded, size).find(each.name);
    if (at == std::string_view::npos || name < stand_in) continue;
    const bool inside =
        (at > 0 && is_letter(folded[at - 1])) || (at + name < size && is_digit(folded[at + name]));
    if (inside) continue;
    std::memcpy(folded + at, each.stand_in.data(), stand_in);
    at += stand_in;
    const std::size_t cut = name - stand_in;
    std::memmove(folded + at, folded + at + cut, size - at - cut);
    if (places != nullptr) {
      std::memmove(places + at, places + at + cut, (size - at - cut + 1) * sizeof *places);
    }
    size -= cut;
  }
  return size;
}

void DateNames::mark_longer() {
  for (const Entry& longer : entries_) {
    const std::string_view name = text_of_entry(longer);
    if (std::all_of(name.begin(), name.end(), is_letter)) continue;
    for (Entry& each : entries_) {
      const std::string_view begin = text_of_entry(each);
      const bool begins = begin.size() < name.size() && name.substr(0, begin.size()) == begin;
      if (begins && !is_letter(name[begin.size()])) each.meaning.begins_longer = true;
    }
  }
}

void DateNames::finish() {
  add_beginnings();
  add_numbered();
  mark_longer();
  const auto first_byte = [this](const Entry& entry) {
    return static_cast<unsigned char>(texts_[entry.begin]);
  };
  std::sort(entries_.begin(), entries_.end(), [&](const Entry& a, const Entry& b) {
    if (first_byte(a) != first_byte(b)) return first_byte(a) < first_byte(b);
    if (a.size != b.size) return a.size > b.size;
    return text_of_entry(a) < text_of_entry(b);
  });
  for (const Entry& entry : entries_) {
    for (unsigned byte = first_byte(entry) + 1U; byte <= 256; ++byte) ++first_of_[byte];
  }
  slots_.assign(std::bit_ceil(2 * entries_.size() + 2), 0);
  mask_ = slots_.size() - 1;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = slot_of(entries_[i].key, entries_[i].size);
    while (slots_[slot] != 0) slot = (slot + 1) & mask_;
    slots_[slot] = static_cast<std::uint16_t>(i + 1);
  }
}

const NameMeaning* DateNames::longest_at(std::string_view text, std::size_t& size) const noexcept {
  const auto byte = static_cast<unsigned char>(text.front());
  for (std::size_t i = first_of_[byte]; i < first_of_[byte + 1]; ++i) {
    const std::string_view name = text_of_entry(entries_[i]);
    if (text.substr(0, name.size()) != name) continue;
    // Not inside a word; scripts whose characters take three bytes write words without blanks.
    const char next = name.size() < text.size() ? text[name.size()] : ' ';
    const bool inside = (next >= 'a' && next <= 'z') || (static_cast<unsigned char>(next) >= 0xC0 &&
                                                         static_cast<unsigned char>(next) < 0xE0);
    if (inside) continue;
    size = name.size();
    return &entries_[i].meaning;
  }
  return nullptr;
}

namespace {

std::string utf8_of(std::u16string_view units) {
  char bytes[3 * text_entry_capacity];
  return {bytes, to_utf8(units, bytes, sizeof bytes)};
}

// The words of a pattern; and names with what stands before or behind them without a blank, as
// prepositions do in Hebrew.
void add_pattern(const LocaleRecord& record, const PatternParts& parts, DateNames& names) {
  for (const PatternParts::Part& part : parts.parts) {
    if (part.directive == 0) {
      for (const std::string& word : words_of(part.literal)) names.add_word(word);
    }
  }
  for (std::size_t i = 0; i < parts.parts.size(); ++i) {
    const char directive = parts.parts[i].directive;
    if (directive != 'B' && directive != 'b') continue;
    const std::string before = i > 0 ? letters_at_end(parts.parts[i - 1].literal) : "";
    const std::string behind =
        i + 1 < parts.parts.size() ? letters_at_begin(parts.parts[i + 1].literal) : "";
    if (before.empty() && behind.empty()) continue;
    const TextEntry* const months = directive == 'B' ? record.full_months : record.short_months;
    for (int month = 1; month <= 12; ++month) {
      names.add_month(before + utf8_of(text_of(months[month - 1])) + behind, month);
    }
  }
}

}  // namespace

void add_names(const LocaleRecord& record, DateNames& names) {
  for (int month = 1; month <= 12; ++month) {
    names.add_month(utf8_of(text_of(record.full_months[month - 1])), month);
    names.add_month(utf8_of(text_of(record.short_months[month - 1])), month);
  }
  for (int weekday = 1; weekday <= 7; ++weekday) {
    names.add_weekday(utf8_of(text_of(record.full_weekdays[weekday - 1])), weekday);
    names.add_weekday(utf8_of(text_of(record.short_weekdays[weekday - 1])), weekday);
  }
  for (const TextEntry& pattern : record.date_patterns) {
    add_pattern(record, PatternParts(utf8_of(text_of(pattern))), names);
  }
}

void prefer_english_months(DateNames& names) {
  constexpr const char* months[] = {"January",   "February", "March",    "April",
                                    "May",       "June",     "July",     "August",
                                    "September", "October",  "November", "December"};
  for (int month = 1; month <= 12; ++month) {
    const std::string_view name = months[month - 1];
    names.prefer_month(name, month);
    names.prefer_month(name.substr(0, 3), month);
  }
  names.prefer_month("Sept", 9);
}

}  // namespace jwnls::library
