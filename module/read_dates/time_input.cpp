// Time-of-day input: slots 34 and 85.

#include "abi/reading_modes.h"
#include "module/read_dates/date_services.h"
#include "module/read_dates/input_text.h"
#include "module/read_dates/time_recognition.h"

namespace jwnls {
namespace {

constexpr std::uint32_t mode_pattern_1 = reading_modes::time_pattern_1;
constexpr std::uint32_t mode_recognition = reading_modes::time_recognition;

// Text behind the pattern's end is left to the caller.
template <typename Unit>
bool read_by_pattern(LocaleHandle* handle, std::uint32_t mode, TextCursor<Unit>& input,
                     DateTimeParts& parts) noexcept {
  const LocaleRecord& record = *handle->record;
  const TextEntry& pattern =
      mode == mode_pattern_1 ? record.datetime_pattern : record.style_0_pattern;
  const Dialect dialect = dialect_of(mode);
  if (!walk_pattern(handle, input, text_of(pattern), dialect, parts)) return false;
  // The strict dialect has moved the hour where it met the designator.
  return dialect == Dialect::strict || apply_designator(parts);
}

}  // namespace

template <typename Unit>
std::uint32_t read_time(LocaleHandle* handle, const Unit* text, std::int64_t length,
                        std::uint32_t mode, double* value, std::uint64_t* consumed) noexcept {
  const InputText<Unit> input(text, length);
  DateTimeParts parts;
  if (mode == mode_recognition) {
    const InputText<Unit> whole = input.without_trailing_blanks();
    if (!recognize_time(handle, whole.cursor(), TimeCandidates::of_both_patterns, parts)) {
      return deliver_no_match(value, consumed);
    }
    return deliver(time_value(parts), whole.length, value, consumed);
  }
  TextCursor<Unit> cursor = input.cursor();
  if (!read_by_pattern(handle, mode, cursor, parts)) {
    *consumed = 0;
    return code(Status::no_match);
  }
  return deliver(time_value(parts), input.consumed_at(cursor), value, consumed);
}

template std::uint32_t read_time(LocaleHandle*, const char16_t*, std::int64_t, std::uint32_t,
                                 double*, std::uint64_t*) noexcept;
template std::uint32_t read_time(LocaleHandle*, const char*, std::int64_t, std::uint32_t, double*,
                                 std::uint64_t*) noexcept;

}  // namespace jwnls
