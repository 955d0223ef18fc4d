// The C calls that read a value.

#include <array>
#include <cstdint>
#include <string_view>

#include "bench/instructions/counted.h"

namespace jwnls::bench {
namespace {

// A text that a layout reads, or refuses.
struct Text {
  const char* name;
  const char* locale;
  int kind;
  const char* options;
  std::string_view text;
};

constexpr Text numbers[] = {
    {"read number, de_DE", "de_DE", JWNLS_NUMBER, "", "1.234.567,89"},
    {"read number, fr_FR", "fr_FR", JWNLS_NUMBER, "", "1\u202F234\u202F567,89"},
    {"read number, hi_IN", "hi_IN", JWNLS_NUMBER, "", "12,34,567.89"},
    {"read number, own digits", "mr_IN", JWNLS_NUMBER, "", "१२,३४,५६७.८९"},
    {"read number, 22 bytes", "de_DE", JWNLS_NUMBER, "", "1.234.567.890.123,4567"},
    {"read number, 24 digits", "de_DE", JWNLS_NUMBER, "", "12345678901234567890,1234"},
    {"read number, 17 digits", "de_DE", JWNLS_NUMBER, "", "12345678901234,567"},
    {"read number, blanks around", "de_DE", JWNLS_NUMBER, "", " 1.234.567,89 "},
    {"read amount, de_DE", "de_DE", JWNLS_AMOUNT, "", "1.234,50 \u20AC"},
    {"read amount, as it is typed", "de_DE", JWNLS_AMOUNT, "", "1.234,50 EUR"},
    {"read amount, en_US", "en_US", JWNLS_AMOUNT, "", "-$1,234.50"},
    {"read amount, without its currency", "de_DE", JWNLS_AMOUNT, "", "1.234,50"},
    {"read percent, tr_TR", "tr_TR", JWNLS_PERCENT, "", "%12,5"},
};
constexpr Text decimals[] = {
    {"read decimal, de_DE", "de_DE", JWNLS_NUMBER, "", "1.234.567,89"},
    {"read decimal, fr_FR", "fr_FR", JWNLS_NUMBER, "", "1\u202F234\u202F567,89"},
    {"read decimal, own digits", "mr_IN", JWNLS_NUMBER, "", "१२,३४,५६७.८९"},
    {"read decimal, amount", "de_DE", JWNLS_AMOUNT, "", "1.234,50 \u20AC"},
    {"read decimal, 22 bytes", "de_DE", JWNLS_NUMBER, "", "1.234.567.890.123,4567"},
};
constexpr Text dates[] = {
    {"read date, de_DE", "de_DE", JWNLS_DATE, "", "15.03.2024"},
    {"read date, en_US", "en_US", JWNLS_DATE, "", "03/15/2024"},
    {"read date, the 31st", "de_DE", JWNLS_DATE, "", "31.03.2024"},
    {"read date, blanks around", "de_DE", JWNLS_DATE, "", " 15.03.2024"},
    {"read date, 8 bytes", "de_DE", JWNLS_DATE, "", "5.3.2024"},
    {"read date, year first", "de_DE", JWNLS_DATE, "", "2024-03-15"},
    {"read date, 2 digits of the year", "de_DE", JWNLS_DATE, "", "15.03.24"},
    {"read long date, de_DE", "de_DE", JWNLS_DATE, "", "15. M\u00E4rz 2024"},
    {"read long date, pl_PL", "pl_PL", JWNLS_DATE, "", "15 marca 2024"},
    {"read long date, ja_JP", "ja_JP", JWNLS_DATE, "", "2024\u5E743\u670815\u65E5"},
    {"read long date, ru_RU", "ru_RU", JWNLS_DATE, "", "15 марта 2024 г."},
    {"read full date, en_US", "en_US", JWNLS_DATE, "", "Friday, March 15, 2024"},
    {"read full date, hi_IN", "hi_IN", JWNLS_DATE, "", "शुक्रवार, 15 मार्च 2024"},
    {"read period, de_DE", "de_DE", JWNLS_PERIOD, "", "Q2, 2024"},
};
constexpr Text datetimes[] = {
    {"read datetime, de_DE", "de_DE", JWNLS_DATETIME, "", "15.03.2024, 14:30:05"},
    {"read datetime, en_US", "en_US", JWNLS_DATETIME, "", "Mar 15, 2024, 2:30:05 PM"},
    {"read datetime, ISO", "de_DE", JWNLS_DATETIME, "", "2024-03-15T14:30:05"},
    {"read datetime, minutes", "de_DE", JWNLS_DATETIME, "", "15.03.2024 14:30"},
    {"read datetime, time first", "vi_VN", JWNLS_DATETIME, "", "14:30:05 15 thg 3, 2024"},
    {"read instant, Z", "de_DE", JWNLS_INSTANT, "", "2024-03-15T14:30:05Z"},
    {"read instant, of a zone", "de_DE", JWNLS_INSTANT, "zone=Europe/Berlin",
     "15.03.2024, 14:30:05"},
};
constexpr Text times[] = {
    {"read time, de_DE", "de_DE", JWNLS_TIME, "", "14:30:05"},
    {"read time, en_US", "en_US", JWNLS_TIME, "", "2:30:05 PM"},
    {"read time, fi_FI", "fi_FI", JWNLS_TIME, "", "14.30.05"},
};
// Each for another reason.
constexpr Text refused_numbers[] = {
    {"refuse a number", "de_DE", JWNLS_NUMBER, "", "1,234,567.89"},
    {"refuse a number for its letters", "de_DE", JWNLS_NUMBER, "", "n/a"},
};
constexpr Text refused_decimals[] = {
    {"refuse a decimal", "de_DE", JWNLS_NUMBER, "", "1,234,567.89"},
};
constexpr Text refused_dates[] = {
    {"refuse a date", "de_DE", JWNLS_DATE, "", "04.09.2018 foo"},
    {"refuse a date without a digit", "de_DE", JWNLS_DATE, "", "not known"},
    {"refuse a date of four numbers", "de_DE", JWNLS_DATE, "", "04.09.2018 12"},
    {"refuse a date where names have digits", "vi_VN", JWNLS_DATE, "", "04/09/2018 foo"},
    {"refuse the 30th of February", "de_DE", JWNLS_DATE, "", "30.02.2024"},
};
constexpr Text refused_times[] = {
    {"refuse a time", "de_DE", JWNLS_TIME, "", "14:30:05 foo"},
    {"refuse a time of five numbers", "de_DE", JWNLS_TIME, "", "1:2:3:4:5"},
    {"refuse the minutes of a time", "sv_SE", JWNLS_TIME, "", "14:99:05"},
};
constexpr Text refused_datetimes[] = {
    {"refuse a datetime without a time", "de_DE", JWNLS_DATETIME, "", "15. April"},
    {"refuse a datetime without a digit", "de_DE", JWNLS_DATETIME, "", "not known am"},
    {"refuse the time of a datetime", "de_DE", JWNLS_DATETIME, "", "15.03.2024, 14:65:05"},
    {"refuse a datetime", "ar_EG", JWNLS_DATETIME, "", "15/03/2024\u060C 2:30:05 \u0645 foo"},
    {"refuse the date of a datetime", "de_DE", JWNLS_DATETIME, "", "foo 15.03.2024, 14:30:05"},
    {"refuse the offset of an instant", "de_DE", JWNLS_INSTANT, "", "15.03.2024, 14:30:05+99:00"},
};

template <typename Read, std::size_t count_of_texts>
void count_texts(const Text (&texts)[count_of_texts], Read read, bool is_read = true) {
  for (const Text& each : texts) {
    const jwnls_layout* of = layout(each.locale, each.kind, each.options);
    const int code = read(of, each.text.data(), each.text.size());
    if ((code == JWNLS_OK) != is_read) {
      std::fprintf(stderr, "%s: %s\n", each.name, jwnls_code_text(code));
      std::exit(1);
    }
    count(each.name, [&](std::int32_t) { (void)read(of, each.text.data(), each.text.size()); });
  }
}

}  // namespace

void count_reading() {
  double number = 0;
  std::int64_t integer = 0;
  std::int32_t days = 0;
  std::array<char, 128> out;
  std::size_t length = 0;
  const auto read_number = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_number(of, text, size, &number, nullptr);
  };
  const auto read_integer = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_integer(of, text, size, &integer, nullptr);
  };
  const auto read_decimal = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_decimal(of, text, size, out.data(), out.size(), &length, nullptr, nullptr);
  };
  const auto read_date = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_date(of, text, size, &days, nullptr);
  };
  const auto read_datetime = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_datetime(of, text, size, &integer, nullptr);
  };
  const auto read_time = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_time(of, text, size, &integer, nullptr);
  };
  count_texts(numbers, read_number);
  count_texts(decimals, read_decimal);
  constexpr Text integers[] = {{"read integer, en_US", "en_US", JWNLS_INTEGER, "", "1,234,567"}};
  count_texts(integers, read_integer);
  count_texts(dates, read_date);
  count_texts(datetimes, read_datetime);
  count_texts(times, read_time);
  count_texts(refused_numbers, read_number, false);
  count_texts(refused_decimals, read_decimal, false);
  count_texts(refused_dates, read_date, false);
  count_texts(refused_times, read_time, false);
  count_texts(refused_datetimes, read_datetime, false);
  const jwnls_layout* units = layout("de_DE", JWNLS_NUMBER);
  count("read number, UTF-16", [&](std::int32_t) {
    check(jwnls_read_number_utf16(units, u"1.234.567,89", 12, &number, nullptr));
  });
  count("open a layout again", [&](std::int32_t) {
    jwnls_layout* opened = nullptr;
    check(jwnls_open("de_DE", JWNLS_DATETIME, "zone=Europe/Berlin", &opened, nullptr));
    jwnls_close(opened);
  });
}

}  // namespace jwnls::bench
