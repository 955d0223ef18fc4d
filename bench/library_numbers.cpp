#include "bench/library_numbers.h"

#include <fast_float/fast_float.h>
#include <unicode/unum.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "abi/number_flags.h"
#include "bench/contest.h"
#include "bench/handles.h"
#include "include/jwnls/jwnls.h"

namespace jwnls::bench {
namespace {

constexpr std::size_t column_count = 1'000'000;

const jwnls_layout* layout_of(const char* locale, int kind, const char* options) {
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  if (jwnls_open(locale, kind, options, &layout, &error) != JWNLS_OK) {
    std::fprintf(stderr, "%s\n", error.text);
    std::exit(3);
  }
  return layout;  // for the rest of the run
}

// Amounts from 0.01 to 10^9, spread evenly over the magnitudes, with two decimals.
std::vector<double> amounts(std::size_t count) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> magnitude(-2, 9);
  std::vector<double> values(count);
  for (double& value : values) value = std::round(std::pow(10.0, magnitude(random)) * 100) / 100;
  return values;
}

// Texts one behind the other, as Arrow has them.
struct Column {
  std::string bytes;
  std::vector<std::int64_t> offsets = {0};

  void add(std::string_view text) {
    bytes += text;
    offsets.push_back(static_cast<std::int64_t>(bytes.size()));
  }
  [[nodiscard]] std::string_view at(std::size_t i) const {
    const auto begin = static_cast<std::size_t>(offsets[i]);
    return {bytes.data() + begin, static_cast<std::size_t>(offsets[i + 1]) - begin};
  }
  [[nodiscard]] jwnls_texts texts() const {
    return {sizeof(jwnls_texts),
            offsets.size() - 1,
            nullptr,
            bytes.data(),
            nullptr,
            offsets.data(),
            nullptr};
  }
};

Column written(const jwnls_layout* layout, const std::vector<double>& values) {
  Column column;
  char text[64];
  for (const double value : values) {
    std::size_t length = 0;
    (void)jwnls_write_number(layout, value, text, sizeof text, &length);
    column.add({text, length});
  }
  return column;
}

// The texts of the values as every program writes them: "1234567.89".
Column plain(const std::vector<double>& values) {
  Column column;
  char text[64];
  for (const double value : values) {
    char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
    column.add({text, static_cast<std::size_t>(end - text)});
  }
  return column;
}

// ---- Single calls

template <typename Call>
void enter_calls(const std::string& task, Side side, const char* name, Call call) {
  enter(task, side, name, [=](benchmark::State& state) {
    bool all_done = true;
    walk(state, [&](std::size_t i) { all_done &= call(i); });
    if (!all_done) state.SkipWithError("a value was not done");
  });
}

void enter_writing(const char* task, const char* locale, std::u16string_view name, double target) {
  static const std::vector<double> values = amounts(value_count);
  declare({task, target, 0.1});
  const jwnls_layout* const layout = layout_of(locale, JWNLS_NUMBER, "decimals=2");
  LocaleHandle* const handle = handle_of(name);
  enter_calls(task, Side::ours, "jwnls_write_number", [=](std::size_t i) {
    char text[64];
    std::size_t length = 0;
    const int code = jwnls_write_number(layout, values[i], text, sizeof text, &length);
    benchmark::DoNotOptimize(text);
    return code == JWNLS_OK;
  });
  enter_calls(task, Side::peer, "service", [=](std::size_t i) {
    char text[64];
    std::int64_t length = 0;
    const auto status = handle->services.format_number_8bit(
        handle, values[i], 0, 2, number_flags::fixed | number_flags::group, text, sizeof text,
        &length, nullptr);
    benchmark::DoNotOptimize(text);
    return status == 0;
  });
}

void enter_integers() {
  const char* task = "library: write integer, grouped";
  declare({task, 1.5, 0});  // 1.25 and 3 ns
  static const std::vector<std::int64_t> values = [] {
    std::mt19937_64 random(3);
    std::vector<std::int64_t> made(value_count);
    for (auto& value : made) value = static_cast<std::int64_t>(random() >> (1 + random() % 63));
    return made;
  }();
  const jwnls_layout* const layout = layout_of("de_DE", JWNLS_INTEGER, "");
  LocaleHandle* const handle = handle_of(u"de_DE");
  enter_calls(task, Side::ours, "jwnls_write_integer", [=](std::size_t i) {
    char text[32];
    std::size_t length = 0;
    const int code = jwnls_write_integer(layout, values[i], text, sizeof text, &length);
    benchmark::DoNotOptimize(text);
    return code == JWNLS_OK;
  });
  enter_calls(task, Side::peer, "service", [=](std::size_t i) {
    char text[32];
    std::int64_t length = 0;
    const auto status = handle->services.format_int64_8bit(
        handle, values[i], 0, 1, integer_flags::group, text, sizeof text, &length);
    benchmark::DoNotOptimize(text);
    return status == 0;
  });
}

auto reader_of(const jwnls_layout* layout, const Column& texts) {
  return [layout, &texts](std::size_t i) {
    const std::string_view text = texts.at(i);
    double value = 0;
    const int code = jwnls_read_number(layout, text.data(), text.size(), &value, nullptr);
    benchmark::DoNotOptimize(value);
    return code == JWNLS_OK;
  };
}

auto read_plainly(const Column& texts) {
  return [&texts](std::size_t i) {
    const std::string_view text = texts.at(i);
    double value = 0;
    const auto end = text.data() + text.size();
    const bool read = fast_float::from_chars(text.data(), end, value).ec == std::errc();
    benchmark::DoNotOptimize(value);
    return read;
  };
}

void enter_reading(const char* task, const char* locale, std::u16string_view name, double target) {
  // One list of texts a locale, which stays.
  const jwnls_layout* const layout = layout_of(locale, JWNLS_NUMBER, "decimals=2");
  const auto* const texts = new Column(written(layout, amounts(value_count)));
  declare({task, target, 0});
  LocaleHandle* const handle = handle_of(name);
  enter_calls(task, Side::ours, "jwnls_read_number", [=](std::size_t i) {
    const std::string_view text = texts->at(i);
    double value = 0;
    std::uint8_t facts = 0;
    const int code = jwnls_read_number(layout, text.data(), text.size(), &value, &facts);
    benchmark::DoNotOptimize(value);
    return code == JWNLS_OK;
  });
  // The 8-bit service compares bytes, so that it reads none but ASCII symbols.
  if (handle->record->grouping_symbol < 0x80) {
    enter_calls(task, Side::peer, "service", [=](std::size_t i) {
      const std::string_view text = texts->at(i);
      double value = 0;
      std::int64_t consumed = 0;
      const auto status = handle->services.read_number_8bit(
          handle, text.data(), static_cast<std::int32_t>(text.size()), &value, &consumed);
      benchmark::DoNotOptimize(value);
      return status == 0;
    });
  }
  static const Column plain_texts = plain(amounts(value_count));
  enter_calls(task, Side::reference, "fast_float, plain numbers", read_plainly(plain_texts));
}

// Amounts and percentages: out beside the service's digits alone, in beside the plain number.
void enter_measure(const std::string& what, const char* locale, int kind,
                   const char* options = "") {
  static const std::vector<double> values = amounts(value_count);
  static const Column plain_texts = plain(values);
  const jwnls_layout* const layout = layout_of(locale, kind, options);
  const auto* const texts = new Column(written(layout, values));
  static LocaleHandle* const handle = handle_of(u"de_DE");
  const std::string write_task = "library: write " + what;
  declare({write_task, 2.0, 0});
  enter_calls(write_task, Side::ours, "jwnls_write_number", [=](std::size_t i) {
    char text[96];
    std::size_t length = 0;
    const int code = jwnls_write_number(layout, values[i], text, sizeof text, &length);
    benchmark::DoNotOptimize(text);
    return code == JWNLS_OK;
  });
  enter_calls(write_task, Side::peer, "service, digits alone", [](std::size_t i) {
    char text[64];
    std::int64_t length = 0;
    const auto status = handle->services.format_number_8bit(
        handle, values[i], 0, 2, number_flags::fixed, text, sizeof text, &length, nullptr);
    benchmark::DoNotOptimize(text);
    return status == 0;
  });
  const std::string read_task = "library: read " + what;
  declare({read_task, 2.2, 0});
  enter_calls(read_task, Side::ours, "jwnls_read_number", reader_of(layout, *texts));
  enter_calls(read_task, Side::peer, "fast_float, plain numbers", read_plainly(plain_texts));
}

// The same text as an exact decimal and as a double.
void enter_decimals() {
  const char* task = "library: read 1.234.567,89 as a decimal";
  declare({task, 1.5, 0});
  const jwnls_layout* const layout = layout_of("de_DE", JWNLS_NUMBER, "decimals=2");
  const auto* const texts = new Column(written(layout, amounts(value_count)));
  enter_calls(task, Side::ours, "jwnls_read_decimal", [=](std::size_t i) {
    const std::string_view text = texts->at(i);
    char decimal[64];
    std::size_t length = 0;
    const int code = jwnls_read_decimal(layout, text.data(), text.size(), decimal, sizeof decimal,
                                        &length, nullptr, nullptr);
    benchmark::DoNotOptimize(decimal);
    return code == JWNLS_OK;
  });
  enter_calls(task, Side::peer, "jwnls_read_number", reader_of(layout, *texts));
}

// What is not read, next to what is.
void enter_refusing() {
  const char* task = "library: refuse a foreign number";
  declare({task, 3.0, 0});
  const jwnls_layout* const german = layout_of("de_DE", JWNLS_NUMBER, "decimals=2");
  const jwnls_layout* const english = layout_of("en_US", JWNLS_NUMBER, "decimals=2");
  static const Column texts = written(english, amounts(value_count));
  const auto read = [](const jwnls_layout* layout) {
    return [layout](std::size_t i) {
      const std::string_view text = texts.at(i);
      double value = 0;
      (void)jwnls_read_number(layout, text.data(), text.size(), &value, nullptr);
      benchmark::DoNotOptimize(value);
      return true;
    };
  };
  enter_calls(task, Side::ours, "jwnls_read_number", read(german));
  enter_calls(task, Side::peer, "the same text where it is read", read(english));
}

// ---- Columns of a million

template <typename Body>
void enter_column(const char* task, Side side, const char* name, Body body) {
  enter(task, side, name, [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) body();
  });
}

