// The dates that are tried while a date and a time are told apart.

#ifndef JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_
#define JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "library/dates/date_shape.h"
#include "library/dates/date_text.h"
#include "library/locale_data/number_runs.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {

/// The dates that are tried of one text, at several places. What is certainly none, or was none
/// before, is not looked at again.
class DateTries {
 public:
  explicit DateTries(bool with_place) noexcept : with_place_(with_place) {}

  [[nodiscard]] bool with_place() const noexcept { return with_place_; }

  // Whether no character of the text that is tried folds to a digit, a blank or nothing.
  [[nodiscard]] bool folds_nothing() const noexcept { return folds_nothing_; }

  // Another text is tried from here on. Whether its numbers are those that a date has.
  bool begin(const DateLayout& layout, std::string_view text, const NumberRuns& numbers) noexcept {
    folds_nothing_ = is_ascii(text) || folds_no_digits(text);
    is_known_ = folds_nothing_ && has_no_numbered(layout, text);
    if (is_known_) {
      has_eight_ = numbers.count > 0 && numbers.run[0].digits() == 8;
      first_ = numbers.count > 0 ? numbers.run[0].begin : text.size();
      second_ = numbers.count > 1 ? numbers.run[1].begin : text.size();
    }
    return is_known_;
  }

  // Whether what stands before `at` has too few numbers for a date.
  [[nodiscard]] bool is_hopeless_before(std::size_t at) const noexcept {
    return is_known_ && (first_ >= at || (second_ >= at && !has_eight_));
  }

  DateRead read(const DateLayout& layout, std::string_view text) noexcept {
    DateRead date;
    date.refusal = Refusal::no_date;
    const auto is_text = [text](std::string_view each) {
      return each.data() == text.data() && each.size() == text.size();
    };
    if (std::any_of(std::begin(refused_), std::end(refused_), is_text)) return date;
    date = quick_date(layout, text);
    if (date.refusal == Refusal::undecided) {
      if (text.size() > bytes_) {
        date.refusal = Refusal::no_date;
      } else {
        bytes_ -= text.size();
        date = full_date(layout, text);
      }
    }
    if (date.refusal != Refusal::none) add_refused(text);
    return date;
  }
  void add_refused(std::string_view date) noexcept {
    refused_[refusals_++ % std::size(refused_)] = date;
  }

  // The refusal of a date, with its place if that is asked for.
  [[nodiscard]] DateRead placed(const DateLayout& layout, std::string_view text,
                                const DateRead& refused) const noexcept {
    if (!with_place_) return refused;
    const DateRead quick = quick_date(layout, text, true);
    return quick.refusal == Refusal::undecided ? full_date(layout, text) : quick;
  }

 private:
  bool with_place_;
  bool folds_nothing_ = false;
  bool is_known_ = false;
  bool has_eight_ = false;              // digits in the first number
  std::size_t first_ = 0, second_ = 0;  // where the first two numbers begin
  std::string_view refused_[4];
  std::size_t refusals_ = 0;
  // That the full way may still look at, so that no text takes long in which a time could begin at
  // many places. Texts that are read take a few dozen a place.
  std::size_t bytes_ = 1200;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_
