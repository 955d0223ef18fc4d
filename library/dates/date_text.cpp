#include "library/dates/date_text.h"

#include <algorithm>
#include <cstring>

#include "library/dates/named_date.h"
#include "library/dates/plain_date.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// Whether the quick way sees in a text what the full way sees: ASCII, letters of two bytes and
// U+00A0.
bool is_plain(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) continue;
    if (lead < 0xC2 || lead >= 0xE0 || at + 1 == text.size()) return false;
    const auto next = static_cast<unsigned char>(text[++at]);
    if ((next & 0xC0) != 0x80) return false;
    const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | (next & 0x3FU)];
    const bool is_one = folded >= 0x80 ? folded < 0x800 : folded >= 'a' && folded <= 'z';
    if (!is_one && !is_no_break_blank(text.substr(at - 1))) return false;
  }
  return true;
}

// Looks up a run of letters of a text as it is written, folding it on the way. It tells of runs
// that are a name or a word as a whole; all others are for the full way.
class QuickLookUp {
 public:
  explicit QuickLookUp(const DateLayout& layout) noexcept : layout_(layout) {}

  Word operator()(std::string_view rest) noexcept {
    folded_size_ = 0;
    std::memset(folded_, 0, 8);
    std::size_t at = 0;
    bool is_one_word = true;  // in a script that writes blanks between words
    while (at < rest.size() && folded_size_ + 4 <= sizeof folded_) {
      const char each = rest[at];
      if (static_cast<unsigned char>((each | 0x20) - 'a') < 26) {
        folded_[folded_size_++] = static_cast<char>(each | 0x20);
        ++at;
      } else if (is_letter(each)) {
        if (is_no_break_blank(rest.substr(at))) break;
        const std::size_t bytes = fold_letter(rest.substr(at));
        if (bytes == 0) return {};
        is_one_word = is_one_word && bytes == 2;
        at += bytes;
      } else if (at > 0 && end_of_run(rest.substr(0, at + 2), at) > at) {
        folded_[folded_size_++] = each;
        is_one_word = false;
        ++at;
      } else {
        break;
      }
    }
    if (at == 0 || folded_size_ + 4 > sizeof folded_) return {};
    const std::string_view folded(folded_, folded_size_);
    std::uint64_t key;
    std::memcpy(&key, folded_, 8);
    const NameMeaning* const meaning = layout_.names->find(key, folded);
    // The full way knows names of several words, and names that a part of a run is.
    if (meaning != nullptr) return meaning->begins_longer ? Word{} : Word{at, folded, meaning};
    return is_one_word || is_ordinal(folded) ? Word{at, folded, nullptr} : Word{};
  }

  [[nodiscard]] static bool knows(std::string_view gap) noexcept {
    for (const char each : gap) {
      if (is_letter(each)) return false;
    }
    return true;
  }

 private:
  // Whether one may stand here is asked later.
  [[nodiscard]] bool is_ordinal(std::string_view folded) const noexcept {
    for (const std::string_view each : layout_.ordinals) {
      if (!each.empty() && each == folded) return true;
    }
    return false;
  }

  // Folds a character of two or three bytes and gives its bytes; 0: the full way has to.
  std::size_t fold_letter(std::string_view rest) noexcept {
    const auto lead = static_cast<unsigned char>(rest[0]);
    const auto follows = [rest](std::size_t i) {
      return i < rest.size() && (static_cast<unsigned char>(rest[i]) & 0xC0) == 0x80;
    };
    if (lead >= 0xC2 && lead < 0xE0 && follows(1)) {
      const std::uint16_t folded =
          folded_letters[(lead & 0x1FU) << 6 | (static_cast<unsigned char>(rest[1]) & 0x3FU)];
      if (folded == 0) return 2;
      if (folded < 0x80) {
        if (!is_letter(static_cast<char>(folded)) && folded != '\'') return 0;
        folded_[folded_size_++] = static_cast<char>(folded);
        return 2;
      }
      if (folded >= 0x800) return 0;
      folded_[folded_size_++] = static_cast<char>(0xC0U | folded >> 6);
      folded_[folded_size_++] = static_cast<char>(0x80U | (folded & 0x3FU));
      return 2;
    }
    // Of three bytes: the scripts of South Asia, and those of East Asia, whose letters have no
    // cases. What folds to something else among them is not found, which leaves it to the full way.
    const bool kept = lead == 0xE0 || (lead >= 0xE3 && lead <= 0xED);
    if (!kept || !follows(1) || !follows(2)) return 0;
    std::memcpy(folded_ + folded_size_, rest.data(), 3);
    folded_size_ += 3;
    return 3;
  }

