#include "client/missing_value.h"

#include "abi/missing_value.h"

namespace jwnls::client {
namespace {

constexpr bool is_capital(char character) { return character >= 'A' && character <= 'Z'; }

}  // namespace

bool is_missing(double value) noexcept { return jwnls::is_missing(value); }

std::optional<MissingValue> MissingValue::named(char character) noexcept {
  if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  if (character != '.' && character != '_' && !is_capital(character)) return std::nullopt;
  return MissingValue{character};
}

std::optional<MissingValue> MissingValue::of(double value) noexcept {
  if (!is_missing(value)) return std::nullopt;
  const char character = missing_character(value);
  return is_capital(character) || character == '_' || character == '.' ? named(character)
                                                                       : std::nullopt;
}

double MissingValue::value() const noexcept { return missing_value(character_); }

}  // namespace jwnls::client
