#include "library/numbers/quick_scan.h"

#include <bit>
#include <cstring>

#include "include/jwnls/jwnls.h"
#include "library/numbers/masked_number.h"

namespace jwnls::library {
namespace {

constexpr std::size_t longest_by_character = 48;
constexpr int most_digits = 18;  // that a word holds
// What stands at a place, as far as the text goes; zeros behind it.
std::uint64_t up_to_4(const char* at, const char* end) {
  if (end - at >= 4) return load_4(at);
  std::uint64_t word = 0;
  for (int i = 0; at + i != end; ++i) {
    word |= std::uint64_t{static_cast<unsigned char>(at[i])} << (8 * i);
  }
  return word;
}

}  // namespace

#if defined(__SSE2__)

bool scan_by_masks(const QuickSyntax& syntax, const char* text, std::size_t length,
                   QuickNumber& number) noexcept {
  if (length - 1 >= 16) return false;
  using namespace masked_number_details;
  const Wide loaded = load_text(text, length);
  const __m128i bytes = vector_of(loaded);
  const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  const __m128i is_digit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
  const auto places_of = [bytes](char symbol) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(symbol))));
  };
  const auto digit_places = static_cast<unsigned>(_mm_movemask_epi8(is_digit));
  const unsigned group_places = places_of(syntax.group) & syntax.group_bits;
  const unsigned decimal_places = places_of(syntax.decimal) & syntax.decimal_bits;
  const unsigned sign = text[0] == '-' ? 1 : 0;
  const unsigned all = (1U << length) - 1;
  if ((digit_places | group_places | decimal_places | sign) != all) {
    number.hopeless = _mm_movemask_epi8(bytes) == 0;  // all of it is ASCII
    return false;
  }
  return number_of({wide_of(_mm_and_si128(values, is_digit)), static_cast<unsigned>(length),
                    digit_places, group_places, decimal_places, sign},
                   static_cast<char>(static_cast<std::uint64_t>(loaded) >> 8 * sign) == '0',
                   number);
}

#else

bool scan_by_masks(const QuickSyntax&, const char*, std::size_t, QuickNumber&) noexcept {
  return false;
}

#endif

namespace {

bool begins_with(const SymbolBytes& symbol, const char* at, const char* end) {
  return symbol.length != 0 && ((up_to_4(at, end) ^ symbol.bytes) & symbol.mask) == 0;
}

// The digits 0 to 9 with the symbols of a locale. Each gives how many bytes stand there, or 0.
struct AsciiCharacters {
  const QuickSyntax& syntax;

  [[nodiscard]] std::size_t minus(const char* at, const char* end) const {
    return begins_with(syntax.minus, at, end) ? syntax.minus.length : 0;
  }
  [[nodiscard]] static std::size_t digit_bytes() { return 1; }
  [[nodiscard]] bool is_digit(const char* at, const char*, unsigned& value) const {
    value = static_cast<unsigned char>(*at) - unsigned{'0'};
    return value <= 9;
  }
  [[nodiscard]] bool is_zero(const char* at) const { return *at == '0'; }
  [[nodiscard]] std::size_t decimal(const char* at, const char*) const {
    return *at == syntax.decimal ? 1 : 0;
  }
  [[nodiscard]] std::size_t group(const char* at, const char* end) const {
    for (const SymbolBytes& symbol : syntax.groups) {
      if (begins_with(symbol, at, end)) return symbol.length;
    }
    return 0;
  }
  [[nodiscard]] bool group_is_blank() const { return syntax.group_is_blank; }
};

// The same of a locale's own digits.
struct OwnCharacters {
  const OwnDigits& own;

