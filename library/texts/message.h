// The message of a jwnls_error: one line of UTF-8, bounded, without allocation. Everything that
// came from outside goes through quoted() or said(), which escape whatever could steer a terminal.

#ifndef JWNLS_LIBRARY_TEXTS_MESSAGE_H_
#define JWNLS_LIBRARY_TEXTS_MESSAGE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {

class Message {
 public:
  /// Begins an empty message of `error`, which may be null: then nothing is kept.
  Message(jwnls_error* error, int code) noexcept;
  /// The message ends with a zero whenever it is looked at.

  /// Text of our own.
  Message& operator<<(std::string_view text) noexcept;
  Message& operator<<(std::int64_t number) noexcept;
  /// Text from outside, escaped; the longest beginning that fits, cut between characters.
  Message& said(std::string_view text) noexcept;
  /// The same between single quotes; more than `most` bytes are cut, with "..." behind them.
  Message& quoted(std::string_view text, std::size_t most = 80) noexcept;

  /// The bytes (units) of the text that fit.
  Message& at(std::size_t place) noexcept;

 private:
  void put(std::string_view character) noexcept;

  jwnls_error* error_;
  std::size_t length_ = 0;
  bool full_ = false;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_MESSAGE_H_
