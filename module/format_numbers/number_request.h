// What a call of the floating formatter asks for, decoded from its flags, width and decimals.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_REQUEST_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_REQUEST_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "abi/number_flags.h"
#include "module/digits/decimal.h"
#include "module/placement/field.h"

namespace jwnls {

enum class NumberKind : std::uint8_t {
  fixed = static_cast<std::uint8_t>(DecimalForm::fixed),
  fraction = static_cast<std::uint8_t>(DecimalForm::fraction),
  general = static_cast<std::uint8_t>(DecimalForm::general),
  exponent = static_cast<std::uint8_t>(DecimalForm::exponent),
  best_fit,  // this and the following are bound to a width
  decimal_aligned,
  exponent_only,
  bound_exponent,
};

inline constexpr std::int32_t best_fit_decimals = 99;  // asks for the best-fit kind by itself
inline constexpr std::int32_t default_significant_digits = 6;  // of the general kind

struct NumberRequest {
  Field field;
  std::int32_t decimals;  // general: significant digits
  NumberKind kind;
  bool group;
  bool sign;
  bool blank;
  bool point;
  bool trailing_zeros;
  bool capital;  // "E"

  constexpr bool width_bound() const noexcept { return kind >= NumberKind::best_fit; }
  /// Of a kind that is not bound to a width.
  constexpr DecimalForm form() const noexcept { return static_cast<DecimalForm>(kind); }
};

namespace number_kinds {

// What a kind makes of the decimals that it is called with.
enum class Taken : std::uint8_t {
  as_they_are,
  without_sign,
  from_zero,    // those below 0 become 0
  plain,        // those below 0 become 6, at most most_decimals
  significant,  // the same, and 0 becomes 6
};

struct KindRow {
  std::uint32_t flags;  // any of them asks for the kind; 0: it needs none
  std::int32_t lowest;  // decimals that it takes
  std::int32_t highest;
  NumberKind kind;
  Taken taken;
};

inline constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();

// The first row that matches wins.
inline constexpr KindRow rows[] = {
    {number_flags::exponent_only, least, most, NumberKind::exponent_only, Taken::as_they_are},
    // By the sign of the decimals this bit asks for three kinds.
    {number_flags::bound_exponent, 1, most, NumberKind::bound_exponent, Taken::as_they_are},
    {number_flags::bound_exponent, 0, 0, NumberKind::fixed, Taken::plain},
    {number_flags::bound_exponent, least, -1, NumberKind::decimal_aligned, Taken::without_sign},
    {number_flags::decimal_aligned, least, most, NumberKind::decimal_aligned, Taken::from_zero},
    {number_flags::best_fit, least, most, NumberKind::best_fit, Taken::as_they_are},
    {0, best_fit_decimals, best_fit_decimals, NumberKind::best_fit, Taken::as_they_are},
    {number_flags::general | number_flags::general_capital, least, most, NumberKind::general,
     Taken::significant},
    {number_flags::exponent_small | number_flags::exponent_capital, least, most,
     NumberKind::exponent, Taken::plain},
    {number_flags::fraction_only, least, most, NumberKind::fraction, Taken::plain},
    {number_flags::fixed | number_flags::integer_first, least, most, NumberKind::fixed,
     Taken::plain},
    {0, least, most, NumberKind::general, Taken::significant},
};

constexpr bool matches(const KindRow& row, std::int32_t decimals, std::uint32_t flags) noexcept {
  return (row.flags == 0 || (flags & row.flags) != 0) && decimals >= row.lowest &&
         decimals <= row.highest;
}

constexpr std::int32_t taken_decimals(Taken taken, std::int32_t decimals) noexcept {
  switch (taken) {
    case Taken::as_they_are:
      return decimals;
    case Taken::without_sign:
      return decimals == least ? most : -decimals;
    case Taken::from_zero:
      return std::max(decimals, 0);
    case Taken::significant:
      if (decimals == 0) return default_significant_digits;
      [[fallthrough]];
    case Taken::plain:
      break;
  }
  return decimals < 0 ? 6 : std::min(decimals, most_decimals);
}

// Row by row without a loop: each becomes a comparison with constants.
template <std::size_t... i>
constexpr void choose(std::int32_t decimals, std::uint32_t flags, NumberRequest& request,
                      std::index_sequence<i...> /*rows*/) noexcept {
  (void)((matches(rows[i], decimals, flags) &&
          (request.kind = rows[i].kind, request.decimals = taken_decimals(rows[i].taken, decimals),
           true)) ||
         ...);
}

}  // namespace number_kinds

/// Decodes a call.
constexpr NumberRequest number_request(std::int32_t width, std::int32_t decimals,
                                       std::uint32_t flags) noexcept {
  using namespace number_flags;
  NumberRequest request{};
  Field& field = request.field;
  field.width = width < 0 ? -std::int64_t{width} : width;
  field.left = width < 0 || (flags & left) != 0;
  field.zero_fill = (flags & zero_fill) != 0 && !field.left && field.width != 0;
  request.group = (flags & group) != 0;
  request.sign = (flags & sign) != 0;
  request.blank = (flags & blank) != 0 && (flags & (sign | zero_fill)) == 0 && !field.left;
  request.point = (flags & point) != 0;
  request.trailing_zeros = (flags & trailing_zeros) != 0;
  number_kinds::choose(decimals, flags, request,
                       std::make_index_sequence<std::size(number_kinds::rows)>());
  const std::uint32_t capital_bit =
      request.kind == NumberKind::general ? general_capital : general_capital | exponent_capital;
  request.capital = (flags & capital_bit) != 0;
  return request;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_REQUEST_H_
