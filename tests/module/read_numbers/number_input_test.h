// A handle over a record of the test's own, and the services that read numbers and integers called
// with the text's end at an unreadable page.

#ifndef JWNLS_TESTS_MODULE_READ_NUMBERS_NUMBER_INPUT_TEST_H_
#define JWNLS_TESTS_MODULE_READ_NUMBERS_NUMBER_INPUT_TEST_H_

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "abi/missing_value.h"
#include "abi/number_flags.h"
#include "abi/status.h"
#include "module/frame/service_table.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"

namespace jwnls::test {

/// What a service answered; values by their bits, so that -0 is not 0 and missing values compare.
template <typename Value>
struct Answer {
  Status status;
  Value value;
  std::int64_t consumed;

  friend bool operator==(const Answer& a, const Answer& b) {
    const bool same = a.status == b.status && a.consumed == b.consumed;
    if constexpr (std::is_same_v<Value, double>) {
      return same && std::bit_cast<std::uint64_t>(a.value) == std::bit_cast<std::uint64_t>(b.value);
    } else {
      return same && a.value == b.value;
    }
  }
  friend std::ostream& operator<<(std::ostream& out, const Answer& a) {
    out << std::hex << code(a.status) << std::dec << ", value " << a.value;
    if constexpr (std::is_same_v<Value, double>)
      out << " = " << std::hex << std::bit_cast<std::uint64_t>(a.value);
    return out << std::dec << ", consumed " << a.consumed;
  }
};

using NumberAnswer = Answer<double>;
inline NumberAnswer invalid_at(std::int64_t place) {
  return {Status::invalid_number, missing_value(), place};
}

/// A special missing value by the code in its byte 5.
inline double missing(std::uint64_t code) {
  return std::bit_cast<double>(std::uint64_t{0xFFFF} << 48 | code << 40);
}

/// Text of units below 256, a byte each.
inline std::string narrowed(std::u16string_view text) { return {text.begin(), text.end()}; }

/// The EBCDIC form of text of units below 128 and no-break spaces, by the C library's converter.
std::string ebcdic(std::u16string_view text);

/// Has bytes for U+066B and U+066C; everything else fails.
struct ArabicConverter : Converter {
  ArabicConverter() : Converter{} {
    convert = [](Converter*, char16_t unit, std::uint8_t* out) -> std::uint32_t {
      *out = static_cast<std::uint8_t>(unit == 0x66C ? 0x77 : unit == 0x66B ? 0x78 : 0xEE);
      return unit == 0x66C || unit == 0x66B ? 0 : code(Status::not_possible);
    };
  }
};

class NumberInputTest : public testing::Test {
 protected:
  NumberInputTest() {
    handle->services = services;
    handle->record = record.get();
    set_symbols(u".,");
  }

  /// The decimal symbol, then the grouping symbol.
  void set_symbols(std::u16string_view symbols) {
    record->decimal_symbol = symbols[0];
    record->grouping_symbol = symbols[1];
  }

  /// Calls a number slot, with whatever it takes behind `consumed`.
  template <typename Unit, typename... Arguments, typename... More>
  NumberAnswer number(std::uint32_t (*slot)(LocaleHandle*, const Unit*, std::int32_t, double*,
                                            std::int64_t*, Arguments...),
                      std::basic_string_view<Unit> text, More... more) {
    NumberAnswer answer = {{}, -77.25, -77};
    answer.status = Status{slot(handle.get(), guarded_buffer<Unit>().hold(text),
                                static_cast<std::int32_t>(text.size()), &answer.value,
                                &answer.consumed, more...)};
    return answer;
  }
  NumberAnswer number(std::u16string_view text) {
    return number(handle->services.read_number, text);
  }

  template <typename Integer, typename Unit>
  Answer<Integer> integer(ReadInteger<Integer, Unit>* slot, std::basic_string_view<Unit> text,
                          std::uint32_t flags) {
    Answer<Integer> answer = {{}, 77, -77};
    answer.status = Status{slot(handle.get(), guarded_buffer<Unit>().hold(text),
                                static_cast<std::int64_t>(text.size()), flags, &answer.value,
                                &answer.consumed)};
    return answer;
  }

  std::unique_ptr<LocaleRecord> record = std::make_unique<LocaleRecord>();
  std::unique_ptr<LocaleHandle> handle = std::make_unique<LocaleHandle>();
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_READ_NUMBERS_NUMBER_INPUT_TEST_H_
