#include "tool/plain_number.h"

#include <charconv>

namespace jwnls::tool {
namespace {

constexpr std::uint64_t most_negative = std::uint64_t{1} << 63;  // the magnitude of -2^63
constexpr const char* integer_range = "outside -9223372036854775808 to 18446744073709551615";

tl::unexpected<std::string> no_number(std::string_view text, const char* reason) {
  return tl::unexpected<std::string>(text.empty() ? "no value" : reason);
}

enum class Reading { done, no_number, out_of_range };

// Reads all of `digits`, in which no sign may stand any more.
template <typename Number, typename... Base>
Reading read_all(std::string_view digits, Number& number, Base... base) {
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, number, base...);
  if (digits.starts_with('-') || end != last) return Reading::no_number;
  if (error == std::errc::result_out_of_range) return Reading::out_of_range;
  return error == std::errc() ? Reading::done : Reading::no_number;
}

// Removes a sign; true for a minus.
bool remove_sign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

}  // namespace

std::optional<client::MissingValue> read_missing(std::string_view text) {
  if (text == ".") return client::MissingValue();
  if (text.size() != 2 || text[0] != '.' || text[1] == '.') return std::nullopt;
  return client::MissingValue::named(text[1]);
}

tl::expected<double, std::string> read_number(std::string_view text) {
  std::string_view digits = text;
  const bool negative = remove_sign(digits);
  double number = 0;
  switch (read_all(digits, number)) {
    case Reading::done:
      return negative ? -number : number;
    case Reading::out_of_range:
      return tl::unexpected<std::string>("too large or too small for a double");
    default:
      return no_number(text, "not a number (as 1234.5)");
  }
}

tl::expected<Integer, std::string> read_integer(std::string_view text) {
  std::string_view digits = text;
  const bool negative = remove_sign(digits);
  const bool hexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
  if (hexadecimal) digits.remove_prefix(2);
  std::uint64_t magnitude = 0;
  switch (read_all(digits, magnitude, hexadecimal ? 16 : 10)) {
    case Reading::done:
      break;
    case Reading::out_of_range:
      return tl::unexpected<std::string>(integer_range);
    default:
      return no_number(text, "not an integer (as 1234 or 0xFF)");
  }
  if (negative) {
    if (magnitude > most_negative) return tl::unexpected<std::string>(integer_range);
    return static_cast<std::int64_t>(-magnitude);
  }
  if (magnitude < most_negative) return static_cast<std::int64_t>(magnitude);
  return magnitude;
}

}  // namespace jwnls::tool
