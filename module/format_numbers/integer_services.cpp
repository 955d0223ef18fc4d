#include "module/format_numbers/integer_services.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "abi/status.h"
#include "module/format_numbers/fieldless_integer.h"
#include "module/format_numbers/integer_text.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"
#include "module/text/copy_text.h"

namespace jwnls {
namespace {

constexpr std::int32_t default_minimum_digits = 6;  // what a negative minimum stands for
constexpr char small_digits[] = "0123456789abcdef";
constexpr char capital_digits[] = "0123456789ABCDEF";

// The text in reading order: blanks, lead, zeros, digits, blanks.
template <typename Unit>
struct IntegerLayout {
  std::int64_t blanks_before = 0;
  Unit lead[2] = {};  // sign, blank or prefix
  int lead_length = 0;
  std::int64_t zeros = 0;
  const Unit* digits = nullptr;
  std::int64_t digits_length = 0;
  std::int64_t blanks_after = 0;

  std::int64_t length() const noexcept {
    return blanks_before + lead_length + zeros + digits_length + blanks_after;
  }
};

// Writes all of a layout but its first `skipped` units.
template <typename Unit>
class TailWriter {
 public:
  TailWriter(Unit* out, std::int64_t skipped) noexcept : position_(out), skipped_(skipped) {}

  void fill(char unit, std::int64_t count) noexcept {
    position_ = std::fill_n(position_, count - skip(count), static_cast<Unit>(unit));
  }
  void append(const Unit* units, std::int64_t count) noexcept {
    const std::int64_t passed = skip(count);
    position_ = std::copy_n(units + passed, count - passed, position_);
  }

 private:
  std::int64_t skip(std::int64_t count) noexcept {
    const std::int64_t passed = std::min(skipped_, count);
    skipped_ -= passed;
    return passed;
  }

