// Fuzzes the services that read numbers and integers: any symbols, flags and text.
//
// Whatever goes in, nothing outside the text is read, the status is one of the documented ones,
// what was consumed lies in the text, a failure has its value, and the encodings and the integer
// types agree with each other.

#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "abi/missing_value.h"
#include "abi/number_flags.h"
#include "abi/status.h"
#include "fuzz/input.h"
#include "module/frame/service_table.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

constexpr std::size_t longest_text = 400;

// Mostly units that mean something in a number.
char16_t unit_of(Input& input) {
  constexpr std::u16string_view likely =
      u"0123456789012345678901234567890123456789..,,,  \t+-+-eEdDxXaFA_\u00A0\u00A0\u066B\u066C";
  const std::uint8_t choice = input.byte();
  return choice < 0xF0 ? likely[choice % likely.size()] : input.number<char16_t>();
}

template <typename Value>
struct Reading {
  Status status;
  Value value;
  std::int64_t consumed;
};

template <typename Unit, typename Service, typename... Flags>
Reading<double> read_number(LocaleHandle* handle, Service* service,
                            std::basic_string_view<Unit> text, Flags... flags) {
  Reading<double> reading = {{}, 0, -1};
  reading.status = Status{service(handle, guarded_buffer<Unit>().hold(text),
                                  static_cast<std::int32_t>(text.size()), &reading.value,
                                  &reading.consumed, flags...)};
  const auto length = static_cast<std::int64_t>(text.size());
  require(reading.consumed >= 0 && reading.consumed <= length, "consumed outside the text");
  if (reading.status == Status::ok) {
    require(is_missing(reading.value) || reading.value - reading.value == 0, "no finite value");
  } else {
    require(reading.status == Status::invalid_number ||
                (reading.status == Status::out_of_range && reading.consumed == 0),
            "an undocumented status");
    require(std::bit_cast<std::uint64_t>(reading.value) == missing_value_bits,
            "a failure with a value");
  }
  return reading;
}

void check_numbers(LocaleHandle* handle, std::u16string_view text, std::uint32_t flags) {
  const ServiceTable& slots = handle->services;
  const auto wide = read_number(handle, slots.read_number_with_flags, text, flags);
  std::string bytes;
  for (const char16_t unit : text) {
    if (unit > 0xFF) return;
    bytes += static_cast<char>(unit);
  }
  const auto narrow =
      read_number(handle, slots.read_number_8bit_with_flags, std::string_view(bytes), flags);
  require(
      wide.status == narrow.status && wide.consumed == narrow.consumed &&
          std::bit_cast<std::uint64_t>(wide.value) == std::bit_cast<std::uint64_t>(narrow.value),
      "encodings that differ");
}

template <typename Integer, typename Unit>
Reading<Integer> read_integer(LocaleHandle* handle, ReadInteger<Integer, Unit>* service,
                              std::basic_string_view<Unit> text, std::uint32_t flags) {
  Reading<Integer> reading = {{}, 77, -1};
  const auto length = static_cast<std::int64_t>(text.size());
  reading.status = Status{service(handle, guarded_buffer<Unit>().hold(text), length, flags,
                                  &reading.value, &reading.consumed)};
  require(reading.consumed >= 0 && reading.consumed <= length, "consumed outside the text");
  require(reading.status == Status::ok || reading.status == Status::invalid_number ||
              reading.status == Status::does_not_fit ||
              (reading.status == Status::integer_overflow && reading.value == 0),
          "an undocumented status");
  return reading;
}

// Both encodings; returns what they read.
template <typename Integer>
Reading<Integer> check_integers(LocaleHandle* handle, ReadInteger<Integer, char16_t>* wide_service,
                                ReadInteger<Integer, char>* narrow_service,
                                std::u16string_view text, std::uint32_t flags) {
  const auto wide = read_integer(handle, wide_service, text, flags);
  const std::string bytes = encoded(text);
  const auto narrow = read_integer(handle, narrow_service, std::string_view(bytes), flags);
  const auto consumed = static_cast<std::size_t>(wide.consumed);
  require(wide.status == narrow.status && wide.value == narrow.value &&
              encoded(text.substr(0, consumed)).size() == static_cast<std::size_t>(narrow.consumed),
          "encodings that differ");
  return wide;
}

// A value that the narrower type holds is the wider one's too.
template <typename Narrow, typename Wide>
void compare(const Reading<Narrow>& narrow, const Reading<Wide>& wide) {
  if (narrow.status == Status::integer_overflow) return;
  require(narrow.status == wide.status && narrow.consumed == wide.consumed &&
              narrow.value == static_cast<Narrow>(wide.value) &&
              static_cast<Wide>(narrow.value) == wide.value,
          "types that differ");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls;
  using namespace jwnls::test;
  static const auto record = std::make_unique<LocaleRecord>();
  static const auto handle = std::make_unique<LocaleHandle>();
  handle->services = services;
  handle->record = record.get();
  const ServiceTable& slots = handle->services;

  Input input(data, size);
  const std::uint8_t usual = input.byte();
  record->decimal_symbol = usual % 4 != 0 ? u'.' : unit_of(input);
  record->grouping_symbol = usual % 3 != 0 ? u',' : unit_of(input);
  const auto flags = input.number<std::uint32_t>();
  std::u16string text;
  while (!input.used_up() && text.size() < longest_text) text += unit_of(input);

  check_numbers(handle.get(), text, flags);
  const auto int64 =
      check_integers(handle.get(), slots.read_int64, slots.read_int64_8bit, text, flags);
  const auto int32 =
      check_integers(handle.get(), slots.read_int32, slots.read_int32_8bit, text, flags);
  const auto uint64 =
      check_integers(handle.get(), slots.read_uint64, slots.read_uint64_8bit, text, flags);
  const auto uint32 =
      check_integers(handle.get(), slots.read_uint32, slots.read_uint32_8bit, text, flags);
  compare(int32, int64);
  compare(uint32, uint64);
  return 0;
}
