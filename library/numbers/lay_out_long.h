// Any digits laid out as a locale writes them: a group at a time, or eight digits.

#ifndef JWNLS_LIBRARY_NUMBERS_LAY_OUT_LONG_H_
#define JWNLS_LIBRARY_NUMBERS_LAY_OUT_LONG_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/numbers/digit_writers.h"
#include "library/numbers/lay_out.h"
#include "library/numbers/lay_out_short.h"
#include "library/numbers/number_style.h"

namespace jwnls::library {

/// Gives the end. What stands behind it, up to eight digits, is written over.
template <typename Texts, typename Unit>
inline Unit* put_eights(const Texts& texts, std::string_view digits, Unit* out) noexcept {
  const std::size_t count = digits.size();
  std::size_t at = 0;
  for (; count - at > 8; at += 8) {
    texts.put_eight(word_at<std::uint64_t>(digits.data() + at), 8, out + at * texts.units);
  }
  if (const std::size_t some = count - at; some != 0) {
    // What stands in the margin is nobody's.
    const std::uint64_t word =
        word_at<std::uint64_t>(digits.data() + at) & ~std::uint64_t{0} >> (64 - 8 * some);
    texts.put_eight(word, static_cast<unsigned>(some), out + at * texts.units);
  }
  return out + count * texts.units;
}

/// Of a text that has its slack; of so many groups.
template <typename Texts, typename Unit>
inline void put_long_text(const NumberStyle& style, const Texts& texts, const NumberDigits& number,
                          std::size_t groups, Unit* out) noexcept {
  out = put_short_affix(style.prefix[number.negative].text<Unit>(), out);
  std::string_view integers = number.integers;
  if (groups != 0) {
    const ShortSymbol<Unit> separator(style.group);
    std::size_t run =
        integers.size() - style.sizes.primary - (groups - 1) * std::size_t{style.sizes.secondary};
    for (std::size_t left = groups; left != 0; --left) {
      texts.put_four(word_at<std::uint32_t>(integers.data()), out);
      integers.remove_prefix(run);
      out += run * texts.units;
      separator.put(out);
      out += separator.units;
      run = style.sizes.secondary;
    }
  }
  out = put_eights(texts, integers, out);
  if (number.fraction.size() + number.zeros != 0) {
    const ShortSymbol<Unit> symbol(style.decimal);
    symbol.put(out);
    out = put_eights(texts, number.fraction, out + symbol.units);
    constexpr std::string_view zeros("00000000");
    for (std::size_t left = number.zeros; left != 0;) {
      const std::size_t some = std::min(left, zeros.size());
      out = put_eights(texts, zeros.substr(0, some), out);
      left -= some;
    }
  }
  put_short_affix(style.suffix[number.negative].text<Unit>(), out);
}

/// As lay_out(), of digits with their margin.
template <typename Unit>
[[nodiscard, gnu::noinline]] int lay_out_long(const NumberStyle& style, const NumberDigits& number,
                                              Unit* out, std::size_t room,
                                              std::size_t* length) noexcept {
  // Eight digits of the longest, or eight units of an affix, may be written behind the text.
  constexpr std::size_t slack = 8 * short_symbol / sizeof(Unit);
  const DigitForm form = style.short_texts_in<Unit>().digit_form;
  if (form == DigitForm::listed) return lay_out(style, number, out, room, length);
  return with_digit_texts<Unit>(form, [&]<typename Texts>() {
    const Texts texts(style);
    const std::size_t groups = group_count(style, number.integers.size());
    const std::size_t decimals = number.fraction.size() + number.zeros;
    *length = style.prefix[number.negative].text<Unit>().size() +
              (number.integers.size() + decimals) * texts.units +
              groups * style.group.text<Unit>().size() +
              (decimals != 0 ? style.decimal.text<Unit>().size() : 0) +
              style.suffix[number.negative].text<Unit>().size();
    if (room < slack || *length > room - slack) return lay_out(style, number, out, room, length);
    put_long_text(style, texts, number, groups, out);
    return int{JWNLS_OK};
  });
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_LAY_OUT_LONG_H_
