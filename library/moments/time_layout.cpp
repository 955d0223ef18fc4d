#include "library/moments/time_layout.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "library/dates/plain_date.h"
#include "library/dates/service_call.h"
#include "library/locale_data/date_characters.h"
#include "library/locale_data/pattern_parts.h"
#include "library/process/opening.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

using Parts = std::vector<PatternParts::Part>;

std::string utf8_of(std::u16string_view units) {
  std::string text(3 * units.size(), '\0');
  text.resize(to_utf8(units, text.data(), text.size()));
  return text;
}

// The form of a time pattern; false when it has another.
bool find_form(const Parts& parts, TimeLayout& layout) {
  std::string order;
  std::string literals[8];
  for (const PatternParts::Part& part : parts) {
    if (part.directive != 0) {
      order += part.directive;
    } else if (order.size() < 7) {
      literals[order.size()] = part.literal;
    }
  }
  const std::size_t first = order.substr(0, 1) == "p" ? 1 : 0;
  const std::string clock = order.substr(first, 3);
  layout.half_first = first == 1;
  layout.has_halves = clock == "IMS";
  const bool is_known = (order == "HMS" || order == "IMSp" || order == "pIMS") &&
                        literals[first + 1] == literals[first + 2] &&
                        (literals[first + 1] == ":" || literals[first + 1] == ".");
  if (!is_known || !literals[0].empty()) return false;
  layout.behind = literals[order.size()];
  layout.separator = literals[first + 1].front();
  layout.gap = literals[layout.half_first ? 1 : 3];
  return !layout.has_halves || (!layout.halves[0].empty() && !layout.halves[1].empty() &&
                                layout.halves[0] != layout.halves[1]);
}

std::optional<double> seconds_by_service(const Locale& locale, std::string_view text) {
  constexpr std::uint32_t recognition = 0x4;
  const ServiceTable& services = locale.handle->services;
  return read_by_service(locale, services.read_time_8bit, services.read_time, recognition, text);
}

// Whether the service reads the form as at_end() does: with one digit of the hour and two, with
// seconds and without, at noon and before.
bool agrees_with_service(const TimeLayout& layout) {
  for (const char* hour : {"9", "09", "12"}) {
    for (const char* rest : {"05", "05-07"}) {
      for (const std::string& half : layout.halves) {
        std::string clock = hour;
        clock.append(1, layout.separator).append(rest);
        std::replace(clock.begin(), clock.end(), '-', layout.separator);
        if (std::string_view(rest).size() > 2) clock += layout.behind;
        if (layout.has_halves && layout.half_first) clock.insert(0, layout.gap).insert(0, half);
        if (layout.has_halves && !layout.half_first) clock.append(layout.gap).append(half);
        if (!layout.has_halves && &half != layout.halves) continue;
        const QuickTime quick = layout.at_end(clock);
        const auto slow = seconds_by_service(*layout.locale, clock);
        if (quick.look != QuickTime::Look::read || quick.begin != 0 || slow != quick.seconds) {
          return false;
        }
      }
    }
  }
  return true;
}

// Chinese has more parts of the day than the two of the record; their hours overlap a little, as
// people use them, but no hour from 1 to 12 is two of a part's.
constexpr DayPart chinese_day_parts[] = {{"凌晨", 0, 5},   {"清晨", 4, 8},   {"早上", 5, 11},
                                         {"中午", 11, 13}, {"傍晚", 16, 19}, {"晚上", 17, 23}};

}  // namespace

namespace {

using Look = QuickTime::Look;
constexpr QuickTime nothing = {Look::none, 0, 0};

// "14:30:05" in the last eight bytes of a text of eight at least; false for all others.
bool take_eight_bytes(std::string_view text, QuickTime& time) noexcept {
  const std::size_t begin = text.size() - 8;
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text.data() + begin, 8);
  constexpr std::uint64_t digits = 0xFFFF00FFFF00FFFF;
  const std::uint64_t values = bytes ^ 0x30303A30303A3030;
  if ((values & ~digits) != 0 || !are_digits(values, digits)) return false;
  if (begin > 0 && is_digit(text[begin - 1])) return false;
  const std::uint64_t pairs = pairs_of(values);
  const auto hours = static_cast<std::int32_t>(pairs & 0xFF);
  const auto minutes = static_cast<std::int32_t>(pairs >> 24 & 0xFF);
  const auto seconds = static_cast<std::int32_t>(pairs >> 48 & 0xFF);
  if (hours > 23 || minutes > 59 || seconds > 59) return false;
  time = {Look::read, begin, (hours * 60 + minutes) * 60 + seconds};
  return true;
}

// Two digits in front of `end`; 100 when they are none.
std::int32_t pair_before(std::string_view text, std::size_t end) noexcept {
  const unsigned tens = static_cast<unsigned char>(text[end - 2] - '0');
  const unsigned ones = static_cast<unsigned char>(text[end - 1] - '0');
  return tens > 9 || ones > 9 ? 100 : static_cast<std::int32_t>(tens * 10 + ones);
}

// The digits at the end of a text: an hour of one digit or two, minutes, maybe seconds.
struct ClockDigits {
  std::int32_t hours = 0, minutes = 0, seconds = 0;
  std::size_t begin = 0;
  char mark = '\0';
  bool has_two = false;  // digits of the hour

