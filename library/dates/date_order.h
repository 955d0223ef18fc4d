// Which number of a date is its day, its month and its year, and whether they are a date.

#ifndef JWNLS_LIBRARY_DATES_DATE_ORDER_H_
#define JWNLS_LIBRARY_DATES_DATE_ORDER_H_

#include <cstddef>
#include <cstdint>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_layout.h"
#include "library/dates/date_names.h"
#include "library/dates/date_parts.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

/// The names that were found in a text.
struct FoundNames {
  struct Name {
    const NameMeaning* meaning;
    std::size_t piece;  // in front of that number; of the last piece: how many numbers there are
    std::size_t place;
  };
  Name name[2];
  std::size_t count = 0;
};

/// Puts a text's numbers into a layout's order; what it finds or refuses goes to `read`. `end` is
/// the text's.
class DateOrder {
 public:
  DateOrder(const DateLayout& layout, const Numbers& numbers, std::size_t end,
            DateRead& read) noexcept
      : layout_(layout), numbers_(numbers), end_(end), read_(read) {}

  bool refuse(Refusal refusal, std::size_t place, std::int32_t told = 0) noexcept {
    read_.refusal = refusal;
    read_.place = place;
    read_.told = told;
    return false;
  }

  /// Of three numbers; `words`: marks between them that say what each is, or null.
  bool place_numbers(const OwnMarks* words, CivilDate& date) noexcept;
  /// The date of two numbers and names; keeps it as finish() does.
  void finish_named(const FoundNames& found) noexcept;
  /// Checks a date and its weekday, 0 for none, and keeps it.
  void finish(CivilDate date, int weekday, std::size_t weekday_place) noexcept;

 private:
  // The month's name stands in front of the number `month_piece`.
  struct Names {
    int month = 0;
    std::size_t month_piece = 0;
    int weekday = 0;
    std::size_t weekday_place = 0;
  };
  bool tell_names_apart(const FoundNames& found, Names& names) noexcept;
  bool place_numbers_by_name(int month, std::size_t month_piece, CivilDate& date) noexcept;
  bool check_short_year(const Numbers::Number& number) noexcept;
  [[nodiscard]] std::int32_t widened(std::int32_t year) const noexcept {
    const std::int32_t candidate = layout_.century - layout_.century % 100 + year;
    return candidate < layout_.century ? candidate + 100 : candidate;
  }
  [[nodiscard]] bool another_order_fits(const CivilDate& date) const noexcept;
  [[nodiscard]] bool both_are_days(const Numbers::Number& day, const Numbers::Number& year,
                                   int month) const noexcept;

  const DateLayout& layout_;
  const Numbers& numbers_;
  const std::size_t end_;
  DateRead& read_;
};

inline bool DateOrder::check_short_year(const Numbers::Number& number) noexcept {
  if (number.digits() != 2) return refuse(Refusal::digits, number.begin);
  return layout_.short_years || refuse(Refusal::short_year, number.begin);
}

// Whether two digits of a year, and the two other numbers, are another date in another order.
inline bool DateOrder::another_order_fits(const CivilDate& date) const noexcept {
  const std::int32_t first = numbers_.number[0].value;
  const std::int32_t second = numbers_.number[1].value;
  const std::int32_t third = numbers_.number[2].value;
  const CivilDate others[] = {{widened(third), second, first},
                              {widened(third), first, second},
                              {widened(first), second, third}};
  for (const CivilDate& other : others) {
    const bool is_date = other.month >= 1 && other.month <= 12 && other.day >= 1 &&
                         other.day <= days_in_month(other.year, other.month);
    const bool same = other.year == date.year && other.month == date.month && other.day == date.day;
    if (is_date && !same) return true;
  }
  return false;
}

// Whether a day and a year of two digits, around a month, could change places.
inline bool DateOrder::both_are_days(const Numbers::Number& day, const Numbers::Number& year,
                                     int month) const noexcept {
  return day.digits() == 2 && day.value >= 1 && year.value >= 1 && month >= 1 && month <= 12 &&
         year.value <= days_in_month(widened(day.value), month) && day.value != year.value;
}

