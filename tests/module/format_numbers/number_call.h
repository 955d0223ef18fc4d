// One call of the floating formatter, what came of it, and what should have.

#ifndef JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
#define JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_

#include <cstdint>
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

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