void enter_column_reading() {
  const char* task = "library: read a million German numbers";
  declare({task, 2.0, 0.1});
  static const std::vector<double> values = amounts(column_count);
  const jwnls_layout* const layout = layout_of("de_DE", JWNLS_NUMBER, "decimals=2");
  static const Column german = written(layout, values);
  static const Column plain_texts = plain(values);
  static std::vector<double> read(column_count);
  enter_column(task, Side::ours, "jwnls_read_numbers", [=] {
    const jwnls_texts texts = german.texts();
    jwnls_column_facts facts = {};
    facts.size = sizeof facts;
    benchmark::DoNotOptimize(jwnls_read_numbers(layout, &texts, read.data(), nullptr, &facts));
  });
  enter_column(task, Side::reference, "single calls", [=] {
    for (std::size_t i = 0; i < column_count; ++i) {
      const std::string_view text = german.at(i);
      (void)jwnls_read_number(layout, text.data(), text.size(), &read[i], nullptr);
    }
  });
  const auto from_chars = [task](Side side, const char* name, auto convert) {
    enter_column(task, side, name, [=] {
      for (std::size_t i = 0; i < column_count; ++i) {
        const std::string_view text = plain_texts.at(i);
        (void)convert(text.data(), text.data() + text.size(), read[i]);
      }
    });
  };
  from_chars(Side::peer, "fast_float, plain numbers",
             [](const char* begin, const char* end, double& value) {
               return fast_float::from_chars(begin, end, value).ptr;
             });
  from_chars(Side::reference, "std::from_chars, plain numbers",
             [](const char* begin, const char* end, double& value) {
               return std::from_chars(begin, end, value).ptr;
             });
}

