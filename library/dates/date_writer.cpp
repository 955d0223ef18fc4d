#include "library/dates/date_writer.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "library/texts/utf8.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

template <typename Unit>
const typename DateTexts<Unit>::FieldName DateTexts<Unit>::field_names[16] = {
    {'E', false, Field::day},         {'d', false, Field::padded_day},
    {'O', false, Field::month},       {'m', false, Field::padded_month},
    {'Y', false, Field::year},        {'H', true, Field::hour},
    {'H', false, Field::padded_hour}, {'I', true, Field::half_hour},
    {'M', false, Field::minute},      {'I', false, Field::padded_half_hour},
    {'S', false, Field::second},      {'B', false, Field::full_month},
    {'b', false, Field::short_month}, {'A', false, Field::full_weekday},
    {'p', false, Field::day_half},    {'a', false, Field::short_weekday},
};

template <typename Unit>
auto DateTexts<Unit>::add_text(std::string_view text) -> Text {
  const std::size_t begin = texts_.size();
  if constexpr (sizeof(Unit) == 1) {
    texts_.append(text);
  } else {
    texts_.resize(begin + text.size());
    texts_.resize(begin + to_utf16(text, texts_.data() + begin, text.size()).value_or(0));
  }
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(texts_.size() - begin)};
}

// A surrogate without its partner becomes U+FFFD.
template <typename Unit>
auto DateTexts<Unit>::add_text(std::u16string_view text) -> Text {
  if constexpr (sizeof(Unit) != 1) {
    const auto is_surrogate = [](char16_t unit) { return (unit & 0xF800U) == 0xD800U; };
    if (std::none_of(text.begin(), text.end(), is_surrogate)) {
      const auto begin = static_cast<std::uint32_t>(texts_.size());
      texts_.append(text);
      return {begin, static_cast<std::uint32_t>(text.size())};
    }
  }
  char bytes[3 * text_entry_capacity];
  return add_text(std::string_view(bytes, to_utf8(text, bytes, sizeof bytes)));
}

template <typename Unit>
void DateTexts<Unit>::add_literal(std::string_view literal) {
  if (!literal.empty()) parts_.push_back({Field::literal, add_text(literal)});
}

template <typename Unit>
bool DateTexts<Unit>::add_pattern(std::string_view pattern) {
  constexpr std::size_t usual_parts = 8;
  constexpr std::size_t usual_texts = 160;  // the names of months, or of weekdays
  parts_.reserve(std::max(parts_.size(), usual_parts));
  texts_.reserve(std::max(texts_.size(), usual_texts));
  while (!pattern.empty()) {
    const std::size_t mark = std::min(pattern.find('%'), pattern.size());
    add_literal(pattern.substr(0, mark));
    if (mark == pattern.size()) break;
    pattern.remove_prefix(mark + 1);
    const bool bare = pattern.starts_with('#');
    const char directive = pattern.size() > bare ? pattern[bare] : '\0';
    const auto found = std::find_if(std::begin(field_names), std::end(field_names),
                                    [bare, directive](const FieldName& row) {
                                      return row.directive == directive && row.bare == bare;
                                    });
    if (found == std::end(field_names)) return false;
    parts_.push_back({found->field, {}});
    pattern.remove_prefix(1U + bare);
  }
  return true;
}

template <typename Unit>
bool DateTexts<Unit>::finish(const LocaleRecord& record, const DatePatternData* data) {
  longest_ = block;
  for (Part& part : parts_) {
    std::size_t longest = part.field == Field::literal ? part.text.size : 4;
    if (part.field >= Field::full_month) {
      part.text.begin = static_cast<std::uint32_t>(names_.size());
      add_names(part.field, record, data);
      for (std::size_t i = part.text.begin; i < names_.size(); ++i) {
        longest = std::max<std::size_t>(longest, names_[i].size);
      }
    }
    longest_ += longest;
  }
  texts_.append(block, 0);
  return longest_ <= most_units;
}

template <typename Unit>
void DateTexts<Unit>::add_names(Field field, const LocaleRecord& record,
                                const DatePatternData* data) {
  if (field == Field::full_weekday && data != nullptr && !data->weekdays[0].empty()) {
    for (const std::string_view each : data->weekdays) names_.push_back(add_text(each));
    return;
  }
  const std::pair<Field, std::span<const TextEntry>> lists[] = {
      {Field::full_month, record.full_months},     {Field::short_month, record.short_months},
      {Field::full_weekday, record.full_weekdays}, {Field::short_weekday, record.short_weekdays},
      {Field::day_half, {&record.before_noon, 1}}, {Field::day_half, {&record.after_noon, 1}}};
  for (const auto& [each, entries] : lists) {
    if (each != field) continue;
    names_.reserve(names_.size() + entries.size());
    for (const TextEntry& entry : entries) names_.push_back(add_text(text_of(entry)));
  }
}

