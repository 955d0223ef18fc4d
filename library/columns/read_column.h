// A column of texts in: one loop for every kind of value.

#ifndef JWNLS_LIBRARY_COLUMNS_READ_COLUMN_H_
#define JWNLS_LIBRARY_COLUMNS_READ_COLUMN_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {

/// Whether row i has a value; a bitmap that is null says so of all.
[[nodiscard]] inline bool is_valid(const std::uint8_t* validity, std::size_t i) noexcept {
  return validity == nullptr || (validity[i / 8] >> (i % 8) & 1) != 0;
}

/// The texts of a column, whichever way they are laid out.
class Texts {
 public:
  explicit Texts(const jwnls_texts& texts) noexcept : texts_(texts) {}

  [[nodiscard]] std::size_t count() const noexcept { return texts_.count; }

  /// Text i; bytes are null where there is no value. Offsets that fall give a text that is too long
  /// for anything to look at it.
  [[nodiscard]] jwnls_text at(std::size_t i) const noexcept {
    if (!is_valid(texts_.validity, i)) return {nullptr, 0};
    if (texts_.texts != nullptr) return texts_.texts[i];
    return texts_.offsets != nullptr ? between(texts_.offsets, i)
                                     : between(texts_.large_offsets, i);
  }

 private:
  template <typename Offset>
  [[nodiscard]] jwnls_text between(const Offset* offsets, std::size_t i) const noexcept {
    static constexpr char nothing = '\0';  // empty texts may stand in no bytes at all
    const Offset begin = offsets[i];
    const Offset end = offsets[i + 1];
    if (begin < 0 || end < begin || texts_.bytes == nullptr) [[unlikely]] {
      return {&nothing, begin == end ? 0 : SIZE_MAX};
    }
    return {texts_.bytes + begin, static_cast<std::size_t>(end - begin)};
  }

  const jwnls_texts texts_;  // a copy, which nothing that is written changes
};

/// Counts what the texts of a call turn out to be, and adds it to the caller's facts at the end.
class FactsCounter {
 public:
  void count(std::size_t i, int code, std::uint8_t facts) noexcept {
    const bool two_ways = (facts & JWNLS_TWO_WAYS) != 0;
    read_ += code == JWNLS_OK ? 1 : 0;
    missing_ += code == JWNLS_MISSING ? 1 : 0;
    two_ways_ += two_ways ? 1 : 0;
    deciding_ += (facts & JWNLS_DECIDES) != 0 ? 1 : 0;
    if (code != JWNLS_OK && code != JWNLS_MISSING && refused_++ == 0) first_refused_ = i;
    if (two_ways && two_ways_ == 1) first_two_ways_ = i;
  }

  /// Texts from `begin` to `end`: all are read, and decide.
  void count_run(std::size_t begin, std::size_t end) noexcept {
    read_ += end - begin;
    deciding_ += end - begin;
  }
  /// One of these has other facts, or is refused.
  void count_other(std::size_t i, std::uint8_t facts) noexcept {
    if ((facts & JWNLS_TWO_WAYS) != 0 && two_ways_++ == 0) first_two_ways_ = i;
    --deciding_;
  }
  void count_refused(std::size_t i) noexcept {
    if (refused_++ == 0) first_refused_ = i;
    --read_;
    --deciding_;
  }

  [[nodiscard]] std::size_t refused() const noexcept { return refused_; }

  /// `facts` may be null, and of an older size.
  void add_to(jwnls_column_facts* facts) const noexcept;

 private:
  std::size_t read_ = 0;
  std::size_t refused_ = 0;
  std::size_t missing_ = 0;
  std::size_t two_ways_ = 0;
  std::size_t deciding_ = 0;
  std::size_t first_refused_ = 0;
  std::size_t first_two_ways_ = 0;
};

/// Reads every text as a single call of jwnls.h does; gives how many are neither OK nor MISSING.
///   none  what a text without value is
///   read  that call: int(layout, text, length, value, facts)
template <typename Value, typename Read>
std::size_t read_column(const jwnls_layout* layout, const jwnls_texts* texts, Value none, Read read,
                        Value* values, std::uint8_t* codes, jwnls_column_facts* facts) noexcept {
  const Texts column(*texts);
  FactsCounter counter;
  for (std::size_t i = 0; i < column.count(); ++i) {
    const jwnls_text text = column.at(i);
    int code = JWNLS_MISSING;
    std::uint8_t found = 0;
    if (text.bytes != nullptr) [[likely]] {
      code = read(layout, text.bytes, text.length, &values[i], &found);
    } else {
      values[i] = none;
    }
    if (codes != nullptr) codes[i] = static_cast<std::uint8_t>(code);
    counter.count(i, code, found);
  }
  counter.add_to(facts);
  return counter.refused();
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_COLUMNS_READ_COLUMN_H_
