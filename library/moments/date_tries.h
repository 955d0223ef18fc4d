// The dates that are tried while a date and a time are told apart.

#ifndef JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_
#define JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "library/dates/date_shape.h"
#include "library/dates/date_text.h"
#include "library/dates/text_outline.h"

namespace jwnls::library {

/// The dates that are tried of one text, at several places. What is certainly none, or was none
/// before, is not looked at again.
class DateTries {
 public:
  explicit DateTries(bool with_place) noexcept : with_place_(with_place) {}

  [[nodiscard]] bool with_place() const noexcept { return with_place_; }

  // Another text is tried from here on.
  void begin(const DateLayout& layout, std::string_view text) noexcept {
    is_known_ = keeps_its_numbers(layout, text);
    if (is_known_) numbers_ = numbers_of(text);
  }

  // Whether what stands before `at` has too few numbers for a date.
  [[nodiscard]] bool is_hopeless_before(std::size_t at) const noexcept {
    if (!is_known_) return false;
    const auto& number = numbers_.number;
    const bool has_one = numbers_.count > 0 && number[0].begin < at;
    const bool has_two = numbers_.count > 1 && number[1].begin < at;
    return !has_one || (!has_two && number[0].digits() != 8);
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
  bool is_known_ = false;
  Numbers numbers_;
  std::string_view refused_[4];
  std::size_t refusals_ = 0;
  // That the full way may still look at, so that no text takes long in which a time could begin at
  // many places. Texts that are read take a few dozen a place.
  std::size_t bytes_ = 1200;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_DATE_TRIES_H_
