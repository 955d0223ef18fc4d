#include "library/numbers/shuffled_text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/numbers/number_style.h"

#if defined(__SSE2__) && defined(__x86_64__)
#include <tmmintrin.h>
#endif

namespace jwnls::library {

#if defined(__SSE2__) && defined(__x86_64__)

namespace {

constexpr std::uint8_t no_digit = 0xC0;  // also with fewer decimals

bool processor_shuffles() noexcept { return __builtin_cpu_supports("ssse3") != 0; }

// The longest text of a style, as a row of both arrays.
class LongestText {
 public:
  LongestText(const NumberStyle& style, ShuffledText& texts, std::size_t index) noexcept
      : style_(style), texts_(texts), point_(index * ShuffledText::row + longest) {
    std::fill_n(texts.digit + index * ShuffledText::row, ShuffledText::row, no_digit);
  }

  // From the last digit on, for parts of so many digits. False where it is too long.
  bool put_integers(bool grouped, std::size_t first, std::size_t last) noexcept {
    const std::string_view separator = style_.group.text<char>();
    const std::size_t bytes = style_.digits[0].byte_count;
    std::size_t left = grouped ? style_.sizes.primary : last;  // digits of the group
    std::size_t used = 0;
    for (std::size_t digits = 1; digits <= last; ++digits, --left) {
      const std::size_t more = bytes + (left == 0 ? separator.size() : 0);
      if (used + more > longest) return false;
      if (left == 0) {
        left = style_.sizes.secondary;
        put_symbol(separator, point_ - used - separator.size());
      }
      used += more;
      put_digit(short_digits - digits, point_ - used);
      if (digits < first) continue;
      texts_.integers[digits] = {static_cast<std::uint16_t>(point_ - used),
                                 static_cast<std::uint8_t>(used)};
    }
    return true;
  }

  void put_fraction() noexcept {
    put_symbol(style_.decimal.text<char>(), point_);
    std::size_t used = style_.decimal.byte_count;
    for (std::size_t decimals = 1; decimals <= ShuffledText::most_decimals; ++decimals) {
      // The first one stands behind the last integer.
      put_digit(short_digits + decimals - 1, point_ + used);
      used += style_.digits[0].byte_count;
      texts_.fraction_bytes[decimals] = static_cast<std::uint8_t>(used);
    }
  }

 private:
  static constexpr std::size_t longest = ShuffledText::longest_integers;

  void put_symbol(std::string_view symbol, std::size_t at) noexcept {
    std::memcpy(texts_.added + at, symbol.data(), symbol.size());
  }

  // Digits of the locale's own differ in their last byte alone.
  void put_digit(std::size_t which, std::size_t at) noexcept {
    const std::string_view zero = style_.digits[0].text<char>();
    const std::size_t last = at + zero.size() - 1;
    put_symbol(zero, at);
    texts_.digit[last] = static_cast<std::uint8_t>(which);
    texts_.added[last] = static_cast<std::uint8_t>(texts_.added[last] - '0');
  }

