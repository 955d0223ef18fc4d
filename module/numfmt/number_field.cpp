#include "module/numfmt/number_field.h"

#include <algorithm>

#include "module/text/bounded_writer.h"
#include "module/text/utf8_unit.h"

namespace jwnls {

void NumberField::refuse(Status reason) noexcept {
  status = reason;
  delivers = false;
}

void NumberField::fill_with_stars(std::int64_t count, std::int64_t reported,
                                  Status reason) noexcept {
  stars = count;
  length = reported;
  status = reason;
}

void NumberField::place(const NumberRequest& request, std::int64_t capacity) noexcept {
  const std::int64_t width = request.width;
  const auto text = static_cast<std::int64_t>(body_length) + (sign != 0 ? 1 : 0);
  length = std::max(width, text);
  if (length > capacity) {
    // A text without zero fill that fits by itself counts by its field; else by its own length.
    fill_with_stars(std::min(capacity, width), length, Status::does_not_fit);
    return;
  }
  const std::int64_t fill = length - text;
  if (request.zero_fill) {
    zeros = fill;
  } else if (request.left) {
    blanks_after = fill;
  } else {
    blanks_before = fill;
  }
}

void deliver(const NumberField& field, char16_t* out, std::int64_t capacity,
             std::int64_t* length) noexcept {
  if (!field.delivers) return;
  if (length != nullptr) *length = field.length;
  if (field.stars != 0 || field.status == Status::does_not_fit) {
    std::fill_n(out, field.stars, u'*');
    return;
  }
  char16_t* position = std::fill_n(out, field.blanks_before, u' ');
  if (field.sign != 0) *position++ = field.sign;
  position = std::fill_n(position, field.zeros, u'0');
  copy_text(position, field.body, field.body_length * sizeof(char16_t));
  position += field.body_length;
  position = std::fill_n(position, field.blanks_after, u' ');
  if (field.whole_room) std::fill(position, out + capacity, u' ');
}

namespace {

// Encodes units as long as they fit whole.
class EncodingWriter {
 public:
  EncodingWriter(char* out, std::int64_t capacity) noexcept
      : begin_(out), position_(out), end_(out + capacity) {}

  void append(char16_t unit) noexcept {
    char bytes[longest_utf8_unit];
    const std::size_t count = encode_utf8_unit(unit, bytes);
    if (full_ || static_cast<std::size_t>(end_ - position_) < count) {
      full_ = true;
      return;
    }
    position_ = std::copy_n(bytes, count, position_);
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

}  // namespace

Status deliver_8bit(const NumberField& field, char* out, std::int64_t capacity,
                    std::int64_t* length) noexcept {
  if (!field.delivers) return field.status;
  if (field.stars != 0 || field.status == Status::does_not_fit) {
    std::fill_n(out, field.stars, '*');
    if (length != nullptr) *length = field.length;
    return field.status;
  }
  EncodingWriter writer(out, capacity);
  writer.fill(' ', field.blanks_before);
  if (field.sign != 0) writer.append(field.sign);
  writer.fill('0', field.zeros);
  for (std::size_t i = 0; i < field.body_length; ++i) writer.append(field.body[i]);
  writer.fill(' ', field.blanks_after);
  if (length != nullptr) *length = writer.written();
  return writer.full() ? Status::does_not_fit : field.status;
}

}  // namespace jwnls
