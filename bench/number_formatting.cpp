#include "bench/number_formatting.h"

#include <absl/strings/str_cat.h>
#include <double-conversion/double-conversion.h>
#include <fmt/compile.h>
#include <fmt/format.h>
#include <unicode/unum.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <random>
#include <streambuf>
#include <string>
#include <vector>

#include "abi/number_flags.h"
#include "bench/contest.h"
#include "bench/handles.h"
#include "module/format_numbers/integer_services.h"

namespace jwnls::bench {
namespace {

constexpr std::int64_t room = 512;

// Amounts from 0.01 to 10^9, spread evenly over the magnitudes.
const std::vector<double>& amounts() {
  static const std::vector<double> all = [] {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> magnitude(-2, 9);
    std::vector<double> made(value_count);
    std::generate(made.begin(), made.end(), [&] { return std::pow(10.0, magnitude(random)); });
    return made;
  }();
  return all;
}

// `base` times 1 to 10.
std::vector<double> near(double base) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> factor(1, 10);
  std::vector<double> made(value_count);
  std::generate(made.begin(), made.end(), [&] { return base * factor(random); });
  return made;
}

// 64-bit integers of every length.
const std::vector<std::uint64_t>& integers() {
  static const std::vector<std::uint64_t> all = [] {
    std::mt19937_64 random(3);
    std::vector<std::uint64_t> made(value_count);
    std::generate(made.begin(), made.end(), [&] { return random() >> (1 + random() % 63); });
    return made;
  }();
  return all;
}

void ours_number(const char* task, const std::vector<double>& values, std::int32_t width,
                 std::int32_t decimals, std::uint32_t flags) {
  static LocaleHandle* handle = handle_of(u"en_US");
  const auto utf16 = handle->services.format_number;
  const auto utf8 = handle->services.format_number_8bit;
  enter(task, Side::ours, "UTF-16", [=, &values](benchmark::State& state) {
    std::array<char16_t, room> text;
    std::int64_t length = 0;
    walk(state, [&](std::size_t i) {
      utf16(handle, values[i], width, decimals, flags, text.data(), room, &length);
      benchmark::ClobberMemory();
    });
  });
  enter(task, Side::ours, "UTF-8", [=, &values](benchmark::State& state) {
    std::array<char, room> text;
    std::int64_t length = 0;
    walk(state, [&](std::size_t i) {
      utf8(handle, values[i], width, decimals, flags, text.data(), room, &length, nullptr);
      benchmark::ClobberMemory();
    });
  });
}

template <typename Write>
void peer_number(const char* task, const char* name, const std::vector<double>& values,
                 Write write) {
  enter(task, Side::peer, name, [=, &values](benchmark::State& state) {
    std::array<char, room> text;
    walk(state, [&](std::size_t i) {
      write(values[i], text.data());
      benchmark::ClobberMemory();
    });
  });
}

void to_chars_peer(const char* task, const std::vector<double>& values, std::chars_format format,
                   int precision) {
  peer_number(task, "std::to_chars", values, [=](double value, char* text) {
    benchmark::DoNotOptimize(std::to_chars(text, text + room, value, format, precision).ptr);
  });
}

void icu_number(const char* task, const std::vector<double>& values, UNumberFormatStyle style,
                std::vector<std::pair<UNumberFormatAttribute, int>> attributes) {
  enter(task, Side::icu, "ICU", [=, &values](benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(style, nullptr, 0, "en_US", nullptr, &error);
    for (const auto& [attribute, value] : attributes) unum_setAttribute(format, attribute, value);
    std::array<UChar, room> text;
    walk(state, [&](std::size_t i) {
      unum_formatDouble(format, values[i], text.data(), room, nullptr, &error);
      benchmark::ClobberMemory();
    });
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
    unum_close(format);
  });
}

void floating() {
  namespace flag = number_flags;
  const std::vector<double>& values = amounts();
  {
    const char* task = "fixed, 2 decimals, grouped";
    declare({task, 0.10, 0.045});
    ours_number(task, values, 0, 2, flag::fixed | flag::group);
    const auto english = std::locale("en_US.UTF-8");
    peer_number(task, "{fmt} \"{:.2Lf}\"", values, [english](double value, char* text) {
      fmt::format_to(text, english, "{:.2Lf}", value);
    });
    icu_number(task, values, UNUM_DECIMAL,
               {{UNUM_MIN_FRACTION_DIGITS, 2}, {UNUM_MAX_FRACTION_DIGITS, 2}});
  }
  {
    const char* task = "fixed, 2 decimals";
    declare({task, 0.32, 0.05});
    ours_number(task, values, 0, 2, flag::fixed);
    to_chars_peer(task, values, std::chars_format::fixed, 2);
    peer_number(task, "double-conversion", values, [](double value, char* text) {
      static const auto& converter =
          double_conversion::DoubleToStringConverter::EcmaScriptConverter();
      double_conversion::StringBuilder builder(text, room);
      converter.ToFixed(value, 2, &builder);
    });
    icu_number(
        task, values, UNUM_DECIMAL,
        {{UNUM_MIN_FRACTION_DIGITS, 2}, {UNUM_MAX_FRACTION_DIGITS, 2}, {UNUM_GROUPING_USED, 0}});
  }
  {
    const char* task = "general, 15 digits";
    declare({task, 0.40, 0.06});
    ours_number(task, values, 0, 15, flag::general);
    to_chars_peer(task, values, std::chars_format::general, 15);
    icu_number(task, values, UNUM_DECIMAL,
               {{UNUM_SIGNIFICANT_DIGITS_USED, 1},
                {UNUM_MIN_SIGNIFICANT_DIGITS, 1},
                {UNUM_MAX_SIGNIFICANT_DIGITS, 15},
                {UNUM_GROUPING_USED, 0}});
  }
  {
    const char* task = "best-fit, width 20";
    declare({task, 0.42, 0.06});
    ours_number(task, values, 20, 99, flag::best_fit);
    peer_number(task, "std::to_chars, padded", values, [](double value, char* text) {
      std::array<char, 40> digits;
      const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                     std::chars_format::general, 15)
                           .ptr;
      const auto length = std::min<std::ptrdiff_t>(end - digits.data(), 20);
      std::fill_n(text, 20 - length, ' ');
      std::copy_n(digits.data(), length, text + 20 - length);
    });
    icu_number(task, values, UNUM_DECIMAL,
               {{UNUM_SIGNIFICANT_DIGITS_USED, 1},
                {UNUM_MIN_SIGNIFICANT_DIGITS, 1},
                {UNUM_MAX_SIGNIFICANT_DIGITS, 15},
                {UNUM_GROUPING_USED, 0},
                {UNUM_FORMAT_WIDTH, 20}});
  }
  static const std::vector<double> huge = near(1e300);
  static const std::vector<double> tiny = near(1e-300);
  declare({"1e300, fixed, 2 decimals", 0.75, 0});
  ours_number("1e300, fixed, 2 decimals", huge, 0, 2, flag::fixed);
  to_chars_peer("1e300, fixed, 2 decimals", huge, std::chars_format::fixed, 2);
  declare({"1e-300, exponent, 16 decimals", 0.45, 0});
  ours_number("1e-300, exponent, 16 decimals", tiny, 0, 16, flag::exponent_small);
  to_chars_peer("1e-300, exponent, 16 decimals", tiny, std::chars_format::scientific, 16);
  declare({"1e-300, exponent, 100 decimals", 0.70, 0});
  ours_number("1e-300, exponent, 100 decimals", tiny, 0, 100, flag::exponent_small);
  to_chars_peer("1e-300, exponent, 100 decimals", tiny, std::chars_format::scientific, 100);
}

