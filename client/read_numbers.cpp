// Numbers and integers read from text, through the UTF-16 services.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"
#include "client/locale.h"
#include "client/locale_state.h"
#include "client/text_input.h"
#include "client/unread_text.h"

namespace jwnls::client {
namespace {

// What a service said of a text.
template <typename Value>
struct Answer {
  Status status = Status::ok;
  Value value = {};
  std::int64_t consumed = 0;

  [[nodiscard]] bool is_read() const {
    return status == Status::ok || status == Status::does_not_fit;
  }
};

// The text as it stands or, if it is not read so, as what people mean by it. `ask` gives the answer
// for units, and `say` the reason for a status other than invalid_number.
template <typename Ask, typename Say>
auto read(const char* kind, std::string_view text, const Locale& locale, Ask ask, Say say)
    -> Result<decltype(ask(std::u16string_view()))> {
  auto input = TextInput::of(text);
  if (!input) return unread(kind, text, Status::invalid_number, "not valid UTF-8");
  auto answer = ask(input->units());
  if (answer.is_read()) return answer;
  const LocaleRecord& record = locale.record();
  if (auto meant = input->with([&record](char16_t unit) {
        return meaning_in_number(unit, record.decimal_symbol, record.grouping_symbol);
      })) {
    input = std::move(meant);
    answer = ask(input->units());
    if (answer.is_read()) return answer;
  }
  if (answer.status != Status::invalid_number) {
    return unread(kind, text, answer.status, say(answer.status), text.size());
  }
  const auto fitting = static_cast<std::size_t>(std::max<std::int64_t>(answer.consumed, 0));
  return unread_behind(kind, text, locale.name(), answer.status, input->bytes_of(fitting));
}

bool is_blank(std::u16string_view text) { return text.find_first_not_of(u' ') == text.npos; }

// The services take a blank text for 0, and end a text at a zero unit.
template <typename Integer>
Answer<Integer> ask_for_integer(LocaleHandle* handle, ReadInteger<Integer, char16_t>* service,
                                std::u16string_view text, std::uint32_t flags) {
  if (is_blank(text)) return {Status::invalid_number, 0, 0};
  Answer<Integer> answer;
  answer.status = Status{service(handle, text.data(), static_cast<std::int64_t>(text.size()), flags,
                                 &answer.value, &answer.consumed)};
  const std::size_t zero = text.find(u'\0');
  if (answer.is_read() && zero != text.npos) {
    return {Status::invalid_number, 0, static_cast<std::int64_t>(zero)};
  }
  return answer;
}

std::uint32_t flags_of(const IntegerReading& reading) {
  using namespace integer_input_flags;
  return trailing_blanks | (reading.hexadecimal ? hexadecimal : 0) |
         (reading.fraction ? fraction : 0) | (reading.blank_groups ? blank_groups : 0);
}

template <typename Integer>
Result<Integer> read_bounded(LocaleHandle* handle, ReadInteger<Integer, char16_t>* service,
                             std::string_view text, const Locale& locale,
                             const IntegerReading& reading, Integer least, Integer most,
                             Status* note) {
  const auto ask = [&](std::u16string_view units) {
    auto answer = ask_for_integer<Integer>(handle, service, units, flags_of(reading));
    if (answer.is_read() && (answer.value < least || answer.value > most)) {
      answer.status = Status::integer_overflow;
    }
    return answer;
  };
  const auto say = [&](Status) {
    return "outside " + std::to_string(least) + " to " + std::to_string(most);
  };
  const auto answer = read("integer", text, locale, ask, say);
  if (!answer) return tl::unexpected<Error>(answer.error());
  if (note != nullptr) *note = answer->status;
  return answer->value;
}

}  // namespace

Result<double> Locale::read_number(std::string_view text, const NumberReading& reading) const {
  const auto ask = [&](std::u16string_view units) -> Answer<double> {
    if (units.size() > std::numeric_limits<std::int32_t>::max()) {
      return {Status::invalid_number, 0, std::numeric_limits<std::int32_t>::max()};
    }
    Answer<double> answer;
    answer.status = Status{handle()->services.read_number_with_flags(
        handle(), units.data(), static_cast<std::int32_t>(units.size()), &answer.value,
        &answer.consumed, reading.blank_groups ? number_input_flags::blank_groups : 0)};
    return answer;
  };
  const auto say = [](Status) { return std::string("too large for a double"); };
  return read("number", text, *this, ask, say).map([](const Answer<double>& answer) {
    return answer.value;
  });
}

Result<std::int64_t> Locale::read_signed(std::string_view text, const IntegerReading& reading,
                                         std::int64_t least, std::int64_t most,
                                         Status* note) const {
  if (reading.hexadecimal) {
    return failure(Status::not_possible, "hexadecimal integers are read as unsigned types only");
  }
  return read_bounded(handle(), handle()->services.read_int64, text, *this, reading, least, most,
                      note);
}

Result<std::uint64_t> Locale::read_unsigned(std::string_view text, const IntegerReading& reading,
                                            std::uint64_t most, Status* note) const {
  return read_bounded(handle(), handle()->services.read_uint64, text, *this, reading,
                      std::uint64_t{0}, most, note);
}

}  // namespace jwnls::client
