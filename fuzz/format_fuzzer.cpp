// Fuzzes the six date and time formatting services: any record, pattern, value, zone and capacity.
//
// Each input becomes one call of a service in both units, at full room and at a capacity of the
// input's choice. Whatever goes in, nothing is read or written outside, the status is one of the
// documented ones, a failure leaves no trace, a cut text is the start of the whole one, and both
// units hold the same text.

#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "fuzz/fuzzed_handle.h"
#include "fuzz/pattern_input.h"
#include "tests/support/encoded.h"
#include "tests/support/formatting_call.h"
#include "tests/support/guarded_buffer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

constexpr std::int64_t full_room = 600;  // more than any text
constexpr std::int64_t untouched_length = -77;

class FormattingInput : public PatternInput {
 public:
  using PatternInput::PatternInput;

  double value() {
    switch (byte() % 4) {
      case 0:
        return std::bit_cast<double>(number<std::uint64_t>());
      case 1:  // near midnights
        return number<std::int32_t>() % 6727397 * 86400.0 + number<std::int8_t>() / 64.0;
      default:
        return static_cast<double>(number<std::uint32_t>()) * 128 - 11928470400.0;
    }
  }
};

struct Call {
  Service service = Service::date;
  Value value = Value(0.0);
  std::uint32_t style = 0;
};

template <typename Unit>
struct Text {
  std::uint32_t status;
  std::basic_string<Unit> units;
};

template <typename Unit>
Text<Unit> checked(LocaleHandle* handle, const Call& call, std::int64_t capacity) {
  auto& buffer = guarded_buffer<Unit>();
  const std::int64_t room = capacity < 0 ? 0 : capacity;
  Unit* out = buffer.reset(static_cast<std::size_t>(room));
  std::int64_t length = untouched_length;
  const auto status = static_cast<Status>(
      jwnls::test::call(handle, call.service, call.value, call.style, out, capacity, &length));
  const bool delivered = status == Status::ok || status == Status::does_not_fit;
  require(delivered || status == Status::missing_value || status == Status::out_of_range ||
              status == Status::not_possible,
          "an undocumented status");
  if (!delivered) {
    require(length == untouched_length && buffer.untouched(0), "a failure left a trace");
    return {code(status), {}};
  }
  require(length >= 0 && length <= room, "a length outside the capacity");
  const auto units = static_cast<std::size_t>(length);
  require(buffer.untouched(units), "a write behind the text");
  return {code(status), std::basic_string<Unit>(buffer.text(units))};
}

template <typename Unit>
Text<Unit> check_cut(LocaleHandle* handle, const Call& call, std::int64_t capacity) {
  Text<Unit> whole = checked<Unit>(handle, call, full_room);
  const Text<Unit> cut = checked<Unit>(handle, call, capacity);
  const std::size_t room = capacity < 0 ? 0 : static_cast<std::size_t>(capacity);
  if (whole.status != code(Status::ok) && whole.status != code(Status::does_not_fit)) {
    require(cut.status == whole.status, "a status that depends on the capacity");
    return whole;
  }
  require(cut.units == whole.units.substr(0, room), "a cut text that is no start of the whole");
  const bool fits = whole.status == code(Status::ok) && whole.units.size() <= room;
  require((cut.status == code(Status::ok)) == fits, "a status that does not tell of the cut");
  return whole;
}

// A handle whose record, zone and host are rewritten for each input.
struct Subject : FuzzedHandle {
  std::uint16_t classes[0x10000];

  void prepare(FormattingInput& input) {
    const std::uint8_t choices = input.byte();
    host.kernel.character_classes = (choices & 1) != 0 ? classes : nullptr;
    if ((choices & 1) != 0) {
      const std::uint8_t seed = input.byte();
      for (unsigned i = 0; i < 0x80; ++i) {
        classes[i] = static_cast<std::uint16_t>(i >> 5 == 3 ? 2 : i * seed);
      }
    }
    host.upper_case.clear();
    if ((choices & 2) != 0) host.upper_case[input.unit()] = input.unit();
    host.zone_info_status = (choices & 4) != 0 ? input.byte() : 0;
    host.abbreviation.clear();
    for (int i = input.byte() % 51; i > 0; --i) {
      host.abbreviation += static_cast<char16_t>(input.unit() & 0x7F);
    }
    host.abbreviation_length = input.length(static_cast<std::int64_t>(host.abbreviation.size()));
    host.offset_seconds = input.number<std::int64_t>();

    LocaleRecord& record = *handle->record;
    TextEntry pattern = {};
    input.entry(pattern, 60);
    for (TextEntry& each : record.date_patterns) each = pattern;
    record.time_pattern = record.style_0_pattern = record.datetime_pattern = pattern;
    TextEntry name = {};
    for (TextEntry* each :
         {record.full_weekdays, record.short_weekdays, record.full_months, record.short_months}) {
      input.entry(name, 60);
      const bool weekdays = each == record.full_weekdays || each == record.short_weekdays;
      for (int i = 0; i < (weekdays ? 7 : 12); ++i) each[i] = name;
    }
    input.entry(record.before_noon, 60);
    record.after_noon = record.before_noon;
  }
};

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  static Subject subject;
  FormattingInput input(data, size);
  Call call;
  call.service = static_cast<Service>(input.byte() % 3);
  call.style = input.byte() % 4;
  const bool plausible = input.byte() % 8 != 0;
  int parts[3];
  for (int& part : parts) part = input.number<std::int32_t>();
  const auto& [month, day, year] = parts;
  if (plausible) {
    call.value.parts = {year % 20002, month % 14, day % 33};
  } else {
    call.value.parts = {year, month, day};
  }
  call.value.seconds = input.value();
  const std::int64_t capacity = input.number<std::uint16_t>() % 530 - 1;
  subject.prepare(input);

  const auto wide = check_cut<char16_t>(subject.handle, call, capacity);
  const auto narrow = check_cut<char>(subject.handle, call, capacity);
  // Texts that outgrow a work area, or come near the end of the narrower one, may differ.
  const auto outgrown = jwnls::code(jwnls::Status::does_not_fit);
  if (wide.status == outgrown || narrow.status == outgrown || narrow.units.size() > 400) return 0;
  require(wide.status == narrow.status, "a status that depends on the unit");
  require(encoded(wide.units) == narrow.units, "a text that depends on the unit");
  return 0;
}
