#include "library/dates/date_names.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <map>
#include <numeric>
#include <utility>

#include "library/locale_data/date_characters.h"
#include "library/locale_data/pattern_parts.h"
#include "library/process/opening.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::uint8_t no_letter = 1;
constexpr std::uint8_t digit = 2;
constexpr auto byte_classes = [] {
  std::array<std::uint8_t, 256> classes{};
  for (unsigned i = 0; i < classes.size(); ++i) {
    const char byte = static_cast<char>(i);
    if (!is_letter(byte)) classes[i] |= no_letter;
    if (is_digit(byte)) classes[i] |= digit;
  }
  return classes;
}();

// What a name has among its bytes; most names have letters alone.
std::uint8_t classes_of(std::string_view name) noexcept {
  std::uint8_t all = 0;
  for (const char byte : name) all |= byte_classes[static_cast<unsigned char>(byte)];
  return all;
}

}  // namespace

DateNames::DateNames(const DateNameData& data) {
  entries_.reserve(data.names.size() + data.exact.size() + 8);
  std::size_t bytes = 0;
  for (const FoldedName& each : data.names) bytes += each.text.size();
  texts_.reserve(bytes + 64);
  for (const FoldedName& each : data.names) add_entry(each.text, each.meaning);
  add_stand_ins(data);
  mark_longer();
  make_slots();
}

void DateNames::add_entry(std::string_view name, const NameMeaning& meaning) {
  const auto begin = static_cast<std::uint32_t>(texts_.size());
  texts_.append(name);
  entries_.push_back({key_of(name), begin, static_cast<std::uint16_t>(name.size()), meaning});
}

void DateNames::add_stand_ins(const DateNameData& data) {
  char32_t next = 0xE000;
  const auto add = [&](std::vector<StandIn>& list, std::string_view name, NameMeaning meaning) {
    char bytes[4];
    list.push_back({std::string(name), std::string(bytes, encode_utf8(next++, bytes)), 0});
    add_entry(list.back().stand_in, meaning);
  };
  for (const auto& [name, meaning] : data.names) {
    if ((classes_of(name) & digit) == 0) continue;
    add(numbered_, name, meaning);
    if (is_before_letters(name)) has_numbered_without_letters_ = true;
    const auto first = static_cast<unsigned char>(name.front());
    begins_numbered_.set(first);
    if (first >= 'a' && first <= 'z') begins_numbered_.set(first ^ 0x20U);
    std::size_t before = 0;  // the first digit
    while (!is_digit(name[before])) ++before;
    numbered_.back().digits = before;
    while (before > 0 && name[before - 1] == ' ') --before;
    before_number_.set(before == 0 ? 0 : static_cast<unsigned char>(name[before - 1]));
  }
  for (const ExactName& each : data.exact) {
    NameMeaning meaning;
    meaning.month = static_cast<std::uint8_t>(each.month);
    add(exact_, each.text, meaning);
  }
  for (auto* list : {&numbered_, &exact_}) {
    std::sort(list->begin(), list->end(), [](const StandIn& a, const StandIn& b) {
      return a.name.size() != b.name.size() ? a.name.size() > b.name.size() : a.name < b.name;
    });
  }
}

std::size_t DateNames::replace_exact(char* text, std::size_t size) const noexcept {
  for (const StandIn& each : exact_) {
    const std::size_t at = std::string_view(text, size).find(each.name);
    const std::size_t end = at + each.name.size();
    if (at == std::string_view::npos || each.name.size() < each.stand_in.size()) continue;
    const auto is_ascii_letter = [](char byte) { return is_letter(byte) && is_ascii(byte); };
    if ((at > 0 && is_letter(text[at - 1])) || (end < size && is_ascii_letter(text[end]))) continue;
    const std::size_t cut = each.name.size() - each.stand_in.size();
    each.stand_in.copy(text + at, each.stand_in.size());
    std::memmove(text + end - cut, text + end, size - end);
    size -= cut;
  }
  return size;
}

// Whether one of them stands around some number of a folded text.
bool DateNames::has_numbered_in(std::string_view folded) const noexcept {
  const bool begin_with_digits = precedes_number('\0');
  for (std::size_t at = 0; at < folded.size(); ++at) {
    if (!is_digit(folded[at])) continue;
    if (!begin_with_digits) {
      std::size_t before = at;
      while (before > 0 && folded[before - 1] == ' ') --before;
      if (before == 0 || !precedes_number(folded[before - 1])) continue;
    }
    for (const StandIn& each : numbered_) {
      if (each.digits <= at && folded.substr(at - each.digits).starts_with(each.name)) return true;
    }
  }
  return false;
}

