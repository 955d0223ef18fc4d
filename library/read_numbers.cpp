// Numbers in: as doubles, as integers, as exact decimals.

#include <cstdint>
#include <limits>
#include <string_view>

#include "abi/missing_value.h"
#include "include/jwnls/jwnls.h"
#include "library/layouts/layout.h"
#include "library/numbers/decimal_value.h"
#include "library/numbers/masked_decimal.h"
#include "library/numbers/quick_scan.h"
#include "library/numbers/scan_number.h"
#include "library/numbers/short_canonical.h"
#include "library/texts/give_text.h"
#include "library/texts/utf8_input.h"

namespace jwnls::library {
namespace {

void give_facts(std::uint8_t facts, std::uint8_t* out) {
  if (out != nullptr) *out = facts;
}

int code_of(Refusal refusal) {
  return refusal == Refusal::none    ? JWNLS_OK
         : refusal == Refusal::blank ? JWNLS_MISSING
                                     : JWNLS_UNREAD;
}

// ---- Doubles

// The value of a module's missing value, as the module has it.
double missing_of(LocaleHandle* handle, char name) {
  if (name == '\0' || name == '.') return missing_value();
  const char text[2] = {'.', name};
  double value = 0;
  std::int64_t consumed = 0;
  handle->services.read_number_8bit(handle, text, 2, &value, &consumed);
  return value;
}

[[gnu::noinline]] int read_double_fully(const jwnls_layout* layout, const char* text,
                                        std::size_t length, double* value, std::uint8_t* facts) {
  ScannedNumber number;
  read_number(layout->number.syntax, {text, length}, number);
  give_facts(0, facts);
  *value = missing_value();
  if (const int code = code_of(number.refusal); code != JWNLS_OK) {
    if (number.missing != '\0') *value = missing_of(layout->locale->handle, number.missing);
    return code;
  }
  const auto rounded = double_of({{number.text, number.digits},
                                  number.exponent - static_cast<int>(number.decimals),
                                  number.negative});
  if (!rounded) return JWNLS_RANGE;
  *value = *rounded;
  give_facts(number.facts, facts);
  return JWNLS_OK;
}

// The powers of ten that a quickly read number of the layout is divided by.
unsigned power_of(const jwnls_layout* layout, const QuickNumber& number) {
  return number.decimals + (layout->is(JWNLS_PERCENT) ? 2 : 0);
}

// One division of two exact operands rounds correctly; so few digits are within the doubles.
inline double quick_value(const QuickNumber& number, unsigned power) {
  static_assert(exact_powers >= 18 + 2);
  const double magnitude =
      number.mantissa <= exact_mantissas
          ? static_cast<double>(static_cast<std::int64_t>(number.mantissa)) / powers_of_ten[power]
          : *double_of(number.mantissa, -static_cast<int>(power));
  return number.negative ? -magnitude : magnitude;
}

// Amounts and percentages.
[[gnu::noinline]] int read_measure(const jwnls_layout* layout, const char* text, std::size_t length,
                                   double* value, std::uint8_t* facts) {
  if (!layout->is(JWNLS_AMOUNT) && !layout->is(JWNLS_PERCENT)) {
    *value = missing_value();
    give_facts(0, facts);
    return JWNLS_KIND;
  }
  QuickNumber number;
  if (!scan_between_affixes(layout->number.syntax, text, length, number)) {
    return read_double_fully(layout, text, length, value, facts);
  }
  *value = quick_value(number, power_of(layout, number));
  give_facts(number.facts, facts);
  return JWNLS_OK;
}

int read_double(const jwnls_layout* layout, const char* text, std::size_t length, double* value,
                std::uint8_t* facts) {
  QuickNumber number;
  if (layout->is(JWNLS_NUMBER)) [[likely]] {
    if (!scan_quickly(layout->number.syntax.quick, text, length, number)) {
      return read_double_fully(layout, text, length, value, facts);
    }
    *value = quick_value(number, number.decimals);
    give_facts(number.facts, facts);
    return JWNLS_OK;
  }
  return read_measure(layout, text, length, value, facts);
}

// ---- Integers

// Puts a magnitude with its sign into a type; false beyond it.
bool put_integer(std::uint64_t magnitude, bool negative, std::int64_t* value) {
  constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (magnitude > most + (negative ? 1 : 0)) return false;
  *value = static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
  return true;
}
bool put_integer(std::uint64_t magnitude, bool negative, std::uint64_t* value) {
  if (negative && magnitude != 0) return false;
  *value = magnitude;
  return true;
}

template <typename Integer>
[[gnu::noinline]] int read_integer_fully(const jwnls_layout* layout, const char* text,
                                         std::size_t length, Integer* value, std::uint8_t* facts) {
  ScannedNumber number;
  read_number(layout->number.syntax, {text, length}, number);
  give_facts(0, facts);
  if (const int code = code_of(number.refusal); code != JWNLS_OK) return code;
  const auto magnitude = integer_of({number.text, number.digits});
  if (!magnitude || !put_integer(*magnitude, number.negative, value)) return JWNLS_RANGE;
  give_facts(number.facts, facts);
  return JWNLS_OK;
}

template <typename Integer>
int read_integer(const jwnls_layout* layout, const char* text, std::size_t length, Integer* value,
                 std::uint8_t* facts) {
  *value = 0;
  QuickNumber number;
  if (layout->is(JWNLS_INTEGER)) [[likely]] {
    if (!scan_quickly(layout->number.syntax.quick, text, length, number) ||
        !put_integer(number.mantissa, number.negative, value)) {
      return read_integer_fully(layout, text, length, value, facts);
    }
    give_facts(number.facts, facts);
    return JWNLS_OK;
  }
  give_facts(0, facts);
  return JWNLS_KIND;
}

// ---- Exact decimals

// The code of the currency that a text names, or else the layout's own.
void give_currency(const jwnls_layout* layout, const char* named, char* currency) {
  if (currency == nullptr) return;
  const std::string_view code = *named != '\0' ? std::string_view(named) : layout->currency;
  currency[code.copy(currency, 3)] = '\0';
}

[[gnu::noinline]] int read_decimal_fully(const jwnls_layout* layout, const char* text,
                                         std::size_t length, char* out, std::size_t room,
                                         std::size_t* out_length, char* currency,
                                         std::uint8_t* facts) {
  ScannedNumber number;
  read_number(layout->number.syntax, {text, length}, number);
  if (const int code = code_of(number.refusal); code != JWNLS_OK) return code;
  char canonical[canonical_room];
  const auto written = write_canonical({{number.text, number.digits},
                                        number.exponent - static_cast<int>(number.decimals),
                                        number.negative},
                                       canonical);
  if (!written) return JWNLS_RANGE;
  give_facts(number.facts, facts);
  give_currency(layout, number.currency, currency);
  return give_text({canonical, *written}, out, room, out_length);
}

bool has_decimals(const jwnls_layout* layout) {
  return layout->is(JWNLS_NUMBER) || layout->is(JWNLS_INTEGER) || layout->is(JWNLS_AMOUNT) ||
         layout->is(JWNLS_PERCENT);
}

// What masked_decimal() does not take.
[[gnu::noinline]] int read_other_decimal(const jwnls_layout* layout, const char* text,
                                         std::size_t length, char* out, std::size_t room,
                                         std::size_t* out_length, char* currency,
                                         std::uint8_t* facts) {
  const NumberSyntax& syntax = layout->number.syntax;
  QuickNumber quick;
  if (has_decimals(layout) &&
      (syntax.unit == UnitKind::none ? scan_quickly(syntax.quick, text, length, quick)
                                     : scan_between_affixes(syntax, text, length, quick))) {
    const unsigned decimals = power_of(layout, quick);
    if (quick.mantissa < short_limit && decimals < short_digits) [[likely]] {
      give_facts(quick.facts, facts);
      give_currency(layout, "", currency);
      return give_canonical({quick.mantissa, decimals, quick.negative}, out, room, out_length);
    }
  }
  *out_length = 0;
  if (currency != nullptr) *currency = '\0';
  give_facts(0, facts);
  if (!has_decimals(layout)) return JWNLS_KIND;
  return read_decimal_fully(layout, text, length, out, room, out_length, currency, facts);
}

int read_decimal(const jwnls_layout* layout, const char* text, std::size_t length, char* out,
                 std::size_t room, std::size_t* out_length, char* currency, std::uint8_t* facts) {
  std::uint8_t found = 0;
  const QuickSyntax& syntax = layout->number.syntax.quick;
  if ((layout->is(JWNLS_NUMBER) || layout->is(JWNLS_INTEGER)) && syntax.masks &&
      room >= masked_decimal_room) {
    const Masked masked =
        masked_decimal<TextAlone>(MaskedSyntax(syntax), text, length, out, *out_length, found);
    if (masked != Masked::other) [[likely]] {
      if (masked == Masked::refused) *out_length = 0;
      give_facts(found, facts);
      if (currency != nullptr) *currency = '\0';  // numbers have none
      return masked == Masked::read ? JWNLS_OK : JWNLS_UNREAD;
    }
  }
  return read_other_decimal(layout, text, length, out, room, out_length, currency, facts);
}

}  // namespace
}  // namespace jwnls::library

