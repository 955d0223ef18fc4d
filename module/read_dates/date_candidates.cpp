#include "module/read_dates/date_candidates.h"

namespace jwnls {
namespace {

constexpr DateLayouts::Patterns day_first_patterns = {
    u"%d/%m/%Y", u"%d-%m-%Y",    u"%d.%m.%Y", u"%Y/%m/%d", u"%Y-%m-%d", u"%Y.%m.%d",
    u"%Y/%b/%d", u"%Y-%b-%d",    u"%Y.%b.%d", u"%b %d%#Y", u"%b/%d/%Y", u"%b.%d.%Y",
    u"%b-%d-%Y", u"%a,%b%d,%#Y", u"%m/%d/%Y", u"%m-%d-%Y", u"%m.%d.%Y"};

// The month-first layouts and the day-first ones change places. Deliberate: the day-first ones then
// stand in the order dot, dash, slash.
constexpr DateLayouts::Patterns month_first_patterns = [] {
  DateLayouts::Patterns patterns = day_first_patterns;
  patterns[0] = u"%m/%d/%Y";
  patterns[1] = u"%m-%d-%Y";
  patterns[2] = u"%m.%d.%Y";
  patterns[14] = u"%d.%m.%Y";
  patterns[15] = u"%d-%m-%Y";
  patterns[16] = u"%d/%m/%Y";
  return patterns;
}();

constexpr DateLayouts day_first_layouts(day_first_patterns);
constexpr DateLayouts month_first_layouts(month_first_patterns);

// Where directives begin in a pattern, by their letters; -1 where there is none.
class DirectivePlaces {
 public:
  explicit DirectivePlaces(std::u16string_view pattern) noexcept {
    for (std::size_t at = pattern.size(); at-- > 1;) {
      if (pattern[at - 1] == u'%') note(pattern[at], static_cast<int>(at - 1));
    }
  }

  // Deliberate: a pattern without a numeric month counts as month-first when it has year and day.
  bool month_is_first() const noexcept {
    const int month = first_of(month_, other_month_, -1);
    return first_of(year_, short_year_, -1) > month && first_of(day_, other_day_, name_) > month;
  }

 private:
  static int first_of(int a, int b, int c) noexcept { return a >= 0 ? a : b >= 0 ? b : c; }

  void note(char16_t letter, int place) noexcept {
    switch (letter) {
      case u'Y':
        year_ = place;
        break;
      case u'y':
        short_year_ = place;
        break;
      case u'm':
        month_ = place;
        break;
      case u'o':
        other_month_ = place;
        break;
      case u'd':
        day_ = place;
        break;
      case u'e':
        other_day_ = place;
        break;
      case u'b':
        name_ = place;
        break;
      default:
        break;
    }
  }

  int year_ = -1, short_year_ = -1, month_ = -1, other_month_ = -1;
  int day_ = -1, other_day_ = -1, name_ = -1;
};

}  // namespace

const DateLayouts& date_layouts(std::u16string_view date_pattern_1) noexcept {
  return DirectivePlaces(date_pattern_1).month_is_first() ? month_first_layouts : day_first_layouts;
}

}  // namespace jwnls
