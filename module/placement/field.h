// How a formatted number stands in its field: where fill and sign go. Fields may be far larger than
// any text, so fill is counted here and written when the text is delivered.

#ifndef JWNLS_MODULE_PLACEMENT_FIELD_H_
#define JWNLS_MODULE_PLACEMENT_FIELD_H_

#include <algorithm>
#include <cstdint>

#include "abi/status.h"

namespace jwnls {

/// The field that a caller asks for.
struct Field {
  std::int64_t width;  // 0 or above; 0 is no field
  bool left;
  bool zero_fill;
};

/// In reading order: blanks before, sign, zeros, the body, blanks after; or nothing but stars.
struct Placement {
  Status status = Status::ok;
  bool delivers = true;     // false: nothing is written, and the length stays as it is
  bool starred = false;     // only stars are written
  bool whole_room = false;  // blanks follow up to the capacity, not counted in the length
  char16_t sign = 0;        // 0: none
  std::int64_t length = 0;  // to report, in units
  std::int64_t stars = 0;
  std::int64_t blanks_before = 0;
  std::int64_t zeros = 0;
  std::int64_t body_length = 0;
  std::int64_t blanks_after = 0;

  /// Nothing to write, for `reason`.
  void refuse(Status reason) noexcept {
    status = reason;
    delivers = false;
  }

  /// Stars instead of a text.
  void fill_with_stars(std::int64_t count, std::int64_t reported, Status reason) noexcept {
    starred = true;
    stars = count;
    length = reported;
    status = reason;
  }

  /// Places sign and body in a field, as the last step. A text that does not fit by itself reports
  /// its own length, which zero fill belongs to; one that only its blanks make too long reports the
  /// field.
  void place(const Field& field, std::int64_t capacity) noexcept {
    const std::int64_t text = body_length + (sign != 0 ? 1 : 0);
    length = std::max(field.width, text);
    if (length > capacity) {
      const bool by_field = text <= capacity || field.zero_fill;
      fill_with_stars(std::min(capacity, field.width), by_field ? length : text,
                      Status::does_not_fit);
      return;
    }
    const std::int64_t fill = length - text;
    (field.zero_fill ? zeros : field.left ? blanks_after : blanks_before) = fill;
  }
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_FIELD_H_
