// The form in which names are compared: NİSAN, nisan and Nisan are one, so are MÄRZ and marz.

#ifndef JWNLS_LIBRARY_TEXTS_FOLDING_H_
#define JWNLS_LIBRARY_TEXTS_FOLDING_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace jwnls::library {

/// A character and the up to three that it folds to; zeros behind them.
struct FoldedCharacter {
  char32_t character;
  char32_t folded[3];
};

// Generated. What characters below U+0800 fold to: 0 for nothing, 0xFFFF for several, which stand
// in the list; and the list of those that change and are not in the array, sorted.
extern const std::uint16_t folded_letters[0x800];
extern const FoldedCharacter folded_characters[];
extern const std::size_t folded_character_count;
inline constexpr std::uint16_t folds_to_several = 0xFFFF;
// For each 64 characters the bits that say which of them the list has, and which of these fold to
// text with a digit or a blank in it, or to nothing; the list has none beyond them.
inline constexpr std::size_t folded_block_count = 0x800;
extern const std::uint8_t folded_block_of[folded_block_count];
extern const std::uint64_t folded_bits[];
extern const std::uint8_t digit_block_of[folded_block_count];
extern const std::uint64_t digit_bits[];

/// Whether a character from U+0800 on folds to itself.
[[nodiscard]] inline bool folds_to_itself(char32_t character) noexcept {
  const char32_t block = character / 64;
  return block >= folded_block_count ||
         (folded_bits[folded_block_of[block]] >> character % 64 & 1) == 0;
}

/// Folds UTF-8 and gives the bytes written; nothing when the text is not valid or outgrows the
/// room.
///   places  gets for each byte written, and for the end, where its character stands in `text`;
///           room + 1 of them; may be null
[[nodiscard]] std::optional<std::size_t> fold_text(std::string_view text, char* out,
                                                   std::size_t room,
                                                   std::uint16_t* places = nullptr) noexcept;

/// The same, but letters stay as they are: digits of any script, blanks and what is dropped alone
/// are folded. Nothing, too, where that changes nothing.
[[nodiscard]] std::optional<std::size_t> fold_digits(std::string_view text, char* out,
                                                     std::size_t room) noexcept;

/// Whether no character folds to a digit, a blank or nothing: then fold_digits() leaves a text as
/// it is, and fold_text() leaves it its numbers. Of what is not UTF-8 it may say either.
[[nodiscard]] bool folds_no_digits(std::string_view text) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_FOLDING_H_