  const DateLayout& layout_;
  char folded_[64];
  std::size_t folded_size_ = 0;
};

// Looks up the longest name or word that a folded text goes on with.
class FullLookUp {
 public:
  explicit FullLookUp(const DateLayout& layout) noexcept : names_(*layout.names) {}

  Word operator()(std::string_view rest) const noexcept {
    std::size_t size = 0;
    const NameMeaning* const meaning = names_.longest_at(rest, size);
    if (meaning == nullptr) size = end_of_run(rest, 0);
    if (size == 0) size = 1;  // an apostrophe
    return {size, rest.substr(0, size), meaning};
  }
  [[nodiscard]] static bool knows(std::string_view) noexcept { return true; }

 private:
  const DateNames& names_;
};

// A number of the locale's own pattern; four digits at most.
bool take_number(std::string_view text, std::size_t& at, Numbers& numbers) noexcept {
  Numbers::Number& number = numbers.number[numbers.count++];
  number = {0, at, at};
  for (; at < text.size() && is_digit(text[at]); ++at) {
    number.value = number.value * 10 + (text[at] - '0');
    if (at - number.begin == 4) return false;
  }
  number.end = at;
  return at > number.begin;
}

bool take_marks(std::string_view text, std::size_t& at, std::string_view marks) noexcept {
  if (text.size() - at < marks.size()) return false;
  const char* const begin = text.data() + at;
  at += marks.size();
  return std::equal(marks.begin(), marks.end(), begin);
}

// Three numbers exactly as a pattern of the locale writes them: "2018年9月4日". False for every
// other text, and for what is no date.
bool read_written_date(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  for (const WrittenMarks& marks : layout.written_marks) {
    Numbers numbers;
    std::size_t at = 0;
    const bool fits = take_marks(text, at, marks.lead) && take_number(text, at, numbers) &&
                      take_marks(text, at, marks.first_gap) && take_number(text, at, numbers) &&
                      take_marks(text, at, marks.second_gap) && take_number(text, at, numbers) &&
                      take_marks(text, at, marks.tail) && at == text.size();
    if (!fits) continue;
    const OwnMarks& own = layout.own_marks[marks.own];
    CivilDate date;
    DateOrder order(layout, numbers, text.size(), read);
    if (order.place_numbers(own.has_words ? &own : nullptr, date)) order.finish(date, 0, 0);
    if (read.refusal == Refusal::none) return true;
    read = {};
  }
  return false;
}

// What a text of up to 32 bytes is made of: the runs of digits, and whether all of it is ASCII. Of
// a longer one nothing is known.
struct Outline {
  std::size_t runs = 0;
  bool is_known = false;
  bool is_ascii = false;

  explicit Outline(std::string_view text) noexcept {
    if (text.size() > 32) return;
    constexpr std::uint64_t each = 0x0101010101010101;
    std::uint64_t all = 0;
    std::uint64_t before = 0;  // whether the byte in front is a digit, in the lowest byte's top
    for (std::size_t at = 0; at < text.size(); at += 8) {
      std::uint64_t bytes = 0;
      if (text.size() - at >= 8) {
        std::memcpy(&bytes, text.data() + at, 8);
      } else if (text.size() >= 8) {
        std::memcpy(&bytes, text.data() + text.size() - 8, 8);
        bytes >>= 8 * (8 - (text.size() - at));
      } else {
        for (std::size_t i = text.size(); i-- > 0;) {
          bytes = bytes << 8 | static_cast<unsigned char>(text[i]);
        }
      }
      all |= bytes;
      const std::uint64_t values = bytes ^ 0x30 * each;
      const std::uint64_t digits = ~(((values & 0x7F * each) + 0x76 * each) | values) & 0x80 * each;
      const std::uint64_t begins = digits & ~(digits << 8 | before);
      runs += static_cast<std::size_t>((begins >> 7) * each >> 56);
      before = digits >> 56;
    }
    is_known = true;
    is_ascii = (all & 0x80 * each) == 0;
  }
};