void enter_column_writing() {
  const char* task = "library: write a million German numbers";
  declare({task, 1.15, 0});
  static const std::vector<double> values = amounts(column_count);
  const jwnls_layout* const layout = layout_of("de_DE", JWNLS_NUMBER, "decimals=2");
  static std::vector<char> bytes(column_count * 24);
  static std::vector<std::int64_t> offsets(column_count + 1);
  enter_column(task, Side::ours, "jwnls_write_numbers", [=] {
    const jwnls_column column = {sizeof column,  bytes.data(), bytes.size(), nullptr,
                                 offsets.data(), nullptr,      nullptr};
    benchmark::DoNotOptimize(jwnls_write_numbers(layout, values.data(), column_count, &column));
  });
  enter_column(task, Side::peer, "single calls", [=] {
    std::size_t used = 0;
    for (std::size_t i = 0; i < column_count; ++i) {
      std::size_t length = 0;
      (void)jwnls_write_number(layout, values[i], bytes.data() + used, bytes.size() - used,
                               &length);
      used += length;
    }
    benchmark::DoNotOptimize(used);
  });
}

// ICU with a formatter that is made once, over the same texts and values.
void enter_icu(const char* write_task, const char* read_task) {
  static const std::vector<double> values = amounts(value_count);
  static const std::vector<std::u16string> texts = [] {
    const Column column = written(layout_of("de_DE", JWNLS_NUMBER, "decimals=2"), values);
    std::vector<std::u16string> made;
    for (std::size_t i = 0; i < value_count; ++i) {
      const std::string_view text = column.at(i);
      made.emplace_back(text.begin(), text.end());
    }
    return made;
  }();
  UErrorCode error = U_ZERO_ERROR;
  static UNumberFormat* const format =
      unum_open(UNUM_DECIMAL, nullptr, 0, "de_DE", nullptr, &error);
  unum_setAttribute(format, UNUM_FRACTION_DIGITS, 2);
  enter_calls(write_task, Side::icu, "ICU", [](std::size_t i) {
    char16_t text[64];
    UErrorCode failure = U_ZERO_ERROR;
    unum_formatDouble(format, values[i], text, 64, nullptr, &failure);
    benchmark::DoNotOptimize(text);
    return U_SUCCESS(failure);
  });
  enter_calls(read_task, Side::icu, "ICU", [](std::size_t i) {
    UErrorCode failure = U_ZERO_ERROR;
    benchmark::DoNotOptimize(unum_parseDouble(
        format, texts[i].data(), static_cast<std::int32_t>(texts[i].size()), nullptr, &failure));
    return U_SUCCESS(failure);
  });
}

}  // namespace