std::size_t DateNames::replace_numbered(char* folded, std::size_t size,
                                        std::uint16_t* places) const noexcept {
  if (numbered_.empty() || !has_numbered_in({folded, size})) return size;
  for (const StandIn& each : numbered_) {
    const std::size_t name = each.name.size();
    const std::size_t stand_in = each.stand_in.size();
    std::size_t at = std::string_view(folded, size).find(each.name);
    if (at == std::string_view::npos || name < stand_in) continue;
    const bool inside =
        (at > 0 && is_letter(folded[at - 1])) || (at + name < size && is_digit(folded[at + name]));
    if (inside) continue;
    each.stand_in.copy(folded + at, stand_in);
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

// Marks the runs of letters with which names of several words begin; those that are no names
// themselves are entered without a meaning.
void DateNames::mark_longer() {
  const std::size_t known = entries_.size();
  std::string last;  // names that begin alike follow each other
  for (std::size_t i = 0; i < known; ++i) {
    if ((classes_of(text_of_entry(entries_[i])) & no_letter) == 0) continue;
    for (std::size_t at = 1; at < entries_[i].size; ++at) {
      const char mark = texts_[entries_[i].begin + at];
      if (is_letter(mark)) continue;
      marks_.add(mark);
      const std::string_view begin = text_of_entry(entries_[i]).substr(0, at);
      if (begin == last) continue;
      last = begin;
      const auto same = [this, begin, key = key_of(begin)](const Entry& each) {
        return each.key == key && each.size == begin.size() && text_of_entry(each) == begin;
      };
      const auto found = std::find_if(entries_.begin(), entries_.end(), same);
      NameMeaning meaning;
      meaning.begins_longer = true;
      if (found != entries_.end()) {
        found->meaning.begins_longer = true;
      } else {
        add_entry(last, meaning);
      }
    }
  }
}

void DateNames::make_slots() {
  const auto before = [this](const Entry& a, const Entry& b) {
    return is_looked_for_before(text_of_entry(a), text_of_entry(b));
  };
  // The database's names stand in this order as a rule, and few others behind them.
  constexpr std::ptrdiff_t few = 16;
  auto unsorted = std::is_sorted_until(entries_.begin(), entries_.end(), before);
  if (entries_.end() - unsorted > few) {
    std::sort(entries_.begin(), entries_.end(), before);
    unsorted = entries_.end();
  }
  for (; unsorted != entries_.end(); ++unsorted) {
    const auto place = std::upper_bound(entries_.begin(), unsorted, *unsorted, before);
    std::rotate(place, unsorted, unsorted + 1);
  }
  for (const Entry& entry : entries_) {
    ++first_of_[static_cast<unsigned char>(texts_[entry.begin]) + 1U];
  }
  std::partial_sum(std::begin(first_of_), std::end(first_of_), std::begin(first_of_));
  slots_.assign(std::bit_ceil(2 * entries_.size() + 2), 0);
  mask_ = slots_.size() - 1;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = slot_of(entries_[i].key, entries_[i].size);
    while (slots_[slot] != 0) slot = (slot + 1) & mask_;
    slots_[slot] = static_cast<std::uint16_t>(i + 1);
  }
}

void DateNames::add_to(std::string& key) const {
  for (const Entry& entry : entries_) {
    const NameMeaning& meaning = entry.meaning;
    const int kinds =
        (meaning.word ? 1 : 0) + (meaning.two_months ? 2 : 0) + (meaning.false_friend ? 4 : 0);
    key.append(text_of_entry(entry));
    for (const int each : {0, int{meaning.month}, int{meaning.weekday}, kinds}) {
      key += static_cast<char>(each);
    }
  }
}

const NameMeaning* DateNames::longest_at(std::string_view text, std::size_t& size) const noexcept {
  const auto byte = static_cast<unsigned char>(text.front());
  for (std::size_t i = first_of_[byte]; i < first_of_[byte + 1]; ++i) {
    const std::string_view name = text_of_entry(entries_[i]);
    const NameMeaning& meaning = entries_[i].meaning;
    if (text.substr(0, name.size()) != name || !(meaning.is_name() || meaning.word)) continue;
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

// What the record alone says, where the database has no layout data.
NameList names_of_record(const LocaleRecord& record) {
  NameList list;
  std::string full_months[12];
  std::string short_months[12];
  for (int i = 0; i < 12; ++i) {
    full_months[i] = utf8_of(text_of(record.full_months[i]));
    short_months[i] = utf8_of(text_of(record.short_months[i]));
    list.add_month(full_months[i], i + 1);
    list.add_month(short_months[i], i + 1);
  }
  for (int i = 0; i < 7; ++i) {
    list.add_weekday(utf8_of(text_of(record.full_weekdays[i])), i + 1);
    list.add_weekday(utf8_of(text_of(record.short_weekdays[i])), i + 1);
  }
  for (const TextEntry& pattern : record.date_patterns) {
    list.add_pattern(PatternParts(utf8_of(text_of(pattern))), full_months, short_months);
  }
  return list;
}

NameList list_of(const DateNameData& data) {
  NameList list;
  for (const FoldedName& each : data.names) list.names.emplace(each.text, each.meaning);
  return list;
}

void add_english_months(NameList& list) {
  constexpr const char* months[] = {"January",   "February", "March",    "April",
                                    "May",       "June",     "July",     "August",
                                    "September", "October",  "November", "December"};
  for (int month = 1; month <= 12; ++month) {
    const std::string_view name = months[month - 1];
    list.add_foreign_month(name, month);
    list.add_foreign_month(name.substr(0, 3), month);
  }
  list.add_foreign_month("Sept", 9);
}

std::shared_ptr<const DateNames> make_names(const LocaleRecord& record, bool with_english) {
  std::optional<DateNameData> data = read_date_name_data(record);
  NameList list;  // of names that do not stand in the section as they are
  if (!data || with_english) {
    list = data ? list_of(*data) : names_of_record(record);
    if (with_english) add_english_months(list);
    if (!data) data.emplace();
    data->names.clear();
    for (const auto& [text, meaning] : list.names) data->names.push_back({text, meaning});
  }
  return std::make_shared<const DateNames>(*data);
}

}  // namespace

std::shared_ptr<const DateNames> date_names_of(const Locale& locale, bool with_english) {
  if (locale.passing) return make_names(*locale.record, with_english);
  // Never destroyed, as the locales.
  using Known = std::map<std::pair<const Locale*, bool>, std::shared_ptr<const DateNames>>;
  static Known& known = *new Known;
  const Opening opening;
  std::shared_ptr<const DateNames>& names = known[{&locale, with_english}];
  if (names == nullptr) names = make_names(*locale.record, with_english);
  return names;
}

}  // namespace jwnls::library
