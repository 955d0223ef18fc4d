// Fuzzes the services that read dates, times and periods: any record, names, patterns and text.
//
// Whatever goes in, nothing outside the text is read on either side, the status is one of the
// documented ones, what was consumed lies in the text, a failure has its value, and both encodings
// read the same. Names are compared with what the rules say, step by step.

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/missing_value.h"
#include "abi/reading_modes.h"
#include "abi/status.h"
#include "fuzz/fuzzed_handle.h"
#include "fuzz/pattern_input.h"
#include "module/text/same_text.h"
#include "module/text/utf8_encoding.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/reading_call.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

constexpr std::size_t longest_text = 200;  // units
constexpr double untouched_value = -77.25;

// Modes. Of time input: one pattern, and recognition. Of date input: bits.
constexpr std::uint32_t strict_time = 2;
constexpr std::uint32_t recognised_time = 4;
constexpr std::uint32_t date_pattern_bits = reading_modes::pattern;
constexpr std::uint32_t datetime_bit = reading_modes::datetime;

void set(TextEntry& entry, std::u16string_view text) {
  entry.length = static_cast<std::int64_t>(text.copy(entry.units, text_entry_capacity));
}

using Service = ReadingService;

struct Reading {
  bool read;
  double value;
  std::uint64_t consumed;

  bool operator==(const Reading& other) const {
    return read == other.read && consumed == other.consumed &&
           std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value);
  }
};

template <typename Unit>
Reading call(LocaleHandle* handle, Service service, const Unit* text, std::size_t length,
             std::uint32_t mode) {
  Reading reading = {false, untouched_value, ~std::uint64_t{0}};
  const auto status = static_cast<Status>(reading_slot<Unit>(handle->services, service)(
      handle, text, static_cast<std::int64_t>(length), mode, &reading.value, &reading.consumed));
  reading.read = status == Status::ok;
  if (reading.read) {
    require(reading.consumed <= length, "consumed outside the text");
    require(reading.value - reading.value == 0, "no finite value");
    return reading;
  }
  require(status == Status::no_match && reading.consumed == 0, "a failure of another kind");
  const bool kept = service == Service::time && mode != recognised_time;
  require(kept ? reading.value == untouched_value
               : std::bit_cast<std::uint64_t>(reading.value) == missing_value_bits,
          "a failure with a value");
  return reading;
}

// With an unreadable page behind the text, then with one before it.
template <typename Unit>
Reading read(LocaleHandle* handle, Service service, std::basic_string_view<Unit> text,
             std::uint32_t mode) {
  static GuardedBuffer<Unit> buffer{longest_utf8_unit * longest_text};
  const Reading reading = call(handle, service, buffer.hold(text), text.size(), mode);
  require(reading == call(handle, service, buffer.hold_at_front(text), text.size(), mode),
          "a reading that depends on the place");
  return reading;
}

// The first name, in list order, that the text goes on with.
void check_name(LocaleHandle* handle, std::u16string_view text) {
  const LocaleRecord& record = *handle->record;
  const std::u16string_view rest = text.substr(std::min(text.find_first_not_of(u' '), text.size()));
  Reading expected = {false, untouched_value, 0};
  for (int i = 0; i < 12 && !rest.empty() && !expected.read; ++i) {
    const std::u16string_view name = text_of(record.full_months[i]);
    if (name.size() > rest.size() || !same_text_nocase(rest.substr(0, name.size()), name)) continue;
    expected = {true, 0, text.size() - rest.size() + name.size()};
  }
  set(handle->record->style_0_pattern, u"%B");
  require(read(handle, Service::time, text, strict_time) == expected, "another name");
}

