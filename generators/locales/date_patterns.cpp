// Patterns of full dates and what joins dates and times: the section "date patterns".

#include <stdexcept>

#include "generators/locales/date_symbols.h"
#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"

namespace jwnls::generator {
namespace {

// A literal of a CLDR pattern without its quotes.
std::u16string unquoted(std::u16string_view literal) {
  return map_pattern(literal, {}, PatternKind::other);
}

// What stands around the parts of a datetime, which is their patterns in some order.
void write_joint(SectionWriter& out, const std::string& locale, UDateFormatStyle style) {
  const std::u16string date = cldr_pattern(locale, style, UDAT_NONE);
  const std::u16string time = cldr_pattern(locale, UDAT_NONE, UDAT_MEDIUM);
  const std::u16string both = cldr_pattern(locale, style, UDAT_MEDIUM);
  const std::size_t date_at = both.find(date);
  const std::size_t time_at = both.find(time);
  if (date_at == both.npos || time_at == both.npos) {
    throw std::runtime_error("a datetime that is not made of its date and its time");
  }
  const bool time_first = time_at < date_at;
  const std::size_t first = time_first ? time_at : date_at;
  const std::size_t first_end = first + (time_first ? time : date).size();
  const std::size_t second = time_first ? date_at : time_at;
  const std::size_t second_end = second + (time_first ? date : time).size();
  out.byte(time_first ? 1 : 0);
  out.text(unquoted(both.substr(0, first)));
  out.text(unquoted(both.substr(first_end, second - first_end)));
  out.text(unquoted(both.substr(second_end)));
}

}  // namespace

std::string date_pattern_section(const std::string& locale) try {
  const DateFormat format = open_date_format(locale, UDAT_FULL, UDAT_NONE);
  const std::u16string full = cldr_pattern(locale, UDAT_FULL, UDAT_NONE);
  const std::u16string short_date = cldr_pattern(locale, UDAT_SHORT, UDAT_NONE);
  const bool short_year =
      short_date.find(u"yy") != short_date.npos && short_date.find(u"yyyy") == short_date.npos;
  const bool year_first = short_date.find(u'y') < short_date.find(u'M');
  SectionWriter out;
  out.byte(short_year && year_first ? 1 : 0);
  out.text(map_pattern(full, pattern_names(format), PatternKind::other));
  for (const UDateFormatStyle style : {UDAT_SHORT, UDAT_MEDIUM, UDAT_LONG, UDAT_FULL}) {
    write_joint(out, locale, style);
  }
  const bool stands_alone = full.find(u"cccc") != full.npos;
  out.byte(stands_alone ? 7 : 0);
  if (stands_alone) {
    for (const std::u16string& day : date_symbols(format, UDAT_STANDALONE_WEEKDAYS, 1, 7)) {
      out.text(typeable(day));
    }
  }
  return out.all();
} catch (const std::runtime_error& failure) {
  throw std::runtime_error(locale + ": " + failure.what());
}

}  // namespace jwnls::generator
