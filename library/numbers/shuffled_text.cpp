#include "library/numbers/shuffled_text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/numbers/number_style.h"

#if defined(__SSE2__) && defined(__x86_64__)
#include <immintrin.h>
#if defined(__clang__)
#include <cpuid.h>
#endif
#endif

namespace jwnls::library {

#if defined(__SSE2__) && defined(__x86_64__)

namespace {

constexpr std::uint8_t no_digit = 0xC0;  // also with fewer decimals

// All that have AVX2 count leading zeros, too; a virtual one may say no.
bool processor_counts_zeros() noexcept {
#if defined(__clang__)
  // Whose builtin does not know it. Asking takes microseconds on a virtual machine.
  static const bool counts = [] {
    constexpr unsigned lzcnt = 1U << 5;
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    return __get_cpuid(0x8000'0001, &eax, &ebx, &ecx, &edx) != 0 && (ecx & lzcnt) != 0;
  }();
  return counts;
#else
  return __builtin_cpu_supports("lzcnt") != 0;
#endif
}

bool processor_shuffles() noexcept {
  return __builtin_cpu_supports("avx2") != 0 && processor_counts_zeros();
}

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
  const auto prefix = std::max(texts.affixes[0].prefix_bytes, texts.affixes[1].prefix_bytes);
  // All digits have integers or decimals for their own, but for a zero in front of decimals.
  const std::size_t longest =
      texts.integers[short_digits].bytes + std::size_t{style.decimal.byte_count};
  texts.room = prefix + std::max(texts.at_once, longest + ShuffledText::step);
  constexpr int most = ShuffledText::most_decimals;
  if (style.short_form == ShortForm::none || style.shift != 0 || style.decimals > most) return;
  texts.scaled_room = texts.room;
  texts.least_decimals = static_cast<unsigned>(std::max(style.decimals, 0));
  texts.more_decimals = style.decimals < 0 ? most : 0;
}

namespace {

// Bytes are written by the register, and what is too much of them is written over: a store whose
// place depends on the digits, as that of a suffix does, keeps others waiting.
[[gnu::target("avx2,lzcnt"), gnu::always_inline]] inline int lay_out(const ShuffledText& texts,
                                                                     const ShortDecimal& number,
                                                                     char* out,
                                                                     std::size_t* length) noexcept {
  const __m128i values = sixteen_values(number.mantissa);
  // One digit stands in front of the decimal symbol, whatever it is.
  const unsigned digits = std::max(digit_count(number.mantissa), number.decimals + 1);
  const ShuffledText::IntegerPart part = texts.integers[digits - number.decimals];
  unsigned decimals = number.decimals;
  if (number.shortest) {
    const __m128i nonzero = _mm_cmpgt_epi8(values, _mm_setzero_si128());
    const auto zeros = static_cast<unsigned>(
        std::countl_zero(static_cast<std::uint16_t>(_mm_movemask_epi8(nonzero))));
    decimals -= std::min(decimals, zeros);
  }
  const std::size_t bytes = std::size_t{part.bytes} + texts.fraction_bytes[decimals];

  const ShuffledText::Affixes* affixes = &texts.affixes[number.negative];
  asm("" : "+r"(affixes));  // one address, which is computed once
  std::memcpy(out, affixes->prefix, sizeof affixes->prefix);
  char* const begin = out + affixes->prefix_bytes;
  const __m128i moved = _mm_set1_epi8(static_cast<char>(number.decimals));
  const auto put = [&](std::size_t done) __attribute__((target("avx2,lzcnt"), always_inline)) {
    __m128i from, added;
    std::memcpy(&from, texts.digit + part.begin + done, sizeof from);
    std::memcpy(&added, texts.added + part.begin + done, sizeof added);
    const __m128i text = _mm_add_epi8(_mm_shuffle_epi8(values, _mm_sub_epi8(from, moved)), added);
    std::memcpy(begin + done, &text, sizeof text);
  };
  constexpr std::size_t step = ShuffledText::step;
  std::size_t done = step;
  put(0);
  // Digits of more bytes want more than one register, nearly all three of them or fewer.
  if (texts.at_once != step) [[unlikely]] {
    put(step);
    put(2 * step);
    done = 3 * step;
  }
  for (; done < bytes; done += step) [[unlikely]] put(done);

  if (affixes->suffix_bytes != 0) [[unlikely]] {
    std::memcpy(begin + bytes, affixes->suffix, sizeof affixes->suffix);
  }
  *length = affixes->prefix_bytes + bytes + affixes->suffix_bytes;
  return JWNLS_OK;
}

}  // namespace

[[gnu::target("avx2,lzcnt")]] int lay_out_shuffled(const ShuffledText& texts, ShortDecimal number,
                                                   char* out, std::size_t* length) noexcept {
  return lay_out(texts, number, out, length);
}

[[gnu::target("avx2,lzcnt")]] int lay_out_as_it_is(const ShuffledText& texts,
                                                   std::uint64_t magnitude, unsigned decimals,
                                                   char* out, bool negative,
                                                   std::size_t* length) noexcept {
  return lay_out(texts, {magnitude, decimals, negative}, out, length);
}

#else

void prepare_shuffled_text(const NumberStyle&, ShuffledText&) noexcept {}

int lay_out_shuffled(const ShuffledText&, ShortDecimal, char*, std::size_t*) noexcept {
  return JWNLS_KIND;  // asked by nobody
}

int lay_out_as_it_is(const ShuffledText&, std::uint64_t, unsigned, char*, bool,
                     std::size_t*) noexcept {
  return JWNLS_KIND;  // nor this
}

#endif

}  // namespace jwnls::library
