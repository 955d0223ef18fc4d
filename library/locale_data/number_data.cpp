#include "library/locale_data/number_data.h"

namespace jwnls::library {
namespace {

// "3" or "3;2"; sizes beyond a digit are no locale's.
GroupSizes sizes_of(std::u16string_view pattern) {
  const auto size_at = [pattern](std::size_t index) {
    const bool is_size = index < pattern.size() && pattern[index] >= u'1' && pattern[index] <= u'9';
    return static_cast<std::uint8_t>(is_size ? pattern[index] - u'0' : 0);
  };
  const std::uint8_t primary = size_at(0);
  if (primary == 0) return {};
  const std::uint8_t secondary = size_at(2);
  return {primary, secondary != 0 ? secondary : primary};
}

}  // namespace

NumberData number_data(const LocaleRecord& record) noexcept {
  NumberData data;
  if (record.decimal_symbol != 0) data.decimal = record.decimal_symbol;
  if (record.grouping_symbol != 0) data.sizes = sizes_of(grouping_of(record));
  if (data.sizes.primary != 0) data.group = record.grouping_symbol;
  data.exact_group = data.group;
  data.amount_sizes = data.sizes;
  data.triangle_minus = text_of(record.locale_name).substr(0, 2) == u"ja";
  return data;
}

}  // namespace jwnls::library