inline bool DateOrder::place_numbers(const OwnMarks* words, CivilDate& date) noexcept {
  const auto& [first, second, third] = numbers_.number;
  for (const Numbers::Number& each : numbers_.number) {
    if (each.digits() != 4 && each.digits() > 2) return refuse(Refusal::digits, each.begin);
  }
  if (second.digits() == 4) return refuse(Refusal::no_year, second.begin);
  if (first.digits() == 4) {
    if (third.digits() == 4) return refuse(Refusal::no_year, third.begin);
    date = {first.value, second.value, third.value};
    return true;
  }
  if (third.digits() == 4) {
    if (words == nullptr && layout_.order == order_ymd) {
      return refuse(Refusal::year_last, third.begin);
    }
    const bool month_first = words != nullptr ? words->month_first : layout_.order == order_mdy;
    const std::int32_t day = month_first ? second.value : first.value;
    const std::int32_t month = month_first ? first.value : second.value;
    date = {third.value, month, day};
    if (words != nullptr) return true;
    if (day > 12) {
      read_.facts = JWNLS_DECIDES;
    } else if (day != month && month <= 12) {
      read_.facts = JWNLS_TWO_WAYS;
    }
    return true;
  }
  if (layout_.order == order_ymd) {
    if (!layout_.leading_short_years) return refuse(Refusal::short_year, first.begin);
    if (!check_short_year(first)) return false;
    date = {widened(first.value), second.value, third.value};
  } else {
    if (!check_short_year(third)) return false;
    const bool month_first = words != nullptr ? words->month_first : layout_.order == order_mdy;
    date = {widened(third.value), month_first ? first.value : second.value,
            month_first ? second.value : first.value};
    if (words != nullptr) {  // which say the month, as its name would
      if (!month_first && both_are_days(first, third, date.month)) read_.facts = JWNLS_TWO_WAYS;
      return true;
    }
  }
  if (another_order_fits(date)) read_.facts = JWNLS_TWO_WAYS;
  return true;
}

inline bool DateOrder::place_numbers_by_name(int month, std::size_t month_piece,
                                             CivilDate& date) noexcept {
  const Numbers::Number& first = numbers_.number[0];
  const Numbers::Number& second = numbers_.number[1];
  for (const Numbers::Number* each : {&first, &second}) {
    if (each->digits() != 4 && each->digits() > 2) return refuse(Refusal::digits, each->begin);
  }
  if (first.digits() == 4) {  // "2024 March 15", "2024 15 March"
    if (month_piece == 0) return refuse(Refusal::no_year, second.begin);
    if (second.digits() == 4) return refuse(Refusal::no_year, second.begin);
    date = {first.value, month, second.value};
    return true;
  }
  if (month_piece == 2) return refuse(Refusal::no_year, second.begin);
  if (second.digits() == 4) {
    date = {second.value, month, first.value};
    return true;
  }
  if (!layout_.short_years_with_names) return refuse(Refusal::short_year, second.begin);
  if (!check_short_year(second)) return false;
  date = {widened(second.value), month, first.value};
  if (month_piece == 1 && both_are_days(first, second, month)) read_.facts = JWNLS_TWO_WAYS;
  return true;
}

// Of two names one is the month; the weekday stands before everything else, or behind it.
inline bool DateOrder::tell_names_apart(const FoundNames& found, Names& names) noexcept {
  if (found.count == 0) return refuse(Refusal::no_month, numbers_.number[0].end);
  const FoundNames::Name& first = found.name[0];
  const FoundNames::Name& second = found.name[1];
  const FoundNames::Name* month = &first;
  const FoundNames::Name* weekday = nullptr;
  if (found.count == 2) {
    if (first.piece == 0 && first.meaning->weekday != 0 && second.meaning->month != 0) {
      weekday = &first;
      month = &second;
    } else if (second.piece == 2 && second.meaning->weekday != 0) {
      weekday = &second;
    } else {
      return refuse(Refusal::two_names, second.place);
    }
  }
  if (month->meaning->month == 0) return refuse(Refusal::no_month, numbers_.number[0].end);
  names.month = month->meaning->month;
  names.month_piece = month->piece;
  if (month->meaning->false_friend) read_.facts = JWNLS_TWO_WAYS;
  if (weekday != nullptr) {
    names.weekday = weekday->meaning->weekday;
    names.weekday_place = weekday->place;
  }
  return true;
}

inline void DateOrder::finish_named(const FoundNames& found) noexcept {
  Names names;
  CivilDate date;
  if (tell_names_apart(found, names) &&
      place_numbers_by_name(names.month, names.month_piece, date)) {
    finish(date, names.weekday, names.weekday_place);
  }
}

inline void DateOrder::finish(CivilDate date, int weekday, std::size_t weekday_place) noexcept {
  if (layout_.buddhist && date.year >= first_buddhist_year && date.year <= last_buddhist_year) {
    date.year -= 543;
    read_.facts |= JWNLS_BUDDHIST;
  }
  if (date.month < 1 || date.month > 12 || date.day < 1 ||
      (date.day > 28 && date.day > days_in_month(date.year, date.month))) {
    refuse(Refusal::no_such_date, end_);
    return;
  }
  if (date.year < first_year) {
    refuse(Refusal::years, end_, date.year);
    return;
  }
  if (weekday != 0 && weekday != NameMeaning::some_weekday) {
    const std::int32_t right = weekday_from_day(day_from_civil(date));
    if (right != weekday) {
      refuse(Refusal::weekday, weekday_place, right);
      return;
    }
  }
  read_.date = date;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_ORDER_H_
