#include "library/dates/date_writer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "library/texts/utf8.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

template <typename Unit>
const typename DateTexts<Unit>::FieldName DateTexts<Unit>::field_names[16] = {
    {"E", Field::day},          {"d", Field::padded_day},   {"O", Field::month},
    {"m", Field::padded_month}, {"Y", Field::year},         {"#H", Field::hour},
    {"H", Field::padded_hour},  {"#I", Field::half_hour},   {"I", Field::padded_half_hour},
    {"M", Field::minute},       {"S", Field::second},       {"B", Field::full_month},
    {"b", Field::short_month},  {"A", Field::full_weekday}, {"a", Field::short_weekday},
    {"p", Field::day_half},
};

template <typename Unit>
auto DateTexts<Unit>::text_of_utf8(std::string_view text) -> Text {
  Text result;
  result.units.resize(text.size());
  if constexpr (sizeof(Unit) == 1) {
    std::copy(text.begin(), text.end(), result.units.begin());
    result.size = text.size();
  } else {
    result.size = to_utf16(text, result.units.data(), text.size()).value_or(0);
  }
  result.units.resize((result.size + block) / block * block);
  return result;
}

template <typename Unit>
void DateTexts<Unit>::add_literal(std::string_view literal) {
  if (literal.empty()) return;
  parts_.push_back({Field::literal, text_of_utf8(literal)});
}

template <typename Unit>
bool DateTexts<Unit>::add_pattern(std::string_view pattern) {
  std::string literal;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    if (pattern[at] != '%') {
      literal += pattern[at];
      continue;
    }
    const std::string_view rest = pattern.substr(at + 1);
    const auto found =
        std::find_if(std::begin(field_names), std::end(field_names),
                     [rest](const FieldName& row) { return rest.starts_with(row.directive); });
    if (found == std::end(field_names)) return false;
    add_literal(literal);
    literal.clear();
    parts_.push_back({found->field, {}});
    at += std::strlen(found->directive);
  }
  add_literal(literal);
  return true;
}

template <typename Unit>
void DateTexts<Unit>::add_names(Field field, const TextEntry* entries, std::size_t count) {
  const bool is_used = std::any_of(parts_.begin(), parts_.end(),
                                   [field](const Part& part) { return part.field == field; });
  if (!is_used) return;
  auto& names = names_[name_list(field)];
  names.reserve(names.size() + count);
  for (std::size_t i = 0; i < count; ++i) {
    char bytes[3 * text_entry_capacity];
    const std::size_t size = to_utf8(text_of(entries[i]), bytes, sizeof bytes);
    names.push_back(text_of_utf8({bytes, size}));
  }
}

template <typename Unit>
bool DateTexts<Unit>::finish(const LocaleRecord& record, const DatePatternData* data) {
  add_names(Field::full_month, record.full_months, 12);
  add_names(Field::short_month, record.short_months, 12);
  add_names(Field::full_weekday, record.full_weekdays, 7);
  add_names(Field::short_weekday, record.short_weekdays, 7);
  add_names(Field::day_half, &record.before_noon, 1);
  add_names(Field::day_half, &record.after_noon, 1);
  auto& weekdays = names_[name_list(Field::full_weekday)];
  const bool has_weekdays = data != nullptr && !data->weekdays[0].empty();
  for (std::size_t i = 0; has_weekdays && i < weekdays.size(); ++i) {
    weekdays[i] = text_of_utf8(data->weekdays[i]);
  }
  longest_ = block;
  for (const Part& part : parts_) {
    std::size_t longest = part.field == Field::literal ? part.literal.size : 4;
    if (part.field >= Field::full_month) {
      for (const Text& name : names_[name_list(part.field)]) longest = std::max(longest, name.size);
    }
    longest_ += longest;
  }
  return longest_ <= most_units;
}

template <typename Unit>
[[gnu::always_inline]] inline Unit* DateTexts<Unit>::put(Unit* at, const Text& text) noexcept {
  const Unit* from = text.units.data();
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

template <typename Unit>
Unit* DateTexts<Unit>::put_all(std::int32_t day, std::int32_t second, Unit* at) const noexcept {
  const CivilDate date = civil_from_day(day);
  const std::int32_t hour = second / 3600;
  const std::int32_t half_hour = hour % 12 == 0 ? 12 : hour % 12;
  const auto name = [this](Field field, std::int32_t index) -> const Text& {
    return names_[name_list(field)][static_cast<std::size_t>(index)];
  };
  for (const Part& part : parts_) {
    switch (part.field) {
      case Field::literal:
        at = put(at, part.literal);
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
        at = put_number(at, hour);
        break;
      case Field::padded_hour:
        at = put_pair(at, hour);
        break;
      case Field::half_hour:
        at = put_number(at, half_hour);
        break;
      case Field::padded_half_hour:
        at = put_pair(at, half_hour);
        break;
      case Field::minute:
        at = put_pair(at, second % 3600 / 60);
        break;
      case Field::second:
        at = put_pair(at, second % 60);
        break;
      case Field::full_month:
      case Field::short_month:
        at = put(at, name(part.field, date.month - 1));
        break;
      case Field::full_weekday:
      case Field::short_weekday:
        at = put(at, name(part.field, weekday_from_day(day) - 1));
        break;
      case Field::day_half:
        at = put(at, name(part.field, hour < 12 ? 0 : 1));
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
