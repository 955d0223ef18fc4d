// Text of a caller on its way to the services that read: as UTF-16, and as people mean it.

#ifndef JWNLS_CLIENT_TEXT_INPUT_H_
#define JWNLS_CLIENT_TEXT_INPUT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::client {

// What a unit counts as; nothing: the unit is passed over.

/// For dates and times: any script's digits as 0 to 9, any blank as a plain one; marks that only
/// direct the display are passed over.
std::optional<char16_t> meaning_in_date(char16_t unit);

/// For numbers of a locale with these symbols: digits and marks likewise; other forms of a minus
/// and of the symbols as these, other blanks as plain ones.
std::optional<char16_t> meaning_in_number(char16_t unit, char16_t decimal_symbol,
                                          char16_t grouping_symbol);

class TextInput {
 public:
  /// The text as it stands; nothing when it is no valid UTF-8.
  static std::optional<TextInput> of(std::string_view text);

  /// The same text with each unit as what it means; nothing when that changes none.
  template <typename Meaning>
  [[nodiscard]] std::optional<TextInput> with(Meaning meaning) const;

  [[nodiscard]] const std::u16string& units() const { return units_; }

  /// The bytes of the caller's text that the first `count` units stand for.
  [[nodiscard]] std::size_t bytes_of(std::size_t count) const;

 private:
  std::u16string units_;
  std::u16string original_;          // where `units_` is changed
  std::vector<std::size_t> origin_;  // for each unit, its place in `original_`
};

template <typename Meaning>
std::optional<TextInput> TextInput::with(Meaning meaning) const {
  TextInput changed;
  for (std::size_t at = 0; at < units_.size(); ++at) {
    const std::optional<char16_t> unit = meaning(units_[at]);
    if (!unit) continue;
    changed.units_.push_back(*unit);
    changed.origin_.push_back(at);
  }
  if (changed.units_ == units_) return std::nullopt;
  changed.original_ = units_;
  return changed;
}

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_TEXT_INPUT_H_
