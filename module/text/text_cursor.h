// A place in a text that is being read, unit by unit in UTF-16 whatever the text's own encoding.
//
// TextCursor<char16_t> hands out the units as they are, TextCursor<char> decodes UTF-8. Ends are by
// count: nothing past the text is read. A cursor is a few words; copy it to look ahead, assign the
// copy to read on from there.
//
// A cursor that only inlined code touches stays in registers. One whose address goes to a function
// that is called lives in memory from there on, in its whole scope; so whoever makes such a call on
// a path that few texts take hands over a copy and assigns it back.

#ifndef JWNLS_MODULE_TEXT_TEXT_CURSOR_H_
#define JWNLS_MODULE_TEXT_TEXT_CURSOR_H_

#include <cstddef>
#include <cstdint>

#include "module/text/digit_words.h"

namespace jwnls {

/// What both encodings share: everything that concerns ASCII alone.
template <typename Unit>
class AsciiCursor {
 public:
  bool at_end() const noexcept { return at_ == end_; }
  /// The units (bytes) of the text that are left.
  std::size_t remaining() const noexcept { return static_cast<std::size_t>(end_ - at_); }

  /// True when the next unit is `ascii`.
  bool at(char ascii) const noexcept { return !at_end() && *at_ == static_cast<Unit>(ascii); }
  /// Steps over the next unit, which is an ASCII one.
  void step() noexcept { ++at_; }
  bool skip(char ascii) noexcept {
    if (!at(ascii)) return false;
    step();
    return true;
  }
  void skip_blanks() noexcept {
    while (at(' ')) step();
  }
  void skip_all() noexcept { at_ = end_; }
  void step_over(std::size_t ascii_units) noexcept { at_ += ascii_units; }

  const Unit* position() const noexcept { return at_; }
  const Unit* end() const noexcept { return end_; }

  /// The value of the next unit as a decimal digit; above 9 when it is none. Not at the end.
  std::uint32_t digit() const noexcept {
    return static_cast<std::uint32_t>(*at_) - std::uint32_t{'0'};
  }

  /// Reads two decimal digits; false, and nothing read, when the next two units are others.
  bool two_digits(std::int32_t& value) noexcept {
    if (remaining() < 2) return false;
    const std::uint32_t tens = digit();
    const std::uint32_t ones = static_cast<std::uint32_t>(at_[1]) - std::uint32_t{'0'};
    if (tens > 9 || ones > 9) return false;
    value = static_cast<std::int32_t>(tens * 10 + ones);
    at_ += 2;
    return true;
  }

  /// Reads four decimal digits; false, and nothing read, when the next four units are others.
  bool four_digits(std::int32_t& value) noexcept {
    std::uint32_t digits = 0;
    if (remaining() < 4 || !DigitWord<Unit>::load(at_).four_digits('0', digits)) return false;
    value = static_cast<std::int32_t>(digits);
    at_ += 4;
    return true;
  }
  /// Reads one decimal digit or two, without a branch on how many; false when there is none.
  bool one_or_two_digits(std::int32_t& value) noexcept {
    if (at_end()) return false;
    const std::uint32_t first = digit();
    if (first > 9) return false;
    if (remaining() == 1) {
      value = static_cast<std::int32_t>(first);
      ++at_;
      return true;
    }
    const std::uint32_t second = static_cast<std::uint32_t>(at_[1]) - std::uint32_t{'0'};
    const std::uint32_t two = second <= 9 ? 1 : 0;
    value = static_cast<std::int32_t>(first + (9 * first + second) * two);
    at_ += 1 + two;
    return true;
  }

  // Member by member, and the end only where a cursor begins: copies that pass through memory in
  // vector registers wait for the narrower stores before them.
  AsciiCursor(const AsciiCursor& other) noexcept : at_(other.at_), end_(other.end_) {}
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): a pointer onto itself is harmless.
  AsciiCursor& operator=(const AsciiCursor& of_same_text) noexcept {
    at_ = of_same_text.at_;
    return *this;
  }

 protected:
  ~AsciiCursor() = default;
  AsciiCursor(const Unit* text, std::size_t length) noexcept : at_(text), end_(text + length) {}

  const Unit* at_;
  const Unit* end_;
};

template <typename Unit>
class TextCursor;

template <>
class TextCursor<char16_t> : public AsciiCursor<char16_t> {
 public:
  TextCursor(const char16_t* text, std::size_t length) noexcept : AsciiCursor(text, length) {}

  /// Reads a unit. Not at the end.
  char16_t next() noexcept { return *at_++; }
  /// True when the next unit is surely `unit`. Not at the end.
  bool at_unit(char16_t unit) const noexcept { return *at_ == unit; }
};

template <>
class TextCursor<char> : public AsciiCursor<char> {
 public:
  TextCursor(const char* text, std::size_t length) noexcept : AsciiCursor(text, length) {}

  /// True when the next unit is surely `unit`: an ASCII one. Not at the end.
  bool at_unit(char16_t unit) const noexcept {
    return unit < 0x80 && static_cast<unsigned char>(*at_) == unit;
  }
  /// Reads a unit. Not at the end. Of a four-byte sequence the first of the two units takes no
  /// byte, the second takes all four.
  char16_t next() noexcept {
    const auto byte = static_cast<unsigned char>(*at_);
    if (byte < 0x80) [[likely]] {
      ++at_;
      return byte;
    }
    TextCursor copy = *this;
    const char16_t unit = copy.next_decoded();
    *this = copy;
    return unit;
  }

 private:
  char16_t next_decoded() noexcept;

  bool inside_pair_ = false;  // the high surrogate of the sequence at at_ has been read
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_TEXT_CURSOR_H_
