#include "module/read_numbers/number_services.h"

#include "abi/status.h"
#include "module/host_calls/typed_calls.h"
#include "module/read_numbers/number_scanner.h"

namespace jwnls {
namespace {

constexpr char16_t no_break_space = 0xA0;

inline NumberSymbols symbols_of(const LocaleHandle* handle) noexcept {
  if (handle == nullptr) return {};
  const LocaleRecord& record = *handle->record;
  return {record.decimal_symbol, record.grouping_symbol};
}

inline NumberSymbols symbols_of(const LocaleHandle* handle, std::uint32_t flags) noexcept {
  NumberSymbols symbols = symbols_of(handle);
  symbols.blank_groups =
      (flags & number_input_flags::blank_groups) != 0 && symbols.grouping == no_break_space;
  return symbols;
}

// The byte that the host's encoding has for a symbol, or `substitute`.
std::uint32_t converted(Converter* converter, std::uint32_t symbol,
                        std::uint32_t substitute) noexcept {
  std::uint8_t byte = 0;
  const bool done = host_calls::convert(converter, static_cast<char16_t>(symbol), byte);
  return done ? byte : substitute;
}

std::uint32_t ebcdic_symbol(std::uint32_t symbol, Converter* converter) noexcept {
  if (symbol < 0x80) return ebcdic_codes[symbol];
  if (symbol == no_break_space) return ebcdic_no_break_space;
  return converted(converter, symbol, EbcdicEncoding::of(','));
}

// Inlined with what makes the symbols, which then never go through memory.
template <typename Encoding>
[[gnu::always_inline]] inline std::uint32_t read(const typename Encoding::Unit* text,
                                                 std::int32_t length, const NumberSymbols& symbols,
                                                 double* value, std::int64_t* consumed) noexcept {
  NumberReading reading = {Status::invalid_number};
  if (length >= 0) reading = NumberScanner<Encoding>(text, length, symbols).read();
  *value = reading.value;
  *consumed = reading.consumed;
  return code(reading.status);
}

}  // namespace

template <typename Unit>
std::uint32_t read_number(LocaleHandle* handle, const Unit* text, std::int32_t length,
                          double* value, std::int64_t* consumed) noexcept {
  return read<AsciiEncoding<Unit>>(text, length, symbols_of(handle), value, consumed);
}

template <typename Unit>
std::uint32_t read_number_with_flags(LocaleHandle* handle, const Unit* text, std::int32_t length,
                                     double* value, std::int64_t* consumed,
                                     std::uint32_t flags) noexcept {
  return read<AsciiEncoding<Unit>>(text, length, symbols_of(handle, flags), value, consumed);
}

std::uint32_t read_number_converted(LocaleHandle* handle, const char* text, std::int32_t length,
                                    double* value, std::int64_t* consumed,
                                    Converter* converter) noexcept {
  NumberSymbols symbols = symbols_of(handle);
  if (symbols.grouping >= 0x80 && symbols.grouping != no_break_space) {
    symbols.grouping = converted(converter, symbols.grouping, ',');
  }
  return read<AsciiEncoding<char>>(text, length, symbols, value, consumed);
}

std::uint32_t read_number_ebcdic(LocaleHandle* handle, const char* text, std::int32_t length,
                                 double* value, std::int64_t* consumed,
                                 Converter* converter) noexcept {
  NumberSymbols symbols = symbols_of(handle);
  symbols.decimal = ebcdic_symbol(symbols.decimal, converter);
  symbols.grouping = ebcdic_symbol(symbols.grouping, converter);
  return read<EbcdicEncoding>(text, length, symbols, value, consumed);
}

#define JWNLS_READ_NUMBER(Unit)                                                                    \
  template std::uint32_t read_number(LocaleHandle*, const Unit*, std::int32_t, double*,            \
                                     std::int64_t*) noexcept;                                      \
  template std::uint32_t read_number_with_flags(LocaleHandle*, const Unit*, std::int32_t, double*, \
                                                std::int64_t*, std::uint32_t) noexcept
JWNLS_READ_NUMBER(char16_t);
JWNLS_READ_NUMBER(char);
#undef JWNLS_READ_NUMBER

}  // namespace jwnls
