#include "library/dates/date_text.h"

#include <cstring>

#include "library/dates/date_shape.h"
#include "library/dates/named_date.h"
#include "library/dates/plain_date.h"
#include "library/dates/quick_look_up.h"
#include "library/dates/text_outline.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

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

// Three numbers and what stands around them, as most dates of numbers have it: a mark twice, or
// exactly what a pattern of the locale writes, "2018年9月4日". False for every other text, of which
// `read` says nothing. True: the text is read, or refused for good.
bool read_three_numbers(const DateLayout& layout, std::string_view text, const Numbers& numbers,
                        DateRead& read) noexcept {
  const auto& number = numbers.number;
  const auto between = [text](std::size_t begin, std::size_t end) {
    return std::string_view(text.data() + begin, end - begin);
  };
  const std::string_view lead = between(0, number[0].begin);
  const std::string_view first_gap = between(number[0].end, number[1].begin);
  const std::string_view second_gap = between(number[1].end, number[2].begin);
  const std::string_view tail = between(number[2].end, text.size());
  CivilDate date;
  DateOrder order(layout, numbers, text.size(), read);
  if (lead.empty() && (tail.empty() || tail == ".")) {
    const char mark = only_mark(first_gap);
    if (mark != '\0' && mark == only_mark(second_gap)) {
      if (order.place_numbers(nullptr, date)) order.finish(date, 0, 0);
      return true;
    }
  }
  const auto same = [](std::string_view text, std::string_view mark) {  // of few bytes
    return text.size() == mark.size() && ends_in(text, mark);
  };
  for (const WrittenMarks& marks : layout.written_marks) {
    if (!same(first_gap, marks.first_gap) || !same(second_gap, marks.second_gap) ||
        !same(lead, marks.lead) || !same(tail, marks.tail)) {
      continue;
    }
    const OwnMarks& own = layout.own_marks[marks.own];
    if (order.place_numbers(own.has_words ? &own : nullptr, date)) order.finish(date, 0, 0);
    return true;
  }
  return false;
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
  const auto is_printed = [](char each) { return each > ' ' && each <= '~'; };
  if (!text.empty() && (is_printed(text.front()) || is_printed(text.back()))) return false;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, first_character(text).bytes);
    char folded[16];
    const auto size = fold_text(character, folded, sizeof folded);
    if (!size || !trimmed({folded, *size}).empty()) return false;
    text.remove_prefix(character.size());
  }
  return true;
}

namespace {

// All but plain dates, into a fresh `read`. With a place no text is refused before the grammar says
// where.
[[gnu::always_inline]] inline void read_quickly(const DateLayout& layout, std::string_view text,
                                                bool with_place, DateRead& read) noexcept {
  if (text.empty()) {  // what is left of a datetime beside its time
    read.refusal = Refusal::blank;
    return;
  }
  const bool is_short = text.size() <= longest_outlined;
  const std::uint64_t digits = is_short ? digits_of(text) : 0;
  if (!with_place && has_three_runs(digits) && is_ascii(text.back()) &&
      is_no_date_at_once(layout, text, digits)) {
    read.refusal = Refusal::no_date;
    return;
  }
  const Numbers numbers = is_short ? numbers_of(text, digits) : Numbers(text);
  if (numbers.count == 2 && !layout.months_are_numbers) {
    if (read_named_date(layout, text, numbers, read)) return;
  } else if (numbers.count == 3) {
    if (read_three_numbers(layout, text, numbers, read)) return;
  }
  // The quick way does not see names with digits, nor what marks alone tell apart.
  const bool has_numbered = layout.names->has_numbered();
  if (!with_place && is_no_date(layout, text, numbers)) {
    read.refusal = Refusal::no_date;
    return;
  }
  QuickLookUp look_up(layout);
  read = DateGrammar<QuickLookUp>(layout, text, numbers, look_up).read();
  const bool is_twofold = read.refusal == Refusal::two_months && layout.names->has_exact();
  if (read.refusal != Refusal::none && (has_numbered || is_twofold || !is_plain(text))) {
    read.refusal = Refusal::undecided;
  }
}

}  // namespace

DateRead quick_date(const DateLayout& layout, std::string_view text, bool with_place) noexcept {
  DateRead read;
  if (!read_plain_date(layout, text, read)) read_quickly(layout, text, with_place, read);
  return read;
}

void read_uncommon_date(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  read_quickly(layout, text, false, read);
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
  const Numbers numbers(inner);
  read = DateGrammar<FullLookUp>(layout, inner, numbers, look_up).read();
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
  const std::string_view replaced(copy, layout.names->replace_exact(copy, text.size()));
  return replaced == text ? read : folded_date(layout, replaced, with_place);
}

DateRead read_date_text(const DateLayout& layout, std::string_view text) noexcept {
  DateRead read;
  if (!read_plain_date(layout, text, read)) read_uncommon_date(layout, text, read);
  return read;
}

}  // namespace jwnls::library