  const NumberStyle& style_;
  ShuffledText& texts_;
  const std::size_t point_;  // behind the integers
};

// Affixes are copied whole, whatever their length.
bool put_affixes(const NumberStyle& style, ShuffledText& texts) noexcept {
  for (int i = 0; i < 2; ++i) {
    const AffixText& prefix = style.prefix[i];
    const AffixText& suffix = style.suffix[i];
    ShuffledText::Affixes& both = texts.affixes[i];
    if (std::max(prefix.byte_count, suffix.byte_count) > sizeof both.prefix) return false;
    std::memcpy(both.prefix, prefix.bytes, sizeof both.prefix);
    std::memcpy(both.suffix, suffix.bytes, sizeof both.suffix);
    both.prefix_bytes = prefix.byte_count;
    both.suffix_bytes = suffix.byte_count;
  }
  return true;
}

}  // namespace

void prepare_shuffled_text(const NumberStyle& style, ShuffledText& texts) noexcept {
  const ShortTexts& short_texts = style.short_texts_in<char>();
  if (short_texts.digit_form == DigitForm::listed || !processor_shuffles() ||
      !put_affixes(style, texts)) {
    return;
  }
  // Parts of fewer digits than groups want stand alone.
  const bool grouped = style.sizes.primary != 0;
  const std::size_t most_alone = !grouped ? std::size_t{short_digits}
                                 : style.minimum_grouping > 1
                                     ? style.sizes.primary + style.minimum_grouping - std::size_t{1}
                                     : 0;
  if (most_alone != 0) {
    LongestText alone(style, texts, 0);
    if (!alone.put_integers(false, 1, most_alone)) return;
    alone.put_fraction();
  }
  if (grouped) {
    LongestText with_groups(style, texts, 1);
    if (!with_groups.put_integers(true, most_alone + 1, short_digits)) return;
    with_groups.put_fraction();
  }
  texts.at_once = style.native_digits ? 3 * ShuffledText::step : ShuffledText::step;
  const std::size_t prefix = std::max(texts.affixes[0].prefix_bytes, texts.affixes[1].prefix_bytes);
  // All digits have integers or decimals for their own, but for a zero in front of decimals.
  const std::size_t longest =
      texts.integers[short_digits].bytes + std::size_t{style.decimal.byte_count};
  texts.room = prefix + std::max(texts.at_once, longest + ShuffledText::step);
}

// Bytes are written by the register, and what is too much of them is written over.
[[gnu::target("ssse3")]] int lay_out_shuffled(const ShuffledText& texts, ShortDecimal number,
                                              char* out, std::size_t* length) noexcept {
  const __m128i digits = sixteen_digits(number.mantissa);
  const ShuffledText::Affixes& affixes = texts.affixes[number.negative];
  std::memcpy(out, affixes.prefix, sizeof affixes.prefix);
  char* const begin = out + affixes.prefix_bytes;

  // One digit stands in front of the decimal symbol, whatever it is.
  const unsigned integers =
      std::max(digit_count(number.mantissa), number.decimals + 1) - number.decimals;
  unsigned decimals = number.decimals;
  if (number.shortest) {
    const __m128i upper = _mm_unpackhi_epi64(digits, digits);
    const auto values =
        static_cast<std::uint64_t>(_mm_cvtsi128_si64(upper)) ^ 0x3030'3030'3030'3030;
    decimals -= std::min(decimals, static_cast<unsigned>(std::countl_zero(values)) / 8);
  }
  const ShuffledText::IntegerPart part = texts.integers[integers];
  const std::size_t bytes = std::size_t{part.bytes} + texts.fraction_bytes[decimals];
  const __m128i behind = _mm_set1_epi8(static_cast<char>(number.decimals));
  const auto put = [&](std::size_t done) __attribute__((target("ssse3"), always_inline)) {
    __m128i from, added;
    std::memcpy(&from, texts.digit + part.begin + done, sizeof from);
    std::memcpy(&added, texts.added + part.begin + done, sizeof added);
    const __m128i text = _mm_add_epi8(_mm_shuffle_epi8(digits, _mm_sub_epi8(from, behind)), added);
    std::memcpy(begin + done, &text, sizeof text);
  };
  constexpr std::size_t step = ShuffledText::step;
  std::size_t done = step;
  put(0);
  // Digits of more bytes want more than one register, nearly all three of them or fewer.
  if (texts.at_once != step) {
    put(step);
    put(2 * step);
    done = 3 * step;
  }
  for (; done < bytes; done += step) [[unlikely]] put(done);

  std::memcpy(begin + bytes, affixes.suffix, sizeof affixes.suffix);
  *length = affixes.prefix_bytes + bytes + affixes.suffix_bytes;
  return JWNLS_OK;
}

#else

void prepare_shuffled_text(const NumberStyle&, ShuffledText&) noexcept {}

int lay_out_shuffled(const ShuffledText&, ShortDecimal, char*, std::size_t*) noexcept {
  return JWNLS_KIND;  // asked by nobody
}

#endif

}  // namespace jwnls::library