// The integer services set the whole capacity to zero first, so the capacity is part of the task.
constexpr std::int64_t integer_room = 32;

void ours_integer(const char* task, std::uint32_t flags) {
  static LocaleHandle* handle = handle_of(u"en_US");
  const auto utf16 = handle->services.format_uint64;
  const auto utf8 = handle->services.format_uint64_8bit;
  enter(task, Side::ours, "UTF-16", [=](benchmark::State& state) {
    std::array<char16_t, integer_room> text;
    std::int64_t length = 0;
    walk(state, [&](std::size_t i) {
      utf16(handle, integers()[i], 0, 1, flags, text.data(), integer_room, &length);
      benchmark::ClobberMemory();
    });
  });
  enter(task, Side::ours, "UTF-8", [=](benchmark::State& state) {
    std::array<char, integer_room> text;
    std::int64_t length = 0;
    walk(state, [&](std::size_t i) {
      utf8(handle, integers()[i], 0, 1, flags, text.data(), integer_room, &length);
      benchmark::ClobberMemory();
    });
  });
}

template <typename Write>
void peer_integer(const char* task, const char* name, Write write) {
  enter(task, Side::peer, name, [=](benchmark::State& state) {
    std::array<char, integer_room> text;
    walk(state, [&](std::size_t i) {
      write(integers()[i], text.data());
      benchmark::ClobberMemory();
    });
  });
}

