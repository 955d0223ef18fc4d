#include "module/numfmt/grouped_digits.h"

#include <string_view>

#include "module/numfmt/grouping.h"
#include "module/numfmt/groups_of_three.h"

namespace jwnls {
namespace {

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
  if (pattern == u"3" && count <= most_in_groups_of_three) [[likely]] {
    if (static_cast<std::int64_t>(count + (count - 1) / 3) > most) return 0;
    return write_groups_of_three(digits, count, separator, out);
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
