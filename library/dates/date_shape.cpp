#include "library/dates/date_shape.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

#include "library/dates/ascii_word.h"
#include "library/dates/plain_date.h"
#include "library/dates/quick_look_up.h"
#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// A character that three bytes at a place of the text would be.
char32_t character_of_3(std::string_view text, std::size_t at) noexcept {
  const auto bits = [=](std::size_t i) -> unsigned {
    return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) & 0x3FU : 0U;
  };
  return (static_cast<unsigned char>(text[at]) & 0xFU) << 12 | bits(1) << 6 | bits(2);
}

// Whether the first character, beyond ASCII, folds to one that begins with the same byte.
bool stays(std::string_view text) noexcept {
  const auto lead = static_cast<unsigned char>(text[0]);
  const unsigned next = text.size() > 1 ? static_cast<unsigned char>(text[1]) & 0x3FU : 0;
  if (lead >= 0xF0 || lead < 0xC2) return false;
  if (lead >= 0xE0) return folds_to_itself(character_of_3(text, 0));
  const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | next];
  return folded >= 0x80 && folded < 0x800 && (folded >> 6 | 0xC0U) == lead;
}

// Whether every character beyond ASCII folds to a letter beyond ASCII or of it: then the folded
// text has the numbers that this one has, and the marks between them. What is not UTF-8 is no date
// whatever is said of it.
bool is_of_letters(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) continue;
    const unsigned next = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0;
    if (lead >= 0xF0) return false;
    if (lead < 0xE0) {
      const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | (next & 0x3FU)];
      const bool is_one = folded >= 0x80 || (folded >= 'a' && folded <= 'z');
      if (!is_one || folded == folds_to_several) return false;
      at += 1;
    } else {
      if (!folds_to_itself(character_of_3(text, at))) return false;
      at += 2;
    }
  }
  return true;
}

// Whether some character of a text begins as a name with digits in it does.
bool begins_numbered(const DateNames& names, std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    char first = text[at];
    if (lead >= 0xC0) {
      const unsigned next = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0;
      if (lead < 0xE0) {
        const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | (next & 0x3FU)];
        if (folded >= 0x800) return true;
        first = static_cast<char>(folded < 0x80 ? folded : folded >> 6 | 0xC0U);
      } else if (lead >= 0xF0 || !folds_to_itself(character_of_3(text, at))) {
        return true;
      }
    }
    if (names.begins_numbered(first)) return true;
  }
  return false;
}

// The last byte of the folded form of a text's last character; nothing where that is not known.
std::optional<char> last_folded_byte(std::string_view text) noexcept {
  const char last = text.back();
  if (is_ascii(last)) return last >= 'A' && last <= 'Z' ? static_cast<char>(last | 0x20) : last;
  std::size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) --at;
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead >= 0xE0 && lead < 0xF0 && folds_to_itself(character_of_3(text, at))) return last;
  if (lead < 0xC2 || lead >= 0xE0) return std::nullopt;
  const unsigned next = static_cast<unsigned char>(last) & 0x3FU;
  const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | next];
  if (folded == 0 || folded >= 0x800) return std::nullopt;
  return static_cast<char>(folded < 0x80 ? folded : 0x80U | (folded & 0x3FU));
}

// Whether a name with digits in it may stand in a text: some letter begins as one, and some number
// stands where the number of one would.
[[gnu::noinline]] bool finds_numbered(const DateNames& names, std::string_view text) noexcept {
  if (!begins_numbered(names, text)) return false;
  if (names.precedes_number('\0') || (!is_ascii(text) && !folds_no_digits(text))) return true;
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (!is_digit(text[at]) || is_digit(text[at - 1])) continue;
    std::size_t before = at;
    while (before > 0 && is_blank(text[before - 1])) --before;
    if (before == 0) continue;
    const auto byte = last_folded_byte(text.substr(0, before));
    if (!byte || names.precedes_number(*byte)) return true;
  }
  return false;
}

bool may_have_numbered(const DateLayout& layout, std::string_view text) noexcept {
  const DateNames& names = *layout.names;
  if (!names.has_numbered()) return false;
  if (is_before_letters(text) && !names.has_numbered_without_letters()) return false;
  return finds_numbered(names, text);
}

// Whether the sizes of three numbers, or of two, are those of no date in any order.
bool have_wrong_sizes(const Numbers& numbers) noexcept {
  const auto& number = numbers.number;
  const std::size_t last = numbers.count - 1;
  for (std::size_t i = 0; i <= last; ++i) {
    const std::size_t digits = number[i].digits();
    if (digits > 4 || digits == 3 || (digits == 4 && i != 0 && i != last)) return true;
  }
  return number[0].digits() == 4 && number[last].digits() == 4;
}

