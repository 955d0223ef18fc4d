// The calls that read dates, periods, times, datetimes and instants.

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/dates/plain_date.h"
#include "library/dates/usual_date.h"
#include "library/layouts/layout.h"
#include "library/moments/moment_text.h"
#include "library/moments/reading.h"
#include "library/texts/utf8.h"

namespace jwnls::library {

int code_of(Refusal refusal) noexcept {
  switch (refusal) {
    case Refusal::none:
      return JWNLS_OK;
    case Refusal::blank:
      return JWNLS_MISSING;
    case Refusal::years:
    case Refusal::range:
      return JWNLS_RANGE;
    default:
      return JWNLS_UNREAD;
  }
}

bool is_missing_text(const jwnls_layout& layout, std::string_view text) noexcept {
  if (text.empty()) return true;
  if (layout.options.missing != missing_module || text.front() != '.') return false;
  return text.size() == 1 ||
         (text.size() == 2 && (text[1] == '_' || (is_letter(text[1]) && is_ascii(text[1]))));
}

}  // namespace jwnls::library

namespace {

using jwnls::library::by_services;
using jwnls::library::code_of;
using jwnls::library::DateRead;
using jwnls::library::has_usual_dates;
using jwnls::library::is_blank_text;
using jwnls::library::MomentRead;
using jwnls::library::read_plain_date;
using jwnls::library::read_uncommon_date;
using jwnls::library::read_usual_days;
using jwnls::library::Refusal;
using jwnls::library::trimmed;

constexpr unsigned bit(int kind) { return 1U << static_cast<unsigned>(kind); }

// Checks what every reading call checks, and reads the trimmed text: read(text, value, facts).
template <typename Value, typename Read>
int read_checked(const jwnls_layout* layout, unsigned kinds, std::string_view text, Value* value,
                 std::uint8_t* facts, Read read) noexcept {
  *value = 0;
  if (facts != nullptr) *facts = 0;
  if ((bit(layout->kind) & kinds) == 0) return JWNLS_KIND;
  if (text.size() > jwnls::library::longest_text) return JWNLS_UNREAD;
  text = trimmed(text);
  if (jwnls::library::is_missing_text(*layout, text)) return JWNLS_MISSING;
  return read(text);
}

template <typename Value>
int read_loosely(const jwnls_layout* layout, std::string_view text, Value* value) noexcept {
  const auto loose = jwnls::library::read_loosely(*layout, text);
  if (!loose) return is_blank_text(text) ? JWNLS_MISSING : JWNLS_UNREAD;
  *value = static_cast<Value>(*loose);
  return JWNLS_OK;
}

// All texts but those of read_usual_date().
[[gnu::noinline]] int read_other_date(const jwnls_layout* layout, std::string_view text,
                                      std::int32_t* days, std::uint8_t* facts) noexcept {
  *days = 0;
  if (facts != nullptr) *facts = 0;
  if (has_usual_dates(*layout)) [[likely]] {
    if (text.size() > jwnls::library::longest_text) return JWNLS_UNREAD;
    text = trimmed(text);
    DateRead read;
    if (!read_plain_date(*layout->dates, text, read)) {
      if (jwnls::library::is_missing_text(*layout, text)) return JWNLS_MISSING;
      read_uncommon_date(*layout->dates, text, read);
    }
    if (read.refusal != Refusal::none) return code_of(read.refusal);
    *days = jwnls::library::since_1970(jwnls::day_from_civil(read.date));
    if (facts != nullptr) *facts = read.facts;
    return JWNLS_OK;
  }
  return read_checked(layout, bit(JWNLS_DATE) | bit(JWNLS_PERIOD), text, days, facts,
                      [=](std::string_view inner) { return read_loosely(layout, inner, days); });
}

int read_date(const jwnls_layout* layout, std::string_view text, std::int32_t* days,
              std::uint8_t* facts) noexcept {
  std::uint8_t found = 0;
  if (has_usual_dates(*layout) && read_usual_days(*layout, text.data(), text.size(), days, found))
      [[likely]] {
    if (facts != nullptr) *facts = found;
    return JWNLS_OK;
  }
  return read_other_date(layout, text, days, facts);
}

int read_datetime(const jwnls_layout* layout, std::string_view text, std::int64_t* microseconds,
                  std::uint8_t* facts) noexcept {
  return read_checked(layout, bit(JWNLS_DATETIME) | bit(JWNLS_INSTANT), text, microseconds, facts,
                      [=](std::string_view inner) -> int {
                        if (by_services(*layout)) return read_loosely(layout, inner, microseconds);
                        const MomentRead read = jwnls::library::read_moment_text(*layout, inner);
                        if (read.date.refusal != Refusal::none) return code_of(read.date.refusal);
                        *microseconds = read.microseconds;
                        if (facts != nullptr) *facts = read.date.facts;
                        return JWNLS_OK;
                      });
}

int read_time(const jwnls_layout* layout, std::string_view text, std::int64_t* microseconds,
              std::uint8_t* facts) noexcept {
  return read_checked(layout, bit(JWNLS_TIME), text, microseconds, facts,
                      [=](std::string_view inner) -> int {
                        const auto time = jwnls::library::read_time_text(*layout->times, inner);
                        if (!time) return is_blank_text(inner) ? JWNLS_MISSING : JWNLS_UNREAD;
                        *microseconds = *time;
                        return JWNLS_OK;
                      });
}

// UTF-16 as UTF-8, cut behind what is looked at; halves of characters become U+FFFD, which no date
// has.
class Narrowed {
 public:
  Narrowed(const jwnls_unit* text, std::size_t length) noexcept {
    const std::size_t units = length < sizeof bytes_ ? length : sizeof bytes_;
    // More than are looked at where they do not fit.
    size_ = std::min(jwnls::library::to_utf8({text, units}, bytes_, sizeof bytes_), sizeof bytes_);
  }
  [[nodiscard]] std::string_view text() const noexcept { return {bytes_, size_}; }

 private:
  char bytes_[3 * (jwnls::library::longest_text + 1)];
  std::size_t size_;
};

}  // namespace

extern "C" {

int jwnls_read_date(JWNLS_READ, int32_t* days, uint8_t* facts) {
  return read_date(layout, {text, length}, days, facts);
}
int jwnls_read_datetime(JWNLS_READ, int64_t* microseconds, uint8_t* facts) {
  return read_datetime(layout, {text, length}, microseconds, facts);
}
int jwnls_read_time(JWNLS_READ, int64_t* microseconds, uint8_t* facts) {
  return read_time(layout, {text, length}, microseconds, facts);
}
int jwnls_read_date_utf16(JWNLS_READ_UTF16, int32_t* days, uint8_t* facts) {
  return read_date(layout, Narrowed(text, length).text(), days, facts);
}
int jwnls_read_datetime_utf16(JWNLS_READ_UTF16, int64_t* microseconds, uint8_t* facts) {
  return read_datetime(layout, Narrowed(text, length).text(), microseconds, facts);
}
int jwnls_read_time_utf16(JWNLS_READ_UTF16, int64_t* microseconds, uint8_t* facts) {
  return read_time(layout, Narrowed(text, length).text(), microseconds, facts);
}

}  // extern "C"
