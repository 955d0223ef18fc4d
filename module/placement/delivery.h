// The delivery of a placed number: fill, sign and body into the caller's buffer, in either
// encoding.

#ifndef JWNLS_MODULE_PLACEMENT_DELIVERY_H_
#define JWNLS_MODULE_PLACEMENT_DELIVERY_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "module/placement/field.h"
#include "module/text/copy_text.h"
#include "module/text/utf8_encoding.h"

namespace jwnls {

/// The longest body: 350 digits with a separator behind each, point and exponent.
inline constexpr std::int64_t longest_body = 2 * 350 + 16;

/// What a body's writer may overwrite behind the body, because it stores whole blocks.
inline constexpr std::int64_t body_overhang = 32;

/// Where a service puts its text.
template <typename Unit>
struct Output {
  Unit* units;
  std::int64_t capacity;  // 0 or above
  std::int64_t* length;   // may be null
};

/// Encodes units as long as they fit whole.
class EncodingWriter {
 public:
  EncodingWriter(char* out, std::int64_t capacity) noexcept
      : begin_(out), position_(out), end_(out + capacity) {}

  void append(const char16_t* units, std::int64_t count) noexcept {
    for (std::int64_t i = 0; i < count && !full_; ++i) {
      char bytes[longest_utf8_unit];
      const auto length = static_cast<std::ptrdiff_t>(encode_utf8_unit(units[i], bytes));
      full_ = end_ - position_ < length;
      if (!full_) position_ = std::copy_n(bytes, length, position_);
    }
  }

  void fill(char character, std::int64_t count) noexcept {
    const std::int64_t fitting = full_ ? 0 : std::min<std::int64_t>(count, end_ - position_);
    position_ = std::fill_n(position_, fitting, character);
    if (fitting < count) full_ = true;
  }

  bool full() const noexcept { return full_; }
  std::int64_t written() const noexcept { return position_ - begin_; }

 private:
  char* begin_;
  char* position_;
  char* end_;
  bool full_ = false;
};

/// Delivers a number whose units take one unit of the output each. `write_body(Unit*)` writes the
/// body, and up to body_overhang units behind it.
template <typename Unit, typename WriteBody>
inline Status deliver(const Placement& placement, WriteBody write_body,
                      const Output<Unit>& output) noexcept {
  const auto [out, capacity, length] = output;
  if (!placement.delivers) [[unlikely]]
    return placement.status;
  if (length != nullptr) *length = placement.length;
  if (placement.starred) [[unlikely]] {
    std::fill_n(out, placement.stars, Unit{'*'});
    return placement.status;
  }
  Unit* position = out;
  if (placement.blanks_before != 0) {
    position = std::fill_n(position, placement.blanks_before, Unit{' '});
  }
  if (placement.sign != 0) *position++ = static_cast<Unit>(placement.sign);
  if (placement.zeros != 0) position = std::fill_n(position, placement.zeros, Unit{'0'});
  if (capacity - (position - out) >= placement.body_length + body_overhang) [[likely]] {
    write_body(position);
  } else {
    Unit body[longest_body + body_overhang];
    write_body(body);
    copy_text(position, body, static_cast<std::size_t>(placement.body_length) * sizeof(Unit));
  }
  position += placement.body_length;
  if (placement.blanks_after != 0) {
    position = std::fill_n(position, placement.blanks_after, Unit{' '});
  }
  if (sizeof(Unit) == 2 && placement.whole_room) std::fill(position, out + capacity, Unit{' '});
  return placement.status;
}

/// The same as UTF-8 where units may take several bytes: whole units only, does_not_fit when they
/// end early; the length is in bytes.
template <typename WriteBody>
Status deliver_encoded(const Placement& placement, WriteBody write_body,
                       const Output<char>& output) noexcept {
  if (!placement.delivers || placement.starred) {
    return deliver(
        placement, [](char*) {}, output);
  }
  char16_t body[longest_body + body_overhang];
  write_body(body);
  EncodingWriter writer(output.units, output.capacity);
  writer.fill(' ', placement.blanks_before);
  if (placement.sign != 0) writer.append(&placement.sign, 1);
  writer.fill('0', placement.zeros);
  writer.append(body, placement.body_length);
  writer.fill(' ', placement.blanks_after);
  if (output.length != nullptr) *output.length = writer.written();
  return writer.full() ? Status::does_not_fit : placement.status;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_DELIVERY_H_
