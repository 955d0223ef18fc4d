#include "library/texts/folding.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// A character's folded form; `count` may be 0.
struct Folded {
  char32_t characters[3];
  std::size_t count;
};

Folded fold(char32_t c) noexcept {
  if (c < 0x800 && folded_letters[c] != folds_to_several) {
    return {{folded_letters[c]}, folded_letters[c] != 0 || c == 0 ? 1U : 0U};
  }
  if (c >= 0x800 && folds_to_itself(c)) return {{c}, 1};
  const FoldedCharacter* const end = folded_characters + folded_character_count;
  const FoldedCharacter* const found = std::lower_bound(
      folded_characters, end, c,
      [](const FoldedCharacter& row, char32_t value) { return row.character < value; });
  if (found == end || found->character != c) return {{c}, 1};
  Folded result = {{found->folded[0], found->folded[1], found->folded[2]}, 0};
  while (result.count < 3 && result.characters[result.count] != 0) ++result.count;
  return result;
}

constexpr char lower_ascii(char byte) noexcept {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

class Output {
 public:
  Output(char* out, std::size_t room, std::uint16_t* places) noexcept
      : out_(out), room_(room), places_(places) {}

  // False when the room is used up.
  bool put(char byte, std::size_t place) noexcept {
    if (size_ == room_) return false;
    if (places_ != nullptr) places_[size_] = static_cast<std::uint16_t>(place);
    out_[size_++] = byte;
    return true;
  }
  bool put(std::string_view bytes, std::size_t place) noexcept {
    if (room_ - size_ < bytes.size()) return false;
    for (const char byte : bytes) {
      if (places_ != nullptr) places_[size_] = static_cast<std::uint16_t>(place);
      out_[size_++] = byte;
    }
    return true;
  }
  bool put(char32_t c, std::size_t place) noexcept {
    char bytes[4];
    return put({bytes, encode_utf8(c, bytes)}, place);
  }
  std::size_t finish(std::size_t place) noexcept {
    if (places_ != nullptr) places_[size_] = static_cast<std::uint16_t>(place);
    return size_;
  }

 private:
  char* out_;
  std::size_t room_;
  std::uint16_t* places_;
  std::size_t size_ = 0;
};

}  // namespace

std::optional<std::size_t> fold_text(std::string_view text, char* out, std::size_t room,
                                     std::uint16_t* places) noexcept {
  Output output(out, room, places);
  for (std::size_t at = 0; at < text.size();) {
    if (static_cast<unsigned char>(text[at]) < 0x80) {
      if (!output.put(lower_ascii(text[at]), at)) return std::nullopt;
      ++at;
      continue;
    }
    const Utf8Character next = first_character(text.substr(at));
    if (!next.valid) return std::nullopt;
    const Folded folded = fold(next.value);
    for (std::size_t i = 0; i < folded.count; ++i) {
      if (!output.put(folded.characters[i], at)) return std::nullopt;
    }
    at += next.bytes;
  }
  return output.finish(text.size());
}

namespace {

// How many bytes of ASCII stand at a place where one does; of more than eight, eight.
std::ptrdiff_t ascii_bytes(std::string_view text, std::size_t at) noexcept {
  const std::size_t rest = text.size() - at;
  if (text.size() < 8) return 1;
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text.data() + std::min(at, text.size() - 8), 8);
  if (rest < 8) bytes >>= 8 * (8 - rest);
  const std::uint64_t others = bytes & 0x8080808080808080;
  if (others == 0) return static_cast<std::ptrdiff_t>(std::min<std::size_t>(rest, 8));
  return std::max(1, std::countr_zero(others) / 8);
}

}  // namespace

bool folds_no_digits(std::string_view text) noexcept {
  const char* const end = text.data() + text.size();
  const auto folds = [](char32_t block, unsigned character) {
    return (digit_bits[digit_block_of[block]] >> character & 1) != 0;
  };
  for (const char* at = text.data(); at < end;) {
    const auto lead = static_cast<unsigned char>(*at);
    const auto bits = [at](int i) -> unsigned { return static_cast<unsigned char>(at[i]) & 0x3FU; };
    if (lead < 0x80) {
      at += ascii_bytes(text, static_cast<std::size_t>(at - text.data()));
    } else if (lead < 0xC2 || lead > 0xF1) {  // the list has none beyond 0xF1
      return false;
    } else if (lead < 0xE0) {
      if (end - at < 2) return false;
      const unsigned folded = folded_letters[(lead & 0x1FU) << 6 | bits(1)];
      if (folded <= ' ' || (folded >= '0' && folded <= '9')) return false;
      at += 2;
    } else if (lead < 0xF0) {
      if (end - at < 3 || folds((lead & 0xFU) << 6 | bits(1), bits(2))) return false;
      at += 3;
    } else {
      if (end - at < 4) return false;
      const unsigned block = (lead & 7U) << 12 | bits(1) << 6 | bits(2);
      if (block < folded_block_count && folds(block, bits(3))) return false;
      at += 4;
    }
  }
  return true;
}

std::optional<std::size_t> fold_digits(std::string_view text, char* out,
                                       std::size_t room) noexcept {
  if (is_ascii(text) || folds_no_digits(text)) return std::nullopt;
  Output output(out, room, nullptr);
  bool changed = false;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character next = first_character(text.substr(at));
    if (!next.valid) return std::nullopt;
    const Folded folded = fold(next.value);
    const bool accent = next.value >= 0x300 && next.value <= 0x36F;
    const bool plain =
        folded.count == 0
            ? !accent
            : folded.count == 1 && (folded.characters[0] == ' ' ||
                                    (folded.characters[0] >= '0' && folded.characters[0] <= '9'));
    if (plain) {
      changed = changed || folded.count == 0 || folded.characters[0] != next.value;
      if (folded.count > 0 && !output.put(folded.characters[0], at)) return std::nullopt;
    } else if (!output.put(text.substr(at, next.bytes), at)) {
      return std::nullopt;  // unreachable: nothing grows, and callers have room for all texts
    }
    at += next.bytes;
  }
  if (!changed) return std::nullopt;
  return output.finish(text.size());
}

}  // namespace jwnls::library
