// The services of a handle.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "abi/number_flags.h"
#include "abi/reading_modes.h"
#include "bench/instructions/counted.h"
#include "library/process/process.h"

namespace jwnls::bench {
namespace {

constexpr std::int64_t room = 128;

void count_dates(LocaleHandle* de) {
  const auto& slots = de->services;
  std::array<char16_t, room> out;
  std::array<char, room> bytes;
  std::int64_t length = 0;
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
  double value = 0;
  std::uint64_t used = 0;
  const auto read = [&](const char* name, auto* service, std::u16string_view text,
                        std::uint32_t mode = 0) {
    count(name, [&, service](std::int32_t) {
      service(de, text.data(), static_cast<std::int64_t>(text.size()), mode, &value, &used);
    });
  };
  read("service: read long date", slots.read_date, u"15. M\u00E4rz 2024");
  read("service: read date", slots.read_date, u"15.03.2024");
  read("service: read datetime", slots.read_date, u"15.03.2024 14:30:05", JW_READ_DATETIME);
  read("service: read time", slots.read_time, u"14:30:05");
  const std::string_view date = "15. M\u00E4rz 2024";
  count("service: read long date, 8-bit", [&](std::int32_t) {
    slots.read_date_8bit(de, date.data(), static_cast<std::int64_t>(date.size()), 0, &value, &used);
  });
}

void count_numbers(LocaleHandle* de) {
  const auto& slots = de->services;
  std::array<char16_t, room> out;
  std::array<char, room> bytes;
  std::int64_t length = 0;
  const auto numbers = [&](const char* name, std::uint32_t flags, std::int32_t decimals, auto value,
                           std::int32_t width = 0) {
    count(name, [&, value](std::int32_t i) {
      slots.format_number(de, value(i), width, decimals, flags, out.data(), room, &length);
    });
  };
  const auto seventh = [](std::int32_t i) { return amount(i) / 7; };
  const auto tiny = [](std::int32_t i) { return amount(i) / 7e4; };
  numbers("service: write number, 2 decimals, grouped", JW_NUMBER_FIXED | JW_NUMBER_GROUP, 2,
          amount);
  numbers("service: write number, 2 decimals", JW_NUMBER_FIXED, 2, amount);
  numbers("service: write number, 8 decimals", JW_NUMBER_FIXED, 8, tiny);
  numbers("service: write number, 8 decimals, grouped", JW_NUMBER_FIXED | JW_NUMBER_GROUP, 8, tiny);
  numbers("service: write number, general", JW_NUMBER_GENERAL, 15, seventh);
  numbers("service: write number, general, grouped", JW_NUMBER_GENERAL | JW_NUMBER_GROUP, 15,
          seventh);
  numbers("service: write number, exponent", JW_NUMBER_EXPONENT_SMALL, 6, seventh);
  numbers("service: write number, best fit", JW_NUMBER_BEST_FIT, 0, seventh, 12);
  numbers("service: write number, in a field", JW_NUMBER_FIXED | JW_NUMBER_GROUP, 2, amount, 20);
  numbers("service: write percent of a number", JW_NUMBER_FIXED, 1, tiny);
  count("service: write number, 8-bit", [&](std::int32_t i) {
    slots.format_number_8bit(de, amount(i), 0, 2, JW_NUMBER_FIXED | JW_NUMBER_GROUP, bytes.data(),
                             room, &length, nullptr);
  });
}

void count_integers(LocaleHandle* de) {
  const auto& slots = de->services;
  std::array<char16_t, 32> out;
  std::int64_t length = 0;
  constexpr std::int64_t quick_room = 32;
  const auto integers = [&](const char* name, std::uint32_t flags, std::int64_t step) {
    count(name, [&, flags, step](std::int32_t i) {
      slots.format_int64(de, step * i * i, 0, 1, flags, out.data(), quick_room, &length);
    });
  };
  integers("service: write integer", 0, 7919);
  integers("service: write integer, 17 digits", 0, 791'900'000'000'000);
  integers("service: write integer, grouped", JW_INTEGER_GROUP, 7919);
  integers("service: write integer, 19 digits, grouped", JW_INTEGER_GROUP, 55'000'000'000'000);
  const auto hexadecimals = [&](const char* name, std::uint32_t flags) {
    count(name, [&, flags](std::int32_t i) {
      slots.format_uint64(de, std::uint64_t{7919} * static_cast<std::uint64_t>(i), 0, 1, flags,
                          out.data(), quick_room, &length);
    });
  };
  hexadecimals("service: write hexadecimal", JW_INTEGER_HEXADECIMAL_SMALL);
  hexadecimals("service: write hexadecimal, capital", JW_INTEGER_HEXADECIMAL_CAPITAL);
}

void count_numbers_in(LocaleHandle* de) {
  const auto& slots = de->services;
  double value = 0;
  std::int64_t integer = 0;
  std::int64_t consumed = 0;
  const auto read = [&](const char* name, std::u16string_view text) {
    count(name, [&](std::int32_t) {
      slots.read_number(de, text.data(), static_cast<std::int32_t>(text.size()), &value, &consumed);
    });
  };
  read("service: read number", u"1.234.567,89");
  read("service: read number, 19 digits", u"1.234.567.890.123,456789");
  read("service: read number, exponent", u"1,5e-7");
  const std::u16string_view text = u"1.234.567";
  count("service: read integer", [&](std::int32_t) {
    slots.read_int64(de, text.data(), static_cast<std::int32_t>(text.size()), 0, &integer,
                     &consumed);
  });
}

}  // namespace

void count_services() {
  LocaleHandle* const de = library::open_locale("de_DE").handle;
  count_dates(de);
  count_numbers(de);
  count_integers(de);
  count_numbers_in(de);
}

}  // namespace jwnls::bench
