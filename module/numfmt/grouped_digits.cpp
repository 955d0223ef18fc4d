#include "module/numfmt/grouped_digits.h"

#include <cstring>
#include <string_view>

#include "module/numfmt/grouping.h"

namespace jwnls {
namespace {

// Four ASCII bytes as four units.
inline std::uint64_t widen_four(const char* bytes) noexcept {
  std::uint32_t four = 0;
  std::memcpy(&four, bytes, sizeof four);
  std::uint64_t wide = four;
  wide = (wide | wide << 16) & 0x0000FFFF0000FFFF;
  return (wide | wide << 8) & 0x00FF00FF00FF00FF;
}

// Groups of three throughout, at most 16 digits: six blocks of four units whatever the count, each
// overwriting what the block before wrote too much. No branch depends on the digits' number.
std::size_t write_by_threes(const char* digits, std::size_t count, char16_t separator,
                            char16_t* out) noexcept {
  const std::size_t separators = (count - 1) / 3;
  const std::size_t first = count - 3 * separators;
  std::uint64_t block = widen_four(digits);
  std::memcpy(out, &block, sizeof block);
  const char* from = digits + first;
  char16_t* to = out + first;
  for (int i = 0; i < 5; ++i) {
    block = widen_four(from) << 16 | separator;
    std::memcpy(to, &block, sizeof block);
    from += 3;
    to += 4;
  }
  return count + separators;
}

std::size_t count_separators(FloatGroups groups, std::size_t digits) noexcept {
  std::size_t separators = 0;
  while (digits > groups.size()) {
    digits -= groups.size();
    ++separators;
    groups.advance();
  }
  return separators;
}

}  // namespace

std::size_t write_grouped(const LocaleRecord& record, const char* digits, std::size_t count,
                          std::int64_t most, char16_t* out) noexcept {
  const std::u16string_view pattern = grouping_of(record);
  const char16_t separator = record.grouping_symbol;
  if (pattern == u"3" && count <= 16) [[likely]] {
    if (static_cast<std::int64_t>(count + (count - 1) / 3) > most) return 0;
    return write_by_threes(digits, count, separator, out);
  }
  FloatGroups groups(pattern);
  if (groups.size() == 0) return 0;
  const std::size_t total = count + count_separators(groups, count);
  if (static_cast<std::int64_t>(total) > most) return 0;
  char16_t* position = out + total;
  std::size_t left_in_group = groups.size();
  for (std::size_t i = count; i-- > 0;) {
    if (left_in_group == 0) {
      *--position = separator;
      groups.advance();
      left_in_group = groups.size();
    }
    *--position = static_cast<unsigned char>(digits[i]);
    --left_in_group;
  }
  return total;
}

}  // namespace jwnls
