#include "bench/library_detect.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "include/jwnls/jwnls.h"

namespace jwnls::bench {
namespace {

constexpr std::size_t column_count = 10'000;

// A column as one locale writes it, and the right layout to read it.
struct Column {
  jwnls_layout* layout = nullptr;
  std::string bytes;
  std::vector<std::int64_t> offsets = {0};

  Column(const char* locale, int kind, const char* options) {
    jwnls_error error;
    if (jwnls_open(locale, kind, options, &layout, &error) != JWNLS_OK) {
      std::fprintf(stderr, "%s\n", error.text);
      std::exit(3);
    }
    std::mt19937_64 random(7);
    for (std::size_t i = 0; i < column_count; ++i) {
      char text[200];
      std::size_t length = 0;
      const auto value = static_cast<std::int32_t>(random() % 20'000);
      const auto write = [&] {
        switch (kind) {
          case JWNLS_DATE:
            return jwnls_write_date(layout, value, text, sizeof text, &length);
          case JWNLS_DATETIME:
            return jwnls_write_datetime(layout, value * INT64_C(78'901'000'000), text, sizeof text,
                                        &length);
          case JWNLS_TIME:
            return jwnls_write_time(layout, value * INT64_C(4'000'000), text, sizeof text, &length);
          case JWNLS_INTEGER:
            return jwnls_write_integer(layout, value * INT64_C(61), text, sizeof text, &length);
          case JWNLS_PERCENT:
            return jwnls_write_number(layout, value / 128.0, text, sizeof text, &length);
          default:
            return jwnls_write_number(layout, value * 61.37, text, sizeof text, &length);
        }
      };
      (void)write();
      bytes.append(text, length);
      offsets.push_back(static_cast<std::int64_t>(bytes.size()));
    }
  }

  [[nodiscard]] jwnls_texts texts() const {
    return {sizeof(jwnls_texts), column_count, nullptr, bytes.data(), nullptr,
            offsets.data(),      nullptr};
  }

  [[nodiscard]] std::size_t read() const {
    static std::vector<std::int64_t> microseconds(column_count);
    static std::vector<std::int32_t> days(column_count);
    static std::vector<double> numbers(column_count);
    const jwnls_texts all = texts();
    switch (jwnls_layout_kind(layout)) {
      case JWNLS_DATE:
        return jwnls_read_dates(layout, &all, days.data(), nullptr, nullptr);
      case JWNLS_DATETIME:
        return jwnls_read_datetimes(layout, &all, microseconds.data(), nullptr, nullptr);
      case JWNLS_TIME:
        return jwnls_read_times(layout, &all, microseconds.data(), nullptr, nullptr);
      case JWNLS_INTEGER:
        return jwnls_read_integers(layout, &all, microseconds.data(), nullptr, nullptr);
      default:
        return jwnls_read_numbers(layout, &all, numbers.data(), nullptr, nullptr);
    }
  }
};

// As tasks: "amount, de_DE", "datetime style=long, fr_FR".
void enter_column(const char* locale, int kind, const std::string& options) {
  const auto* const column = new Column(locale, kind, options.c_str());  // for the rest of the run
  std::string task = "library: detect 10,000: ";
  task.append(jwnls_kind_name(kind)).append(options.empty() ? "" : " ").append(options);
  task.append(", ").append(locale);
  declare({task, 30, 0});
  enter(task, Side::ours, "jwnls_detect", [=](benchmark::State& state) {
    const jwnls_texts texts = column->texts();
    for ([[maybe_unused]] auto iteration : state) {
      jwnls_detection* detection = nullptr;
      (void)jwnls_detect(&texts, nullptr, nullptr, &detection, nullptr);
      if (jwnls_detection_kind(detection) != kind) state.SkipWithError("another kind");
      jwnls_detection_close(detection);
    }
  });
  enter(task, Side::peer, "the right layout reads", [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      if (column->read() != 0) state.SkipWithError("a text was not read");
    }
  });
}

}  // namespace

// The first has a row of each way to write each kind, the others what is hardest of it: names and
// marks of other scripts, other digits, half days.
void enter_library_detect() {
  for (const std::string style : {"style=short", "style=medium", "style=long", "style=full"}) {
    for (const int kind : {JWNLS_DATE, JWNLS_DATETIME}) enter_column("de_DE", kind, style);
  }
  enter_column("de_DE", JWNLS_TIME, "");
  enter_column("de_DE", JWNLS_NUMBER, "decimals=2");
  enter_column("de_DE", JWNLS_INTEGER, "");
  enter_column("de_DE", JWNLS_AMOUNT, "");
  enter_column("de_DE", JWNLS_AMOUNT, "symbol=code");
  enter_column("de_DE", JWNLS_PERCENT, "");
  enter_column("en_US", JWNLS_DATE, "");
  enter_column("en_US", JWNLS_AMOUNT, "");
  enter_column("es_ES", JWNLS_DATE, "style=long");
  for (const char* locale : {"fr_FR", "ja_JP", "ko_KR", "hi_IN", "th_TH", "ar_EG", "ru_RU"}) {
    enter_column(locale, JWNLS_DATETIME, "style=long");
    enter_column(locale, JWNLS_DATE, "style=full");
  }
  enter_column("fr_FR", JWNLS_NUMBER, "");
  enter_column("fr_FR", JWNLS_DATETIME, "style=full");
  enter_column("vi_VN", JWNLS_DATETIME, "");
  enter_column("ar_EG", JWNLS_DATETIME, "style=short");
  enter_column("ckb_IQ", JWNLS_TIME, "");
  for (const char* locale : {"fa_IR", "hi_IN", "my_MM"}) {
    enter_column(locale, JWNLS_INTEGER, "digits=own");
    enter_column(locale, JWNLS_NUMBER, "digits=own decimals=2");
    enter_column(locale, JWNLS_AMOUNT, "digits=own");
  }
}

}  // namespace jwnls::bench