template <typename Unit>
[[gnu::always_inline]] inline Unit* DateTexts<Unit>::put(Unit* at, const Unit* texts,
                                                         const Text& text) noexcept {
  const Unit* const from = texts + text.begin;
  std::memcpy(at, from, block * sizeof(Unit));
  if (text.size > block) [[unlikely]] {
    std::memcpy(at, from, text.size * sizeof(Unit));
  }
  return at + text.size;
}

template <typename Unit>
[[gnu::always_inline]] inline Unit* DateTexts<Unit>::put_pair(Unit* at,
                                                              std::int32_t value) noexcept {
  const auto number = static_cast<std::uint32_t>(value);
  const std::uint32_t tens = number * 103 >> 10;  // exact below 100
  at[0] = static_cast<Unit>('0' + tens);
  at[1] = static_cast<Unit>('0' + (number - 10 * tens));
  return at + 2;
}

template <typename Unit>
[[gnu::always_inline]] inline Unit* DateTexts<Unit>::put_number(Unit* at,
                                                                std::int32_t value) noexcept {
  if (value > 9) return put_pair(at, value);
  *at = static_cast<Unit>('0' + value);
  return at + 1;
}

// 1 to 12.
static std::int32_t half_hour(std::int32_t second) noexcept {
  const std::int32_t hour = second / 3600 % 12;
  return hour == 0 ? 12 : hour;
}

template <typename Unit>
Unit* DateTexts<Unit>::put_all(std::int32_t day, std::int32_t second, Unit* at) const noexcept {
  const CivilDate date = civil_from_day(day);
  const Unit* const texts = texts_.data();
  const Text* const names = names_.data();
  const auto put_name = [&](const Part& part, std::int32_t index) {
    at = put(at, texts, names[part.text.begin + static_cast<std::uint32_t>(index)]);
  };
  for (const Part& part : parts_) {
    switch (part.field) {
      case Field::literal:
        at = put(at, texts, part.text);
        break;
      case Field::day:
        at = put_number(at, date.day);
        break;
      case Field::padded_day:
        at = put_pair(at, date.day);
        break;
      case Field::month:
        at = put_number(at, date.month);
        break;
      case Field::padded_month:
        at = put_pair(at, date.month);
        break;
      case Field::year:
        at = put_pair(at, date.year / 100);
        at = put_pair(at, date.year % 100);
        break;
      case Field::hour:
        at = put_number(at, second / 3600);
        break;
      case Field::padded_hour:
        at = put_pair(at, second / 3600);
        break;
      case Field::half_hour:
        at = put_number(at, half_hour(second));
        break;
      case Field::padded_half_hour:
        at = put_pair(at, half_hour(second));
        break;
      case Field::minute:
        at = put_pair(at, second % 3600 / 60);
        break;
      case Field::second:
        at = put_pair(at, second % 60);
        break;
      case Field::full_month:
      case Field::short_month:
        put_name(part, date.month - 1);
        break;
      case Field::full_weekday:
      case Field::short_weekday:
        put_name(part, weekday_from_day(day) - 1);
        break;
      case Field::day_half:
        put_name(part, second < 12 * 3600 ? 0 : 1);
        break;
    }
  }
  return at;
}

// Where the room may be too small.
template <typename Unit>
std::size_t DateTexts<Unit>::write_with_care(std::int32_t day, std::int32_t second, Unit* out,
                                             std::size_t room) const noexcept {
  Unit units[most_units];
  const auto size = static_cast<std::size_t>(put_all(day, second, units) - units);
  if (size <= room && size > 0) std::memcpy(out, units, size * sizeof(Unit));
  return size;
}

template <typename Unit>
std::size_t DateTexts<Unit>::write(std::int32_t day, std::int32_t second, Unit* out,
                                   std::size_t room) const noexcept {
  if (room < longest_) [[unlikely]]
    return write_with_care(day, second, out, room);
  return static_cast<std::size_t>(put_all(day, second, out) - out);
}

template class DateTexts<char>;
template class DateTexts<char16_t>;

std::unique_ptr<const DateWriter> make_date_writer(const LocaleRecord& record,
                                                   const DatePatternData* data,
                                                   const std::vector<DateWriterPart>& parts) {
  auto writer = std::make_unique<DateWriter>();
  for (const auto& [is_pattern, text] : parts) {
    if (!is_pattern) {
      writer->narrow.add_literal(text);
      writer->wide.add_literal(text);
    } else if (!writer->narrow.add_pattern(text) || !writer->wide.add_pattern(text)) {
      return nullptr;
    }
  }
  const bool fits = writer->narrow.finish(record, data) && writer->wide.finish(record, data);
  return fits ? std::move(writer) : nullptr;
}

}  // namespace jwnls::library
