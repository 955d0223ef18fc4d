// Missing values: the doubles that say "no number here", and which of 28 reasons it has.

#ifndef JWNLS_CLIENT_MISSING_VALUE_H_
#define JWNLS_CLIENT_MISSING_VALUE_H_

#include <optional>

namespace jwnls::client {

/// "." (the standard one), "A" to "Z" or "_". As a double it has ones in its top 16 bits, which no
/// result of arithmetic has; the formatting services show it as its one character.
class MissingValue {
 public:
  /// The standard one, ".".
  constexpr MissingValue() = default;

  /// By its character: '.', '_', 'A' to 'Z' or 'a' to 'z'; nothing for any other.
  [[nodiscard]] static std::optional<MissingValue> named(char character) noexcept;

  /// What a double stands for; nothing when it is a number, another NaN, or has no such character.
  [[nodiscard]] static std::optional<MissingValue> of(double value) noexcept;

  /// '.', '_' or 'A' to 'Z'.
  [[nodiscard]] constexpr char character() const noexcept { return character_; }

  [[nodiscard]] double value() const noexcept;

  bool operator==(const MissingValue&) const = default;

 private:
  explicit constexpr MissingValue(char character) : character_(character) {}

  char character_ = '.';
};

/// True for the doubles that stand for a missing value, whatever its character.
[[nodiscard]] bool is_missing(double value) noexcept;

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_MISSING_VALUE_H_