// The first byte that is no blank and no comma; 0: there is none.
char first_mark(std::string_view gap) noexcept {
  for (const char each : gap) {
    if (!is_blank(each) && each != ',') return each;
  }
  return '\0';
}

bool have_wrong_marks(const DateLayout& layout, std::string_view first,
                      std::string_view second) noexcept {
  if (first.size() == 1 && second.size() == 1 && first[0] == second[0] && is_date_mark(first[0])) {
    return false;
  }
  const char mark = only_mark(first);
  if (mark != '\0' && mark == only_mark(second)) return false;
  return !layout.bytes.own_begins(1, first_mark(first)) ||
         !layout.bytes.own_begins(2, first_mark(second));
}

// Whether the word of ASCII at a place of the text, with no letter in front of it, is none of the
// locale's.
bool is_unknown_word(const DateLayout& layout, std::string_view text, std::size_t at) noexcept {
  if (!is_ascii(text[at])) return false;
  if (!layout.names->has_beginning(static_cast<char>(text[at] | 0x20))) return true;
  if (text.size() >= 8) {
    const char* const end = text.data() + text.size();
    std::uint64_t key = 0;
    const std::size_t size = fold_ascii(text.data() + at, end, key);
    if (size < 8 && ends_word(text.data() + at + size, end)) {
      return layout.names->find(key, text.substr(at, size)) == nullptr &&
             !layout.is_ordinal(key, size);
    }
  }
  const std::string_view rest = text.substr(at);
  QuickLookUp look_up(layout);  // which holds the word's folded form
  const Word word = look_up(rest);
  return word.size > 0 && word.meaning == nullptr && !layout.is_ordinal(word.folded) &&
         (word.size == rest.size() || is_ascii(rest[word.size]));
}

// Whether a character beyond ASCII stands behind nothing but ASCII, where none of the locale's
// names, words and marks begins so. Then the text is no date, whatever follows.
bool is_foreign_character(const DateLayout& layout, std::string_view text,
                          std::size_t at) noexcept {
  const char first = text[at];
  if (is_ascii(first) || layout.names->has_beginning(first)) return false;
  for (std::size_t place = 0; place < 4; ++place) {
    if (layout.bytes.own_begins(place, first)) return false;
  }
  return stays(text.substr(at)) && is_ascii(text.substr(0, at));
}

// One in front of the numbers, or behind one of them.
bool has_foreign_character(const DateLayout& layout, std::string_view text,
                           const Numbers& numbers) noexcept {
  if (is_foreign_character(layout, text, 0)) return true;
  for (std::size_t i = 0; i < numbers.count && i < 3; ++i) {
    std::size_t at = numbers.number[i].end;
    while (at < text.size() && is_blank(text[at])) ++at;
    if (at < text.size() && is_foreign_character(layout, text, at)) return true;
  }
  return false;
}

// In front of a date of numbers.
bool is_wrong_lead(const DateLayout& layout, std::string_view text, std::size_t size) noexcept {
  if (size == 0 || layout.bytes.own_begins(0, text[0])) return false;
  return is_letter(text[0]) ? is_unknown_word(layout, text, 0) : text[0] != '\'';
}

// Behind a number; another number may follow.
bool is_wrong_word_behind(const DateLayout& layout, std::string_view text,
                          std::size_t at) noexcept {
  while (at < text.size() && is_blank(text[at])) ++at;
  if (at == text.size() || layout.bytes.own_begins(3, text[at])) return false;
  return is_letter(text[at]) && is_unknown_word(layout, text, at);
}

// But for what folds to a mark.
bool have_letters(std::string_view piece) noexcept {
  for (std::size_t at = 0; at < piece.size(); ++at) {
    if (!is_letter(piece[at])) continue;
    const auto lead = static_cast<unsigned char>(piece[at]);
    if (lead < 0xC2 || lead >= 0xE0 || at + 1 == piece.size()) return true;
    const unsigned next = static_cast<unsigned char>(piece[++at]) & 0x3FU;
    const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | next];
    if (folded >= 0x80 || is_letter(static_cast<char>(folded))) return true;
  }
  return false;
}

// Where something else follows, what stands behind the last number may be part of that.
bool is_hopeless(const DateLayout& layout, std::string_view text, const Numbers& numbers,
                 bool is_whole = true) noexcept {
  const auto& number = numbers.number;
  const auto between = [text](std::size_t begin, std::size_t end) {
    return std::string_view(text.data() + begin, end - begin);
  };
  switch (numbers.count) {
    case 1:
      return number[0].digits() != 8 || is_wrong_lead(layout, text, number[0].begin) ||
             (is_whole && is_wrong_word_behind(layout, text, number[0].end));
    case 2:
      return is_wrong_lead(layout, text, number[0].begin) ||
             is_wrong_word_behind(layout, text, number[0].end) ||
             (is_whole && is_wrong_word_behind(layout, text, number[1].end)) ||
             have_wrong_sizes(numbers) ||
             !(have_letters(between(0, number[0].begin)) ||
               have_letters(between(number[0].end, number[1].begin)) ||
               have_letters(between(number[1].end, text.size())));
    case 3:
      return is_wrong_lead(layout, text, number[0].begin) ||
             (is_whole && is_wrong_word_behind(layout, text, number[2].end)) ||
             have_wrong_sizes(numbers) ||
             have_wrong_marks(layout, between(number[0].end, number[1].begin),
                              between(number[1].end, number[2].begin));
    default:
      return true;
  }
}