using jwnls::library::read_decimal;
using jwnls::library::read_double;
using jwnls::library::read_integer;
using jwnls::library::Utf8Input;

extern "C" {

int jwnls_read_number(const jwnls_layout* layout, const char* text, size_t length, double* value,
                      uint8_t* facts) {
  return read_double(layout, text, length, value, facts);
}
int jwnls_read_number_utf16(const jwnls_layout* layout, const char16_t* text, size_t length,
                            double* value, uint8_t* facts) {
  const Utf8Input bytes(text, length);
  return read_double(layout, bytes.data(), bytes.size(), value, facts);
}
int jwnls_read_integer(const jwnls_layout* layout, const char* text, size_t length, int64_t* value,
                       uint8_t* facts) {
  return read_integer(layout, text, length, value, facts);
}
int jwnls_read_integer_utf16(const jwnls_layout* layout, const char16_t* text, size_t length,
                             int64_t* value, uint8_t* facts) {
  const Utf8Input bytes(text, length);
  return read_integer(layout, bytes.data(), bytes.size(), value, facts);
}
int jwnls_read_unsigned(const jwnls_layout* layout, const char* text, size_t length,
                        uint64_t* value, uint8_t* facts) {
  return read_integer(layout, text, length, value, facts);
}
int jwnls_read_unsigned_utf16(const jwnls_layout* layout, const char16_t* text, size_t length,
                              uint64_t* value, uint8_t* facts) {
  const Utf8Input bytes(text, length);
  return read_integer(layout, bytes.data(), bytes.size(), value, facts);
}
int jwnls_read_decimal(const jwnls_layout* layout, const char* text, size_t length, char* out,
                       size_t room, size_t* out_length, char currency[4], uint8_t* facts) {
  return read_decimal(layout, text, length, out, room, out_length, currency, facts);
}
int jwnls_read_decimal_utf16(const jwnls_layout* layout, const char16_t* text, size_t length,
                             char* out, size_t room, size_t* out_length, char currency[4],
                             uint8_t* facts) {
  const Utf8Input bytes(text, length);
  return read_decimal(layout, bytes.data(), bytes.size(), out, room, out_length, currency, facts);
}

}  // extern "C"
