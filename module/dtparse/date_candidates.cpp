#include "module/dtparse/date_candidates.h"

#include <initializer_list>

namespace jwnls {
namespace {

constexpr DateLayouts day_first_layouts = {{
    {u"%d/%m/%Y"},
    {u"%d-%m-%Y"},
    {u"%d.%m.%Y"},
    {u"%Y/%m/%d"},
    {u"%Y-%m-%d"},
    {u"%Y.%m.%d"},
    {u"%Y/%b/%d"},
    {u"%Y-%b-%d"},
    {u"%Y.%b.%d"},
    {u"%b %d%#Y"},
    {u"%b/%d/%Y"},
    {u"%b.%d.%Y"},
    {u"%b-%d-%Y"},
    {u"%a,%b%d,%#Y"},
    {u"%m/%d/%Y"},
    {u"%m-%d-%Y"},
    {u"%m.%d.%Y"},
}};

// The month-first layouts and the day-first ones change places. Deliberate: the day-first ones then
// stand in the order dot, dash, slash.
constexpr DateLayouts month_first_layouts = [] {
  DateLayouts layouts = day_first_layouts;
  layouts[0] = {u"%m/%d/%Y"};
  layouts[1] = {u"%m-%d-%Y"};
  layouts[2] = {u"%m.%d.%Y"};
  layouts[14] = {u"%d.%m.%Y"};
  layouts[15] = {u"%d-%m-%Y"};
  layouts[16] = {u"%d/%m/%Y"};
  return layouts;
}();

// Where the first of the directives that the pattern has begins; -1 when it has none.
int position_of(std::u16string_view pattern,
                std::initializer_list<std::u16string_view> directives) noexcept {
  for (const std::u16string_view directive : directives) {
    const std::size_t at = pattern.find(directive);
    if (at != pattern.npos) return static_cast<int>(at);
  }
  return -1;
}

// Deliberate: a pattern without a numeric month counts as month-first when it has year and day.
bool is_month_first(std::u16string_view pattern) noexcept {
  const int month = position_of(pattern, {u"%m", u"%o"});
  return position_of(pattern, {u"%Y", u"%y"}) > month &&
         position_of(pattern, {u"%d", u"%e", u"%b"}) > month;
}

}  // namespace

const DateLayouts& date_layouts(std::u16string_view date_pattern_1) noexcept {
  return is_month_first(date_pattern_1) ? month_first_layouts : day_first_layouts;
}

}  // namespace jwnls
