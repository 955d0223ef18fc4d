#include "library/dates/date_layout.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/plain_date.h"
#include "library/locale_data/date_characters.h"
#include "library/locale_data/date_data.h"
#include "library/locale_data/pattern_parts.h"
#include "library/texts/failure.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

std::string utf8_of(std::u16string_view units) {
  char bytes[3 * text_entry_capacity];
  return {bytes, to_utf8(units, bytes, sizeof bytes)};
}

std::u16string utf16_of(std::string_view text) {
  std::u16string units(text.size(), u'\0');
  units.resize(to_utf16(text, units.data(), units.size()).value_or(0));
  return units;
}

std::string folded_form(std::string_view text) {
  std::string folded(3 * text.size() + 8, '\0');
  folded.resize(fold_text(text, folded.data(), folded.size()).value_or(0));
  return folded;
}

// Nor commas.
std::string without_blanks(std::string text) {
  const auto dropped = [](char each) { return each == ' ' || each == ','; };
  text.erase(std::remove_if(text.begin(), text.end(), dropped), text.end());
  return text;
}

std::string_view language_of(const std::string& locale) {
  return std::string_view(locale).substr(0, locale.find('_'));
}

// Which part of a date a directive writes: 'd', 'm' or 'Y'; 0: none.
char part_of(char directive) {
  if (directive == 'd' || directive == 'E') return 'd';
  if (directive == 'm' || directive == 'O' || directive == 'B' || directive == 'b') return 'm';
  return directive == 'Y' ? 'Y' : '\0';
}

// "dmY", "mdY", "Ymd", ...: the order of the parts in a pattern.
std::string order_of(const PatternParts& pattern) {
  std::string order;
  for (const PatternParts::Part& part : pattern.parts) {
    const char each = part_of(part.directive);
    if (each != 0 && order.find(each) == order.npos) order += each;
  }
  return order;
}

// Months whose names are their numbers between two texts ("3月", "tháng 3"): those texts. False
// when they are names.
bool month_is_number(const TextEntry (&months)[12], std::string& before, std::string& behind) {
  for (int month = 1; month <= 12; ++month) {
    const std::string name = folded_form(utf8_of(text_of(months[month - 1])));
    const std::string digits = std::to_string(month);
    const std::size_t begin = std::min(name.find_first_of("123456789"), name.size());
    if (name.compare(begin, digits.size(), digits) != 0) return false;
    const std::size_t zeros = begin > 0 && name[begin - 1] == '0' ? 1 : 0;
    const std::string front = name.substr(0, begin - zeros);
    const std::string rest = name.substr(begin + digits.size());
    if (month > 1 && (front != before || rest != behind)) return false;
    before = front;
    behind = rest;
  }
  return true;
}

// The marks of a pattern of three numbers.
void add_own_marks(const LocaleRecord& record, const PatternParts& pattern, DateLayout& layout) {
  std::string marks[4];
  std::size_t gap = 0;
  for (const PatternParts::Part& part : pattern.parts) {
    if (part.directive == 0) {
      marks[gap] += part.literal;
      continue;
    }
    if (part_of(part.directive) == 0 || gap == 3) return;
    std::string before;
    std::string behind;
    if (part.directive == 'B' || part.directive == 'b') {
      const auto& months = part.directive == 'B' ? record.full_months : record.short_months;
      if (!month_is_number(months, before, behind)) return;
    }
    marks[gap] += before;
    marks[++gap] += behind;
  }
  if (gap != 3) return;
  const auto exact = std::to_array(marks);
  std::string written[4];  // as they stand in most texts, for the quick way
  for (std::size_t i = 0; i < 4; ++i) {
    written[i] = without_blanks(marks[i]);
    marks[i] = without_blanks(folded_form(marks[i]));
  }
  const auto is_letter_of_it = [](char each) { return is_letter(each); };
  const bool has_words = std::any_of(marks[1].begin(), marks[1].end(), is_letter_of_it) ||
                         std::any_of(marks[2].begin(), marks[2].end(), is_letter_of_it);
  layout.months_are_numbers = layout.months_are_numbers || has_words;
  const std::string order = order_of(pattern);
  const bool month_first = order.find('m') < order.find('d');
  const bool is_plain = exact[0].empty() && exact[1] == exact[2] && exact[1].size() == 1 &&
                        is_date_mark(exact[1].front()) && exact[3].empty();
  if (!is_plain && !exact[1].empty() && !exact[2].empty()) {
    layout.written_marks.push_back(
        {exact[0], exact[1], exact[2], exact[3], layout.own_marks.size()});
  }
  const auto add = [&](const std::string(&each)[4]) {
    layout.own_marks.push_back({each[0], each[1], each[2], each[3], month_first, has_words});
    layout.bytes.add(layout.own_marks.back());
  };
  add(written);
  if (!std::equal(std::begin(marks), std::end(marks), std::begin(written))) add(marks);
}