  [[nodiscard]] std::size_t minus(const char* at, const char* end) const {
    const std::size_t length = own.minus.length;
    return static_cast<std::size_t>(end - at) >= length &&
                   std::memcmp(at, own.minus.bytes, length) == 0
               ? length
               : 0;
  }
  [[nodiscard]] std::size_t digit_bytes() const { return own.length; }
  [[nodiscard]] bool is_digit(const char* at, const char* end, unsigned& value) const {
    const std::uint64_t word = up_to_4(at, end);
    value = static_cast<unsigned>(word >> (8 * (own.length - 1)) & 0xFF) - own.zero;
    return ((word ^ own.front.bytes) & own.front.mask) == 0 && value <= 9;
  }
  [[nodiscard]] bool is_zero(const char* at) const {
    return static_cast<unsigned char>(at[own.length - 1]) == own.zero;
  }
  [[nodiscard]] std::size_t decimal(const char* at, const char* end) const {
    return begins_with(own.decimal, at, end) ? own.decimal.length : 0;
  }
  [[nodiscard]] std::size_t group(const char* at, const char* end) const {
    return begins_with(own.group, at, end) ? own.group.length : 0;
  }
  [[nodiscard]] bool group_is_blank() const { return own.group_is_blank; }
};

// Of at most longest_by_character bytes.
template <typename Characters>
[[gnu::always_inline]] inline bool scan_characters(const Characters characters, GroupSizes sizes,
                                                   const char* text, std::size_t length,
                                                   QuickNumber& number) {
  const char* at = text;
  const char* const end = text + length;
  const std::size_t minus = *at == '-' ? 1 : characters.minus(at, end);
  number.negative = minus != 0;
  at += minus;
  std::uint64_t mantissa = 0;
  int digits = 0;
  unsigned run = 0;     // digits of the present group
  unsigned groups = 0;  // separators
  bool led_by_zero = false;
  const auto take_digits = [&] {
    for (run = 0; at != end; ++run) {
      unsigned value = 0;
      if (!characters.is_digit(at, end, value)) break;
      mantissa = mantissa * 10 + value;
      at += characters.digit_bytes();
    }
    digits += static_cast<int>(run);
  };
  std::size_t decimal = 0;
  while (true) {
    const char* const begin = at;
    take_digits();
    if (run == 0) return false;
    if (groups == 0) led_by_zero = characters.is_zero(begin);
    if (at == end) break;
    decimal = characters.decimal(at, end);
    if (decimal != 0) break;
    const std::size_t group = characters.group(at, end);
    if (group == 0 ||
        (groups == 0 ? run > sizes.secondary || led_by_zero : run != sizes.secondary)) {
      return false;
    }
    at += group;
    ++groups;
  }
  if (groups != 0 && run != sizes.primary) return false;
  const int integers = digits;
  if (decimal != 0) {
    at += decimal;
    take_digits();
    if (at != end) return false;
  }
  if (digits > most_digits) return false;
  number.mantissa = mantissa;
  number.decimals = static_cast<std::uint32_t>(digits - integers);
  const bool two_ways = groups != 0 ? groups == 1 && decimal == 0 && !characters.group_is_blank()
                                    : number.decimals == 3 && integers <= 3 && !led_by_zero;
  number.facts = facts_of(two_ways, groups != 0 || decimal != 0);
  return true;
}

}  // namespace

bool scan_by_character(const QuickSyntax& syntax, const char* text, std::size_t length,
                       QuickNumber& number) noexcept {
  if (length - 1 >= longest_by_character) return false;
  return scan_characters(AsciiCharacters{syntax}, syntax.sizes, text, length, number);
}

namespace {

#if defined(__SSE2__)

// Characters of two bytes each by masks: eight at either end, which overlap where there are fewer.
bool scan_two_bytes(const OwnDigits& own, const char* text, std::size_t length,
                    QuickNumber& number) {
  using namespace masked_number_details;
  if (length - 2 > 30 || length % 2 != 0) return false;
  const auto load = [](const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  };
  const bool is_short = length < 16;
  const __m128i front = is_short ? vector_of(load_text(text, length)) : load(text);
  const __m128i back = is_short ? _mm_setzero_si128() : load(text + length - 16);
  const auto lanes_of = [](std::uint32_t symbol) {
    return _mm_set1_epi16(static_cast<std::int16_t>(symbol));
  };
  const __m128i zero = lanes_of(own.front.bytes | std::uint32_t{own.zero} << 8);
  // A digit's value, and more of other characters.
  const auto values_of = [zero](__m128i characters) {
    const __m128i beyond = _mm_sub_epi16(characters, zero);
    return _mm_or_si128(_mm_srli_epi16(beyond, 8), _mm_slli_epi16(beyond, 8));
  };
  const auto is_digit = [](__m128i values) {
    return _mm_cmpeq_epi16(_mm_subs_epu16(values, _mm_set1_epi16(9)), _mm_setzero_si128());
  };
  const unsigned count = static_cast<unsigned>(length) / 2;
  const unsigned moved = (is_short ? 8 : count) - 8;  // from the back's begin to the front's end
  const unsigned all = (1U << count) - 1;
  const auto places_of = [&](__m128i in_front, __m128i in_back) {
    const auto both = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(in_front, in_back)));
    return ((both & 0xFF) | both >> 8 << moved) & all;
  };
  const auto places_of_symbol = [&](std::uint32_t symbol) {
    const __m128i lanes = lanes_of(symbol);
    return places_of(_mm_cmpeq_epi16(front, lanes), _mm_cmpeq_epi16(back, lanes));
  };
  const __m128i front_values = values_of(front);
  const __m128i back_values = values_of(back);
  const __m128i in_front = is_digit(front_values);
  const __m128i in_back = is_digit(back_values);
  const unsigned digits = places_of(in_front, in_back);
  const unsigned groups = places_of_symbol(own.group.bytes);
  const unsigned decimal = places_of_symbol(own.decimal.bytes) & own.decimal.mask;
  if ((digits | groups | decimal) != all) return false;
  const Wide values = wide_of(
      _mm_packus_epi16(_mm_and_si128(front_values, in_front), _mm_and_si128(back_values, in_back)));
  const Wide joined = static_cast<std::uint64_t>(values) | values >> 64 << 8 * moved;
  const bool led_by_zero = (joined & 0xFF) == 0 && (digits & 1) != 0;
  return number_of({joined, count, digits, groups, decimal, 0}, led_by_zero, number);
}

