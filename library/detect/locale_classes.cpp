#include "library/detect/locale_classes.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "host/locales/locale_names.h"
#include "library/layouts/layout.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/date_characters.h"
#include "library/options/options.h"
#include "library/process/opening.h"
#include "library/process/process.h"
#include "library/texts/failure.h"

namespace jwnls::library {
namespace {

// What a reader goes by, as bytes: equal keys read alike.
class Key {
 public:
  Key& operator<<(std::string_view text) {
    bytes_.append(text) += '\0';
    return *this;
  }
  Key& operator<<(std::u16string_view text) {
    return *this << std::string_view(reinterpret_cast<const char*>(text.data()), 2 * text.size());
  }
  Key& operator<<(std::uint32_t number) {
    return *this << std::string_view(reinterpret_cast<const char*>(&number), sizeof number);
  }
  Key& operator<<(const GroupSizes& sizes) {
    return *this << std::uint32_t{sizes.primary} * 16U + sizes.secondary;
  }
  std::string& bytes() { return bytes_; }

 private:
  std::string bytes_;
};

void add_numbers(const jwnls_layout& layout, Key& key) {
  const NumberSyntax& syntax = layout.number.syntax;
  // A symbol that some locale alone has counts as itself, the others by their class.
  const auto symbol = [](char32_t c) {
    const Separator known = separator_of(c);
    return known == Separator::none ? static_cast<std::uint32_t>(c)
                                    : static_cast<std::uint32_t>(known);
  };
  key << symbol(syntax.decimal_character) << symbol(syntax.group_character) << syntax.own_groups
      << static_cast<std::uint32_t>(syntax.other_decimal) << (syntax.triangle_minus ? 1U : 0U);
  // The sizes of numbers and of amounts are both taken, whichever is which.
  const bool swap = syntax.sizes[1].secondary < syntax.sizes[0].secondary;
  key << syntax.sizes[swap ? 1 : 0] << syntax.sizes[swap ? 0 : 1];
}

void add_dates(const DateLayout& dates, Detail detail, Key& key) {
  key << std::uint32_t{dates.order} << (dates.short_years ? 1U : 0U)
      << (dates.leading_short_years ? 1U : 0U) << (dates.buddhist ? 1U : 0U);
  std::vector<std::string> marks;
  for (const OwnMarks& own : dates.own_marks) {
    std::string text = own.lead + '\1' + own.first_gap + '\1' + own.second_gap + '\1' + own.tail;
    const auto is_word = [](char each) { return is_letter(each); };
    if (detail == Detail::plain && std::any_of(text.begin(), text.end(), is_word)) continue;
    // Three dots and the like, which stand between the numbers of any date, say nothing.
    const bool usual = own.lead.empty() && own.tail.empty() && own.first_gap == own.second_gap &&
                       own.first_gap.size() <= 1;
    if (usual) continue;
    if (own.has_words) text += own.month_first ? 'm' : 'd';
    marks.push_back(std::move(text));
  }
  std::sort(marks.begin(), marks.end());
  marks.erase(std::unique(marks.begin(), marks.end()), marks.end());
  for (const std::string& each : marks) key << each;
  if (detail == Detail::plain) return;
  key << (dates.short_years_with_names ? 1U : 0U);
  for (const std::string_view ordinal : dates.ordinals) key << ordinal;
  dates.names->add_to(key.bytes());
}

// What stands between a date and a time, and around both.
void add_joints(const DateLayout& dates, Detail detail, Key& key) {
  if (detail == Detail::words) {
    for (const std::string& word : dates.joining_words) key << word;
  }
  const auto is_plain = [](std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char each) { return is_letter(each); });
  };
  for (const Joint& joint : dates.joints) {
    const bool tells = is_plain(joint.before) && is_plain(joint.between) && is_plain(joint.behind);
    if (detail == Detail::plain && !tells) continue;
    key << joint.before << joint.between << joint.behind << (joint.time_first ? 1U : 0U);
  }
}

