#include "library/locale_data/layout_block.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t version_at = 4;
constexpr std::size_t size_at = 6;
constexpr std::size_t offsets_at = 8;

std::size_t word_at(std::string_view block, std::size_t at) {
  return static_cast<unsigned char>(block[at]) |
         static_cast<std::size_t>(static_cast<unsigned char>(block[at + 1])) << 8;
}

}  // namespace

LayoutBlock::LayoutBlock(std::string_view area) noexcept {
  area = area.substr(0, JW_LAYOUT_DATA_CAPACITY);
  if (area.size() < JW_LAYOUT_DATA_HEAD || area.substr(0, 4) != JW_LAYOUT_DATA_MAGIC ||
      word_at(area, version_at) != JW_LAYOUT_DATA_VERSION) {
    return;
  }
  const std::size_t size = word_at(area, size_at);
  if (size < JW_LAYOUT_DATA_HEAD || size > area.size()) return;
  std::size_t behind = JW_LAYOUT_DATA_HEAD;  // sections stand in their order
  for (std::size_t i = 0; i < jw_layout_sections; ++i) {
    const std::size_t offset = word_at(area, offsets_at + 2 * i);
    if (offset == 0) continue;
    if (offset < behind || offset >= size) return;
    behind = offset;
  }
  block_ = area.substr(0, size);
}

LayoutBlock::LayoutBlock(const LocaleRecord& record) noexcept
    : LayoutBlock(
          std::string_view(reinterpret_cast<const char*>(record.area_9), sizeof record.area_9)) {}

std::string_view LayoutBlock::section(int which) const noexcept {
  if (block_.empty()) return {};
  const auto offset_of = [this](int section) {
    return word_at(block_, offsets_at + 2 * static_cast<std::size_t>(section));
  };
  const std::size_t begin = offset_of(which);
  if (begin == 0) return {};
  std::size_t end = block_.size();
  for (int next = jw_layout_sections - 1; next > which; --next) {
    if (offset_of(next) != 0) end = offset_of(next);
  }
  return block_.substr(begin, end - begin);
}

std::string_view SectionReader::text(std::size_t most) noexcept {
  const std::string_view taken = bytes(byte());
  if (taken.size() <= most && (is_ascii(taken) || is_utf8(taken))) return taken;
  ok_ = false;
  rest_ = {};
  return {};
}

}  // namespace jwnls::library
