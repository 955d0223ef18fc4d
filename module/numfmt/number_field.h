// A formatted number between its making and its delivery: the text itself in UTF-16, and how it
// stands in its field. Fields may be far larger than any text, so fill is counted, not written.

#ifndef JWNLS_MODULE_NUMFMT_NUMBER_FIELD_H_
#define JWNLS_MODULE_NUMFMT_NUMBER_FIELD_H_

#include <cstddef>
#include <cstdint>

#include "module/numfmt/number_request.h"
#include "module/record/locale_record.h"
#include "module/record/status.h"

namespace jwnls {

/// What the formatter made. In reading order: blanks before, sign, zeros, body, blanks after; or
/// nothing but stars.
class NumberField {
 public:
  NumberField() noexcept {}  // the body stays as it is: only what is written is read

  // 350 digits with a separator behind each, sign, point and exponent; and room for whole blocks.
  static constexpr std::size_t body_capacity = 2 * 350 + 8 + 64;

  Status status = Status::ok;
  bool delivers = true;     // false: nothing is written, and the length stays as it is
  bool whole_room = false;  // blanks follow up to the capacity, not counted in the length
  char16_t sign = 0;        // 0: none
  std::int64_t length = 0;  // to report, in units
  std::int64_t stars = 0;
  std::int64_t blanks_before = 0;
  std::int64_t zeros = 0;
  std::int64_t blanks_after = 0;
  std::size_t body_length = 0;
  char16_t body[body_capacity];

  /// Nothing to write, for `reason`.
  void refuse(Status reason) noexcept;

  /// Stars instead of a text.
  void fill_with_stars(std::int64_t count, std::int64_t reported, Status reason) noexcept;

  /// The last step of the plain kinds: sign and body are set; places them in the requested width.
  void place(const NumberRequest& request, std::int64_t capacity) noexcept;
};

/// Writes a field in UTF-16; the capacity it was made for holds it. `length` may be null.
void deliver(const NumberField& field, char16_t* out, std::int64_t capacity,
             std::int64_t* length) noexcept;

/// Writes a field as UTF-8 into `capacity` bytes: whole units only, does_not_fit when they end
/// early. The length written to `*length`, which may be null, is in bytes. Returns the field's
/// status or does_not_fit.
Status deliver_8bit(const NumberField& field, char* out, std::int64_t capacity,
                    std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_NUMBER_FIELD_H_