// The unit of amounts.
void add_currency(const jwnls_layout& layout, Detail detail, Key& key) {
  const CurrencyData currency = currency_data(*layout.locale->record, layout.currency);
  key << static_cast<std::uint32_t>(currency.decimals);
  if (detail == Detail::plain) return;
  key << currency.code << currency.symbol.text << currency.narrow.text;
}

// What the service's recognition of times goes by.
void add_times(const LocaleRecord& record, Detail detail, Key& key) {
  key << text_of(record.time_pattern);
  if (detail == Detail::words) key << text_of(record.before_noon) << text_of(record.after_noon);
}

Key key_of(const jwnls_layout& layout, Detail detail) {
  Key key;
  switch (layout.kind) {
    case JWNLS_DATE:
      add_dates(*layout.dates, detail, key);
      break;
    case JWNLS_DATETIME:
      add_dates(*layout.dates, detail, key);
      add_joints(*layout.dates, detail, key);
      add_times(*layout.locale->record, detail, key);
      break;
    case JWNLS_TIME:
      add_times(*layout.locale->record, detail, key);
      break;
    case JWNLS_AMOUNT:
      add_numbers(layout, key);
      add_currency(layout, detail, key);
      break;
    default:
      add_numbers(layout, key);
  }
  return key;
}

OwnedLayout open(const std::string& locale, int kind, const char* words) {
  jwnls_layout* layout = nullptr;
  Failure failure;
  if (jwnls_open(locale.c_str(), kind, words, &layout, &failure.error) != JWNLS_OK) {
    throw failure;
  }
  return OwnedLayout(layout);
}

}  // namespace

const std::vector<std::string>& every_locale() {
  static const std::vector<std::string> locales = [] {
    const auto language_of = [](std::string_view name) { return name.substr(0, name.find('_')); };
    std::map<std::string_view, std::size_t> spread;
    std::vector<std::string> names;
    for (const host::LocaleRow& row : host::available_locales()) {
      ++spread[language_of(row.name)];
      names.emplace_back(row.name);
    }
    const auto is_language = [&](const std::string& name) { return language_of(name) == name; };
    std::stable_sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
      if (is_language(a) != is_language(b)) return is_language(a);
      return spread[language_of(a)] > spread[language_of(b)];
    });
    return names;
  }();
  return locales;
}

LocaleClasses make_classes(const std::vector<std::string>& locales, int kind, const char* words,
                           Detail detail) {
  LocaleClasses classes;
  std::map<std::string, std::size_t> known;
  LocaleViewer viewer;
  Options options;
  read_options(kind, words, options);
  for (std::size_t i = 0; i < locales.size(); ++i) {
    // Most locales read as one before them, and are not kept.
    const auto layout = make_layout(viewer.look_at(locales[i]), kind, options);
    const auto [place, is_new] =
        known.emplace(std::move(key_of(*layout, detail).bytes()), classes.all.size());
    if (is_new) classes.all.push_back({open(locales[i], kind, words), {}});
    classes.all[place->second].locales.push_back(static_cast<std::uint16_t>(i));
  }
  return classes;
}

const LocaleClasses& classes_of_every_locale(int kind, Detail detail) {
  // At most two a kind, of some hundred layouts together.
  static auto* const made = new std::map<std::pair<int, Detail>, LocaleClasses>;
  const Gathering gathering;
  const auto known = made->find({kind, detail});
  if (known != made->end()) return known->second;
  return made->emplace(std::pair(kind, detail), make_classes(every_locale(), kind, "", detail))
      .first->second;
}

WeekdayWords weekday_words(const LocaleClasses& classes) {
  WeekdayWords words;
  for (const LocaleClass& each : classes.all) {
    each.layout->dates->names->each_weekday([&words](std::string_view name) {
      const auto end = std::find_if_not(name.begin(), name.end(), is_letter);
      words.emplace(name.begin(), end);
    });
  }
  return words;
}

const WeekdayWords& weekday_words_of_every_locale() {
  const LocaleClasses& classes = classes_of_every_locale(JWNLS_DATE, Detail::words);
  static const WeekdayWords* made = nullptr;
  const Gathering gathering;
  if (made == nullptr) made = new WeekdayWords(weekday_words(classes));
  return *made;
}

}  // namespace jwnls::library
