// Date or datetime input: slots 32 and 83.
//
//   text     = ( date | datetime ) blanks
//   date     = a date pattern of the record (modes 1 to 3) | a candidate (mode 0,
//   date_candidates.h) datetime = time pattern 1 | date | date blanks [ "T" | "t" | "," | ":" ]
//   blanks time time     = see time_recognition.h

#include "abi/reading_modes.h"
#include "module/calendar/datetime_value.h"
#include "module/read_dates/date_candidates.h"
#include "module/read_dates/date_services.h"
#include "module/read_dates/input_text.h"
#include "module/read_dates/time_recognition.h"

namespace jwnls {
namespace {

constexpr std::uint32_t pattern_bits = reading_modes::pattern;
constexpr std::uint32_t datetime_bit = reading_modes::datetime;

// The day that the parts make; false when there is no such date.
[[gnu::always_inline]] inline bool day_of_parts(const DateTimeParts& parts,
                                                std::int32_t& day) noexcept {
  CivilDate date;
  if (!make_date(parts.month, parts.day, parts.year, default_year_cutoff, date)) return false;
  day = day_from_civil(date);
  return true;
}

// Everything but a date by one pattern.
template <typename Unit>
class DateReading {
 public:
  /// `text` has no trailing blanks.
  DateReading(LocaleHandle* handle, const InputText<Unit>& text, std::uint32_t mode) noexcept
      : handle_(handle), text_(text), mode_(mode), dialect_(dialect_of(mode)) {}

  /// True when the text is a date, or with it a time; value() and consumed() then tell which.
  bool run() noexcept { return (by_datetime_pattern() || by_date_pattern()) && is_date_; }

  double value() const noexcept { return value_; }
  std::uint64_t consumed() const noexcept { return consumed_; }

 private:
  bool wants_datetime() const noexcept { return (mode_ & datetime_bit) != 0; }

  // Date and time joined as the locale joins them.
  bool by_datetime_pattern() noexcept {
    if (!wants_datetime()) return false;
    TextCursor<Unit> input = text_.cursor();
    DateTimeParts parts;
    const std::u16string_view pattern = text_of(handle_->record->datetime_pattern);
    if (!walk_pattern(handle_, input, pattern, dialect_, parts) || !input.at_end()) return false;
    const bool designator_fits = dialect_ == Dialect::strict || apply_designator(parts);
    settle(parts, time_value(parts), input);
    is_date_ = is_date_ && designator_fits;
    return true;
  }

  bool by_date_pattern() noexcept {
    const LocaleRecord& record = *handle_->record;
    const std::uint32_t number = mode_ & pattern_bits;
    if (number != 0) return settled_by(text_of(record.date_patterns[number - 1]));
    TextCursor<Unit> start = text_.cursor();
    start.skip_blanks();
    return any_date_candidate(
        record, start.position(), start.remaining(), !wants_datetime(),
        [this](std::u16string_view candidate) noexcept { return settled_by(candidate); },
        [this, start]() noexcept {
          TextCursor<Unit> input = start;
          DateTimeParts parts;
          return walk_pattern(handle_, input, u"%b", dialect_, parts);
        });
  }

  // Tries one pattern. Once it reads what it must, it decides, even when its parts are no date.
  bool settled_by(std::u16string_view pattern) noexcept {
    TextCursor<Unit> input = text_.cursor();
    DateTimeParts parts;
    if (!walk_pattern(handle_, input, pattern, dialect_, parts)) return false;
    double seconds = 0;
    if (!input.at_end() && (!wants_datetime() || !read_rest_as_time(input, seconds))) return false;
    settle(parts, seconds, input);
    return true;
  }

  // Blanks, one mark, blanks and a time of day, to the end of the text.
  bool read_rest_as_time(TextCursor<Unit>& input, double& seconds) noexcept {
    input.skip_blanks();
    for (const char mark : {'T', 't', ',', ':'}) {
      if (input.skip(mark)) break;
    }
    DateTimeParts time;
    if (!recognize_time(handle_, input, TimeCandidates::of_time_alone, time)) return false;
    seconds = time_value(time);
    input.skip_all();
    return true;
  }

  void settle(const DateTimeParts& parts, double seconds, const TextCursor<Unit>& end) noexcept {
    std::int32_t day = 0;
    is_date_ = day_of_parts(parts, day);
    value_ = wants_datetime() ? static_cast<double>(day) * seconds_per_day + seconds : day;
    consumed_ = text_.consumed_at(end);
  }

  LocaleHandle* handle_;
  const InputText<Unit>& text_;
  std::uint32_t mode_;
  Dialect dialect_;
  bool is_date_ = false;
  double value_ = 0;
  std::uint64_t consumed_ = 0;
};

// The text has no trailing blanks.
template <typename Unit>
[[gnu::noinline]] std::uint32_t read_date_or_datetime(LocaleHandle* handle, const Unit* text,
                                                      std::int64_t length, std::uint32_t mode,
                                                      double* value,
                                                      std::uint64_t* consumed) noexcept {
  const InputText<Unit> whole(text, length);
  DateReading<Unit> reading(handle, whole, mode);
  if (!reading.run()) return deliver_no_match(value, consumed);
  return deliver(reading.value(), reading.consumed(), value, consumed);
}

}  // namespace

template <typename Unit>
std::uint32_t read_date(LocaleHandle* handle, const Unit* text, std::int64_t length,
                        std::uint32_t mode, double* value, std::uint64_t* consumed) noexcept {
  const InputText<Unit> whole = InputText<Unit>(text, length).without_trailing_blanks();
  const std::uint32_t number = mode & pattern_bits;
  if (number == 0 || (mode & datetime_bit) != 0) {
    return read_date_or_datetime(handle, text, static_cast<std::int64_t>(whole.length), mode, value,
                                 consumed);
  }
  TextCursor<Unit> input = whole.cursor();
  DateTimeParts parts;
  const std::u16string_view pattern = text_of(handle->record->date_patterns[number - 1]);
  std::int32_t day = 0;
  if (!walk_pattern(handle, input, pattern, dialect_of(mode), parts) || !day_of_parts(parts, day)) {
    return deliver_no_match(value, consumed);
  }
  return deliver(day, whole.consumed_at(input), value, consumed);
}

template std::uint32_t read_date(LocaleHandle*, const char16_t*, std::int64_t, std::uint32_t,
                                 double*, std::uint64_t*) noexcept;
template std::uint32_t read_date(LocaleHandle*, const char*, std::int64_t, std::uint32_t, double*,
                                 std::uint64_t*) noexcept;

}  // namespace jwnls
