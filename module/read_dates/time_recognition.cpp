#include "module/read_dates/time_recognition.h"

#include <algorithm>

namespace jwnls {
namespace {

constexpr std::size_t not_found = std::u16string_view::npos;
constexpr std::u16string_view designator = u"%p";
constexpr std::u16string_view common_candidates[] = {u"%H:%M:%S", u"%H:%M:%SZ"};

// A pattern made of two pieces of another, held in the frame.
class JoinedPattern {
 public:
  JoinedPattern(std::u16string_view head, std::u16string_view tail) noexcept
      : length_(head.size() + tail.size()) {
    if (!fits()) return;
    std::copy(tail.begin(), tail.end(), std::copy(head.begin(), head.end(), units_));
  }
  bool fits() const noexcept { return length_ <= text_entry_capacity; }
  std::u16string_view text() const noexcept { return {units_, length_}; }

 private:
  char16_t units_[text_entry_capacity];
  std::size_t length_;
};

enum class Outcome : std::uint8_t { no_match, read, contradiction };

// Tries candidates in order, until one settles the outcome.
template <typename Unit>
class TimeRecognition {
 public:
  TimeRecognition(LocaleHandle* handle, TextCursor<Unit> text, DateTimeParts& parts) noexcept
      : handle_(handle), text_(text), parts_(parts) {}

  bool run(TimeCandidates candidates) noexcept {
    const std::u16string_view pattern_2 = text_of(handle_->record->style_0_pattern);
    const std::u16string_view pattern_1 = text_of(handle_->record->datetime_pattern);
    const bool both = candidates == TimeCandidates::of_both_patterns;
    const bool settled = settles(pattern_2) || (both && settles(pattern_1)) ||
                         settles(common_candidates[0]) || settles(common_candidates[1]) ||
                         shortened_settle(pattern_2) || (both && cut_settle(pattern_1));
    return settled && outcome_ == Outcome::read;
  }

 private:
  bool settles(std::u16string_view candidate) noexcept {
    TextCursor<Unit> input = text_;
    if (!walk_pattern_in<Dialect::lenient>(handle_, input, candidate, parts_) || !input.at_end()) {
      return false;
    }
    outcome_ = apply_designator(parts_) ? Outcome::read : Outcome::contradiction;
    return true;
  }

  bool joined_settles(std::u16string_view head, std::u16string_view tail) noexcept {
    const JoinedPattern candidate(head, tail);
    return candidate.fits() && settles(candidate.text());
  }

  // Time pattern 2 without its seconds: with the separator before them and without it, the
  // designator as a person would write it then, or none.
  bool shortened_settle(std::u16string_view pattern) noexcept {
    const std::size_t minutes = pattern.find(u"%M");
    const std::size_t seconds = pattern.find(u"%S");
    if (minutes == not_found || seconds == not_found) return false;
    const std::u16string_view after_minutes = pattern.substr(0, minutes + 2);
    const std::u16string_view before_seconds = pattern.substr(0, seconds);
    const std::size_t at = pattern.find(designator);
    if (at != not_found) {
      const bool settled = at > minutes ? joined_settles(after_minutes, u" %p") ||
                                              joined_settles(before_seconds, u" %p")
                                        : without_designator_settles(after_minutes, at) ||
                                              without_designator_settles(before_seconds, at);
      if (settled) return true;
    }
    return settles(after_minutes) || settles(before_seconds);
  }

  bool without_designator_settles(std::u16string_view pattern, std::size_t at) noexcept {
    if (at >= pattern.size()) return settles(pattern);  // the cut has taken it already
    return joined_settles(pattern.substr(0, at), pattern.substr(at + designator.size()));
  }

  // Time pattern 1 up to its minutes, and up to its seconds.
  bool cut_settle(std::u16string_view pattern) noexcept {
    std::size_t minutes_end = pattern.find(u"%M");
    if (minutes_end != not_found) {
      minutes_end += 2;
    } else if (minutes_end = pattern.find(u"%#M"); minutes_end != not_found) {
      minutes_end += 3;
    }
    const std::size_t seconds = pattern.find(u"%S");
    if (minutes_end == not_found || seconds == not_found) return false;
    return settles(pattern.substr(0, minutes_end)) || settles(pattern.substr(0, seconds));
  }

  LocaleHandle* handle_;
  TextCursor<Unit> text_;
  DateTimeParts& parts_;
  Outcome outcome_ = Outcome::no_match;
};

}  // namespace

bool apply_designator(DateTimeParts& parts) noexcept {
  if (parts.designator == no_designator) return true;
  if (parts.hour > 12) return false;
  if (parts.designator == before_noon_designator) {
    if (parts.hour == 12) parts.hour = 0;
    return true;
  }
  if (parts.hour == 0) return false;
  if (parts.hour < 12) parts.hour += 12;
  return true;
}

template <typename Unit>
bool recognize_time(LocaleHandle* handle, TextCursor<Unit> text, TimeCandidates candidates,
                    DateTimeParts& parts) noexcept {
  return TimeRecognition<Unit>(handle, text, parts).run(candidates);
}

template bool recognize_time(LocaleHandle*, TextCursor<char16_t>, TimeCandidates,
                             DateTimeParts&) noexcept;
template bool recognize_time(LocaleHandle*, TextCursor<char>, TimeCandidates,
                             DateTimeParts&) noexcept;

}  // namespace jwnls