//   patterns  short, medium and long
void set_orders(const std::vector<PatternParts>& patterns, bool short_year_first,
                const Options& options, DateLayout& layout) {
  const std::string order = order_of(patterns.front());
  Order chosen = static_cast<Order>(options.order);
  if (chosen == order_locale) {
    chosen = order.front() == 'Y'                ? order_ymd
             : order.find('m') < order.find('d') ? order_mdy
                                                 : order_dmy;
  }
  layout.order = chosen;
  layout.short_years = options.years != years_four;
  layout.leading_short_years =
      options.years == years_two || (short_year_first && options.years != years_four);
  layout.short_years_with_names =
      options.years == years_two || order_of(patterns.back()).substr(0, 1) != "Y";
}

struct Ordinals {
  std::string_view language;
  std::array<std::string_view, 4> endings;
};
constexpr Ordinals ordinals[] = {{"en", {"st", "nd", "rd", "th"}},
                                 {"fr", {"er", "e"}},
                                 {"nl", {"e"}},
                                 {"es", {"o", "a"}},
                                 {"it", {"o", "a"}},
                                 {"pt", {"o", "a"}},
                                 {"ca", {"o", "a"}},
                                 {"gl", {"o", "a"}}};

// Where other calendars are in daily use.
struct OtherCalendar {
  std::string_view locale;  // or language
  const char* name;
};
constexpr OtherCalendar other_calendars[] = {{"fa", "Persian"},
                                             {"ps", "Persian"},
                                             {"mzn", "Persian"},
                                             {"lrc_IR", "Persian"},
                                             {"ckb_IR", "Persian"},
                                             {"ar_SA", "Islamic"},
                                             {"th", "Buddhist"},
                                             {"am", "Ethiopic"},
                                             {"ti_ET", "Ethiopic"},
                                             {"ja", "Japanese"},
                                             {"zh_TW", "Republic of China"},
                                             {"zh_Hant", "Republic of China"}};

void set_habits(const std::string& locale, DateLayout& layout) {
  const std::string_view language = language_of(locale);
  for (const Ordinals& row : ordinals) {
    if (row.language == language) layout.ordinals = row.endings;
  }
  for (const OtherCalendar& row : other_calendars) {
    if (row.locale == language || row.locale == locale) layout.calendar = row.name;
  }
  layout.buddhist = language == "th";
  if (layout.buddhist) layout.short_years = false;
}

Joint make_joint(const DateJoint& data) {
  Joint joint;
  joint.time_first = data.time_first;
  joint.before = data.before;
  joint.between = data.between;
  joint.behind = data.behind;
  joint.before_units = utf16_of(data.before);
  joint.between_units = utf16_of(data.between);
  joint.behind_units = utf16_of(data.behind);
  joint.mark = trimmed(data.between);
  return joint;
}

// The joint of the record's datetime pattern, which is a date pattern and the pattern of times in
// either order; false when it is not.
bool find_joint(const LocaleRecord& record, Joint& joint) {
  const std::string pattern = utf8_of(text_of(record.datetime_pattern));
  const std::string time = utf8_of(text_of(record.time_pattern));
  const std::size_t at = pattern.find(time);
  if (time.empty() || at == pattern.npos) return false;
  const std::string before = pattern.substr(0, at);
  const std::string behind = pattern.substr(at + time.size());
  for (const TextEntry& each : record.date_patterns) {
    const std::string date = utf8_of(text_of(each));
    if (date.empty()) continue;
    if (behind.empty() && before.substr(0, date.size()) == date) {
      joint = make_joint({false, "", std::string_view(before).substr(date.size()), ""});
      return true;
    }
    if (before.empty() && behind.size() >= date.size() &&
        behind.substr(behind.size() - date.size()) == date) {
      const std::string between = behind.substr(0, behind.size() - date.size());
      joint = make_joint({true, "", between, ""});
      return true;
    }
  }
  return false;
}

void set_joints(const Locale& locale, const std::optional<DatePatternData>& data, int style,
                DateLayout& layout) {
  layout.day_halves[0] = utf8_of(text_of(locale.record->before_noon));
  layout.day_halves[1] = utf8_of(text_of(locale.record->after_noon));
  if (data) {
    for (const DateJoint& each : data->joints) layout.joints.push_back(make_joint(each));
    const std::size_t index = style == style_short  ? 0
                              : style == style_long ? 2
                              : style == style_full ? 3
                                                    : 1;
    layout.joint = layout.joints[index];
    layout.is_composed = true;
  } else if (find_joint(*locale.record, layout.joint)) {
    layout.joints.push_back(layout.joint);
    layout.is_composed = true;
  }
  for (const std::string& each : layout.day_halves) layout.bytes.add_joint(each);
  for (const Joint& each : layout.joints) {
    layout.bytes.add_joint(each.between);
    layout.time_first = layout.time_first || each.time_first;
    layout.has_ends = layout.has_ends || !each.before.empty() || !each.behind.empty();
    layout.colon_joins = layout.colon_joins || ends_in(each.between, ":");
    const bool is_all = each.before.empty() && each.behind.empty() && !each.time_first;
    if (is_all && !each.mark.empty()) layout.quick_joints.push_back(each.between);
    for (std::string& word : words_of(each.between)) {
      auto& words = layout.joining_words;
      if (std::find(words.begin(), words.end(), word) == words.end()) {
        words.push_back(std::move(word));
      }
    }
  }
}

