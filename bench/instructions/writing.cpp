// The C calls that write a value.

#include <array>
#include <cstdint>
#include <string_view>

#include "bench/instructions/counted.h"

namespace jwnls::bench {
namespace {

std::array<char, 128> out;
std::array<char16_t, 128> units;
std::size_t length = 0;

void count_numbers() {
  const auto numbers = [](const char* name, const jwnls_layout* of) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_number(of, amount(i), out.data(), out.size(), &length));
    });
  };
  numbers("write number, de_DE", layout("de_DE", JWNLS_NUMBER, "decimals=2"));
  numbers("write number, all decimals", layout("de_DE", JWNLS_NUMBER));
  numbers("write number, own digits", layout("mr_IN", JWNLS_NUMBER, "decimals=2 digits=own"));
  numbers("write number, fr_FR", layout("fr_FR", JWNLS_NUMBER, "decimals=2"));
  numbers("write amount, fr_FR", layout("fr_FR", JWNLS_AMOUNT));
  numbers("write amount, en_IN", layout("en_IN", JWNLS_AMOUNT));
  numbers("write amount, no groups", layout("fr_FR", JWNLS_AMOUNT, "no-group"));
  numbers("write amount, own digits", layout("hi_IN", JWNLS_AMOUNT, "digits=own"));
  numbers("write percent, sv_SE", layout("sv_SE", JWNLS_PERCENT, "decimals=1"));
  const jwnls_layout* plain = layout("de_DE", JWNLS_NUMBER, "decimals=2");
  count("write number, UTF-16", [&](std::int32_t i) {
    check(jwnls_write_number_utf16(plain, amount(i), units.data(), units.size(), &length));
  });
  const jwnls_layout* shortest = layout("de_DE", JWNLS_NUMBER);
  count("write number, 17 digits", [&](std::int32_t i) {
    check(jwnls_write_number(shortest, amount(i) / 7, out.data(), out.size(), &length));
  });
  count("write float", [&](std::int32_t i) {
    check(jwnls_write_float(plain, static_cast<float>(amount(i)), out.data(), out.size(), &length));
  });
  const auto integers = [](const char* name, const jwnls_layout* of, std::int64_t step) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_integer(of, step * (i + 1), out.data(), out.size(), &length));
    });
  };
  integers("write integer, de_DE", layout("de_DE", JWNLS_INTEGER), 791'919);
  integers("write integer, 17 digits", layout("de_DE", JWNLS_INTEGER), 79'191'900'000'000);
  integers("write integer, hi_IN", layout("hi_IN", JWNLS_INTEGER), 791'919);
  const auto decimals = [](const char* name, const jwnls_layout* of, std::string_view text) {
    count(name, [&](std::int32_t) {
      check(jwnls_write_decimal(of, text.data(), text.size(), out.data(), out.size(), &length));
    });
  };
  decimals("write decimal, de_DE", layout("de_DE", JWNLS_NUMBER), "-1234567.89");
  decimals("write decimal, 2 decimals", layout("de_DE", JWNLS_NUMBER, "decimals=2"),
           "-1234567.895");
  decimals("write decimal, 24 digits", layout("de_DE", JWNLS_NUMBER), "12345678901234567890.1234");
  count("write scaled, de_DE", [&](std::int32_t i) {
    check(jwnls_write_scaled(plain, 791'919 * (i + 1), 2, out.data(), out.size(), &length));
  });
}

void count_dates() {
  const auto dates = [](const char* name, const jwnls_layout* of) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_date(of, day(i), out.data(), out.size(), &length));
    });
  };
  dates("write date, de_DE", layout("de_DE", JWNLS_DATE));
  dates("write long date, pl_PL", layout("pl_PL", JWNLS_DATE, "style=long"));
  dates("write full date, ja_JP", layout("ja_JP", JWNLS_DATE, "style=full"));
  const jwnls_layout* long_dates = layout("pl_PL", JWNLS_DATE, "style=long");
  count("write long date, UTF-16", [&](std::int32_t i) {
    check(jwnls_write_date_utf16(long_dates, day(i), units.data(), units.size(), &length));
  });
  const auto datetimes = [](const char* name, const jwnls_layout* of) {
    count(name, [&](std::int32_t i) {
      check(jwnls_write_datetime(of, day(i) * 86'400'000'000LL, out.data(), out.size(), &length));
    });
  };
  datetimes("write datetime in a zone, de_DE",
            layout("de_DE", JWNLS_DATETIME, "zone=Europe/Berlin"));
  datetimes("write instant in a zone, de_DE", layout("de_DE", JWNLS_INSTANT, "zone=Europe/Berlin"));
  datetimes("write datetime, en_US", layout("en_US", JWNLS_DATETIME));
  datetimes("write long datetime, de_DE", layout("de_DE", JWNLS_DATETIME, "style=long"));
  const jwnls_layout* times = layout("de_DE", JWNLS_TIME);
  count("write time, de_DE", [&](std::int32_t i) {
    check(jwnls_write_time(times, 123'456'789LL * i, out.data(), out.size(), &length));
  });
}

}  // namespace

void count_writing() {
  count_numbers();
  count_dates();
}

}  // namespace jwnls::bench
