// Short decimals laid out as a locale writes them: in one pass, and without a branch that nothing
// foretells, as a wrong guess takes longer than all of it.

#ifndef JWNLS_LIBRARY_NUMBERS_LAY_OUT_SHORT_H_
#define JWNLS_LIBRARY_NUMBERS_LAY_OUT_SHORT_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "include/jwnls/jwnls.h"
#include "library/numbers/lay_out.h"
#include "library/numbers/number_style.h"
#include "library/numbers/short_decimal.h"

namespace jwnls::library {

/// Sixteen digits with room on both sides, as they are read four or eight at a time.
struct ShortDigits {
  static constexpr std::size_t margin = 16;
  char room[margin + short_digits + margin] = {};

  explicit ShortDigits(std::uint64_t mantissa) noexcept {
    put_sixteen_digits(mantissa, room + margin);
  }
  [[nodiscard]] const char* end() const noexcept { return room + margin + short_digits; }
};

template <typename Word>
[[nodiscard]] inline std::uint64_t word_at(const char* digits) noexcept {
  Word word;
  std::memcpy(&word, digits, sizeof word);
  return word;
}

/// Widens where units are wider. Of all eight units, or of the first four.
template <std::size_t count, typename Unit>
inline void put_word(std::uint64_t digits, Unit* out) noexcept {
  if constexpr (sizeof(Unit) == 1) {
    std::memcpy(out, &digits, count);
  } else {
#if defined(__SSE2__)
    const __m128i narrow = _mm_cvtsi64_si128(static_cast<long long>(digits));
    const __m128i wide = _mm_unpacklo_epi8(narrow, _mm_setzero_si128());
    std::memcpy(out, &wide, count * sizeof(Unit));
#else
    for (unsigned i = 0; i < count; ++i) out[i] = static_cast<Unit>(digits >> (8 * i) & 0xFF);
#endif
  }
}

/// `value` where the condition holds, or 0, without a branch.
[[nodiscard]] constexpr std::size_t only_if(bool condition, std::size_t value) noexcept {
  return value & (0 - std::size_t{condition});
}

template <typename Unit>
inline Unit* put_symbol(const SymbolText& symbol, Unit* out) noexcept {
  const auto text = symbol.text<Unit>();
  std::memcpy(out, text.data(), short_symbol * sizeof(Unit));
  return out + text.size();
}

/// Eight units at a time, whatever the length.
template <typename Unit>
inline Unit* put_short_affix(std::basic_string_view<Unit> affix, Unit* out) noexcept {
  std::memcpy(out, affix.data(), 8 * sizeof(Unit));  // text() begins an array of more
  if (affix.size() > 8) affix.copy(out + 8, affix.size() - 8, 8);
  return out + affix.size();
}

/// The zeros at the end of the decimals that are not written.
[[nodiscard]] inline unsigned trailing_zeros(ShortDecimal number,
                                             const ShortDigits& digits) noexcept {
  if (!number.shortest) return 0;
  const std::uint64_t values = word_at<std::uint64_t>(digits.end() - 8) ^ 0x3030'3030'3030'3030;
  return std::min(number.decimals, static_cast<unsigned>(std::countl_zero(values)) / 8);
}

/// The `run` digits in front of `end`, one to four; of a text of none, any.
template <typename Unit>
inline void put_group(const char* end, unsigned run, Unit* out) noexcept {
  put_word<4>(word_at<std::uint32_t>(end - 4) >> (32 - 8 * run), out);
}

/// The integer part, groups and all; gives its end. Most have two separators or fewer: two are
/// written of all, and what is no part of the text is written over.
template <typename Unit>
inline Unit* put_integers(const NumberStyle& style, const char* point, unsigned integers,
                          Unit* out) noexcept {
  const GroupedDigits row = style.grouped[integers];
  if (row.in_one_run) {
    put_word<8>(word_at<std::uint64_t>(point - integers), out);
    if (integers > 8) put_word<8>(word_at<std::uint64_t>(point - integers + 8), out + 8);
    return out + integers;
  }
  const char* end = point - row.behind_first;
  put_group(end, row.run[0], out);
  out += row.run[0];
  for (unsigned i = 1; i <= 2; ++i) {
    end += row.run[i];
    put_group(end, row.run[i], put_symbol(style.group, out));
    out += only_if(i <= row.groups, style.group.text<Unit>().size()) + row.run[i];
  }
  for (unsigned i = 3; i <= row.groups; ++i) {
    const unsigned run = i == row.groups ? style.sizes.primary : style.sizes.secondary;
    end += run;
    out = put_symbol(style.group, out);
    put_group(end, run, out);
    out += run;
  }
  return out;
}

/// Digits of the locale's own, which take up to four units each.
template <typename Unit>
inline Unit* put_own_digits(const NumberStyle& style, const char* digits, unsigned count,
                            Unit* out) noexcept {
  for (unsigned i = 0; i < count; ++i) out = put_symbol(style.digits[digits[i] - '0'], out);
  return out;
}

/// The integer part in them.
template <typename Unit>
inline Unit* put_own_integers(const NumberStyle& style, const char* point, unsigned integers,
                              Unit* out) noexcept {
  const char* at = point - integers;
  unsigned run = integers - style.grouped[integers].behind_first;
  for (unsigned left = style.grouped[integers].groups;; --left) {
    out = put_own_digits(style, at, run, out);
    if (left == 0) return out;
    at += run;
    out = put_symbol(style.group, out);
    run = left == 1 ? style.sizes.primary : style.sizes.secondary;
  }
}

/// Digits of the locale's own, or where every unit counts. `length` has been given.
template <typename Unit>
[[gnu::noinline]] int lay_out_otherwise(const NumberStyle& style, ShortDecimal number, Unit* out,
                                        std::size_t room, std::size_t* length) noexcept {
  const ShortDigits digits(number.mantissa);
  const char* const point = digits.end() - number.decimals;
  const unsigned integers =
      std::max(digit_count(number.mantissa), number.decimals + 1) - number.decimals;
  const unsigned decimals = number.decimals - trailing_zeros(number, digits);
  if (room < *length + short_slack) {
    return lay_out(style, {{point - integers, integers}, {point, decimals}, 0, number.negative},
                   out, room, length);
  }
  out = put_short_affix(style.prefix[number.negative].text<Unit>(), out);
  out = put_own_integers(style, point, integers, out);
  if (decimals != 0) {
    out = put_own_digits(style, point, decimals, put_symbol(style.decimal, out));
  }
  put_short_affix(style.suffix[number.negative].text<Unit>(), out);
  return JWNLS_OK;
}

/// Writes the text, as the functions of jwnls.h: OK, or ROOM with the length that it takes. Of
/// styles that have short forms.
template <typename Unit>
[[nodiscard, gnu::noinline]] int lay_out_short(const NumberStyle& style, ShortDecimal number,
                                               Unit* out, std::size_t room,
                                               std::size_t* length) noexcept {
  const auto prefix = style.prefix[number.negative].text<Unit>();
  const auto suffix = style.suffix[number.negative].text<Unit>();
  const std::size_t decimal_units = style.decimal.text<Unit>().size();
  const ShortDigits digits(number.mantissa);
  // One digit stands in front of the decimal symbol, whatever it is.
  const unsigned integers =
      std::max(digit_count(number.mantissa), number.decimals + 1) - number.decimals;
  const unsigned decimals = number.decimals - trailing_zeros(number, digits);
  *length = prefix.size() + suffix.size() +
            std::size_t{integers + decimals} * style.digits[0].text<Unit>().size() +
            style.grouped[integers].groups * style.group.text<Unit>().size() +
            only_if(decimals != 0, decimal_units);
  if (room < *length + short_slack || style.native_digits) [[unlikely]] {
    return lay_out_otherwise(style, number, out, room, length);
  }
  const char* const point = digits.end() - number.decimals;
  out = put_short_affix(prefix, out);
  out = put_integers(style, point, integers, out);
  Unit* const fraction = put_symbol(style.decimal, out);
  put_word<8>(word_at<std::uint64_t>(digits.end() - 8) >> (64 - 8 * number.decimals) % 64,
              fraction);
  if (number.decimals > 8) [[unlikely]] {
    put_word<8>(word_at<std::uint64_t>(point), fraction);
    put_word<8>(word_at<std::uint64_t>(point + 8), fraction + 8);
  }
  out += only_if(decimals != 0, decimal_units) + decimals;
  put_short_affix(suffix, out);
  return JWNLS_OK;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_LAY_OUT_SHORT_H_
