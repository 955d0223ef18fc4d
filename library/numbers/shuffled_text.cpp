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

constexpr std::size_t register_bytes = 16;
constexpr std::size_t slack = register_bytes;  // behind a text, that is written over
constexpr std::uint8_t no_digit = 0xC0;        // also with fewer decimals

bool processor_shuffles() noexcept { return __builtin_cpu_supports("ssse3") != 0; }

constexpr ShuffledText without_groups = [] {
  ShuffledText texts;
  std::fill(std::begin(texts.digit), std::end(texts.digit), no_digit);
  for (std::uint8_t digits = 1; digits <= short_digits; ++digits) {
    const auto begin = static_cast<std::uint8_t>(ShuffledText::longest - digits);
    texts.digit[begin] = static_cast<std::uint8_t>(short_digits - digits);
    texts.integers[digits] = {begin, digits};
  }
  return texts;
}();

// The longest integer part, from its last digit on, in a row of its own. False where it is too
// long.
bool put_groups(const NumberStyle& style, ShuffledText& texts) noexcept {
  constexpr std::size_t end = 3 * ShuffledText::longest;
  const std::string_view separator = style.group.text<char>();
  const std::size_t first_with_groups = style.sizes.primary + style.minimum_grouping;
  std::size_t at = end;
  std::size_t left = style.sizes.primary;  // digits of the group
  for (std::size_t digits = 1; digits <= short_digits; ++digits, --left) {
    if (left == 0) {
      left = style.sizes.secondary;
      if (end - at + separator.size() > ShuffledText::longest) return false;
      at -= separator.size();
      separator.copy(texts.separators + at, separator.size());
    }
    if (end - at == ShuffledText::longest) return false;
    texts.digit[--at] = static_cast<std::uint8_t>(short_digits - digits);
    if (digits < first_with_groups) continue;
    texts.integers[digits] = {static_cast<std::uint8_t>(at), static_cast<std::uint8_t>(end - at)};
  }
  return true;
}

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
  if (style.native_digits || style.decimal.byte_count > sizeof texts.symbol ||
      !processor_shuffles()) {
    return;
  }
  texts = without_groups;
  if (!put_affixes(style, texts)) return;
  if (style.sizes.primary != 0 && !put_groups(style, texts)) return;
  std::memcpy(texts.symbol, style.decimal.bytes, sizeof texts.symbol);
  texts.symbol_bytes = style.decimal.byte_count;
  const auto bytes_of = [](const ShuffledText::Affixes& both) {
    return std::size_t{both.prefix_bytes} + both.suffix_bytes;
  };
  texts.room = std::max(bytes_of(texts.affixes[0]), bytes_of(texts.affixes[1])) +
               texts.integers[short_digits].bytes + texts.symbol_bytes +
               ShuffledText::most_decimals + slack;
}

// Bytes are written by the register, and what is too much of them is written over.
[[gnu::target("ssse3")]] int lay_out_shuffled(const ShuffledText& texts, ShortDecimal number,
                                              char* out, std::size_t* length) noexcept {
  const __m128i digits = sixteen_digits(number.mantissa);
  const ShuffledText::Affixes& affixes = texts.affixes[number.negative];
  std::memcpy(out, affixes.prefix, sizeof affixes.prefix);
  char* at = out + affixes.prefix_bytes;

  // One digit stands in front of the decimal symbol, whatever it is.
  const unsigned integers =
      std::max(digit_count(number.mantissa), number.decimals + 1) - number.decimals;
  const ShuffledText::IntegerPart part = texts.integers[integers];
  const __m128i behind = _mm_set1_epi8(static_cast<char>(number.decimals));
  const auto put = [&](std::size_t done) __attribute__((target("ssse3"), always_inline)) {
    __m128i from, separators;
    std::memcpy(&from, texts.digit + part.begin + done, sizeof from);
    std::memcpy(&separators, texts.separators + part.begin + done, sizeof separators);
    const __m128i text = _mm_shuffle_epi8(digits, _mm_sub_epi8(from, behind));
    const __m128i whole = _mm_or_si128(text, separators);
    std::memcpy(at + done, &whole, sizeof whole);
  };
  put(0);
  if (part.bytes > register_bytes) [[unlikely]]
    put(register_bytes);
  at += part.bytes;

  unsigned decimals = number.decimals;
  const __m128i upper = _mm_unpackhi_epi64(digits, digits);
  const auto fraction = static_cast<std::uint64_t>(_mm_cvtsi128_si64(upper));
  if (number.shortest) {
    const std::uint64_t values = fraction ^ 0x3030'3030'3030'3030;
    decimals -= std::min(decimals, static_cast<unsigned>(std::countl_zero(values)) / 8);
  }
  const std::uint64_t shown = fraction >> (64 - 8 * number.decimals) % 64;
  const std::size_t symbol = texts.symbol_bytes;
  std::memcpy(at, texts.symbol, sizeof texts.symbol);
  std::memcpy(at + symbol, &shown, sizeof shown);
  if (decimals != 0) at += symbol + decimals;

  std::memcpy(at, affixes.suffix, sizeof affixes.suffix);
  *length = static_cast<std::size_t>(at - out) + affixes.suffix_bytes;
  return JWNLS_OK;
}

#else

void prepare_shuffled_text(const NumberStyle&, ShuffledText&) noexcept {}

int lay_out_shuffled(const ShuffledText&, ShortDecimal, char*, std::size_t*) noexcept {
  return JWNLS_KIND;  // asked by nobody
}

#endif

}  // namespace jwnls::library