  Unit* position_;
  std::int64_t skipped_;
};

// A text too long for the room keeps its low-order units, unlike those of every other family.
template <typename Unit>
std::uint32_t deliver(const IntegerLayout<Unit>& layout, Unit* out, std::int64_t capacity,
                      std::int64_t* length) noexcept {
  const std::int64_t total = layout.length();
  *length = total;
  if (total <= capacity) [[likely]] {
    Unit* position = std::fill_n(out, layout.blanks_before, Unit{' '});
    for (int i = 0; i < layout.lead_length; ++i) *position++ = layout.lead[i];
    position = std::fill_n(position, layout.zeros, Unit{'0'});
    copy_text(position, layout.digits,
              static_cast<std::size_t>(layout.digits_length) * sizeof(Unit));
    position = std::fill_n(position + layout.digits_length, layout.blanks_after, Unit{' '});
    zero_units(position, capacity - total);
    return code(Status::ok);
  }
  TailWriter<Unit> writer(out, total - capacity);
  writer.fill(' ', layout.blanks_before);
  writer.append(layout.lead, layout.lead_length);
  writer.fill('0', layout.zeros);
  writer.append(layout.digits, layout.digits_length);
  writer.fill(' ', layout.blanks_after);
  return code(Status::does_not_fit);
}

// What stands in front of the digits.
enum class Lead : std::uint8_t {
  none,
  minus,
  plus,
  blank,
  prefix_small,
  prefix_capital,
  octal_zero
};

template <typename Integer>
Lead lead_of(Integer value, std::uint32_t flags) noexcept {
  using namespace integer_flags;
  if constexpr (std::is_signed_v<Integer>) {
    if (value < 0) return Lead::minus;
    if ((flags & sign) != 0) return Lead::plus;
    return (flags & blank) != 0 ? Lead::blank : Lead::none;
  } else {
    if ((flags & hexadecimal_small) != 0 && (flags & prefix) != 0) return Lead::prefix_small;
    if ((flags & hexadecimal_small) != 0) return Lead::none;
    if ((flags & hexadecimal_capital) != 0 && (flags & prefix) != 0) return Lead::prefix_capital;
    if ((flags & hexadecimal_capital) != 0) return Lead::none;
    return (flags & octal) != 0 && (flags & octal_zero) != 0 ? Lead::octal_zero : Lead::none;
  }
}

template <typename Integer, typename Unit>
void set_digits(const LocaleRecord& record, Integer value, std::uint32_t flags,
                IntegerText<Unit>& text) noexcept {
  using namespace integer_flags;
  if constexpr (std::is_signed_v<Integer>) {
    const auto bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
    const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;
    (flags & group) != 0 ? text.set_grouped(magnitude, record) : text.set_decimal(magnitude);
  } else if ((flags & hexadecimal_small) != 0) {
    text.set_power_of_two(value, 4, small_digits);
  } else if ((flags & hexadecimal_capital) != 0) {
    text.set_power_of_two(value, 4, capital_digits);
  } else if ((flags & octal) != 0) {
    text.set_power_of_two(value, 3, small_digits);
  } else {
    (flags & group) != 0 ? text.set_grouped(value, record) : text.set_decimal(value);
  }
}

template <typename Unit>
void set_lead(Lead lead, IntegerLayout<Unit>& layout) noexcept {
  constexpr char texts[][3] = {"", "-", "+", " ", "0x", "0X", "0"};
  const char* text = texts[static_cast<std::size_t>(lead)];
  while (text[layout.lead_length] != '\0') {
    layout.lead[layout.lead_length] = static_cast<Unit>(text[layout.lead_length]);
    ++layout.lead_length;
  }
}

// Any integer in any field, by the rules from the first to the last. Apart from the quick way,
// which its buffers would burden.
template <typename Integer, typename Unit>
[[gnu::noinline]] std::uint32_t format_in_field(LocaleHandle* handle, Integer value,
                                                std::int32_t width, std::int32_t minimum_digits,
                                                std::uint32_t flags, Unit* out,
                                                std::int64_t capacity,
                                                std::int64_t* length) noexcept {
  capacity = std::max<std::int64_t>(capacity, 0);
  if (minimum_digits < 0) minimum_digits = default_minimum_digits;
  if (minimum_digits > capacity || width > capacity) return code(Status::does_not_fit);
  if (value == 0 && minimum_digits == 0) {
    zero_units(out, capacity);
    *length = 0;
    return code(Status::ok);
  }

  IntegerText<Unit> text;
  set_digits(*handle->record, value, flags, text);
  IntegerLayout<Unit> layout;
  layout.digits = text.begin();
  layout.digits_length = static_cast<std::int64_t>(text.length());
  layout.zeros = std::max<std::int64_t>(minimum_digits - layout.digits_length, 0);

  Lead lead = lead_of(value, flags);
  const bool left = (flags & integer_flags::left) != 0;
  if ((flags & integer_flags::zero_fill) != 0 && !left && minimum_digits == 0) {
    // One place is kept for a sign. For a prefix too, though it then takes two: kept as it is.
    const bool kept = lead != Lead::none && lead != Lead::octal_zero;
    const std::int64_t places = std::int64_t{width} - (kept ? 1 : 0);
    layout.zeros = std::max<std::int64_t>(places - layout.digits_length, 0);
  }
  if (lead == Lead::octal_zero && layout.length() >= width) lead = Lead::none;
  set_lead(lead, layout);

  const std::int64_t fill = std::max<std::int64_t>(width - layout.length(), 0);
  (left ? layout.blanks_after : layout.blanks_before) = fill;
  return deliver(layout, out, capacity, length);
}

}  // namespace

template <typename Integer, typename Unit>
std::uint32_t format_integer(LocaleHandle* handle, Integer value, std::int32_t width,
                             std::int32_t minimum_digits, std::uint32_t flags, Unit* out,
                             std::int64_t capacity, std::int64_t* length) noexcept {
  using namespace integer_flags;
  using namespace fieldless_integer;
  const bool quick =
      width < 1 && capacity >= room && (minimum_digits == 1 || (minimum_digits == 0 && value != 0));
  if (quick) [[likely]] {
    if (flags == 0) {
      if (magnitude_of(value) < ten_to_16) [[likely]] {
        return write_quickly(
            value, [](auto... call) { write_decimal(call...); }, out, capacity, length);
      }
      return format_long(value, out, capacity, length);
    }
    if (std::is_unsigned_v<Integer> && flags == hexadecimal_small) {
      return write_quickly(
          value, [](auto... call) { write_hexadecimal<false>(call...); }, out, capacity, length);
    }
    if (flags == group) {
      const Symbols<Unit> symbols{*handle->record};
      if (groups_by_three(symbols.record) && symbols.narrow_grouping()) {
        const Unit separator = symbols.grouping();
        return magnitude_of(value) < ten_to_18
                   ? format_grouped(value, separator, out, capacity, length)
                   : format_long_grouped(value, separator, out, capacity, length);
      }
    }
    if (std::is_unsigned_v<Integer> && flags == hexadecimal_capital) {
      return format_capital_hexadecimal(value, out, capacity, length);
    }
  }
  return format_in_field(handle, value, width, minimum_digits, flags, out, capacity, length);
}

std::uint32_t format_pointer(LocaleHandle* /*handle*/, std::uint64_t value, std::int32_t width,
                             std::int32_t /*minimum_digits*/, std::uint32_t flags, char16_t* out,
                             std::int64_t capacity, std::int64_t* length) noexcept {
  capacity = std::max<std::int64_t>(capacity, 0);
  IntegerText<char16_t> text;
  IntegerLayout<char16_t> layout;
  if (value == 0) {
    layout.digits = u"NIL";
    layout.digits_length = 3;
  } else {
    text.set_power_of_two(value, 4, capital_digits);
    layout.digits = text.begin();
    layout.digits_length = static_cast<std::int64_t>(text.length());
    if ((flags & integer_flags::pointer_prefix) != 0) set_lead(Lead::prefix_small, layout);
  }
  const std::int64_t field = width < 0 ? -std::int64_t{width} : width;
  const std::int64_t fill = std::max<std::int64_t>(field - layout.length(), 0);
  if ((flags & integer_flags::pointer_left) == 0) {
    layout.blanks_before = fill;
    return deliver(layout, out, capacity, length);
  }
  // Left-justified, blanks give way before digits do.
  layout.blanks_after = std::min(fill, std::max<std::int64_t>(capacity - layout.length(), 0));
  const std::uint32_t status = deliver(layout, out, capacity, length);
  if (layout.blanks_after == fill) return status;
  *length += fill - layout.blanks_after;
  return code(Status::does_not_fit);
}

// NOLINTBEGIN(bugprone-macro-parentheses): types stand without parentheses
#define JWNLS_FORMAT_INTEGER(Integer, Unit)                                                 \
  template std::uint32_t format_integer(LocaleHandle*, Integer, std::int32_t, std::int32_t, \
                                        std::uint32_t, Unit*, std::int64_t,                 \
                                        std::int64_t*) noexcept
JWNLS_FORMAT_INTEGER(std::int64_t, char16_t);
JWNLS_FORMAT_INTEGER(std::uint64_t, char16_t);
JWNLS_FORMAT_INTEGER(std::int32_t, char16_t);
JWNLS_FORMAT_INTEGER(std::uint32_t, char16_t);
JWNLS_FORMAT_INTEGER(std::int64_t, char);
JWNLS_FORMAT_INTEGER(std::uint64_t, char);
JWNLS_FORMAT_INTEGER(std::int32_t, char);
JWNLS_FORMAT_INTEGER(std::uint32_t, char);
#undef JWNLS_FORMAT_INTEGER
// NOLINTEND(bugprone-macro-parentheses)

}  // namespace jwnls
