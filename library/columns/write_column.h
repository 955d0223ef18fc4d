// A column of texts out: one loop for every kind of value.

#ifndef JWNLS_LIBRARY_COLUMNS_WRITE_COLUMN_H_
#define JWNLS_LIBRARY_COLUMNS_WRITE_COLUMN_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "include/jwnls/jwnls.h"
#include "library/columns/read_column.h"

namespace jwnls::library {

/// Texts on their way into a column, one behind the other.
class ColumnWriter {
 public:
  explicit ColumnWriter(const jwnls_column& column) noexcept
      : column_(column), room_(std::min(column.room, most_bytes())) {
    put_offset(0);
  }

  /// Where the next text goes, and how long it may be.
  [[nodiscard]] char* next() const noexcept { return column_.bytes + used_; }
  [[nodiscard]] std::size_t room() const noexcept { return room_ - used_; }

  /// The text that was written there, or none for any code but OK.
  void add(int code, std::size_t length) noexcept {
    if (code == JWNLS_OK) used_ += length;
    if (column_.codes != nullptr) column_.codes[count_] = static_cast<std::uint8_t>(code);
    put_offset(++count_);
  }

  [[nodiscard]] std::size_t count() const noexcept { return count_; }

  /// Texts one behind the other with offsets of 32 bits, all codes of which are OK until they are
  /// set.
  struct Run {
    char* next;
    char* begin;  // of all texts
    char* end;    // of the room
    std::int32_t* offsets;
    std::uint8_t* codes;  // may be null

    [[nodiscard]] std::ptrdiff_t room() const noexcept { return end - next; }
    void add(std::size_t i, std::size_t length) noexcept {
      next += length;
      offsets[i + 1] = static_cast<std::int32_t>(next - begin);
    }
  };
  /// Before the first text of a run, how many there may be at most.
  void expect(std::size_t count) noexcept {
    if (column_.codes != nullptr) std::memset(column_.codes + count_, JWNLS_OK, count);
  }
  [[nodiscard]] Run run() const noexcept {
    return {next(), column_.bytes, column_.bytes + room_, column_.offsets, column_.codes};
  }
  /// Goes on where the run ended, before text `count`.
  void go_on(const Run& run, std::size_t count) noexcept {
    used_ = static_cast<std::size_t>(run.next - run.begin);
    count_ = count;
  }

 private:
  // What the offsets can say.
  [[nodiscard]] std::size_t most_bytes() const noexcept {
    return column_.offsets != nullptr
               ? static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())
               : std::numeric_limits<std::size_t>::max() / 2;
  }
  void put_offset(std::size_t i) noexcept {
    if (column_.offsets != nullptr) {
      column_.offsets[i] = static_cast<std::int32_t>(used_);
    } else {
      column_.large_offsets[i] = static_cast<std::int64_t>(used_);
    }
  }

  jwnls_column column_;  // a copy, which nothing that is written changes
  std::size_t room_;
  std::size_t used_ = 0;
  std::size_t count_ = 0;
};

/// Writes values until one does not fit; gives how many were written.
///   write  a single call's work: int(index, out, room, length)
template <typename Write>
std::size_t write_texts(std::size_t count, const jwnls_column& column, Write write) noexcept {
  ColumnWriter writer(column);
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t length = 0;
    const int code = write(i, writer.next(), writer.room(), &length);
    if (code == JWNLS_ROOM) break;
    writer.add(code, length);
  }
  return writer.count();
}

/// The same of values that have a single call of jwnls.h.
template <typename Value>
std::size_t write_column(const jwnls_layout* layout, const Value* values, std::size_t count,
                         const jwnls_column* column,
                         int (*write)(const jwnls_layout*, Value, char*, std::size_t,
                                      std::size_t*)) noexcept {
  return write_texts(count, *column,
                     [=](std::size_t i, char* out, std::size_t room, std::size_t* length) {
                       if (!is_valid(column->validity, i)) return int{JWNLS_MISSING};
                       return write(layout, values[i], out, room, length);
                     });
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_COLUMNS_WRITE_COLUMN_H_
