#include "library/texts/message.h"

#include <charconv>
#include <cstring>

#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// Characters that a terminal or a page would obey instead of showing them: controls, marks of the
// writing direction, line separators, the mark of the byte order, surrogates and other non-texts.
constexpr bool obeyed(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD || c == 0x61C ||
         (c >= 0x200B && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF || (c >= 0xFFF9 && c <= 0xFFFB) ||
         (c >= 0xE0000 && c <= 0xE0FFF);
}

// "\x1B", "\u202E": the shortest of the two that holds the value, at least `digits` digits.
std::string_view escaped(char32_t value, bool is_byte, char (&room)[12]) {
  constexpr const char* hexadecimal = "0123456789ABCDEF";
  const int digits = is_byte ? 2 : value > 0xFFFF ? 6 : 4;
  room[0] = '\\';
  room[1] = is_byte ? 'x' : 'u';
  for (int i = 0; i < digits; ++i) {
    room[2 + i] = hexadecimal[(value >> (4 * (digits - 1 - i))) & 0xF];
  }
  return {room, static_cast<std::size_t>(2 + digits)};
}

}  // namespace

Message::Message(jwnls_error* error, int code) noexcept : error_(error) {
  if (error_ == nullptr) return;
  error_->code = code;
  error_->at = 0;
  error_->text[0] = '\0';
}

void Message::put(std::string_view character) noexcept {
  if (error_ == nullptr || full_) return;
  if (length_ + character.size() >= sizeof error_->text) {
    full_ = true;
    return;
  }
  std::memcpy(error_->text + length_, character.data(), character.size());
  length_ += character.size();
  error_->text[length_] = '\0';
}

Message& Message::operator<<(std::string_view text) noexcept {
  while (!text.empty()) {
    const Utf8Character next = first_character(text);
    put(text.substr(0, next.bytes));
    text.remove_prefix(next.bytes);
  }
  return *this;
}

Message& Message::operator<<(std::int64_t number) noexcept {
  char text[24];
  const char* const end = std::to_chars(text, text + sizeof text, number).ptr;
  return *this << std::string_view(text, static_cast<std::size_t>(end - text));
}

Message& Message::said(std::string_view text) noexcept {
  char room[12];
  while (!text.empty() && !full_) {
    const Utf8Character next = first_character(text);
    if (!next.valid) {
      put(escaped(static_cast<unsigned char>(text.front()), true, room));
    } else if (obeyed(next.value)) {
      put(escaped(next.value, next.value < 0x80, room));
    } else {
      put(text.substr(0, next.bytes));
    }
    text.remove_prefix(next.bytes);
  }
  return *this;
}

Message& Message::quoted(std::string_view text, std::size_t most) noexcept {
  std::string_view shown = text;
  if (shown.size() > most) {
    shown = shown.substr(0, most);
    // Not in the middle of a character.
    while (!shown.empty() && (static_cast<unsigned char>(text[shown.size()]) & 0xC0) == 0x80) {
      shown.remove_suffix(1);
    }
  }
  *this << "'";
  said(shown);
  return *this << (shown.size() < text.size() ? "...'" : "'");
}

Message& Message::at(std::size_t place) noexcept {
  if (error_ != nullptr) error_->at = place;
  return *this;
}

}  // namespace jwnls::library