#else

bool scan_two_bytes(const OwnDigits&, const char*, std::size_t, QuickNumber&) { return false; }

#endif

}  // namespace

bool scan_own_digits(const QuickSyntax& syntax, const char* text, std::size_t length,
                     QuickNumber& number) noexcept {
  const OwnCharacters characters{syntax.own};
  if (length - 1 >= longest_by_character * syntax.own.length) return false;
  if (syntax.own.masks) {
    // No minus sign begins with what the digits begin with.
    const bool begins_alike =
        ((static_cast<unsigned char>(*text) ^ syntax.own.front.bytes) & 0xFF) == 0;
    const std::size_t minus = begins_alike   ? 0
                              : *text == '-' ? 1
                                             : characters.minus(text, text + length);
    if (scan_two_bytes(syntax.own, text + minus, length - minus, number)) {
      number.negative = minus != 0;
      return true;
    }
  }
  return scan_characters(characters, syntax.sizes, text, length, number);
}

bool scan_beyond_ascii(const QuickSyntax& syntax, const char* text, std::size_t length,
                       QuickNumber& number) noexcept {
  return scan_own_digits(syntax, text, length, number) ||
         scan_by_character(syntax, text, length, number);
}

namespace {

// The first eight bytes of a text, and the last; zeros where there are fewer.
struct BothEnds {
  std::uint64_t first = 0, last = 0;

  BothEnds(const char* text, std::size_t length) {
    if (length >= 8) [[likely]] {
      first = load_8(text);
      last = load_8(text + length - 8);
      return;
    }
    if (length >= 4) {
      first = load_4(text) | load_4(text + length - 4) << (8 * (length - 4));
    } else {
      first = up_to_4(text, text + length);
    }
    last = first << 4 * (8 - length) << 4 * (8 - length);
  }
};

// Whether an affix stands at a place. Where it is longer than what was compared, the rest.
bool rest_stands_at(const AffixBytes& affix, const char* at) {
  return affix.length <= 8 || std::memcmp(at, affix.bytes, affix.length) == 0;
}

}  // namespace

namespace {

// The sign that a form of the affixes gives the text, or none where they are not around it.
enum class Around : std::uint8_t { positive, negative, other };

Around around_of(const QuickAffixes& affixes, const BothEnds& ends, const char* text,
                 std::size_t length) {
  const auto has = [&](bool negative) {
    const AffixBytes& prefix = affixes.prefix[negative];
    const AffixBytes& suffix = affixes.suffix[negative];
    return ((ends.first ^ prefix.word) & prefix.mask) == 0 &&
           ((ends.last ^ suffix.word) & suffix.mask) == 0 &&
           std::size_t{prefix.length} + suffix.length < length && rest_stands_at(prefix, text) &&
           rest_stands_at(suffix, text + length - suffix.length);
  };
  return has(true) ? Around::negative : has(false) ? Around::positive : Around::other;
}

}  // namespace

bool scan_between_affixes(const NumberSyntax& syntax, const char* text, std::size_t length,
                          QuickNumber& number) noexcept {
  const QuickAffixes* affixes = &syntax.affixes;
  if (!affixes->usable || length > longest_text) return false;
  const BothEnds ends(text, length);
  Around around = around_of(*affixes, ends, text, length);
  if (around == Around::other && syntax.typed_affixes.usable) {
    affixes = &syntax.typed_affixes;
    around = around_of(*affixes, ends, text, length);
  }
  if (around == Around::other) return false;
  const bool negative = around == Around::negative;
  const std::size_t prefix = affixes->prefix[negative].length;
  const std::size_t digits = length - prefix - affixes->suffix[negative].length;
  if (!scan_quickly(syntax.quick, text + prefix, digits, number)) return false;
  // A second sign, or what the currency's decimals decide, is the full reader's matter.
  const bool three_decimals = number.decimals == 3 && (number.facts & JWNLS_TWO_WAYS) != 0;
  if (number.negative || (three_decimals && syntax.unit == UnitKind::currency)) return false;
  number.negative = negative;
  return true;
}

}  // namespace jwnls::library