// A handle whose record and host are rewritten for each input.
struct Subject : FuzzedHandle {
  void prepare(PatternInput& input) {
    constexpr std::u16string_view months[][12] = {
        {u"January", u"February", u"March", u"April", u"May", u"June", u"July", u"August",
         u"September", u"October", u"November", u"December"},
        {u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9", u"10", u"11", u"12"},
        {u"Ocak", u"\u015Eubat", u"Mart", u"Nisan", u"May\u0131s", u"\u0131x", u"M\u00E4rz",
         u"A\u011Fustos", u"Eyl\u00FCl", u"Ma", u"Mar", u"Aral\u0131k"}};
    LocaleRecord& record = *handle->record;
    const std::uint8_t choices = input.byte();
    for (int i = 0; i < 12; ++i) {
      set(record.full_months[i], months[choices % 3][i]);
      set(record.short_months[i], months[choices / 3 % 3][i].substr(0, 3));
    }
    constexpr std::u16string_view patterns[] = {u"%E %B %Y",  u"%m/%d/%Y",    u"%d.%m.%Y",
                                                u"%b %E, %Y", u"%I:%M:%S %p", u"%Y-%m-%d %H:%M:%S"};
    for (TextEntry* entry : {&record.date_patterns[0], &record.date_patterns[1],
                             &record.date_patterns[2], &record.datetime_pattern,
                             &record.style_0_pattern, &record.before_noon, &record.after_noon}) {
      set(*entry, patterns[input.byte() % std::size(patterns)]);
    }
    // Some entries are anything.
    auto* const entries = record.full_weekdays;  // names, patterns and designators are one run
    constexpr std::size_t count =
        (offsetof(LocaleRecord, unread_6112) - offsetof(LocaleRecord, full_weekdays)) /
        sizeof(TextEntry);
    for (int i = input.byte() % 8; i > 0; --i) {
      input.entry(*(entries + input.byte() % count), i % 2 == 0 ? 60 : 4);
    }
    host.integer_options[u"JW_NAME_YEARCUTOFF"] = input.number<std::int16_t>();
  }

  // Pieces of what dates are made of.
  std::u16string text(PatternInput& input) const {
    const LocaleRecord& record = *handle->record;
    std::u16string text;
    while (!input.used_up() && text.size() < longest_text - text_entry_capacity) {
      const std::uint8_t choice = input.byte();
      const int kind = choice % 8;
      if (kind < 3) {
        for (int digits = choice / 8 % 5; digits >= 0; --digits) {
          text += static_cast<char16_t>(u'0' + input.byte() % 10);
        }
      } else if (kind == 3) {
        text += u"/-.,:T  "[choice / 8 % 8];
      } else if (kind < 6) {
        const TextEntry* list = kind == 4 ? record.full_months : record.short_months;
        for (char16_t unit : text_of(list[choice / 8 % 12])) {
          if (choice >= 0xC0) unit = simple_upper_case(unit);
          if (choice >= 0xE0 && unit < 0x80) unit ^= 0x20;
          text += unit;
        }
      } else if (kind == 6) {
        text += std::u16string_view(u"XST UTC +05:30 AM PM Q1 W09 Week9 Month3")
                    .substr(input.byte() % 40, choice / 8 % 8);
      } else {
        text += input.unit();
      }
    }
    return text;
  }
};

void check_encodings(LocaleHandle* handle, Service service, std::u16string_view text,
                     std::uint32_t mode) {
  const std::string bytes = encoded(text);
  const Reading wide = read(handle, service, text, mode);
  Reading narrow = read(handle, service, std::string_view(bytes), mode);
  require(narrow.consumed == encoded(text.substr(0, wide.consumed)).size(), "another length");
  narrow.consumed = wide.consumed;
  require(wide == narrow, "encodings that differ");
  // A text cut inside a sequence, and its end alone, only have to stay in bounds.
  const std::size_t cut = bytes.size() / 3;
  (void)read(handle, service, std::string_view(bytes).substr(0, cut), mode);
  (void)read(handle, service, std::string_view(bytes).substr(cut), mode);
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  static Subject subject;
  PatternInput input(data, size);
  const auto mode = input.number<std::uint16_t>();
  subject.prepare(input);
  const std::u16string text = subject.text(input);
  jwnls::LocaleHandle* handle = subject.handle;

  check_encodings(handle, Service::date, text, mode);
  check_encodings(handle, Service::date, text, mode & ~(date_pattern_bits | datetime_bit));
  check_encodings(handle, Service::date, text, (mode & ~date_pattern_bits) | datetime_bit);
  check_encodings(handle, Service::period, text, mode);
  check_encodings(handle, Service::time, text, mode);
  check_encodings(handle, Service::time, text, recognised_time);
  (void)call<char16_t>(handle, Service::date, nullptr, 0, mode);
  check_name(handle, text);
  return 0;
}
