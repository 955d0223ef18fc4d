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
#include <type_traits>

#include "include/jwnls/jwnls.h"
#include "library/numbers/digit_writers.h"
#include "library/numbers/lay_out.h"
#include "library/numbers/number_style.h"
#include "library/numbers/short_decimal.h"
#include "library/numbers/shuffled_text.h"

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

/// `value` where the condition holds, or 0, without a branch.
[[nodiscard]] constexpr std::size_t only_if(bool condition, std::size_t value) noexcept {
  return value & (0 - std::size_t{condition});
}

/// A symbol on its way into a text, with what lies behind it.
template <typename Unit>
class ShortSymbol {
 public:
  const std::size_t units;

  explicit ShortSymbol(const SymbolText& symbol) noexcept : units(symbol.text<Unit>().size()) {
    std::memcpy(&word_, symbol.text<Unit>().data(), sizeof word_);
  }
  void put(Unit* out) const noexcept { std::memcpy(out, &word_, sizeof word_); }

 private:
  std::conditional_t<sizeof(Unit) == 1, std::uint32_t, std::uint64_t> word_ = 0;
  static_assert(sizeof word_ == short_symbol * sizeof(Unit));
};

/// Eight units at a time, whatever the length.
template <typename Unit>
inline Unit* put_short_affix(std::basic_string_view<Unit> affix, Unit* out) noexcept {
  std::memcpy(out, affix.data(), 8 * sizeof(Unit));  // text() begins an array of more
  if (affix.size() > 8) {
    std::memcpy(out + 8, affix.data() + 8, 8 * sizeof(Unit));
    if (affix.size() > 16) affix.copy(out + 16, affix.size() - 16, 16);
  }
  return out + affix.size();
}

/// Zeros at the end of the decimals, of which there are no more than seven.
[[nodiscard]] inline unsigned trailing_zeros(unsigned decimals,
                                             const ShortDigits& digits) noexcept {
  const std::uint64_t values = word_at<std::uint64_t>(digits.end() - 8) ^ 0x3030'3030'3030'3030;
  // From the last: nothing is slower on some processors than counting from the top.
  const std::uint64_t last_first = __builtin_bswap64(values) | std::uint64_t{1} << 63;
  return std::min(decimals, static_cast<unsigned>(std::countr_zero(last_first)) / 8);
}

/// Up to sixteen digits.
template <typename Texts, typename Unit>
inline void put_run(const Texts& texts, const char* digits, unsigned count, Unit* out) noexcept {
  texts.put_eight(word_at<std::uint64_t>(digits), count, out);
  if (count > 8) {
    texts.put_eight(word_at<std::uint64_t>(digits + 8), count - 8, out + 8 * texts.units);
  }
}

/// The groups from the fourth on; the third begins at a place.
template <typename Texts, typename Unit>
inline void put_further_groups(const NumberStyle& style, const IntegerPart& part,
                               const Texts& texts, const ShortSymbol<Unit>& separator,
                               const char* point, Unit* at) noexcept {
  const std::size_t run = style.sizes.secondary;
  const std::size_t last = style.sizes.primary;
  const std::size_t step = run * texts.units + separator.units;
  // What stands behind a run in its four digits is written over.
  const char* digits = point - part.run[2].behind;
  for (unsigned left = part.groups - 2U;; --left) {
    at += step;
    separator.put(at - separator.units);
    if (left == 1) break;
    texts.put_four(word_at<std::uint32_t>(digits), at);
    digits += run;
  }
  texts.put_four(word_at<std::uint32_t>(point - 4) >> (32 - 8 * last), at);
}

/// The integer part, groups and all. Most have two separators or fewer: two are written of all, and
/// what is no part of the text is written over.
template <typename Texts, typename Unit>
inline void put_integers(const NumberStyle& style, const IntegerPart& part, const Texts& texts,
                         const char* point, unsigned integers, Unit* out) noexcept {
  if (part.in_one_run) return put_run(texts, point - integers, integers, out);
  const ShortSymbol<Unit> separator(style.group);
  const auto put_digits = [&](const IntegerPart::Run& run, Unit* at) {
    const char* const end = point - run.behind;
    texts.put_four(word_at<std::uint32_t>(end - 4) >> run.unused, at);
  };
  Unit* const second = out + part.run[1].at;
  Unit* const third = out + part.run[2].at;
  put_digits(part.run[0], out);
  separator.put(second - separator.units);
  put_digits(part.run[1], second);
  separator.put(third - separator.units);
  put_digits(part.run[2], third);
  if (part.groups > 2) [[unlikely]] {
    put_further_groups(style, part, texts, separator, point, third);
  }
}

