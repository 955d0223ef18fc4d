#include "module/host_calls/year_cutoff.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "module/host_calls/kernel_handle.h"

namespace jwnls {
namespace {

constexpr std::u16string_view option_name = u"JW_NAME_YEARCUTOFF";
static_assert(option_name.size() == 18);

// The kernel is asked only where a conversion will widen; calendar.h judges the year itself.
CalendarScratch scratch_for_year(double year) noexcept {
  CalendarScratch scratch = initial_scratch;
  if (year >= 0 && year <= 99) scratch.year_cutoff = year_cutoff_option();
  return scratch;
}

CalendarScratch scratch_for_julian(double julian) noexcept {
  CalendarScratch scratch = initial_scratch;
  constexpr double end_of_two_digit_years = 100000;
  if (julian >= 1 && julian < end_of_two_digit_years) scratch.year_cutoff = year_cutoff_option();
  return scratch;
}

}  // namespace

std::int32_t year_cutoff_option() noexcept {
  std::int64_t value = default_year_cutoff;
  std::int64_t size = sizeof value;
  // The status says nothing that the slot does not: it keeps the default unless it is filled.
  if (Kernel* kernel = kernel_handle(); kernel != nullptr) {
    (void)kernel->read_option(kernel, option_name.data(),
                              static_cast<std::int64_t>(option_name.size()), integer_option, &value,
                              &size);
  }
  using Cutoff = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Cutoff::min(), Cutoff::max()));
}

double parts_to_date_value(double year, double month, double day) noexcept {
  CalendarScratch scratch = scratch_for_year(year);
  return date_parts_to_date_value(month, day, year, scratch);
}

double parts_to_julian(double year, double month, double day) noexcept {
  CalendarScratch scratch = scratch_for_year(year);
  return date_parts_to_julian(month, day, year, scratch);
}

double julian_to_date_value(double julian) noexcept {
  CalendarScratch scratch = scratch_for_julian(julian);
  return julian_to_date_value(julian, scratch);
}

int julian_to_date_parts(double julian, double& year, double& month, double& day) noexcept {
  CalendarScratch scratch = scratch_for_julian(julian);
  return julian_to_date_parts(julian, scratch, year, month, day);
}

}  // namespace jwnls
