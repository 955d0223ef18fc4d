// The block of layout data in record area 9 (abi/layout_data.h), as far as it can be trusted.
//
// It comes from a database that may be anybody's. Magic, version, size and offsets are checked
// before anything is used; what a section holds is read by a reader that never leaves it.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_LAYOUT_BLOCK_H_
#define JWNLS_LIBRARY_LOCALE_DATA_LAYOUT_BLOCK_H_

#include <cstddef>
#include <string_view>

#include "abi/layout_data.h"
#include "abi/locale_record.h"

namespace jwnls::library {

class LayoutBlock {
 public:
  /// No block: every section is empty.
  LayoutBlock() noexcept = default;
  /// Of an area's bytes, which stay the caller's. No block where anything of its head is wrong.
  explicit LayoutBlock(std::string_view area) noexcept;
  explicit LayoutBlock(const LocaleRecord& record) noexcept;

  /// JW_LAYOUT_NUMBERS ...: up to the next section or the block's end; empty: there is none.
  [[nodiscard]] std::string_view section(int which) const noexcept;

 private:
  std::string_view block_;
};

/// Reads a section from front to back. Behind its end there are zeros and empty texts, and ok() is
/// false from then on.
class SectionReader {
 public:
  explicit SectionReader(std::string_view section) noexcept : rest_(section) {}

  [[nodiscard]] unsigned byte() noexcept {
    const std::string_view taken = bytes(1);
    return taken.empty() ? 0 : static_cast<unsigned char>(taken.front());
  }
  [[nodiscard]] unsigned word() noexcept {
    const unsigned low = byte();
    return low | byte() << 8;
  }
  [[nodiscard]] std::string_view bytes(std::size_t count) noexcept {
    if (count > rest_.size()) {
      ok_ = false;
      rest_ = {};
      return {};
    }
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  /// UTF-8 of at most `most` bytes; anything else is no text.
  [[nodiscard]] std::string_view text(std::size_t most) noexcept;

  [[nodiscard]] bool ok() const noexcept { return ok_; }
  [[nodiscard]] bool at_end() const noexcept { return ok_ && rest_.empty(); }

 private:
  std::string_view rest_;
  bool ok_ = true;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_LAYOUT_BLOCK_H_
