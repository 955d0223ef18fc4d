#include "library/dates/date_names.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <map>
#include <utility>

#include "library/locale_data/date_characters.h"
#include "library/locale_data/pattern_parts.h"
#include "library/process/opening.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t key_bytes = sizeof(std::uint64_t);

// The bits of a key that so many bytes of a text take.
std::uint64_t key_mask(std::size_t bytes) noexcept {
  return bytes >= key_bytes ? UINT64_MAX : (std::uint64_t{1} << 8 * bytes) - 1;
}
std::uint64_t load_key(const char* at) noexcept {
  std::uint64_t key = 0;
  std::memcpy(&key, at, sizeof key);
  return key;
}

// The bytes that are no letters, in their highest bits.
std::uint64_t marks_in(std::uint64_t bytes) noexcept {
  constexpr std::uint64_t each = 0x0101010101010101;
  const std::uint64_t seven = (bytes | 0x20 * each) & 0x7F * each;
  const std::uint64_t letters =
      ((seven + (0x80 - 'a') * each) & ~(seven + (0x7F - 'z') * each)) | bytes;
  return ~letters & 0x80 * each;
}

}  // namespace

DateNames::DateNames(const DateNameData& data) {
  entries_.reserve(data.names.size() + data.exact.size() + 8);
  std::vector<std::size_t> marked;  // entries that have more than letters, as few have
  texts_.reserve(data.texts.size() + key_bytes);
  texts_ = data.texts;
  texts_.append(key_bytes, '\0');  // so that keys are loaded at once
  for (const auto& [begin, size, meaning] : data.names) {
    const char* const text = texts_.data() + begin;
    std::uint64_t marks = 0;
    for (std::size_t at = 0; at < size; at += key_bytes) {
      marks |= marks_in(load_key(text + at)) & key_mask(size - at);
    }
    if (marks != 0) marked.push_back(entries_.size());
    entries_.push_back({load_key(text) & key_mask(size), begin, size, meaning});
  }
  for (const std::size_t each : marked) add_numbered(each);
  for (const ExactName& each : data.exact) {
    NameMeaning meaning;
    meaning.month = static_cast<std::uint8_t>(each.month);
    add_stand_in(exact_, each.text, meaning);
  }
  for (auto* list : {&numbered_, &exact_}) {
    std::sort(list->begin(), list->end(), [](const StandIn& a, const StandIn& b) {
      return a.name.size() != b.name.size() ? a.name.size() > b.name.size() : a.name < b.name;
    });
  }
  for (const std::size_t each : marked) mark_longer(each);
  sort_entries();
  make_slots();
}

void DateNames::add_stand_in(std::vector<StandIn>& list, std::string_view name,
                             NameMeaning meaning) {
  char bytes[4] = {};
  const std::string_view stand_in(bytes, encode_utf8(next_stand_in_++, bytes));
  std::uint32_t key = 0;  // no more than the whole
  std::memcpy(&key, bytes, sizeof key);
  list.push_back({std::string(name), std::string(stand_in), 0});
  const auto size = static_cast<std::uint8_t>(stand_in.size());
  entries_.push_back({key, static_cast<std::uint16_t>(texts_.size()), size, meaning});
  texts_ += stand_in;
}