void icu_integer(const char* task, bool grouped) {
  enter(task, Side::icu, "ICU", [=](benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(UNUM_DECIMAL, nullptr, 0, "en_US", nullptr, &error);
    unum_setAttribute(format, UNUM_GROUPING_USED, grouped ? 1 : 0);
    std::array<UChar, integer_room> text;
    walk(state, [&](std::size_t i) {
      unum_formatInt64(format, static_cast<std::int64_t>(integers()[i]), text.data(), integer_room,
                       nullptr, &error);
      benchmark::ClobberMemory();
    });
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
    unum_close(format);
  });
}

// A stream buffer over a small array, for std::num_put.
class ArrayBuffer : public std::streambuf {
 public:
  ArrayBuffer(char* begin, char* end) { setp(begin, end); }
};

void integer() {
  {
    const char* task = "integer, grouped";
    declare({task, 0.30, 0.045});
    ours_integer(task, integer_flags::group);
    enter(task, Side::peer, "std::num_put", [](benchmark::State& state) {
      const std::locale english(std::locale("en_US.UTF-8"), new std::num_put<char, char*>);
      const auto& put = std::use_facet<std::num_put<char, char*>>(english);
      std::array<char, integer_room> text;
      ArrayBuffer buffer(text.data(), text.data() + text.size());
      std::ios stream(&buffer);
      stream.imbue(english);
      walk(state, [&](std::size_t i) {
        benchmark::DoNotOptimize(
            put.put(text.data(), stream, ' ', static_cast<unsigned long>(integers()[i])));
        benchmark::ClobberMemory();
      });
    });
    icu_integer(task, true);
  }
  {
    const char* task = "integer, plain";
    declare({task, 0.75, 0.05});
    ours_integer(task, 0);
    peer_integer(task, "{fmt}, compiled", [](std::uint64_t value, char* text) {
      fmt::format_to(text, FMT_COMPILE("{}"), value);
    });
    peer_integer(task, "std::to_chars", [](std::uint64_t value, char* text) {
      benchmark::DoNotOptimize(std::to_chars(text, text + integer_room, value).ptr);
    });
    icu_integer(task, false);
  }
  {
    const char* task = "integer, hexadecimal";
    declare({task, 0.90, 0});
    ours_integer(task, integer_flags::hexadecimal_small);
    peer_integer(task, "absl", [](std::uint64_t value, char*) {
      benchmark::DoNotOptimize(absl::StrCat(absl::Hex(value)));
    });
    peer_integer(task, "std::to_chars", [](std::uint64_t value, char* text) {
      benchmark::DoNotOptimize(std::to_chars(text, text + integer_room, value, 16).ptr);
    });
  }
}

}  // namespace

void enter_number_formatting() {
  floating();
  integer();
}

}  // namespace jwnls::bench
