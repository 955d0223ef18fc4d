// Fuzzes the services that write numbers and integers: any value, symbols, grouping, flags, width
// and room, compared with the models of the tests, unit by unit.

#include <bit>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

#include "fuzz/input.h"
#include "fuzz/number_calls.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

// Everyday amounts, their halves and neighbours, and any other.
double value_of(Input& input) {
  const auto bits = input.number<std::uint64_t>();
  const double everyday = static_cast<double>(static_cast<std::int32_t>(bits >> 32)) / 1000;
  switch (input.byte() % 6) {
    case 0:
      return std::bit_cast<double>(bits);
    case 1:
      return std::bit_cast<double>(bits >> (bits & 63));
    case 2:
      return static_cast<double>(static_cast<std::int64_t>(bits) >> (bits & 63));
    case 3:
      return missing(static_cast<char>(bits));
    case 4:
      return std::bit_cast<double>(std::bit_cast<std::uint64_t>(everyday) + bits % 5 - 2);
    default:
      return static_cast<double>(static_cast<std::int32_t>(bits)) / 16;
  }
}

// Mostly a small number, at times any.
std::int32_t count_of(Input& input, int least, int most) {
  const std::uint8_t choice = input.byte();
  return choice >= 0xFC ? input.number<std::int32_t>() : least + choice % (most - least + 1);
}

char16_t symbol_of(Input& input) {
  constexpr char16_t usual[] = {u'.', u',', u' ', u'\u00A0', u'\u202F', u'\u2019', u'\0'};
  const std::uint8_t choice = input.byte();
  return choice < 0xE0 ? usual[choice % std::size(usual)] : input.number<char16_t>();
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls;
  using namespace jwnls::test;
  static const auto record = std::make_unique<LocaleRecord>();
  static const NumberHandle handle(record.get());

  Input input(data, size);
  const double value = value_of(input);
  const std::int32_t width = count_of(input, -30, 60);
  const std::int32_t digits = count_of(input, -3, 20);
  const auto flags = input.number<std::uint32_t>();
  const std::int64_t capacity = input.byte() % 100 - 1;
  const auto bits = input.number<std::uint64_t>();
  record->decimal_symbol = symbol_of(input);
  record->grouping_symbol = symbol_of(input);
  const FloatOptions options = {input.byte(), {}, symbol_of(input)};
  const bool has_options = input.byte() % 4 == 0;
  const std::uint8_t units = input.byte() % 8;
  for (std::uint8_t i = 0; i < units; ++i) {
    const std::uint8_t choice = input.byte();
    record->grouping_units[i] = choice < 0xF0 ? u"3;2-1049"[choice % 8] : input.number<char16_t>();
  }
  record->grouping_length = input.length(units);

  handle.check_number({value, width, digits, flags, capacity, has_options ? &options : nullptr});
  // One kind alone, with what may stand beside it.
  handle.check_number({value, width, digits, 1U << flags % 15 | (flags >> 16 << 16), 400});
  handle.check_integers(bits, width, digits, flags, capacity);
  return 0;
}