/// Where every unit counts.
template <typename Unit>
[[gnu::noinline]] int lay_out_closely(const NumberStyle& style, ShortDecimal number,
                                      unsigned integers, unsigned decimals, Unit* out,
                                      std::size_t room, std::size_t* length) noexcept {
  const ShortDigits digits(number.mantissa);
  const char* const point = digits.end() - number.decimals;
  return lay_out(style, {{point - integers, integers}, {point, decimals}, 0, number.negative}, out,
                 room, length);
}

template <typename Texts, typename Unit>
[[nodiscard, gnu::noinline]] int lay_out_digits(const NumberStyle& style, ShortDecimal number,
                                                Unit* out, std::size_t room,
                                                std::size_t* length) noexcept {
  // So many units must be free behind the text: a separator is written there, and four digits, or
  // eight Latin ones, or eight units of an affix.
  constexpr std::size_t slack = short_symbol + std::max<std::size_t>(4 * Texts::most_units, 12);
  const Texts texts(style);
  const auto prefix = style.prefix[number.negative].text<Unit>();
  const auto suffix = style.suffix[number.negative].text<Unit>();
  const ShortDigits digits(number.mantissa);
  // One digit stands in front of the decimal symbol, whatever it is.
  const unsigned integers =
      std::max(digit_count(number.mantissa), number.decimals + 1) - number.decimals;
  const unsigned decimals =
      number.decimals - (number.shortest ? trailing_zeros(number.decimals, digits) : 0);
  const IntegerPart& part = style.short_texts_in<Unit>().integers[integers];
  const ShortSymbol<Unit> symbol(style.decimal);
  const std::size_t fraction_units = only_if(decimals != 0, symbol.units) + decimals * texts.units;
  *length = prefix.size() + part.units + fraction_units + suffix.size();
  if (room < *length + slack) [[unlikely]] {
    return lay_out_closely(style, number, integers, decimals, out, room, length);
  }
  const char* const point = digits.end() - number.decimals;
  out = put_short_affix(prefix, out);
  put_integers(style, part, texts, point, integers, out);
  out += part.units;
  symbol.put(out);
  Unit* const fraction = out + symbol.units;
  texts.put_eight(word_at<std::uint64_t>(digits.end() - 8) >> (0 - 8 * number.decimals) % 64,
                  decimals, fraction);
  if (number.decimals > 8) [[unlikely]]
    put_run(texts, point, decimals, fraction);
  put_short_affix(suffix, out + fraction_units);
  return JWNLS_OK;
}

/// Calls with what writes digits of a form.
template <typename Unit, typename Call>
[[nodiscard]] inline int with_digit_texts(DigitForm form, Call call) {
  if (form == DigitForm::latin) return call.template operator()<LatinDigits<Unit>>();
  if (form == DigitForm::two_bytes) {
    return call.template operator()<AddedDigits<Unit, 2 / sizeof(Unit)>>();
  }
  if constexpr (sizeof(Unit) == 1) {
    if (form == DigitForm::three_bytes) return call.template operator()<AddedDigits<Unit, 3>>();
  }
  return form == DigitForm::four_bytes
             ? call.template operator()<AddedDigits<Unit, 4 / sizeof(Unit)>>()
             : call.template operator()<ListedDigits<Unit>>();
}

/// Writes the text, as the functions of jwnls.h: OK, or ROOM with the length that it takes. Of
/// styles that have short forms.
template <typename Unit>
[[nodiscard]] inline int lay_out_short(const NumberStyle& style, ShortDecimal number, Unit* out,
                                       std::size_t room, std::size_t* length) noexcept {
  if constexpr (sizeof(Unit) == 1) {
    if (is_shuffled(style.shuffled, number.decimals, room)) {
      return lay_out_shuffled(style.shuffled, number, out, length);
    }
  }
  return with_digit_texts<Unit>(style.short_texts_in<Unit>().digit_form, [&]<typename Texts>() {
    return lay_out_digits<Texts>(style, number, out, room, length);
  });
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_LAY_OUT_SHORT_H_
