// 200 threads over the library: layouts that all share, and layouts, zones and lists that each
// opens. Every thread gets what one alone got.

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/opened_layout.h"

namespace jwnls::test {
namespace {

constexpr int thread_count = 200;

struct Opened {
  const char* locale;
  int kind;
  const char* options;
};

constexpr Opened layouts[] = {
    {"de_DE", JWNLS_NUMBER, "decimals=2"},
    {"hi_IN", JWNLS_NUMBER, "digits=own"},
    {"fr_FR", JWNLS_INTEGER, ""},
    {"pl_PL", JWNLS_DATE, "style=long"},
    {"en_US", JWNLS_TIME, ""},
    {"ja_JP", JWNLS_DATETIME, "zone=Asia/Tokyo"},
    {"ar_EG", JWNLS_DATETIME, "zone=<+03>-3"},
    {"sv_SE", JWNLS_DATE, "zone=Europe/Atlantis"},
    {"de_CH", JWNLS_AMOUNT, "currency=any"},
    {"tr_TR", JWNLS_PERCENT, "decimals=1"},
    {"en_GB", JWNLS_INSTANT, "zone=Europe/London overlap=first"},
    {"es_ES", JWNLS_PERIOD, ""},
};

// What one layout writes, what it reads of that, what it says of a text that is none, and its
// conventions.
std::string everything(const jwnls_layout* layout) {
  char text[128];
  std::size_t length = 0;
  int code = JWNLS_KIND;
  std::ostringstream all;
  const auto show = [&] {
    if (code != JWNLS_KIND) all << code << ' ' << std::string_view(text, length) << '\n';
  };
  const std::int64_t moment = 1'710'504'429'000'000;
  code = jwnls_write_number(layout, 1234567.891, text, sizeof text, &length);
  show();
  code = jwnls_write_integer(layout, 1234567, text, sizeof text, &length);
  show();
  code = jwnls_write_date(layout, 19797, text, sizeof text, &length);
  show();
  code = jwnls_write_time(layout, moment % 86'400'000'000, text, sizeof text, &length);
  show();
  code = jwnls_write_datetime(layout, moment, text, sizeof text, &length);
  show();

  double number = 0;
  std::int64_t integer = 0;
  std::int32_t days = 0;
  (void)jwnls_read_number(layout, text, length, &number, nullptr);
  (void)jwnls_read_integer(layout, text, length, &integer, nullptr);
  (void)jwnls_read_date(layout, text, length, &days, nullptr);
  all << number << ' ' << integer << ' ' << days << ' ';
  (void)jwnls_read_time(layout, text, length, &integer, nullptr);
  all << integer << ' ';
  (void)jwnls_read_datetime(layout, text, length, &integer, nullptr);
  jwnls_error error;
  all << integer << ' ' << jwnls_explain(layout, "29 Foo", 6, &error) << ' ' << error.text << ' ';
  code = jwnls_describe(layout, text, sizeof text, &length);
  show();
  code = jwnls_write_decimal(layout, "-1234.5", 7, text, sizeof text, &length);
  show();
  char decimal[64];
  char currency[4] = "";
  std::size_t decimal_length = 0;
  if (jwnls_read_decimal(layout, text, length, decimal, sizeof decimal, &decimal_length, currency,
                         nullptr) == JWNLS_OK) {
    all << std::string_view(decimal, decimal_length) << currency << ' ';
  }
  jwnls_unit units[128];
  if (jwnls_write_date_utf16(layout, 19797, units, std::size(units), &length) == JWNLS_OK &&
      jwnls_read_date_utf16(layout, units, length, &days, nullptr) == JWNLS_OK) {
    all << days << ' ';
  }
  for (int item = JWNLS_MONTH; item <= JWNLS_FIRST_WEEKDAY; ++item) {
    code = jwnls_convention(layout, item, 0, text, sizeof text, &length);
    show();
  }
  return all.str();
}

// A column of the layout's own kind, written and read, and what it is detected as.
std::string columns(const jwnls_layout* layout) {
  const double numbers[] = {1, -2.5, 1234567.25};
  const std::int32_t days[] = {0, 19797, -1};
  char bytes[512];
  std::int32_t offsets[4] = {};
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = bytes;
  column.room = sizeof bytes;
  column.offsets = offsets;
  const std::size_t written = jwnls_layout_kind(layout) == JWNLS_DATE
                                  ? jwnls_write_dates(layout, days, 3, &column)
                                  : jwnls_write_numbers(layout, numbers, 3, &column);
  jwnls_texts texts = {};
  texts.size = sizeof texts;
  texts.count = written;
  texts.bytes = bytes;
  texts.offsets = offsets;
  double read_numbers[3] = {};
  std::int32_t read_days[3] = {};
  std::ostringstream all;
  all << written << ' ' << jwnls_read_numbers(layout, &texts, read_numbers, nullptr, nullptr) << ' '
      << jwnls_read_dates(layout, &texts, read_days, nullptr, nullptr) << ' ' << read_numbers[2]
      << ' ' << read_days[1] << ' ';
  jwnls_detection* detection = nullptr;
  if (jwnls_detect(&texts, "number date", "de_DE,en_US,hi_IN", &detection, nullptr) == JWNLS_OK) {
    all << jwnls_detection_kind(detection);
  }
  jwnls_detection_close(detection);
  char canonical[64];
  int exact = 0;
  all << jwnls_match_locale("de_US", canonical, &exact) << canonical << exact;
  const auto count = [](void* counter, const auto*) { return ++*static_cast<int*>(counter), 0; };
  int found[2] = {};
  (void)jwnls_locales(count, &found[0]);
  (void)jwnls_zones(count, &found[1]);
  all << found[0] << ' ' << found[1];
  return all.str();
}

std::string open_and_ask(const Opened& each) {
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  if (jwnls_open(each.locale, each.kind, each.options, &layout, &error) != JWNLS_OK) {
    return error.text;
  }
  std::string all = everything(layout) + columns(layout);
  jwnls_close(layout);
  return all;
}

TEST(Layouts, TwoHundredThreadsGetWhatOneGets) {
  // In a new process the threads load the modules, too: all wait for the first.
  std::barrier start(thread_count);
  std::vector<std::string> texts(thread_count);
  std::vector<OpenedLayout> shared(std::size(layouts));
  std::atomic<int> others = 0;
  const auto work = [&](std::size_t number) {
    start.arrive_and_wait();
    std::string own = open_and_ask(layouts[number % std::size(layouts)]);
    start.arrive_and_wait();
    if (number == 0) {
      for (std::size_t i = 0; i < std::size(layouts); ++i) {
        if (std::string_view(layouts[i].options) == "zone=Europe/Atlantis") continue;  // no layout
        shared[i] = open_layout(layouts[i].locale, layouts[i].kind, layouts[i].options);
      }
    }
    start.arrive_and_wait();
    for (std::size_t i = number; i < number + std::size(layouts); ++i) {
      const std::size_t which = i % std::size(layouts);
      const std::string all = shared[which] != nullptr
                                  ? everything(shared[which].get()) + columns(shared[which].get())
                                  : open_and_ask(layouts[which]);
      if (which == number % std::size(layouts) && all != own) ++others;
      if (open_and_ask(layouts[which]) != all) ++others;
      jwnls_zone_state state = {};
      state.size = sizeof state;
      if (jwnls_zone_at("America/St_Johns", 0, &state, nullptr) != JWNLS_OK ||
          state.offset_seconds != -12'600 || (i % 50 == 0 && jwnls_reload_zones(nullptr) != 0)) {
        ++others;
      }
      jwnls_set_journal([](void*, const char*) {}, nullptr);
    }
    texts[number] = std::move(own);
  };
  std::vector<std::thread> threads;
  threads.reserve(thread_count);
  for (std::size_t number = 0; number < thread_count; ++number) threads.emplace_back(work, number);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(others, 0);
  for (std::size_t i = 0; i < thread_count; ++i) {
    EXPECT_EQ(texts[i], open_and_ask(layouts[i % std::size(layouts)]));
  }
}

}  // namespace
}  // namespace jwnls::test
