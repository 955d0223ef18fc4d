// The twenty candidates of date recognition, spelled out from its rules.

#ifndef JWNLS_TESTS_SUPPORT_DATE_CANDIDATES_H_
#define JWNLS_TESTS_SUPPORT_DATE_CANDIDATES_H_

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "module/record/locale_record.h"

namespace jwnls::test {

inline bool is_month_first(std::u16string_view pattern) {
  const auto place = [pattern](std::initializer_list<const char16_t*> directives) {
    for (const char16_t* directive : directives) {
      const std::size_t at = pattern.find(directive);
      if (at != std::u16string_view::npos) return static_cast<int>(at);
    }
    return -1;
  };
  const int month = place({u"%m", u"%o"});
  return place({u"%Y", u"%y"}) > month && place({u"%d", u"%e", u"%b"}) > month;
}

inline std::vector<std::u16string> date_candidates(const LocaleRecord& record) {
  std::vector<std::u16string> all;
  for (const TextEntry& pattern : record.date_patterns) all.emplace_back(text_of(pattern));
  const bool month_first = is_month_first(all[0]);
  const auto add = [&all](std::u16string_view pattern, std::u16string_view marks) {
    for (const char16_t mark : marks) {
      std::u16string marked(pattern);
      for (char16_t& unit : marked) {
        if (unit == u'|') unit = mark;
      }
      all.push_back(marked);
    }
  };
  add(month_first ? u"%m|%d|%Y" : u"%d|%m|%Y", u"/-.");
  add(u"%Y|%m|%d", u"/-.");
  add(u"%Y|%b|%d", u"/-.");
  all.emplace_back(u"%b %d%#Y");
  add(u"%b|%d|%Y", u"/.-");
  all.emplace_back(u"%a,%b%d,%#Y");
  if (month_first) {
    add(u"%d|%m|%Y", u".-/");
  } else {
    add(u"%m|%d|%Y", u"/-.");
  }
  return all;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_DATE_CANDIDATES_H_
