#include "library/numbers/quick_scan.h"

#include <bit>
#include <cstring>

#include "include/jwnls/jwnls.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jwnls::library {
namespace {

constexpr std::size_t longest_by_character = 48;
constexpr int most_digits = 18;  // that a word holds

constexpr std::uint8_t facts_of(bool two_ways, bool marked) {
  const auto both =
      static_cast<unsigned>(marked && !two_ways) << 1 | static_cast<unsigned>(two_ways);
  static_assert(JWNLS_TWO_WAYS == 1 && JWNLS_DECIDES == 2);
  return static_cast<std::uint8_t>(both);
}

std::uint64_t load_8(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

std::uint64_t load_4(const char* bytes) {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// What stands at a place, as far as the text goes; zeros behind it.
std::uint64_t up_to_4(const char* at, const char* end) {
  if (end - at >= 4) return load_4(at);
  std::uint64_t word = 0;
  for (int i = 0; at + i != end; ++i) {
    word |= std::uint64_t{static_cast<unsigned char>(at[i])} << (8 * i);
  }
  return word;
}

#if defined(__SSE2__)

__extension__ using Wide = unsigned __int128;

// A text of 1 to 16 bytes, the first lowest, zeros above; nothing beside it is read.
Wide load_text(const char* text, std::size_t length) {
  if (length >= 8) {
    const std::uint64_t last = load_8(text + length - 8);
    const std::uint64_t high = length == 8 ? 0 : last >> (8 * (16 - length) & 63);
    return Wide{high} << 64 | load_8(text);
  }
  if (length >= 4) return load_4(text) | load_4(text + length - 4) << (8 * (length - 4));
  const auto byte = [text](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
  };
  return byte(0) | byte(length / 2) | byte(length - 1);
}

__m128i vector_of(Wide bytes) {
  return _mm_set_epi64x(static_cast<long long>(bytes >> 64), static_cast<long long>(bytes));
}

Wide wide_of(__m128i vector) {
  const auto low = static_cast<std::uint64_t>(_mm_cvtsi128_si64(vector));
  const auto high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_srli_si128(vector, 8)));
  return Wide{high} << 64 | low;
}

// Where the separators stand in front of an integer part's end: every fourth byte from there. The
// bits count from the first digit. A length that puts one in front of it has no groups.
struct GroupMasks {
  std::uint16_t of_length[17];
};

constexpr GroupMasks group_masks = [] {
  GroupMasks masks = {};
  for (unsigned length = 0; length <= 16; ++length) {
    std::uint16_t mask = 0;
    for (unsigned at = length; at >= 4; at -= 4) mask |= static_cast<std::uint16_t>(1U << (at - 4));
    masks.of_length[length] = length % 4 == 0 ? 0 : mask;
  }
  return masks;
}();

// What each of four digits counts: with the place of a separator in front, and without.
alignas(16) constexpr std::int16_t digit_weights[2][8] = {{1000, 100, 10, 1, 1000, 100, 10, 1},
                                                          {0, 100, 10, 1, 0, 100, 10, 1}};
alignas(16) constexpr std::int16_t block_weights[2][8] = {{10000, 1, 10000, 1, 0, 0, 0, 0},
                                                          {1000, 1, 1000, 1, 0, 0, 0, 0}};
constexpr std::uint64_t half_weights[2] = {100'000'000, 1'000'000};

const __m128i& weights(const std::int16_t (&row)[8]) {
  return *reinterpret_cast<const __m128i*>(row);
}

// Digit values of sixteen bytes that end with the last digit, separators as zeros.
std::uint64_t integer_of(Wide digits, bool grouped) {
  const __m128i bytes = vector_of(digits);
  const __m128i none = _mm_setzero_si128();
  const __m128i& tens = weights(digit_weights[grouped]);
  const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(bytes, none), tens),
                                        _mm_madd_epi16(_mm_unpackhi_epi8(bytes, none), tens));
  const __m128i blocks = _mm_madd_epi16(pairs, _mm_set1_epi16(1));  // four, below 10,000 each
  const __m128i halves =
      _mm_madd_epi16(_mm_packs_epi32(blocks, none), weights(block_weights[grouped]));
  const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(halves));
  return (both & 0xFFFFFFFF) * half_weights[grouped] + (both >> 32);
}

// Eight digit values, the first lowest.
std::uint64_t eight_digits(std::uint64_t digits) {
  constexpr std::uint64_t mask = 0x000000FF000000FF;
  constexpr std::uint64_t outer = 100 + (std::uint64_t{1'000'000} << 32);
  constexpr std::uint64_t inner = 1 + (std::uint64_t{10'000} << 32);
  const std::uint64_t pairs = digits * 10 + (digits >> 8);
  return ((pairs & mask) * outer + (pairs >> 16 & mask) * inner) >> 32;
}

constexpr std::uint64_t small_powers[] = {1,       10,        100,        1'000,      10'000,
                                          100'000, 1'000'000, 10'000'000, 100'000'000};

#endif

}  // namespace

#if defined(__SSE2__)

bool scan_by_masks(const QuickSyntax& syntax, const char* text, std::size_t length,
                   QuickNumber& number) noexcept {
  if (length - 1 >= 16) return false;
  const __m128i bytes = vector_of(load_text(text, length));
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
  // What has its characters all right, and its shape wrong, is no other reader's either.
  number.hopeless = true;
  if ((decimal_places & (decimal_places - 1)) != 0) return false;

  const auto integer_end = static_cast<unsigned>(std::countr_zero(decimal_places | (all + 1)));
  const unsigned integer_length = integer_end - sign;
  const bool has_decimal = decimal_places != 0;
  const bool grouped = group_places != 0;
  const unsigned expected = group_masks.of_length[integer_length];
  if (integer_length == 0 ||
      (grouped && ((group_places >> sign) != expected || text[sign] == '0'))) {
    return false;
  }
  const unsigned decimals = static_cast<unsigned>(length) - integer_end - (has_decimal ? 1 : 0);
  if (decimals > 8) {
    number.hopeless = false;
    return false;
  }

  const Wide digits = wide_of(_mm_and_si128(values, is_digit));
  number.mantissa = integer_of(digits << (8 * (16 - integer_end)), grouped);
  if (decimals != 0) {
    const auto fraction = static_cast<std::uint64_t>(digits >> (8 * (integer_end + 1)));
    number.mantissa =
        number.mantissa * small_powers[decimals] + eight_digits(fraction << (8 * (8 - decimals)));
  }
  number.decimals = decimals;
  number.negative = sign != 0;
  const bool one_group = (group_places & (group_places - 1)) == 0;
  const bool two_ways = grouped ? one_group && !has_decimal
                                : decimals == 3 && integer_length <= 3 && text[sign] != '0';
  number.facts = facts_of(two_ways, grouped || has_decimal);
  return true;
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
    return begins_with(own.minus, at, end) ? own.minus.length : 0;
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

bool scan_own_digits(const QuickSyntax& syntax, const char* text, std::size_t length,
                     QuickNumber& number) noexcept {
  if (length - 1 >= longest_by_character * syntax.own.length) return false;
  return scan_characters(OwnCharacters{syntax.own}, syntax.sizes, text, length, number);
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
