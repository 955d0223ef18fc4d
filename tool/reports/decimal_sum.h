// Arithmetic on decimals as texts, "-1234.50": exact, whatever their lengths.

#ifndef JWNLS_TOOL_REPORTS_DECIMAL_SUM_H_
#define JWNLS_TOOL_REPORTS_DECIMAL_SUM_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

/// decimal = ["-"] digits ["." digits]
struct DecimalParts {
  bool is_decimal = false;
  bool is_negative = false;
  std::string_view whole;  // without zeros in front
  std::string_view fraction;
};

[[nodiscard]] DecimalParts decimal_parts(std::string_view text);

/// The decimal without an exponent or a plus sign, "1500" of "+1.5e3", which `out` holds when it
/// is not `text`; `text` where it is no decimal, or would have more than `room` characters.
[[nodiscard]] std::string_view plain_decimal(std::string_view text, char* out, std::size_t room);

/// Below 0, 0 or above 0, as `left` is less than, equal to or greater than `right`.
[[nodiscard]] int compare(const DecimalParts& left, const DecimalParts& right);

class DecimalSum {
 public:
  void add(const DecimalParts& decimal);
  DecimalSum& operator+=(const DecimalSum& other);

  /// With as many decimals as the longest of those that were added.
  [[nodiscard]] std::string text() const;

 private:
  // Eighteen digits each, so that two and a carry fit.
  static constexpr std::uint64_t limb_base = 1'000'000'000'000'000'000;
  static constexpr std::size_t limb_digits = 18;

  struct Magnitude {
    std::vector<std::uint64_t> whole;     // the least first
    std::vector<std::uint64_t> fraction;  // the greatest first: right behind the point
  };

  static bool add_limb(std::uint64_t& limb, std::uint64_t value);
  static void add_carry(Magnitude& to, std::size_t limb);
  static void add_digits(Magnitude& to, const DecimalParts& decimal);
  static void add(Magnitude& to, const Magnitude& from);
  static std::vector<std::uint64_t> limbs(const Magnitude& of, std::size_t whole,
                                          std::size_t fraction);

  std::array<Magnitude, 2> sums_;  // of those that are not negative, and of those that are
  std::size_t decimals_ = 0;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_DECIMAL_SUM_H_
