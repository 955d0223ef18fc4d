#include "client/number_format.h"

#include <string>

namespace jwnls::client {
namespace {

tl::unexpected<Error> refused(std::string reason) {
  return failure(Status::not_possible, std::move(reason));
}

Result<void> in_range(const char* what, int value, int least, int most) {
  if (value >= least && value <= most) return {};
  return refused(std::string(what) + " " + std::to_string(value) + ": not " +
                 std::to_string(least) + " to " + std::to_string(most));
}

Result<void> check_decimals(std::optional<int> decimals) {
  if (decimals == no_such_decimals) {
    return refused("decimals 99: the one count that cannot be asked for; ask for 98 or 100");
  }
  return in_range("decimals", decimals.value_or(0), 0, most_digits);
}

Result<void> check_bound(const NumberFormat& format) {
  const bool best_fit = format.kind == NumberKind::best_fit;
  const std::string kind = best_fit ? "best fit" : "decimal-aligned";
  if (format.sign != SignDisplay::negative) return refused(kind + ": shows no sign but a minus");
  if (format.zero_fill) return refused(kind + ": cannot be filled with zeros");
  if (best_fit && format.decimals) return refused(kind + ": chooses the decimals itself");
  if (!best_fit && format.left) return refused(kind + ": cannot be left-justified");
  if (best_fit && format.width == 0) return {};
  return in_range(best_fit ? "width of best fit" : "width of decimal-aligned", format.width, 1,
                  widest_bound_field);
}

}  // namespace

Result<void> check(const NumberFormat& format) {
  if (format.kind == NumberKind::general) {
    auto digits = in_range("significant digits", format.decimals.value_or(1), 1, most_digits);
    if (!digits) return digits;
  }
  auto decimals = check_decimals(format.decimals);
  if (!decimals) return decimals;
  if (format.kind == NumberKind::best_fit || format.kind == NumberKind::decimal_aligned) {
    return check_bound(format);
  }
  return in_range("width", format.width, 0, widest_field);
}

Result<void> check(const IntegerFormat& format) {
  if (format.prefix && format.radix != Radix::hexadecimal) {
    return refused("prefix: only for hexadecimal integers");
  }
  if (format.sign != SignDisplay::negative && format.radix != Radix::decimal) {
    return refused("sign: only for decimal integers");
  }
  return in_range("minimum digits", format.minimum_digits, 1, widest_field).and_then([&] {
    return in_range("width", format.width, 0, widest_field);
  });
}

Result<void> check(const CurrencyFormat& format) {
  return check_decimals(format.decimals).and_then([&] {
    return in_range("width", format.width, 0, widest_field);
  });
}

Result<void> check(const PercentFormat& format) {
  return check_decimals(format.decimals).and_then([&] {
    return in_range("width", format.width, 0, widest_field);
  });
}

}  // namespace jwnls::client