  // False when there are none.
  bool take(std::string_view text) noexcept {
    std::size_t end = text.size();
    if (end < 4) return false;
    mark = text[end - 3];
    minutes = pair_before(text, end);
    end -= 3;
    if (end >= 4 && text[end - 3] == mark) {
      seconds = minutes;
      minutes = pair_before(text, end);
      end -= 3;
    }
    if (!is_digit(text[end - 1]) || minutes > 99 || seconds > 99) return false;
    has_two = end >= 2 && is_digit(text[end - 2]);
    hours = has_two ? pair_before(text, end) : text[end - 1] - '0';
    begin = end - (has_two ? 2 : 1);
    return begin == 0 || !is_digit(text[begin - 1]);
  }
  [[nodiscard]] bool is_on_clock() const noexcept { return minutes < 60 && seconds < 60; }
  [[nodiscard]] QuickTime at(std::int32_t hour, std::size_t from) const noexcept {
    return {Look::read, from, (hour * 60 + minutes) * 60 + seconds};
  }
};

// Cuts one of the halves from the end of a text, and what stands before it; -1: it has none.
int cut_half(const TimeLayout& layout, std::string_view& text, std::string_view gap_before,
             std::string_view gap_behind) noexcept {
  if (!ends_in(text, gap_behind)) return -1;
  const std::string_view front = text.substr(0, text.size() - gap_behind.size());
  for (int half = 0; half < 2; ++half) {
    const std::string& name = layout.halves[half];
    if (name.empty() || !ends_in(front, name)) continue;
    const std::string_view rest = front.substr(0, front.size() - name.size());
    if (!ends_in(rest, gap_before)) continue;
    text = rest.substr(0, rest.size() - gap_before.size());
    return half;
  }
  return -1;
}

}  // namespace

QuickTime TimeLayout::at_end(std::string_view text) const noexcept {
  int half = -1;
  if (text.size() < 4) return nothing;
  if (!is_digit(text.back())) {
    if (!is_quick) return nothing;
    if (!behind.empty() && ends_in(text, behind)) text.remove_suffix(behind.size());
    if (has_halves && !half_first) half = cut_half(*this, text, gap, {});
    if (half < 0 && (text.empty() || !is_digit(text.back()))) return nothing;
  }
  QuickTime common = nothing;
  const bool is_first = is_quick && half_first;
  if (!is_first && half < 0 && text.size() >= 8 && take_eight_bytes(text, common)) return common;
  ClockDigits clock;
  if (!clock.take(text) || (clock.mark != ':' && (clock.mark != separator || !is_quick))) {
    return nothing;
  }
  std::string_view front = text.substr(0, clock.begin);
  if (is_first) {
    for (const DayPart& part : day_parts) {
      if (!ends_in(front, part.name)) continue;
      const std::int32_t morning = clock.hours % 12;
      const bool in_morning = morning >= part.first && morning <= part.last;
      const bool later = morning + 12 >= part.first && morning + 12 <= part.last;
      if (clock.hours < 1 || clock.hours > 12 || !clock.is_on_clock() || in_morning == later) {
        return nothing;
      }
      return clock.at(in_morning ? morning : morning + 12, front.size() - part.name.size());
    }
    half = cut_half(*this, front, {}, gap);
  }
  if (half >= 0) {
    if (clock.mark != separator || clock.hours < 1 || clock.hours > 12 || !clock.is_on_clock()) {
      return nothing;
    }
    return clock.at(clock.hours % 12 + 12 * half, front.size());
  }
  // Of 24 hours: every locale reads two digits and ":", its own form where it has no halves.
  const bool is_common = clock.mark == ':' && clock.has_two;
  if (!is_common && (!is_quick || has_halves || clock.mark != separator)) return nothing;
  if (clock.hours > 23 || !clock.is_on_clock()) {
    return {is_clock ? Look::no_such_time : Look::none, clock.begin, 0};
  }
  return clock.at(clock.hours, clock.begin);
}

namespace {

std::unique_ptr<const TimeLayout> make_time_layout(const Locale& locale) {
  auto layout = std::make_unique<TimeLayout>();
  const LocaleRecord& record = *locale.record;
  layout->locale = &locale;
  layout->halves[0] = utf8_of(text_of(record.before_noon));
  layout->halves[1] = utf8_of(text_of(record.after_noon));
  layout->shape = TimeShape(record);
  if (locale.name.starts_with("zh") || locale.name.starts_with("yue")) {
    layout->day_parts = chinese_day_parts;
  }
  if (find_form(PatternParts(utf8_of(text_of(record.style_0_pattern))).parts, *layout)) {
    layout->is_clock = layout->shape.is_known();
    layout->is_quick = true;
    layout->is_quick = agrees_with_service(*layout);
  }
  return layout;
}

}  // namespace

const TimeLayout& time_layout_of(const Locale& locale) {
  // Never destroyed, as the locales.
  using Known = std::map<const Locale*, std::unique_ptr<const TimeLayout>>;
  static Known& known = *new Known;
  const Opening opening;
  std::unique_ptr<const TimeLayout>& layout = known[&locale];
  if (layout == nullptr) layout = make_time_layout(locale);
  return *layout;
}

}  // namespace jwnls::library
