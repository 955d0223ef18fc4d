#include "generators/locales/pattern_mapping.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace jwnls::generator {
namespace {

struct Field {
  std::u16string_view cldr;
  std::u16string_view directive;
};

// Era and month names are not here: they become texts where they have to.
constexpr Field fields[] = {
    {u"y", u"%Y"},    {u"yy", u"%Y"},  // a four-digit year always
    {u"yyyy", u"%Y"},                  //
    {u"M", u"%O"},    {u"MM", u"%m"},  {u"MMM", u"%b"},
    {u"MMMM", u"%B"}, {u"d", u"%E"},   {u"dd", u"%d"},
    {u"E", u"%a"},    {u"EEE", u"%a"}, {u"EEEE", u"%A"},
    {u"cccc", u"%A"}, {u"H", u"%#H"},  {u"HH", u"%H"},
    {u"h", u"%#I"},   {u"hh", u"%I"},  {u"m", u"%M"},
    {u"mm", u"%M"},   {u"s", u"%S"},   {u"ss", u"%S"},
    {u"a", u"%p"},    {u"B", u"%p"},  // the day's periods count as
                                      // its halves
};

// Recognition learns from "%m" and "%d" that a locale writes the month first.
constexpr Field month_first_fields[] = {{u"M", u"%m"}, {u"d", u"%d"}};

constexpr bool is_letter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

std::u16string escaped(std::u16string_view literal) {
  std::u16string text;
  for (const char16_t unit : literal) {
    text += unit;
    if (unit == u'%') text += unit;
  }
  return text;
}

struct Affixes {
  std::u16string prefix;
  std::u16string suffix;
};

// Prefix and suffix when every name is "prefix N suffix", N being the month's number.
std::optional<Affixes> numbered(const std::vector<std::u16string>& names) {
  const std::size_t place = names.at(0).find(u'1');
  if (place == std::u16string::npos) return std::nullopt;
  const Affixes affixes = {names[0].substr(0, place), names[0].substr(place + 1)};
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    if (names[i] !=
        affixes.prefix + std::u16string(number.begin(), number.end()) + affixes.suffix) {
      return std::nullopt;
    }
  }
  return affixes;
}

std::u16string month_name(std::u16string_view directive, const std::vector<std::u16string>& names) {
  const std::optional<Affixes> affixes = numbered(names);
  if (!affixes) return std::u16string(directive);
  return escaped(affixes->prefix) + u"%O" + escaped(affixes->suffix);
}

std::u16string map_field(std::u16string_view field, const PatternNames& names, bool month_first) {
  if (field[0] == u'G') return escaped(names.era);
  if (month_first) {
    const auto* row = std::ranges::find(month_first_fields, field, &Field::cldr);
    if (row != std::end(month_first_fields)) return std::u16string(row->directive);
  }
  const auto* row = std::ranges::find(fields, field, &Field::cldr);
  if (row == std::end(fields)) {
    throw std::runtime_error("no directive expresses the field \"" +
                             std::string(field.begin(), field.end()) + '"');
  }
  if (field == u"MMM") return month_name(row->directive, names.short_months);
  if (field == u"MMMM") return month_name(row->directive, names.full_months);
  return std::u16string(row->directive);
}

// Reads a quoted literal from its opening quote on and moves `i` past it; "''" is a quote.
std::u16string quoted_literal(std::u16string_view cldr, std::size_t& i) {
  if (i + 1 < cldr.size() && cldr[i + 1] == u'\'') {
    i += 2;
    return u"'";
  }
  std::u16string text;
  for (++i; i < cldr.size(); ++i) {
    if (cldr[i] == u'\'') {
      if (i + 1 == cldr.size() || cldr[i + 1] != u'\'') {
        ++i;
        return text;
      }
      ++i;
    }
    text += cldr[i];
  }
  throw std::runtime_error("a quoted literal without an end");
}

}  // namespace

std::u16string typeable(std::u16string_view text) {
  std::u16string result;
  for (const char16_t unit : text) {
    switch (unit) {
      case u'\u00A0':
      case u'\u202F':
      case u'\u2009':
        result += u' ';
        break;
      case u'\u200E':
      case u'\u200F':
      case u'\u061C':
        break;
      default:
        result += unit;
    }
  }
  return result;
}

std::u16string map_pattern(std::u16string_view cldr, const PatternNames& names, PatternKind kind) {
  const bool month_first = kind == PatternKind::numeric_date && cldr.find(u'M') < cldr.find(u'd');
  std::u16string pattern;
  for (std::size_t i = 0; i < cldr.size();) {
    if (cldr[i] == u'\'') {
      pattern += escaped(quoted_literal(cldr, i));
    } else if (is_letter(cldr[i])) {
      const std::size_t end = std::min(cldr.find_first_not_of(cldr[i], i), cldr.size());
      pattern += map_field(cldr.substr(i, end - i), names, month_first);
      i = end;
    } else {
      pattern += escaped(cldr.substr(i++, 1));
    }
  }
  return typeable(pattern);
}

}  // namespace jwnls::generator
