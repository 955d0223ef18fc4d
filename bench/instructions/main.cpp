// Everyday calls, each a few hundred times under callgrind, which writes the instructions of each
// into a file of its own. scripts/check-instructions runs this and compares.

#include <valgrind/callgrind.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "abi/number_flags.h"
#include "abi/reading_modes.h"
#include "include/jwnls/jwnls.h"
#include "library/process/process.h"

namespace {

constexpr std::int32_t rounds = 400;

// Counts `call(i)` for i from 0 on, after a round that warms nothing but what a first call sets up.
template <typename Call>
void count(const char* name, Call call) {
  call(0);
  CALLGRIND_ZERO_STATS;
  for (std::int32_t i = 0; i < rounds; ++i) call(i);
  CALLGRIND_DUMP_STATS_AT(name);
}

// Values of all magnitudes, the same in every run.
double amount(std::int32_t i) { return (i % 17 - 4) * 1234.56 * (1 + i % 9999); }
std::int32_t day(std::int32_t i) { return 10'000 + 37 * i; }

void check(int code) {
  if (code != JWNLS_OK) {
    std::fprintf(stderr, "unexpected: %s\n", jwnls_code_text(code));
    std::exit(1);
  }
}

const jwnls_layout* layout(const char* locale, int kind, const char* options = "") {
  jwnls_layout* opened = nullptr;
  check(jwnls_open(locale, kind, options, &opened, nullptr));
  return opened;  // for the rest of the run
}

void services() {
  jwnls::LocaleHandle* de = jwnls::library::open_locale("de_DE").handle;
  const auto& slots = de->services;
  std::array<char16_t, 128> out;
  std::array<char, 128> bytes;
  std::int64_t length = 0;
  std::int64_t consumed = 0;
  std::uint64_t used = 0;
  double value = 0;
  constexpr auto room = static_cast<std::int64_t>(out.size());
  const auto month = [](std::int32_t i) { return 1 + i % 12; };
  count("service: write date", [&](std::int32_t i) {
    slots.format_date(de, month(i), 1 + i % 28, 1970 + i % 90, 0, out.data(), room, &length);
  });
  count("service: write long date, 8-bit", [&](std::int32_t i) {
    slots.format_date_8bit(de, month(i), 1 + i % 28, 1970 + i % 90, 2, bytes.data(), room, &length);
  });
  count("service: write datetime", [&](std::int32_t i) {
    slots.format_datetime(de, 1e9 + 12345.0 * i, 1, out.data(), room, &length);
  });
  count("service: write number, 2 decimals, grouped", [&](std::int32_t i) {
    slots.format_number(de, amount(i), 0, 2, JW_NUMBER_FIXED | JW_NUMBER_GROUP, out.data(), room,
                        &length);
  });
  count("service: write number, general", [&](std::int32_t i) {
    slots.format_number(de, amount(i) / 7, 0, 15, JW_NUMBER_GENERAL, out.data(), room, &length);
  });
  count("service: write integer", [&](std::int32_t i) {
    slots.format_int64(de, std::int64_t{7919} * i * i, 0, 1, 0, out.data(), room, &length);
  });
  const std::u16string_view date = u"15. M\u00E4rz 2024";
  count("service: read long date", [&](std::int32_t) {
    slots.read_date(de, date.data(), static_cast<std::int64_t>(date.size()), 0, &value, &used);
  });
  const std::u16string_view number = u"1.234.567,89";
  count("service: read number", [&](std::int32_t) {
    slots.read_number(de, number.data(), static_cast<std::int32_t>(number.size()), &value,
                      &consumed);
  });
}

void reading() {
  double number = 0;
  std::int64_t integer = 0;
  std::int32_t days = 0;
  std::array<char, 128> out;
  std::size_t length = 0;
  const auto texts = [](const char* name, const jwnls_layout* of, std::string_view text,
                        auto read) {
    count(name, [&](std::int32_t) { check(read(of, text.data(), text.size())); });
  };
  const auto read_number = [&](const jwnls_layout* of, const char* text, std::size_t size) {
    return jwnls_read_number(of, text, size, &number, nullptr);
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
  texts("read number, de_DE", layout("de_DE", JWNLS_NUMBER), "1.234.567,89", read_number);
  texts("read number, fr_FR", layout("fr_FR", JWNLS_NUMBER), "1\u202F234\u202F567,89", read_number);
  texts("read number, hi_IN", layout("hi_IN", JWNLS_NUMBER), "12,34,567.89", read_number);
  texts("read amount, de_DE", layout("de_DE", JWNLS_AMOUNT), "1.234,50 \u20AC", read_number);
  texts("read percent, tr_TR", layout("tr_TR", JWNLS_PERCENT), "%12,5", read_number);
  texts("read decimal, de_DE", layout("de_DE", JWNLS_NUMBER), "1.234.567,89", read_decimal);
  texts("read integer, en_US", layout("en_US", JWNLS_INTEGER), "1,234,567",
        [&](const jwnls_layout* of, const char* text, std::size_t size) {
          return jwnls_read_integer(of, text, size, &integer, nullptr);
        });
  texts("read date, de_DE", layout("de_DE", JWNLS_DATE), "15.03.2024", read_date);
  texts("read long date, pl_PL", layout("pl_PL", JWNLS_DATE), "15 marca 2024", read_date);
  texts("read long date, ja_JP", layout("ja_JP", JWNLS_DATE), "2024\u5E743\u670815\u65E5",
        read_date);
  texts("read datetime, de_DE", layout("de_DE", JWNLS_DATETIME), "15.03.2024, 14:30:05",
        read_datetime);
  texts("read datetime, en_US", layout("en_US", JWNLS_DATETIME), "Mar 15, 2024, 2:30:05 PM",
        read_datetime);
  const jwnls_layout* refusing = layout("de_DE", JWNLS_NUMBER);
  count("refuse a number", [&](std::int32_t) {
    (void)jwnls_read_number(refusing, "1,234,567.89", 12, &number, nullptr);
  });
  const jwnls_layout* dates = layout("de_DE", JWNLS_DATE);
  count("refuse a date",
        [&](std::int32_t) { (void)jwnls_read_date(dates, "04.09.2018 foo", 14, &days, nullptr); });
}

void writing() {
  std::array<char, 128> out;
  std::size_t length = 0;
  const auto numbers = [&](const char* name, const jwnls_layout* of) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_number(of, amount(i), out.data(), out.size(), &length));
    });
  };
  numbers("write number, de_DE", layout("de_DE", JWNLS_NUMBER, "decimals=2"));
  numbers("write amount, fr_FR", layout("fr_FR", JWNLS_AMOUNT));
  numbers("write amount, en_IN", layout("en_IN", JWNLS_AMOUNT));
  numbers("write percent, sv_SE", layout("sv_SE", JWNLS_PERCENT, "decimals=1"));
  numbers("write number in own digits, ar_EG",
          layout("ar_EG", JWNLS_NUMBER, "decimals=2 digits=own"));
  numbers("write amount in own digits, hi_IN", layout("hi_IN", JWNLS_AMOUNT, "digits=own"));
  const auto dates = [&](const char* name, const jwnls_layout* of) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_date(of, day(i), out.data(), out.size(), &length));
    });
  };
  dates("write date, de_DE", layout("de_DE", JWNLS_DATE));
  dates("write long date, pl_PL", layout("pl_PL", JWNLS_DATE, "style=long"));
  dates("write full date, ja_JP", layout("ja_JP", JWNLS_DATE, "style=full"));
  const jwnls_layout* times = layout("de_DE", JWNLS_DATETIME, "zone=Europe/Berlin");
  count("write datetime in a zone, de_DE", [&](std::int32_t i) {
    check(jwnls_write_datetime(times, day(i) * 86'400'000'000LL, out.data(), out.size(), &length));
  });
  const jwnls_layout* decimals = layout("de_DE", JWNLS_NUMBER);
  count("write decimal, de_DE", [&](std::int32_t) {
    check(jwnls_write_decimal(decimals, "-1234567.89", 11, out.data(), out.size(), &length));
  });
}

// A column of 64 values a round.
void columns() {
  constexpr std::size_t values = 64;
  std::string bytes;
  std::vector<std::int32_t> offsets = {0};
  const jwnls_layout* amounts = layout("de_DE", JWNLS_NUMBER, "decimals=2");
  std::array<char, 128> out;
  for (std::size_t i = 0; i < values; ++i) {
    std::size_t length = 0;
    check(jwnls_write_number(amounts, amount(static_cast<std::int32_t>(i)), out.data(), out.size(),
                             &length));
    bytes.append(out.data(), length);
    offsets.push_back(static_cast<std::int32_t>(bytes.size()));
  }
  jwnls_texts texts = {};
  texts.size = sizeof texts;
  texts.count = values;
  texts.bytes = bytes.data();
  texts.offsets = offsets.data();
  std::array<double, values> numbers;
  count("column of 64 numbers in", [&](std::int32_t) {
    (void)jwnls_read_numbers(amounts, &texts, numbers.data(), nullptr, nullptr);
  });
  std::vector<char> room(64 * values);
  std::vector<std::int32_t> ends(values + 1);
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = room.data();
  column.room = room.size();
  column.offsets = ends.data();
  count("column of 64 numbers out",
        [&](std::int32_t) { (void)jwnls_write_numbers(amounts, numbers.data(), values, &column); });
}

}  // namespace

int main() {
  services();
  reading();
  writing();
  columns();
}
