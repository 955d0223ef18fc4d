// Names of months and weekdays: the section "date names".

#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "generators/locales/cldr_locale.h"
#include "generators/locales/date_symbols.h"
#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"
#include "library/locale_data/name_list.h"

namespace jwnls::generator {
namespace {

using library::folded_name;
using library::NameList;
using library::NameMeaning;
using library::PatternParts;

using Texts = std::vector<std::string>;

// Languages in which one folded text may name two months.
constexpr std::string_view with_names_of_two_months[] = {"dyo", "yo"};

// Among these a name that another has for another month is a false friend.
constexpr std::string_view main_languages[] = {
    "af", "ar", "az", "bg", "bn", "ca", "cs", "da", "de", "el", "en", "es", "et", "eu", "fa", "fi",
    "fr", "gl", "he", "hi", "hr", "hu", "hy", "id", "is", "it", "ja", "ka", "kk", "ko", "lt", "lv",
    "mk", "ms", "nb", "nl", "pl", "pt", "ro", "ru", "sk", "sl", "sr", "sv", "th", "tr", "uk", "vi"};

template <typename List>
bool contains(const List& list, const std::string& text) {
  return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

// What CLDR says of one locale.
struct Source {
  std::string locale, language, script;
  std::vector<Texts> months;    // lists of 12
  std::vector<Texts> weekdays;  // lists of 7, from Sunday
  Texts patterns;               // in directives
};

std::string utf8(std::u16string_view text) {
  return icu_text<char>("u_strToUTF8", [&](char* out, int32_t room, UErrorCode* error) {
    int32_t length = 0;
    u_strToUTF8(out, room, &length, text.data(), static_cast<int32_t>(text.size()), error);
    return length;
  });
}

Source read_source(const std::string& locale) {
  const Subtags subtags = likely_subtags(locale);
  Source source = {locale, subtags.language, subtags.script, {}, {}, {}};
  const DateFormat format = open_date_format(locale, UDAT_MEDIUM, UDAT_NONE);
  const auto texts = [&](UDateFormatSymbolType type, int first, int count) {
    Texts list;
    for (const std::u16string& text : date_symbols(format, type, first, count)) {
      list.push_back(utf8(text));
    }
    return list;
  };
  for (const UDateFormatSymbolType type :
       {UDAT_MONTHS, UDAT_SHORT_MONTHS, UDAT_STANDALONE_MONTHS, UDAT_STANDALONE_SHORT_MONTHS}) {
    source.months.push_back(texts(type, 0, 12));
  }
  for (const UDateFormatSymbolType type :
       {UDAT_WEEKDAYS, UDAT_SHORT_WEEKDAYS, UDAT_STANDALONE_WEEKDAYS,
        UDAT_STANDALONE_SHORT_WEEKDAYS, UDAT_SHORTER_WEEKDAYS}) {
    source.weekdays.push_back(texts(type, 1, 7));
  }
  for (const UDateFormatStyle style : {UDAT_SHORT, UDAT_MEDIUM, UDAT_LONG, UDAT_FULL}) {
    source.patterns.push_back(utf8(map_pattern(cldr_pattern(locale, style, UDAT_NONE),
                                               pattern_names(format), PatternKind::other)));
  }
  return source;
}

NameList own_names(const Source& source) {
  NameList list;
  for (const Texts& months : source.months) {
    for (int month = 1; month <= 12; ++month) {
      list.add_month(months[static_cast<std::size_t>(month - 1)], month);
    }
  }
  for (const Texts& weekdays : source.weekdays) {
    for (int day = 1; day <= 7; ++day) {
      list.add_weekday(weekdays[static_cast<std::size_t>(day - 1)], day);
    }
  }
  std::string full[12];
  std::string brief[12];
  std::copy(source.months[0].begin(), source.months[0].end(), full);
  std::copy(source.months[1].begin(), source.months[1].end(), brief);
  for (const std::string& pattern : source.patterns) {
    list.add_pattern(PatternParts(pattern), full, brief);
  }
  return list;
}

struct Locale {
  Source source;
  NameList own;
};

// All locales, and which months a text names in any of them.
struct World {
  std::vector<Locale> locales;
  std::map<std::string, std::set<int>> months;
  std::map<std::string, std::set<int>> main_months;  // in the main languages

  World() {
    for (const std::string& name : cldr_locale_names()) {
      const Source source = read_source(name);
      locales.push_back({source, own_names(source)});
      for (const auto& [text, meaning] : locales.back().own.names) {
        if (meaning.month == 0) continue;
        months[text].insert(meaning.month);
        if (contains(main_languages, source.language)) main_months[text].insert(meaning.month);
      }
    }
  }
};

const World& world() {
  static const World all;
  return all;
}

// Whether a name of another locale may stand for a month or a weekday here: no own name says
// something else, and it is no beginning of an own month's name.
bool contradicts_nothing(const NameList& own, const std::string& text, const NameMeaning& meaning) {
  if (own.names.find(text) != own.names.end()) return false;
  for (auto next = own.names.lower_bound(text);
       next != own.names.end() && next->first.compare(0, text.size(), text) == 0; ++next) {
    if (next->second.is_name() && next->second.month != meaning.month) return false;
  }
  return true;
}

// Adds the names of the other locales of the language and script, which must agree.
void add_names_of_relatives(const Locale& locale, NameList& list) {
  for (const Locale& other : world().locales) {
    if (other.source.language != locale.source.language ||
        other.source.script != locale.source.script) {
      continue;
    }
    for (const auto& [text, meaning] : other.own.names) {
      if (!meaning.is_name() || !contradicts_nothing(locale.own, text, meaning)) continue;
      const auto [known, is_new] = list.names.try_emplace(text, meaning);
      known->second.word = false;
      if (is_new) continue;
      if (known->second.month != meaning.month) known->second.two_months = true;
      if (known->second.weekday != meaning.weekday) {
        known->second.weekday = NameMeaning::some_weekday;
      }
    }
  }
}

template <typename Convert>
std::string in_case(const std::string& text, Convert convert) {
  const icu::UnicodeString units = icu::UnicodeString::fromUTF8(text);
  return utf8(icu_text<char16_t>("u_strTo..", [&](char16_t* out, int32_t room, UErrorCode* error) {
    return convert(out, room, units.getBuffer(), units.length(), "", error);
  }));
}

// The names as they are written that fold to the name of another month; in small and capital
// letters, too.
std::map<std::string, int> exact_names(const Source& source, const NameList& list) {
  std::map<std::string, int> exact;
  for (const Texts& months : source.months) {
    for (int month = 1; month <= 12; ++month) {
      const std::string& text = months[static_cast<std::size_t>(month - 1)];
      const auto name = list.names.find(folded_name(text));
      if (name == list.names.end() || !name->second.two_months) continue;
      for (const std::string& form :
           {text, in_case(text, u_strToLower), in_case(text, u_strToUpper)}) {
        const auto [known, is_new] = exact.try_emplace(form, month);
        if (!is_new && known->second != month) known->second = 0;
      }
    }
  }
  std::erase_if(exact, [](const auto& row) { return row.second == 0; });
  return exact;
}

std::size_t meaning_bits(const NameMeaning& meaning) {
  return std::size_t{meaning.month} | std::size_t{meaning.weekday} << 4 |
         (meaning.word ? 1U : 0U) << 8 | (meaning.two_months ? 1U : 0U) << 9 |
         (meaning.false_friend ? 1U : 0U) << 10 | (meaning.is_beginning ? 1U : 0U) << 11;
}

NameList names_of(const Locale& locale) {
  NameList list = locale.own;
  add_names_of_relatives(locale, list);
  list.add_beginnings([](const std::string& text, int month) {
    const auto known = world().months.find(text);
    return known == world().months.end() || known->second == std::set<int>{month};
  });
  if (!contains(main_languages, locale.source.language)) return list;
  for (auto& [text, meaning] : list.names) {
    const auto known = world().main_months.find(text);
    meaning.false_friend =
        meaning.month != 0 && known != world().main_months.end() && known->second.size() > 1;
  }
  return list;
}

}  // namespace

std::string date_name_section(const std::string& name) {
  const auto locale = std::ranges::find(world().locales, name,
                                        [](const Locale& each) { return each.source.locale; });
  const NameList list = names_of(*locale);
  SectionWriter out;
  out.word(list.names.size());
  std::vector<std::pair<std::string, NameMeaning>> names(list.names.begin(), list.names.end());
  std::ranges::sort(names, library::is_looked_for_before,
                    &std::pair<std::string, NameMeaning>::first);
  for (const auto& [text, meaning] : names) {
    if (meaning.two_months && !contains(with_names_of_two_months, locale->source.language)) {
      throw std::runtime_error(std::string(name).append(": two months are called ").append(text));
    }
    out.word(meaning_bits(meaning));
    out.byte(text.size());
    out.bytes(text);
  }
  const std::map<std::string, int> exact = exact_names(locale->source, list);
  out.byte(exact.size());
  for (const auto& [text, month] : exact) {
    out.byte(static_cast<std::size_t>(month));
    out.byte(text.size());
    out.bytes(text);
  }
  return out.all();
}

}  // namespace jwnls::generator