// A name, if it has digits.
void DateNames::add_numbered(std::size_t entry) {
  const std::string name(text_of_entry(entries_[entry]));
  const auto first_digit = std::find_if(name.begin(), name.end(), is_digit);
  if (first_digit == name.end()) return;
  add_stand_in(numbered_, name, entries_[entry].meaning);
  if (is_before_letters(name)) has_numbered_without_letters_ = true;
  const auto first = static_cast<unsigned char>(name.front());
  begins_numbered_.set(first);
  if (first >= 'a' && first <= 'z') begins_numbered_.set(first ^ 0x20U);
  auto before = static_cast<std::size_t>(first_digit - name.begin());
  numbered_.back().digits = before;
  while (before > 0 && name[before - 1] == ' ') --before;
  before_number_.set(before == 0 ? 0 : static_cast<unsigned char>(name[before - 1]));
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

// The digits of a folded text that may be the first of such a name. They are few, and the bytes of
// many scripts much alike: names are sought around them.
class DateNames::NumberPlaces {
 public:
  NumberPlaces(const DateNames& names, std::string_view folded) noexcept : folded_(folded) {
    const bool begin_with_digits = names.precedes_number('\0');
    for (std::size_t at = 0; at < folded.size(); ++at) {
      if (!is_digit(folded[at])) continue;
      if (!begin_with_digits) {
        std::size_t before = at;
        while (before > 0 && folded[before - 1] == ' ') --before;
        if (before == 0 || !names.precedes_number(folded[before - 1])) continue;
      }
      if (count_ < most) places_[count_] = static_cast<std::uint16_t>(at);
      ++count_;
    }
  }

  [[nodiscard]] bool empty() const noexcept { return count_ == 0; }
  /// Where a name stands first.
  [[nodiscard]] std::size_t find(const StandIn& each) const noexcept {
    if (count_ > most) return folded_.find(each.name);
    const char digit = each.name[each.digits];
    for (std::size_t i = 0; i < count_; ++i) {
      if (folded_[places_[i]] != digit || places_[i] < each.digits) continue;
      const std::size_t at = places_[i] - each.digits;
      if (folded_.substr(at).starts_with(each.name)) return at;
    }
    return std::string_view::npos;
  }

 private:
  static constexpr std::size_t most = 32;

  std::string_view folded_;
  std::size_t count_ = 0;
  std::uint16_t places_[most];  // the first of them
};

std::size_t DateNames::replace_numbered(char* folded, std::size_t size,
                                        std::uint16_t* places) const noexcept {
  if (numbered_.empty()) return size;
  NumberPlaces numbers(*this, {folded, size});
  for (const StandIn& each : numbered_) {
    if (numbers.empty()) break;
    const std::size_t name = each.name.size();
    const std::size_t stand_in = each.stand_in.size();
    std::size_t at = numbers.find(each);
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
    numbers = NumberPlaces(*this, {folded, size});
  }
  return size;
}

// Marks the runs of letters with which a name of several words begins; those that are no names
// themselves are entered without a meaning.
void DateNames::mark_longer(std::size_t entry) {
  const Entry whole = entries_[entry];
  for (std::uint8_t at = 1; at < whole.size; ++at) {
    const char mark = texts_[whole.begin + at];
    if (is_letter(mark)) continue;
    marks_.add(mark);
    Entry beginning{whole.key & key_mask(at), whole.begin, at, {}};
    beginning.meaning.begins_longer = true;
    const auto same = [&](const Entry& each) {
      return each.key == beginning.key && each.size == at &&
             text_of_entry(each) == text_of_entry(beginning);
    };
    // Names that begin alike follow each other: the last that was entered is the likeliest.
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(), same);
    if (found != entries_.rend()) {
      found->meaning.begins_longer = true;
    } else {
      entries_.push_back(beginning);
    }
  }
}

// In the order of is_looked_for_before().
inline bool DateNames::stands_before(const Entry& a, const Entry& b) const noexcept {
  constexpr std::uint32_t most = UINT16_MAX;
  const auto rank = [](const Entry& entry) {
    return static_cast<std::uint32_t>(entry.first_byte()) << 16 | (most - entry.size);
  };
  if (rank(a) != rank(b)) return rank(a) < rank(b);
  return a.key != b.key ? __builtin_bswap64(a.key) < __builtin_bswap64(b.key)
                        : text_of_entry(a) < text_of_entry(b);
}

void DateNames::sort_entries() {
  const auto before = [this](const Entry& a, const Entry& b) { return stands_before(a, b); };
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
}

void DateNames::make_slots() {
  slots_.assign(std::bit_ceil(2 * entries_.size() + 2), 0);
  mask_ = slots_.size() - 1;
  auto* first = std::begin(first_of_);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Entry& entry = entries_[i];
    const auto number = static_cast<std::uint16_t>(i);
    auto* const behind = std::begin(first_of_) + entry.first_byte() + 1;
    if (first < behind) first = std::fill_n(first, behind - first, number);
    std::size_t slot = slot_of(entry.key, entry.size);
    while (slots_[slot] != 0) slot = (slot + 1) & mask_;
    slots_[slot] = static_cast<std::uint16_t>(number + 1);
  }
  std::fill(first, std::end(first_of_), static_cast<std::uint16_t>(entries_.size()));
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
  for (const auto& each : data.names) list.names.emplace(data.text_of(each), each.meaning);
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
    data->texts.clear();
    for (const auto& [text, meaning] : list.names) data->add(text, meaning);
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
