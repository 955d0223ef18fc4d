#include "library/numbers/shuffled_text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/numbers/number_style.h"

#if defined(__x86_64__)
#include <tmmintrin.h>
#endif

namespace jwnls::library {

#if defined(__x86_64__)

namespace {

constexpr std::size_t register_bytes = 16;
constexpr std::size_t slack = register_bytes;  // behind a text, that is written over
constexpr std::uint8_t no_digit = 0xC0;        // also with fewer decimals

bool processor_shuffles() noexcept { return __builtin_cpu_supports("ssse3") != 0; }

// The longest integer part, from its last digit on. False where it is too long.
bool put_row(std::string_view separator, GroupSizes sizes, std::size_t end,
             ShuffledText& texts) noexcept {
  std::size_t at = end;
  std::size_t left = sizes.primary == 0 ? short_digits : sizes.primary;  // of the group
  for (unsigned digit = short_digits; digit-- > 0; --left) {
    if (left == 0) {
      left = sizes.secondary;
      if (end - at + separator.size() > ShuffledText::longest) return false;
      at -= separator.size();
      separator.copy(texts.separators + at, separator.size());
    }
    if (end - at == ShuffledText::longest) return false;
    texts.digit[--at] = static_cast<std::uint8_t>(digit);
  }
  return true;
}

bool put_affixes(const NumberStyle& style, ShuffledText& texts) noexcept {
  for (int i = 0; i < 2; ++i) {
    const std::string_view prefix = style.prefix[i].text<char>();
    const std::string_view suffix = style.suffix[i].text<char>();
    if (std::max(prefix.size(), suffix.size()) > ShuffledText::longest_affix) return false;
    ShuffledText::Affixes& both = texts.affixes[i];
    both.prefix_bytes = static_cast<std::uint8_t>(prefix.copy(both.prefix, prefix.size()));
    both.suffix_bytes = static_cast<std::uint8_t>(suffix.copy(both.suffix, suffix.size()));
  }
  return true;
}

}  // namespace

ShuffledText shuffled_text(const NumberStyle& style) noexcept {
  ShuffledText texts;
  const std::string_view separator = style.group.text<char>();
  const std::string_view symbol = style.decimal.text<char>();
  constexpr std::size_t end[] = {ShuffledText::longest, 3 * ShuffledText::longest};
  std::fill(std::begin(texts.digit), std::end(texts.digit), no_digit);
  if (style.native_digits || symbol.size() > sizeof texts.symbol || !put_affixes(style, texts) ||
      !put_row({}, {}, end[0], texts) || !put_row(separator, style.sizes, end[1], texts) ||
      !processor_shuffles()) {
    return texts;
  }
  texts.symbol_bytes = static_cast<std::uint8_t>(symbol.copy(texts.symbol, symbol.size()));
  for (std::size_t digits = 1; digits <= short_digits; ++digits) {
    const std::size_t groups = group_count(style, digits);
    const std::size_t bytes = digits + groups * separator.size();
    texts.integers[digits] = {static_cast<std::uint8_t>(end[groups != 0] - bytes),
                              static_cast<std::uint8_t>(bytes)};
  }
  const auto bytes_of = [](const ShuffledText::Affixes& both) {
    return std::size_t{both.prefix_bytes} + both.suffix_bytes;
  };
  texts.room = std::max(bytes_of(texts.affixes[0]), bytes_of(texts.affixes[1])) +
               texts.integers[short_digits].bytes + symbol.size() + ShuffledText::most_decimals +
               slack;
  return texts;
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

ShuffledText shuffled_text(const NumberStyle&) noexcept { return {}; }

int lay_out_shuffled(const ShuffledText&, ShortDecimal, char*, std::size_t*) noexcept {
  return JWNLS_KIND;  // asked by nobody
}

#endif

}  // namespace jwnls::library
