// Fuzzes the services over a record of arbitrary bytes: every length, symbol and pattern of it.
//
// Numbers and integers are what the models make of that record; dates are written alike in both
// units, cut only at their end; texts are read alike in both encodings, from the text alone.

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "fuzz/fuzzed_handle.h"
#include "fuzz/input.h"
#include "fuzz/number_calls.h"
#include "tests/support/formatting_call.h"
#include "tests/support/reading_call.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

// The input over and over, each time a little other; some of it zeros, so that lengths are small.
void fill(LocaleRecord& record, const std::uint8_t* data, std::size_t size) {
  auto* const bytes = reinterpret_cast<std::uint8_t*>(&record);
  const std::uint8_t mask = size % 3 == 0 ? 0x3F : 0xFF;
  for (std::size_t i = 0; i < sizeof record; ++i) {
    const std::uint8_t byte = data[i % size];
    const bool high = i % 8 >= 2 && (byte ^ i / 1024) % 16 != 0;
    bytes[i] = static_cast<std::uint8_t>(high && size % 2 == 0 ? 0 : (byte + i / size) & mask);
  }
}

template <typename Unit>
std::basic_string<Unit> date_text(LocaleHandle* handle, Service service, const Value& value,
                                  std::uint32_t style, std::int64_t capacity,
                                  std::uint32_t& status) {
  auto& buffer = guarded_buffer<Unit>();
  Unit* out = buffer.reset(static_cast<std::size_t>(capacity));
  std::int64_t length = untouched_length;
  status = call(handle, service, value, style, out, capacity, &length);
  if (status != code(Status::ok) && status != code(Status::does_not_fit)) {
    require(length == untouched_length && buffer.untouched(0), "a failure left a trace");
    return {};
  }
  require(length >= 0 && length <= capacity, "a length outside the capacity");
  require(buffer.untouched(static_cast<std::size_t>(length)), "a write behind the text");
  return std::basic_string<Unit>(buffer.text(static_cast<std::size_t>(length)));
}

void check_written_dates(LocaleHandle* handle, Input& input) {
  const auto service = static_cast<Service>(input.byte() % 3);
  Value value(input.number<std::uint32_t>() * 3.5 - 11928470400.0);
  value.parts = {input.number<std::uint16_t>() % 20002, input.byte() % 14, input.byte() % 33};
  const std::uint32_t style = input.byte() % 4;
  std::uint32_t status = 0, narrow_status = 0, cut_status = 0;
  const auto wide = date_text<char16_t>(handle, service, value, style, 600, status);
  const auto narrow = date_text<char>(handle, service, value, style, 1800, narrow_status);
  const std::int64_t room = input.byte();
  const auto cut = date_text<char16_t>(handle, service, value, style, room, cut_status);
  require(wide.starts_with(cut), "a cut text that is no start of the whole");
  if (status != code(Status::ok) || narrow.size() > 400) return;
  require(narrow_status == status && encoded(wide) == narrow, "a text that depends on the unit");
}

struct Reading {
  std::uint32_t status;
  std::uint64_t bits;
  std::uint64_t consumed;
};

template <typename Unit>
Reading read(LocaleHandle* handle, ReadingService service, std::basic_string_view<Unit> text,
             std::uint32_t mode) {
  double value = -77.25;
  std::uint64_t consumed = ~std::uint64_t{0};
  const std::uint32_t status = reading_slot<Unit>(handle->services, service)(
      handle, guarded_buffer<Unit>().hold(text), static_cast<std::int64_t>(text.size()), mode,
      &value, &consumed);
  require(consumed <= text.size(), "consumed outside the text");
  return {status, std::bit_cast<std::uint64_t>(value), consumed};
}

// Texts of the record's own names and of digits.
void check_read_dates(LocaleHandle* handle, Input& input) {
  std::u16string text;
  while (!input.used_up() && text.size() < 100) {
    const std::uint8_t choice = input.byte();
    if (choice < 0xA0) {
      text += u"0123456789/-.,: "[choice % 16];
    } else {
      text += text_of(handle->record->full_months[choice % 12]).substr(0, 20);
    }
  }
  const std::uint32_t mode = input.byte();
  const std::string bytes = encoded(text);
  for (const auto service : {ReadingService::date, ReadingService::period, ReadingService::time}) {
    const Reading wide = read<char16_t>(handle, service, text, mode);
    const Reading narrow = read<char>(handle, service, bytes, mode);
    require(wide.status == narrow.status && wide.bits == narrow.bits &&
                encoded(text.substr(0, wide.consumed)).size() == narrow.consumed,
            "encodings that differ");
  }
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  if (size == 0) return 0;
  static FuzzedHandle subject;
  static const NumberHandle numbers(subject.handle->record);
  jwnls::LocaleRecord& record = *subject.handle->record;
  fill(record, data, size);
  Input input(data, size);
  const auto bits = input.number<std::uint64_t>();
  const auto flags = input.number<std::uint32_t>();
  const int width = input.byte() % 50 - 20, digits = input.byte() % 20;
  numbers.check_number({std::bit_cast<double>(bits), width, digits, flags, 200});
  numbers.check_number({static_cast<double>(bits % 1'000'000'000) / 100, width, digits,
                        1U << flags % 15 | jwnls::number_flags::group, 60});
  numbers.check_integers(bits, width, digits, flags, 60);
  check_written_dates(subject.handle, input);
  check_read_dates(subject.handle, input);
  return 0;
}