void enter_library_numbers() {
  const char* const write_german = "library: write 1.234.567,89";
  const char* const read_german = "library: read 1.234.567,89";
  enter_writing(write_german, "de_DE", u"de_DE", 1.6);
  enter_writing("library: write 1 234 567,89, no-break blanks", "fr_FR", u"fr_FR", 1.25);
  enter_integers();
  enter_reading(read_german, "de_DE", u"de_DE", 1.3);
  enter_reading("library: read 1 234 567,89, no-break blanks", "fr_FR", u"fr_FR", 0);
  enter_reading("library: read 12,34,567.89", "en_IN", u"en_IN", 1.3);
  enter_icu(write_german, read_german);
  enter_measure("1.234,50 EUR with its symbol", "de_DE", JWNLS_AMOUNT);
  enter_measure("1 234,50 EUR with its symbol, no-break blanks", "fr_FR", JWNLS_AMOUNT);
  enter_measure("1 234,50 kr", "sv_SE", JWNLS_AMOUNT);
  enter_measure("CHF 1\u2019234.50", "de_CH", JWNLS_AMOUNT);
  enter_measure("INR 12,34,567.50 with its symbol", "en_IN", JWNLS_AMOUNT);
  enter_measure("12,5 %", "de_DE", JWNLS_PERCENT);
  enter_measure("12,5 % with one decimal", "sv_SE", JWNLS_PERCENT, "decimals=1");
  enter_measure("a number in Arabic digits", "ar_EG", JWNLS_NUMBER, "decimals=2 digits=own");
  enter_measure("an amount in Arabic digits", "ar_EG", JWNLS_AMOUNT, "digits=own");
  enter_measure("a number in Devanagari digits", "hi_IN", JWNLS_NUMBER, "decimals=2 digits=own");
  enter_measure("an amount in Devanagari digits", "hi_IN", JWNLS_AMOUNT, "digits=own");
  enter_measure("a percentage in Bengali digits", "bn_BD", JWNLS_PERCENT, "digits=own decimals=1");
  enter_decimals();
  enter_refusing();
  enter_column_reading();
  enter_column_writing();
}

}  // namespace jwnls::bench