// Whether a text of three numbers, in ASCII, ends in a word that stands behind a number and that no
// name or word of the locale is: "04.09.2018 foo".
bool ends_in_unknown_word(const DateLayout& layout, std::string_view text) noexcept {
  std::size_t begin = text.size();
  while (begin > 0 && is_letter(text[begin - 1])) --begin;
  std::size_t before = begin;
  while (before > 0 && text[before - 1] == ' ') --before;
  if (begin == text.size() || before == begin || before == 0 || !is_digit(text[before - 1])) {
    return false;
  }
  const Word word = QuickLookUp(layout)(text.substr(begin));
  return word.size == text.size() - begin && word.meaning == nullptr;
}

}  // namespace

std::string_view trimmed_slowly(std::string_view text) noexcept {
  for (;;) {
    if (!text.empty() && is_blank(text.front())) {
      text.remove_prefix(1);
    } else if (is_no_break_blank(text)) {
      text.remove_prefix(2);
    } else {
      break;
    }
  }
  for (;;) {
    if (!text.empty() && is_blank(text.back())) {
      text.remove_suffix(1);
    } else if (text.size() >= 2 && is_no_break_blank(text.substr(text.size() - 2))) {
      text.remove_suffix(2);
    } else {
      return text;
    }
  }
}

bool is_blank_text(std::string_view text) noexcept {
  if (!text.empty() && text.front() > ' ' && text.front() <= '~') return false;
  char folded[longest_text];
  const auto size = fold_text(text, folded, sizeof folded);
  return size && trimmed({folded, *size}).empty();
}

namespace {

// All but plain dates, into a fresh `read`.
void read_quickly(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  if (!layout.months_are_numbers && read_named_date(layout, text, read)) return;
  if (read_written_date(layout, text, read)) return;
  const Outline outline(text);
  // The quick way does not see names with digits.
  const bool has_numbered = layout.names->has_numbered();
  if (outline.is_known && outline.is_ascii && !has_numbered) {
    read = {};
    if (outline.runs == 0) read.refusal = Refusal::no_date;
    if (outline.runs > 3) read.refusal = Refusal::too_many;
    if (outline.runs == 3 && !layout.words_behind && ends_in_unknown_word(layout, text)) {
      read.refusal = Refusal::unknown_word;
    }
    if (read.refusal != Refusal::none) return;
  }
  QuickLookUp look_up(layout);
  read = DateGrammar<QuickLookUp>(layout, text, look_up).read();
  if (read.refusal != Refusal::none &&
      (has_numbered || (!(outline.is_known && outline.is_ascii) && !is_plain(text)))) {
    read.refusal = Refusal::undecided;
  }
}

}  // namespace

DateRead quick_date(const DateLayout& layout, std::string_view text) noexcept {
  DateRead read;
  if (!read_plain_date(layout, text, read)) read_quickly(layout, text, read);
  return read;
}

void read_uncommon_date(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  read_quickly(layout, text, read);
  if (read.refusal == Refusal::undecided) read = full_date(layout, text);
}

namespace {

DateRead folded_date(const DateLayout& layout, std::string_view text, bool with_place) noexcept {
  char folded[folded_room];
  std::uint16_t places[folded_room + 1];
  const auto size = fold_text(text, folded, sizeof folded, with_place ? places : nullptr);
  if (!size) {
    DateRead read;
    read.refusal = text.size() > folded_room / 3 ? Refusal::too_long : Refusal::not_utf8;
    return read;
  }
  const std::string_view all(
      folded, layout.names->replace_numbered(folded, *size, with_place ? places : nullptr));
  const std::string_view inner = trimmed(all);
  DateRead read;
  if (inner.empty()) {
    read.refusal = Refusal::blank;
    return read;
  }
  FullLookUp look_up(layout);
  read = DateGrammar<FullLookUp>(layout, inner, look_up).read();
  if (with_place) read.place = places[static_cast<std::size_t>(inner.data() - folded) + read.place];
  return read;
}

}  // namespace

DateRead full_date(const DateLayout& layout, std::string_view text, bool with_place) noexcept {
  const DateRead read = folded_date(layout, text, with_place);
  if (read.refusal != Refusal::two_months || !layout.names->has_exact()) return read;
  char copy[folded_room];
  if (text.size() > sizeof copy) return read;
  std::memcpy(copy, text.data(), text.size());
  const std::size_t size = layout.names->replace_exact(copy, text.size());
  return size == text.size() ? read : folded_date(layout, {copy, size}, with_place);
}

DateRead read_date_text(const DateLayout& layout, std::string_view text) noexcept {
  DateRead read;
  if (!read_plain_date(layout, text, read)) read_uncommon_date(layout, text, read);
  return read;
}

}  // namespace jwnls::library