// Whether a byte of ASCII begins no date.
bool is_wrong_first(const DateLayout& layout, char first) noexcept {
  return is_ascii(first) && !is_letter(first) && !is_digit(first) && first != '\'' &&
         !layout.bytes.own_begins(0, first);
}

}  // namespace

bool is_no_date(const DateLayout& layout, std::string_view text, const Numbers& numbers) noexcept {
  // Names with digits are no numbers, and may have any mark.
  if (may_have_numbered(layout, text)) return false;
  if (is_wrong_first(layout, text.front())) return true;
  if (layout.bytes.is_foreign(text.back())) return true;
  if (!is_ascii(text)) {
    return has_foreign_character(layout, text, numbers) || layout.bytes.has_foreign(text) ||
           (is_hopeless(layout, text, numbers) && is_of_letters(text));
  }
  return is_hopeless(layout, text, numbers) || layout.bytes.has_foreign(text);
}

bool is_no_date_in_front(const DateLayout& layout, std::string_view text,
                         const Numbers& numbers) noexcept {
  const std::string_view date = text.substr(0, numbers.number[numbers.count - 1].end);
  if (is_wrong_first(layout, text.front())) return true;
  if (!is_ascii(date)) {
    if (numbers.count == 3 && !is_of_letters(date)) return false;
    Numbers others = numbers;  // behind the last one stands what joins the date to the rest
    --others.count;
    if (has_foreign_character(layout, text, others)) return true;
  }
  return is_hopeless(layout, text, numbers, false) || layout.bytes.has_foreign_in_front(text);
}

bool is_no_date_behind(const DateLayout& layout, std::string_view text,
                       const Numbers& numbers) noexcept {
  const auto& number = numbers.number;
  const auto gap = [&](std::size_t i) {
    return text.substr(number[i].end, number[i + 1].begin - number[i].end);
  };
  const std::size_t last = numbers.count - 1;
  if (is_wrong_word_behind(layout, text, number[last].end)) return true;
  if (last == 0) return number[0].digits() != 8;
  return have_wrong_sizes(numbers) || (last == 2 && is_of_letters(text.substr(number[0].begin)) &&
                                       have_wrong_marks(layout, gap(0), gap(1)));
}

bool is_no_date_at_once(const DateLayout& layout, std::string_view text,
                        std::uint64_t digits) noexcept {
  const auto first = [](std::uint64_t bits) {
    return static_cast<std::size_t>(std::countr_zero(bits));
  };
  const std::uint64_t begins = digits & ~(digits << 1);
  const std::uint64_t ends = ~digits & digits << 1;  // but that of a number at the text's end
  const std::uint64_t later_begins = begins & (begins - 1);
  const std::uint64_t later_ends = ends & (ends - 1);
  const auto are_wrong = [&] {
    const auto gap = [text, first](std::uint64_t begin, std::uint64_t end) {
      return std::string_view(text.data() + first(begin), first(end) - first(begin));
    };
    const std::uint64_t last_begin = later_begins & (later_begins - 1);
    return have_wrong_marks(layout, gap(ends, later_begins), gap(later_ends, last_begin));
  };
  const bool is_numbered = layout.names->has_numbered();
  if (is_digit(text.front()) && is_digit(text.back())) {
    const bool is_bare = is_before_letters(text);
    if (is_bare && !layout.names->has_numbered_without_letters()) return are_wrong();
    if (is_numbered) return false;  // most dates with such names end in numbers
  } else if (is_numbered && finds_numbered(*layout.names, text)) {
    return false;
  }
  if (!is_ascii(text)) return is_foreign_character(layout, text, 0);
  const std::uint64_t last_end = later_ends & (later_ends - 1);
  return is_wrong_lead(layout, text, first(begins)) ||
         (last_end != 0 && (is_wrong_word_behind(layout, text, first(last_end)) ||
                            layout.bytes.is_foreign(text.back()))) ||
         are_wrong();
}

bool has_no_numbered(const DateLayout& layout, std::string_view text) noexcept {
  return !may_have_numbered(layout, text);
}

}  // namespace jwnls::library