void sort_quick_joints(std::vector<std::string>& joints) {
  joints.insert(joints.end(), {", ", " "});
  std::sort(joints.begin(), joints.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() > b.size() : a < b;
  });
  joints.erase(std::unique(joints.begin(), joints.end()), joints.end());
}

// The texts of the layout's kind and style; the services write those that are not known here.
void set_writer(const LocaleRecord& record, int kind, const DatePatternData* data, int style,
                DateLayout& layout) {
  const std::string date = style == style_full
                               ? std::string(data->full)
                               : utf8_of(text_of(record.date_patterns[layout.date_style]));
  const std::string time = utf8_of(text_of(record.time_pattern));
  const std::string datetime = utf8_of(text_of(record.datetime_pattern));
  const Joint& joint = layout.joint;
  std::vector<DateWriterPart> parts = {{true, kind == JWNLS_DATE ? date : datetime}};
  if (kind != JWNLS_DATE && layout.is_composed) {
    parts = {{false, joint.before},
             {true, joint.time_first ? time : date},
             {false, joint.between},
             {true, joint.time_first ? date : time},
             {false, joint.behind}};
  }
  layout.writer = make_date_writer(record, data, parts);
}

void set_style(const Locale& locale, int kind, const std::optional<DatePatternData>& data,
               int style, DateLayout& layout) {
  if (style == style_full && !data) {
    fail(JWNLS_UNKNOWN, [&](Message& message) {
      message << "option 'style=full': the data of " << locale.name << " has no full dates";
    });
  }
  // The date service takes 1 for the medium and 2 for the long pattern, anything else for the
  // short one.
  layout.date_style = style == style_long ? 2 : style == style_short ? 0 : 1;
  if (kind != JWNLS_DATE) {
    set_joints(locale, data, style, layout);
    sort_quick_joints(layout.quick_joints);
  }
  if (kind != JWNLS_DATE && style != style_medium && !layout.is_composed) {
    fail(JWNLS_UNKNOWN, [&](Message& message) {
      message << "option 'style': " << locale.name << " writes datetimes in its medium style only";
    });
  }
  layout.is_composed = layout.is_composed && style != style_medium;
  set_writer(*locale.record, kind, data ? &*data : nullptr, style, layout);
  if (style == style_full && layout.writer == nullptr) {
    fail(JWNLS_UNKNOWN, [&](Message& message) {
      message << "option 'style=full': the full dates of " << locale.name << " are not understood";
    });
  }
}

}  // namespace

void DateBytes::add(const OwnMarks& marks) {
  const std::string* const texts[] = {&marks.lead, &marks.first_gap, &marks.second_gap,
                                      &marks.tail};
  for (std::size_t place = 0; place < own_begin_.size(); ++place) {
    const std::string& text = *texts[place];
    own_begin_[place].set(index_of(text.empty() ? '\0' : text.front()));
    for (const char each : text) {
      const char byte = static_cast<char>(index_of(each));
      for (ByteSet* set : {&foreign_, &foreign_to_names_, &foreign_in_front_}) set->remove(byte);
    }
  }
}

void DateBytes::add(const DateNames& names) {
  foreign_to_names_.remove_all(names.marks());
  foreign_in_front_.remove_all(names.marks());
}

void DateBytes::add_joint(std::string_view text) {
  for (const char each : text) foreign_in_front_.remove(each);
}

std::unique_ptr<const DateLayout> make_date_layout(const Locale& locale, int kind,
                                                   const Options& options) {
  if (kind != JWNLS_DATE && kind != JWNLS_DATETIME && kind != JWNLS_INSTANT) return nullptr;
  auto layout = std::make_unique<DateLayout>();
  const LocaleRecord& record = *locale.record;
  layout->names = date_names_of(locale, options.names == names_english);
  const auto data = read_date_pattern_data(record);
  std::vector<PatternParts> patterns;
  patterns.reserve(std::size(record.date_patterns));
  for (const TextEntry& each : record.date_patterns) patterns.emplace_back(utf8_of(text_of(each)));
  set_orders(patterns, data && data->short_year_first, options, *layout);
  layout->century = options.century;
  for (const PatternParts& each : patterns) add_own_marks(record, each, *layout);
  layout->bytes.add(*layout->names);
  set_habits(locale.name, *layout);
  set_style(locale, kind, data, options.style, *layout);
  return layout;
}

}  // namespace jwnls::library
