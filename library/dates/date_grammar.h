// The text of a date taken apart and put together: one order a layout.
//
//   date    = [ weekday [ "." ] [ "," ] ] fields [ [ "," ] [ "(" ] weekday [ ")" ] ] [ "." ]
//   fields  = number gap number gap number     year of four digits first: year month day, always;
//                                              else by the layout's order
//           | day name year | name day year | year name day | year day name
//           | eight digits                     year month day
//   gap     = twice the same of "." "-" "/" and blank, or the marks of one of the locale's patterns
//
// A year has four digits or two, a day one or two, with an ordinal behind it in some languages. The
// parts have to be a date of the calendar, a weekday has to be that date's. Names and words are
// looked up by the caller's way: the quick one, or the one that knows every form.

#ifndef JWNLS_LIBRARY_DATES_DATE_GRAMMAR_H_
#define JWNLS_LIBRARY_DATES_DATE_GRAMMAR_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_layout.h"
#include "library/dates/date_names.h"
#include "library/dates/date_order.h"
#include "library/dates/date_parts.h"
#include "library/locale_data/date_characters.h"

namespace jwnls::library {

/// A word that was looked up: its bytes in the text, its folded form, what it means if anything.
struct Word {
  std::size_t size;  // 0: the way of looking up cannot tell
  std::string_view folded;
  const NameMeaning* meaning;
};

/// Reads a trimmed text with its numbers. `look_up(std::string_view rest)` gives the Word that a
/// rest begins with.
template <typename LookUp>
class DateGrammar {
 public:
  DateGrammar(const DateLayout& layout, std::string_view text, const Numbers& numbers,
              LookUp& look_up) noexcept
      : layout_(layout),
        text_(text),
        look_up_(look_up),
        numbers_(numbers),
        order_(layout, numbers_, text.size(), read_) {}

  DateRead read() noexcept {
    switch (numbers_.count) {
      case 0:
        refuse(Refusal::no_date, 0);
        break;
      case 1:
        read_eight_digits();
        break;
      case 2:
        read_with_name();
        break;
      case 3:
        read_numbers();
        break;
      default:
        refuse(Refusal::too_many, numbers_.number[2].end);
    }
    return read_;
  }

 private:
  using Number = Numbers::Number;

  bool refuse(Refusal refusal, std::size_t place) noexcept { return order_.refuse(refusal, place); }

  // Where the piece in front of a number begins, and ends.
  [[nodiscard]] std::size_t begin_of(std::size_t piece) const noexcept {
    return piece == 0 ? 0 : numbers_.number[piece - 1].end;
  }
  [[nodiscard]] std::size_t end_of(std::size_t piece) const noexcept {
    return piece == numbers_.count ? text_.size() : numbers_.number[piece].begin;
  }
  [[nodiscard]] std::string_view piece(std::size_t index) const noexcept {
    return text_.substr(begin_of(index), end_of(index) - begin_of(index));
  }

  bool read_piece(std::size_t index) noexcept {
    return read_piece(index, begin_of(index), end_of(index));
  }
  bool read_piece(std::size_t index, std::size_t at, std::size_t end) noexcept;
  bool take_word(std::size_t index, std::size_t& at, std::size_t end) noexcept;
  bool is_ordinal(std::size_t index, std::size_t at, std::string_view folded) const noexcept;

  bool marks_fit(std::size_t& lead_end, std::size_t& tail_begin) noexcept;
  void read_eight_digits() noexcept;
  void read_numbers() noexcept;
  void read_with_name() noexcept;
  bool find_weekday_alone() noexcept;

