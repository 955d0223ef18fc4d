// Texts of one column from consecutive rows, and what they become: converted in one call, as the
// library reads columns, in place of a call for each.

#ifndef JWNLS_TOOL_TABLES_VALUE_BATCH_H_
#define JWNLS_TOOL_TABLES_VALUE_BATCH_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "jwnls/jwnls.h"
#include "tool/tables/growing_array.h"

namespace jwnls::tool {

/// Copies where there is room behind both ends: whole steps instead of exact bytes.
struct CopyInSteps {
  static constexpr std::size_t short_step = 16;
  static constexpr std::size_t step = 64;

  [[gnu::always_inline]] static void copy(char* to, const char* from, std::size_t size) {
    if (size <= short_step) [[likely]] {
      return static_cast<void>(std::memcpy(to, from, short_step));
    }
    for (std::size_t at = 0; at < size; at += step) std::memcpy(to + at, from + at, step);
  }
};

/// Texts one behind the other.
class TextBatch {
 public:
  static constexpr std::size_t most = 256;        // texts
  static constexpr std::size_t room = 64 * 1024;  // bytes of the long ones

  TextBatch() { bytes_.reserve(0, room + most * CopyInSteps::short_step + CopyInSteps::step); }

  /// Fills the batch anew, up to `most` texts. Where the next text goes is its own, so that it
  /// stays in registers: any byte that is written could be part of anything else.
  class Filler {
   public:
    explicit Filler(TextBatch& batch)
        : bytes_(batch.bytes_.data()), first_end_(batch.ends_.data()), last_end_(first_end_) {}

    /// At most CopyInSteps::short_step bytes, for which there is always room. That many may be
    /// read.
    void add_short(const char* text, std::size_t size) {
      std::memcpy(bytes_ + size_, text, CopyInSteps::short_step);
      end_text(size);
    }
    /// False where there is no room for the text. CopyInSteps::step bytes may be read from its
    /// begin, or as many as it is long, whichever is more.
    bool add(const char* text, std::size_t size) {
      if (size_ + size > room) return false;
      CopyInSteps::copy(bytes_ + size_, text, size);
      end_text(size);
      return true;
    }
    [[nodiscard]] std::size_t count() const {
      return static_cast<std::size_t>(last_end_ - first_end_);
    }

   private:
    void end_text(std::size_t size) {
      size_ += size;
      *++last_end_ = static_cast<std::int32_t>(size_);
    }

    char* bytes_;
    std::int32_t* first_end_;
    std::int32_t* last_end_;
    std::size_t size_ = 0;
  };
  /// Keeps the first of the texts that it was filled with.
  void cut(std::size_t count) { count_ = count; }

  [[nodiscard]] std::size_t count() const { return count_; }
  [[nodiscard]] std::string_view text(std::size_t i) const {
    return {bytes_.data() + ends_[i], static_cast<std::size_t>(ends_[i + 1] - ends_[i])};
  }
  [[nodiscard]] const char* bytes() const { return bytes_.data(); }
  /// Where texts begin, and behind them the end of the last.
  [[nodiscard]] const std::int32_t* offsets() const { return ends_.data(); }

 private:
  GrowingArray<char> bytes_;
  std::array<std::int32_t, most + 1> ends_ = {};
  std::size_t count_ = 0;
};

/// What the texts of a TextBatch became, one behind the other; nothing of those that are missing or
/// refused.
struct ValueBatch {
  static constexpr std::size_t value_room = 4096;
  static constexpr std::size_t first_room = TextBatch::room;
  static constexpr std::size_t most_room = TextBatch::most * value_room;

  ValueBatch() { make_room(0, first_room); }

  /// Keeps the first `used` bytes; CopyInSteps::step bytes stand behind the room.
  void make_room(std::size_t used, std::size_t room) {
    bytes.reserve(used, room + CopyInSteps::step);
  }
  [[nodiscard]] std::size_t room() const { return bytes.capacity() - CopyInSteps::step; }

  GrowingArray<char> bytes;
  std::array<std::int32_t, TextBatch::most + 1> offsets = {};
  std::array<std::uint8_t, TextBatch::most> codes = {};  // OK, MISSING or why it is refused
  // Of those that are read:
  std::size_t read = 0;
  std::size_t two_ways = 0;
  std::size_t deciding = 0;
  std::size_t first_two_ways = 0;  // where there is one
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_VALUE_BATCH_H_
