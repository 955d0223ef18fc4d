#include "client/missing_value.h"

#include <bit>
#include <cstdint>

namespace jwnls::client {
namespace {

constexpr std::uint64_t top_bits = 0xFFFF;
constexpr int top_shift = 48;
constexpr int code_shift = 40;  // the byte below holds the complement of the character's code

// "_" is stored as "-", whose code is the one below that of ".": so it sorts as the least.
constexpr char stored_underscore = '-';

constexpr bool is_capital(char character) { return character >= 'A' && character <= 'Z'; }

}  // namespace

bool is_missing(double value) noexcept {
  return std::bit_cast<std::uint64_t>(value) >> top_shift == top_bits;
}

std::optional<MissingValue> MissingValue::named(char character) noexcept {
  if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  if (character != '.' && character != '_' && !is_capital(character)) return std::nullopt;
  return MissingValue{character};
}

std::optional<MissingValue> MissingValue::of(double value) noexcept {
  if (!is_missing(value)) return std::nullopt;
  const auto stored =
      static_cast<char>(~(std::bit_cast<std::uint64_t>(value) >> code_shift) & 0xFF);
  if (stored == stored_underscore) return MissingValue{'_'};
  return is_capital(stored) || stored == '_' || stored == '.' ? named(stored) : std::nullopt;
}

double MissingValue::value() const noexcept {
  const char stored = character_ == '_' ? stored_underscore : character_;
  const std::uint64_t code = ~static_cast<std::uint64_t>(static_cast<unsigned char>(stored)) & 0xFF;
  return std::bit_cast<double>(top_bits << top_shift | code << code_shift);
}

}  // namespace jwnls::client
