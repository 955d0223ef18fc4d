// The candidate patterns of date recognition: the record's three date patterns, then seventeen
// layouts, ordered by whether the locale writes the month before the day.
//
//   date   = date pattern 1 | date pattern 2 | date pattern 3 | layout     the first that reads it
//   layout = one of the patterns that date_candidates.cpp lists, in one of their two orders

#ifndef JWNLS_MODULE_READ_DATES_DATE_CANDIDATES_H_
#define JWNLS_MODULE_READ_DATES_DATE_CANDIDATES_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"
#include "module/read_dates/date_shape.h"

namespace jwnls {

/// Some of the layouts, a bit each.
using LayoutSet = std::uint32_t;

/// The built-in layouts in one of their two orders, and by what they ask of a text.
class DateLayouts {
 public:
  using Patterns = std::array<std::u16string_view, 17>;

  constexpr explicit DateLayouts(const Patterns& in_order) noexcept : patterns_(in_order) {
    for (std::size_t i = 0; i < in_order.size(); ++i) {
      const std::u16string_view pattern = in_order[i];
      const LayoutSet layout = 1u << i;
      const DateMarks marks = date_marks_of(pattern.data(), pattern.size());
      for (DateMarks held = 0; held < date_mark_sets; ++held) {
        if ((marks & ~held) == 0) readable_[held] |= layout;
        if ((marks & held) != 0) marked_[held] |= layout;
      }
      // Behind the last mark, or without any, stands the number that the layout ends with.
      const std::size_t last = pattern.find_last_of(u",-./");
      const DateMarks last_mark = last == pattern.npos ? 0 : date_mark(pattern[last]);
      for (DateMarks mark = 0; mark < date_mark_sets; ++mark) {
        if (mark == 0 || mark == last_mark) ending_[mark] |= layout;
      }
      const std::size_t name = pattern.find(u"%b");
      if (name != pattern.npos && name != 0) name_second_ |= layout;
      const char16_t letter = pattern[1];
      (letter == u'b'   ? month_name_first_
       : letter == u'a' ? weekday_first_
       : letter == u'Y' ? year_first_
                        : day_or_month_first_) |= layout;
    }
  }

  constexpr std::u16string_view pattern(int layout) const noexcept {
    return patterns_[static_cast<std::size_t>(layout)];
  }
  constexpr LayoutSet month_name_first() const noexcept { return month_name_first_; }

  /// The layouts that could read a text of that shape, in either dialect; all of it if `whole`. A
  /// number that a layout begins with has a mark right behind it; names may begin with anything.
  /// A text that ends with a mark and digits needs that mark before the layout's last number.
  LayoutSet possible(const DateShape& shape, bool whole) const noexcept {
    const std::uint32_t digits = shape.leading_digits;
    const LayoutSet by_day = digits == 1 || digits == 2 ? day_or_month_first_ : 0;
    const LayoutSet by_year = digits == 2 || digits == 4 ? year_first_ : 0;
    const LayoutSet second = shape.number_next ? ~LayoutSet{0} : name_second_;
    const LayoutSet by_number = (by_day | by_year) & marked_[shape.next] & second;
    const LayoutSet by_end = ending_[whole ? shape.last : 0];
    return readable_[shape.marks] & by_end & (by_number | month_name_first_ | weekday_first_);
  }

 private:
  Patterns patterns_;
  std::array<LayoutSet, date_mark_sets> readable_{};  // by the marks that a text holds
  std::array<LayoutSet, date_mark_sets> marked_{};    // with one of these marks
  std::array<LayoutSet, date_mark_sets> ending_{};    // with this mark as the last; 0: all
  LayoutSet name_second_ = 0;
  LayoutSet day_or_month_first_ = 0;
  LayoutSet year_first_ = 0;
  LayoutSet month_name_first_ = 0;
  LayoutSet weekday_first_ = 0;
};

/// The built-in layouts, in the order that date pattern 1 asks for.
const DateLayouts& date_layouts(std::u16string_view date_pattern_1) noexcept;

/// Offers candidates in their order to `settles` until it returns true; whether one did. Those that
/// cannot read the text, which begins with no blank, are passed over: they could not have settled
/// it. `begins_with_month` tells whether a month's name stands at its beginning; `whole` that no
/// candidate settles which leaves text behind its end.
template <typename Unit, typename Settles, typename BeginsWithMonth>
bool any_date_candidate(const LocaleRecord& record, const Unit* text, std::size_t length,
                        bool whole, Settles settles, BeginsWithMonth begins_with_month) noexcept {
  const DateShape shape = date_shape_of(text, length);
  const MarkSearch marks_missing(~shape.marks % date_mark_sets);
  for (const TextEntry& pattern : record.date_patterns) {
    if (!marks_missing.holds_any(pattern) && settles(text_of(pattern))) return true;
  }
  // The order matters to texts that begin with a day or month alone.
  const bool ordered = shape.leading_digits == 1 || shape.leading_digits == 2;
  const DateLayouts& layouts =
      date_layouts(ordered ? text_of(record.date_patterns[0]) : std::u16string_view());
  LayoutSet possible = layouts.possible(shape, whole);
  bool month_known = shape.leading_digits == 0;  // else no month's name is likely there
  for (; possible != 0; possible &= possible - 1) {
    if (!month_known && (possible & -possible & layouts.month_name_first()) != 0) {
      month_known = true;
      if (!begins_with_month()) possible &= ~layouts.month_name_first();
      if (possible == 0) break;
    }
    if (settles(layouts.pattern(std::countr_zero(possible)))) return true;
  }
  return false;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_CANDIDATES_H_
