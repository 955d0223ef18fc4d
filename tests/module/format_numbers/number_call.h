// One call of the floating formatter, what came of it, and what should have.

#ifndef JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
#define JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"
#include "abi/status.h"

namespace jwnls::test {

inline constexpr std::int64_t untouched_length = -77;

struct NumberCall {
  double value = 0;
  std::int32_t width = 0;
  std::int32_t decimals = 0;
  std::uint32_t flags = 0;
  std::int64_t capacity = 400;
  const FloatOptions* options = nullptr;
};

/// What a service did: its status, the produced length, and every unit that it wrote.
template <typename Unit>
struct Outcome {
  Status status = Status::ok;
  std::int64_t length = untouched_length;
  std::basic_string<Unit> text;

  bool operator==(const Outcome&) const = default;
};

std::string printable(const std::u16string& text);
std::ostream& operator<<(std::ostream& out, const NumberCall& call);
template <typename Unit>
std::ostream& operator<<(std::ostream& out, const Outcome<Unit>& outcome) {
  return out << std::hex << code(outcome.status) << std::dec << ", length " << outcome.length
             << ", " << printable({outcome.text.begin(), outcome.text.end()});
}

/// What the formatter has to do, worked out step by step on the whole decimal expansion of the
/// value, without any of the module's code but the decoding of a record's lengths.
Outcome<char16_t> expected_number(const LocaleRecord& record, const NumberCall& call);

constexpr double missing(char character) {
  const auto code = static_cast<std::uint8_t>(~static_cast<unsigned>(character));
  return std::bit_cast<double>(std::uint64_t{0xFFFF} << 48 | std::uint64_t{code} << 40);
}

/// Takes out of an outcome what a floating service left behind its text: within the capacity it may
/// use the room as scratch, for zero units and digits, but never for what its stack held before.
template <typename Unit>
void drop_scratch(Outcome<Unit>& outcome) {
  if (outcome.length < 0 || outcome.length >= std::ssize(outcome.text)) return;
  const auto scratch = outcome.text.begin() + outcome.length;
  const auto is_harmless = [](Unit unit) {
    return unit == 0 || (unit >= '0' && unit <= '9') || unit == static_cast<Unit>(0xA5A5);
  };
  if (std::all_of(scratch, outcome.text.end(), is_harmless)) {
    outcome.text.erase(static_cast<std::size_t>(outcome.length));
  }
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
