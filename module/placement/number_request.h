// What a call of the floating formatter asks for, decoded from its flags, width and decimals.

#ifndef JWNLS_MODULE_PLACEMENT_NUMBER_REQUEST_H_
#define JWNLS_MODULE_PLACEMENT_NUMBER_REQUEST_H_

#include <cstdint>
#include <limits>

#include "abi/number_flags.h"

namespace jwnls {

enum class NumberKind : std::uint8_t {
  fixed,
  fraction,  // the integer part dropped
  general,
  exponent,
  best_fit,  // this and the following are bound to a width
  decimal_aligned,
  exponent_only,
  bound_exponent,
};

inline constexpr std::int32_t most_decimals = 350;
inline constexpr std::int32_t best_fit_decimals = 99;  // asks for the best-fit kind by itself

struct NumberRequest {
  std::int64_t width;     // 0 or above; 0 is no field
  std::int32_t decimals;  // general: significant digits
  NumberKind kind;
  bool left;
  bool group;
  bool zero_fill;
  bool sign;
  bool blank;
  bool point;
  bool trailing_zeros;
  bool capital;  // "E"

  constexpr bool width_bound() const noexcept { return kind >= NumberKind::best_fit; }
};

/// Decodes a call. Several kinds asked for together: the first row of the function wins.
constexpr NumberRequest number_request(std::int32_t width, std::int32_t decimals,
                                       std::uint32_t flags) noexcept {
  using namespace number_flags;
  NumberRequest request{};
  request.width = width < 0 ? -std::int64_t{width} : width;
  request.left = width < 0 || (flags & left) != 0;
  request.group = (flags & group) != 0;
  request.zero_fill = (flags & zero_fill) != 0 && !request.left && request.width != 0;
  request.sign = (flags & sign) != 0;
  request.blank = (flags & blank) != 0 && (flags & (sign | zero_fill)) == 0 && !request.left;
  request.point = (flags & point) != 0;
  request.trailing_zeros = (flags & trailing_zeros) != 0;

  const std::uint32_t exponents = exponent_small | exponent_capital;
  if ((flags & exponent_only) != 0) {
    request.kind = NumberKind::exponent_only;
  } else if ((flags & bound_exponent) != 0) {
    // By the sign of the decimals this bit asks for three kinds.
    request.kind = decimals > 0    ? NumberKind::bound_exponent
                   : decimals == 0 ? NumberKind::fixed
                                   : NumberKind::decimal_aligned;
    if (decimals < 0) {
      decimals = decimals == std::numeric_limits<std::int32_t>::min()
                     ? std::numeric_limits<std::int32_t>::max()
                     : -decimals;
    }
  } else if ((flags & decimal_aligned) != 0) {
    request.kind = NumberKind::decimal_aligned;
    if (decimals < 0) decimals = 0;
  } else if ((flags & best_fit) != 0 || decimals == best_fit_decimals) {
    request.kind = NumberKind::best_fit;
  } else if ((flags & (general | general_capital)) != 0 ||
             (flags & (exponents | fraction_only | fixed | integer_first)) == 0) {
    request.kind = NumberKind::general;  // asked for, or nothing is
  } else if ((flags & exponents) != 0) {
    request.kind = NumberKind::exponent;
  } else {
    request.kind = (flags & fraction_only) != 0 ? NumberKind::fraction : NumberKind::fixed;
  }
  const std::uint32_t capital_bit =
      request.kind == NumberKind::general ? general_capital : general_capital | exponent_capital;
  request.capital = (flags & capital_bit) != 0;

  if (!request.width_bound()) {
    if (decimals < 0) decimals = 6;
    if (decimals > most_decimals) decimals = most_decimals;
    if (request.kind == NumberKind::general && decimals == 0) decimals = 6;
  }
  request.decimals = decimals;
  return request;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_NUMBER_REQUEST_H_