  const DateLayout& layout_;
  const std::string_view text_;
  LookUp& look_up_;
  const Numbers& numbers_;
  FoundNames found_;
  const OwnMarks* words_ = nullptr;  // marks that are words, which say what each number is
  std::int32_t weekday_ = 0;
  std::size_t weekday_place_ = 0;
  DateRead read_;
  DateOrder order_;
};

// Words, marks and blanks of a piece. A dot stands directly behind what it ends; "-" and "/" stand
// between numbers and names, parentheses around a weekday or an ending.
template <typename LookUp>
bool DateGrammar<LookUp>::read_piece(std::size_t index, std::size_t at, std::size_t end) noexcept {
  const bool is_last = index == numbers_.count;
  char before = index == 0 ? '\0' : '0';  // the last that was no blank: 'a' for a word
  bool is_open = false;
  bool is_apart = false;  // a blank stands before
  for (; at < end; ++at) {
    const char each = text_[at];
    if (is_blank(each)) {
      is_apart = true;
      continue;
    }
    if (is_no_break_blank(text_.substr(at))) {
      is_apart = true;
      ++at;
      continue;
    }
    const bool was_apart = std::exchange(is_apart, false);
    if (is_letter(each) || each == '\'') {
      if (!take_word(index, at, end)) return false;
      before = before == '(' ? ')' : 'a';
      continue;
    }
    bool fits = false;
    if (each == '.') {
      fits = (before == '0' || before == 'a') && !was_apart;
    } else if (each == ',') {
      fits = before == '0' || before == 'a' || before == '.';
    } else if (each == '-' || each == '/') {
      const bool between = index > 0 && !is_last;
      const bool touches = before == '0' && at == begin_of(index) && index > 0 && at + 1 < end &&
                           is_letter(text_[at + 1]);
      fits = touches || (between && (before == '0' || before == 'a' || before == '.'));
    } else if (each == '(') {
      fits = before != '\0' && !is_open;
      is_open = true;
    } else if (each == ')') {
      fits = is_open && before == ')';
      is_open = false;
    }
    if (!fits) return refuse(Refusal::unknown_word, at);
    before = each == ')' ? 'a' : each == '.' && before == '(' ? ')' : each;
  }
  if (is_open || (is_last && before == ',')) return refuse(Refusal::unknown_word, at);
  return true;
}

// Leaves `at` on the last byte of the word.
template <typename LookUp>
bool DateGrammar<LookUp>::take_word(std::size_t index, std::size_t& at, std::size_t end) noexcept {
  const Word word = look_up_(text_.substr(at, end - at));
  if (word.size == 0) return refuse(Refusal::undecided, at);
  const bool is_name = word.meaning != nullptr && word.meaning->is_name();
  if (is_name) {
    if (found_.count == 2) return refuse(Refusal::two_names, at);
    if (word.meaning->two_months) return refuse(Refusal::two_months, at);
    found_.name[found_.count++] = {word.meaning, index, at};
  } else if (word.meaning == nullptr && !is_ordinal(index, at, word.folded)) {
    return refuse(Refusal::unknown_word, at);
  }
  at += word.size - 1;
  return true;
}

// Directly behind a number of one or two digits; "1st".
template <typename LookUp>
bool DateGrammar<LookUp>::is_ordinal(std::size_t index, std::size_t at,
                                     std::string_view folded) const noexcept {
  return index > 0 && at == begin_of(index) && numbers_.number[index - 1].digits() <= 2 &&
         layout_.is_ordinal(folded);
}

// What stands between three numbers; of the locale's own marks those before and behind are cut.
template <typename LookUp>
bool DateGrammar<LookUp>::marks_fit(std::size_t& lead_end, std::size_t& tail_begin) noexcept {
  const char mark = only_mark(piece(1));
  if (mark != '\0' && mark == only_mark(piece(2))) return true;
  for (const OwnMarks& own : layout_.own_marks) {
    if (!same_marks(piece(1), own.first_gap) || !same_marks(piece(2), own.second_gap)) continue;
    if (own.has_words) words_ = &own;
    const std::string_view lead = piece(0);
    if (!own.lead.empty() && same_marks(lead, own.lead)) lead_end = 0;
    std::size_t begin = tail_begin;
    while (begin < text_.size() && is_blank(text_[begin])) ++begin;
    if (text_.substr(begin, own.tail.size()) == own.tail) tail_begin = begin + own.tail.size();
    return true;
  }
  return false;
}

template <typename LookUp>
void DateGrammar<LookUp>::read_numbers() noexcept {
  std::size_t lead_end = end_of(0);
  std::size_t tail_begin = begin_of(3);
  if (!marks_fit(lead_end, tail_begin)) {
    refuse(
        look_up_.knows(piece(1)) && look_up_.knows(piece(2)) ? Refusal::marks : Refusal::undecided,
        begin_of(1));
    return;
  }
  CivilDate date;
  if ((lead_end != 0 && !read_piece(0, 0, lead_end)) ||
      (tail_begin != text_.size() && !read_piece(3, tail_begin, text_.size())) ||
      !find_weekday_alone() || !order_.place_numbers(words_, date)) {
    return;
  }
  order_.finish(date, weekday_, weekday_place_);
}

template <typename LookUp>
void DateGrammar<LookUp>::read_eight_digits() noexcept {
  const Number& number = numbers_.number[0];
  if (number.digits() != 8) {
    refuse(number.digits() > 4 ? Refusal::digits : Refusal::no_date, number.end);
    return;
  }
  if (read_piece(0) && read_piece(1) && find_weekday_alone()) {
    order_.finish({number.value / 10000, number.value / 100 % 100, number.value % 100}, weekday_,
                  weekday_place_);
  }
}

// Beside three numbers only a weekday may stand.
template <typename LookUp>
bool DateGrammar<LookUp>::find_weekday_alone() noexcept {
  if (found_.count == 0) return true;
  const FoundNames::Name& name = found_.name[0];
  if (found_.count > 1) return refuse(Refusal::two_names, found_.name[1].place);
  if (name.meaning->weekday == 0) return refuse(Refusal::two_names, name.place);
  weekday_ = name.meaning->weekday;
  weekday_place_ = name.place;
  return true;
}

template <typename LookUp>
void DateGrammar<LookUp>::read_with_name() noexcept {
  if (read_piece(0) && read_piece(1) && read_piece(2)) order_.finish_named(found_);
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_GRAMMAR_H_
