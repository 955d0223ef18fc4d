// How the work of every call grows: with the length of its text, with the values of a column, with
// locales, zones and threads. Memory is counted, time is the processor's for the thread, the best
// of many runs; four times as much of anything may take four times as long, and some.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "abi/reading_modes.h"
#include "include/jwnls/jwnls.h"
#include "library/process/process.h"
#include "tests/library/opened_layout.h"
#include "tests/process/allocations.h"

namespace jwnls::test {
namespace {

constexpr double some = 1.6;

double thread_seconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Of one run, in seconds.
template <typename Run>
double cost(const Run& run) {
  double best = 1e9;
  int rounds = 1;
  for (int batch = 0; batch < 12; ++batch) {
    const double begin = thread_seconds();
    for (int i = 0; i < rounds; ++i) run();
    const double taken = thread_seconds() - begin;
    best = std::min(best, taken / rounds);
    if (taken < 30e-6) rounds *= 2;
  }
  return best;
}

// Whether `large` costs at most `times` as much as `small`; a machine that is busy gets more tries.
template <typename Small, typename Large>
std::string fault_of([[maybe_unused]] double times, const Small& small, const Large& large) {
#if defined(JWNLS_SANITIZED)  // whose own work grows otherwise
  small();
  large();
  return {};
#else
  constexpr double call = 50e-9;  // what is no work: the call itself, a clock that is read
  double least_small = 1e9;
  double least_large = 1e9;
  for (int attempt = 0; attempt < 6; ++attempt) {
    least_small = std::min(least_small, cost(small));
    least_large = std::min(least_large, cost(large));
    if (least_large <= some * times * (least_small + call)) return {};
  }
  return std::to_string(1e9 * least_small) + " ns become " + std::to_string(1e9 * least_large);
#endif
}

std::string repeated(std::string_view piece, std::size_t bytes) {
  std::string text;
  while (text.size() + piece.size() <= bytes) text += piece;
  return text;
}

// What long texts are made of: what readers may go on in, begin again at, or look back over.
constexpr std::string_view pieces[] = {"9",      "0",      "1.",     "1,",     "1.234,",
                                       "1 ",     " ",      "\u00A0", "a",      "Mar",
                                       "mar ",   "März ",  "(",      "-",      "+",
                                       "1e",     "%",      "\u20AC", "EUR ",   "15.03.2024 ",
                                       "2024-",  "12:",    "Z",      "+02:00", "\u0661",
                                       "\u5E74", "\u0301", "PM ",    "Q1 ",    "\xF0\x9F\x98\x80",
                                       "\xFF",   "'"};

struct Reader {
  const char* name;
  int kind;
  std::function<int(const jwnls_layout*, const char*, std::size_t)> read;
};
template <typename Value, typename Function>
auto reading(Function function) {
  return [function](const jwnls_layout* layout, const char* text, std::size_t length) {
    Value value;
    return function(layout, text, length, &value, nullptr);
  };
}
int explained(const jwnls_layout* layout, const char* text, std::size_t length) {
  jwnls_error error;
  return jwnls_explain(layout, text, length, &error);
}
const Reader readers[] = {
    {"number", JWNLS_NUMBER, reading<double>(jwnls_read_number)},
    {"amount", JWNLS_AMOUNT, reading<double>(jwnls_read_number)},
    {"percent", JWNLS_PERCENT, reading<double>(jwnls_read_number)},
    {"integer", JWNLS_INTEGER, reading<std::int64_t>(jwnls_read_integer)},
    {"unsigned", JWNLS_INTEGER, reading<std::uint64_t>(jwnls_read_unsigned)},
    {"decimal", JWNLS_NUMBER,
     [](const jwnls_layout* layout, const char* text, std::size_t length) {
       std::array<char, 2048> out;
       std::size_t written = 0;
       return jwnls_read_decimal(layout, text, length, out.data(), out.size(), &written, nullptr,
                                 nullptr);
     }},
    {"date", JWNLS_DATE, reading<std::int32_t>(jwnls_read_date)},
    {"period", JWNLS_PERIOD, reading<std::int32_t>(jwnls_read_date)},
    {"datetime", JWNLS_DATETIME, reading<std::int64_t>(jwnls_read_datetime)},
    {"instant", JWNLS_INSTANT, reading<std::int64_t>(jwnls_read_datetime)},
    {"time", JWNLS_TIME, reading<std::int64_t>(jwnls_read_time)},
    {"explain a number", JWNLS_NUMBER, explained},
    {"explain an amount", JWNLS_AMOUNT, explained},
    {"explain a date", JWNLS_DATE, explained},
    {"explain a datetime", JWNLS_DATETIME, explained},
    {"explain a time", JWNLS_TIME, explained},
};
constexpr std::size_t longest = 1024;  // of texts that are read

TEST(Growth, ReadingTakesTimeByTheLengthOfATextAndNoneBehindTheLongest) {
  const std::string huge(1 << 20, '1');
  for (const Reader& reader : readers) {
    for (const char* locale : {"de_DE", "th_TH", "ar_EG"}) {
      const auto layout = open_layout(locale, reader.kind);
      for (const std::string_view piece : pieces) {
        const std::string text = repeated(piece, longest);
        const auto run = [&](std::size_t length) {
          return [&, length] { reader.read(layout.get(), text.data(), length); };
        };
        // Four times the work, and half as much again: of the short text a processor learns every
        // branch. What grows as the square takes sixteen times as long. Of whole pieces, so that
        // both end alike: some texts are refused by their last byte.
        const std::size_t quarter = repeated(piece, longest / 4).size();
        EXPECT_EQ(fault_of(4 * 1.5, run(quarter), run(text.size())), "")
            << reader.name << " " << locale << " '" << piece << "'";
      }
      // Up to a MiB, behind the longest, it is the length alone that is looked at.
      const auto refused = [&](std::size_t length) {
        return [&, length] { reader.read(layout.get(), huge.data(), length); };
      };
      EXPECT_EQ(fault_of(1, refused(longest + 1), refused(huge.size())), "") << reader.name;
    }
  }
}

// The services read texts of any length.
TEST(Growth, ServicesTakeTimeByTheLengthOfAText) {
  for (const char* locale : {"de_DE", "en_US", "ar_EG"}) {
    jwnls::LocaleHandle* const handle = library::open_locale(locale).handle;
    const auto& slots = handle->services;
    for (const std::string_view piece : pieces) {
      const std::string bytes = repeated(piece, 4096 + piece.size());
      const std::u16string units(bytes.begin(), bytes.end());  // of bytes, which is as good
      double value = 0;
      std::uint64_t used = 0;
      std::int64_t consumed = 0;
      const std::function<void(std::int64_t)> calls[] = {
          [&](std::int64_t length) {
            slots.read_date(handle, units.data(), length, 0, &value, &used);
          },
          [&](std::int64_t length) {
            slots.read_date(handle, units.data(), length, JW_READ_DATETIME, &value, &used);
          },
          [&](std::int64_t length) {
            slots.read_time(handle, units.data(), length, 0, &value, &used);
          },
          [&](std::int64_t length) {
            slots.read_number(handle, units.data(), static_cast<std::int32_t>(length), &value,
                              &consumed);
          },
      };
      for (std::size_t i = 0; i < std::size(calls); ++i) {
        const auto run = [&](std::int64_t length) { return [&, length] { calls[i](length); }; };
        EXPECT_EQ(fault_of(4, run(1024), run(4096)), "")
            << "service " << i << " " << locale << " '" << piece << "'";
      }
    }
  }
}

// Calls that take something of any size, with the memory that they use on the way.
struct Sized {
  const char* name;
  std::size_t size;
  std::function<void(std::size_t)> run;
};

std::size_t visited_locales = 0;

std::string locales_up_to(std::size_t count) {
  std::string names;
  visited_locales = count;
  jwnls_locales(
      [](void* list, const jwnls_locale_info* locale) {
        static_cast<std::string*>(list)->append(locale->name).append(" ");
        return --visited_locales == 0 ? 1 : 0;
      },
      &names);
  return names;
}

int detect(const std::vector<std::string>& column, std::size_t count, const std::string& locales) {
  std::vector<jwnls_text> texts;
  texts.reserve(column.size());
  for (const std::string& text : column) texts.push_back({text.data(), text.size()});
  const jwnls_texts given = {sizeof given, count, texts.data(), nullptr, nullptr, nullptr, nullptr};
  jwnls_detection* detection = nullptr;
  const int code = jwnls_detect(&given, "number date", locales.c_str(), &detection, nullptr);
  jwnls_detection_close(detection);
  return code;
}

TEST(Growth, CallsTakeTimeAndMemoryByTheSizeOfWhatTheyAreGiven) {
  const auto number = open_layout("de_DE", JWNLS_NUMBER);
  const auto date = open_layout("pl_PL", JWNLS_DATE, "style=long");
  constexpr std::size_t most = 16384;
  const std::string digits(most, '7');
  const std::vector<double> numbers(most, -1234567.891);
  const std::vector<std::int32_t> days(most, 19797);
  std::vector<char> out(64 * most);
  std::vector<std::int32_t> offsets(most + 1);
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = out.data();
  column.room = out.size();
  column.offsets = offsets.data();
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < most; ++i) texts.push_back(std::to_string(i) + ",5");
  const auto options = [](std::size_t words) { return repeated("decimals=2 ", 11 * words); };
  std::array<std::string, 2> names = {locales_up_to(100), locales_up_to(400)};
  ASSERT_EQ(detect(texts, 100, names[1]), JWNLS_OK);  // their data is made once

  const Sized calls[] = {
      {"write a decimal", most,
       [&](std::size_t size) {
         std::size_t length = 0;
         jwnls_write_decimal(number.get(), digits.data(), size, out.data(), out.size(), &length);
       }},
      {"numbers out", most,
       [&](std::size_t size) { jwnls_write_numbers(number.get(), numbers.data(), size, &column); }},
      {"dates out", most,
       [&](std::size_t size) { jwnls_write_dates(date.get(), days.data(), size, &column); }},
      {"option words", 400,
       [&](std::size_t size) { open_layout("de_DE", JWNLS_NUMBER, options(size)); }},
      {"a locale's name", most,
       [&](std::size_t size) {
         char canonical[64];
         int exact = 0;
         jwnls_match_locale(digits.c_str() + (most - size), canonical, &exact);
       }},
      {"a zone's name", most,
       [&](std::size_t size) {
         jwnls_zone_state state = {};
         state.size = sizeof state;
         jwnls_zone_at(digits.c_str() + (most - size), 0, &state, nullptr);
       }},
      {"texts of a column", most, [&](std::size_t size) { detect(texts, size, "de_DE en_US"); }},
      {"locales asked for", 400,
       [&](std::size_t size) { detect(texts, 100, names[size == 100 ? 0 : 1]); }},
  };
  for (const Sized& call : calls) {
    const auto run = [&](std::size_t size) { return [&, size] { call.run(size); }; };
    EXPECT_EQ(fault_of(4, run(call.size / 4), run(call.size)), "") << call.name;
    const auto bytes_given = [&](std::size_t size) {
      const long before = given_bytes();
      call.run(size);
      return given_bytes() - before;
    };
    EXPECT_LE(static_cast<double>(bytes_given(call.size)),
              some * 4 * static_cast<double>(bytes_given(call.size / 4)))
        << call.name;
    const long live = live_bytes();
    for (int i = 0; i < 4; ++i) call.run(call.size);
    EXPECT_EQ(live_bytes(), live) << call.name;
  }
}

// What a process keeps: so much for each locale and each zone, however many there are, and nothing
// for what is opened again.
TEST(Growth, EachLocaleAndEachZoneKeepsAsMuchAsTheOneBefore) {
  std::vector<std::string> names;
  jwnls_locales(
      [](void* all, const jwnls_locale_info* locale) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(locale->name);
        return 0;
      },
      &names);
  const std::size_t locales = names.size();
  jwnls_zones(
      [](void* all, const char* zone) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(zone);
        return 0;
      },
      &names);
  const std::size_t zones = names.size() - locales;
  ASSERT_GT(zones, 400U);
  const auto locale = [&](std::size_t i) { open_layout(names[i], JWNLS_DATE); };
  const auto zone = [&](std::size_t i) {
    open_layout("de_DE", JWNLS_INSTANT, "zone=" + names[locales + i]);
  };
  struct Kept {
    const char* name;
    std::function<void(std::size_t)> open;
    long most;  // bytes each
  };
  for (const auto& [name, open, most] :
       {Kept{"locale", locale, 100'000}, Kept{"zone", zone, 40'000}}) {
    constexpr std::size_t portion = 100;
    std::array<long, 4> bytes = {};
    std::array<double, 4> seconds = {};
    for (std::size_t part = 0; part < bytes.size(); ++part) {
      const long before = live_bytes();
      const double begin = thread_seconds();
      for (std::size_t i = 0; i < portion; ++i) open(portion * part + i);
      bytes[part] = (live_bytes() - before) / static_cast<long>(portion);
      seconds[part] = thread_seconds() - begin;
      EXPECT_LE(bytes[part], most) << name << " of portion " << part;
    }
    // A hundred behind three hundred others, and three hundred again.
    EXPECT_LE(seconds[3], 5 * some * *std::min_element(seconds.begin(), seconds.begin() + 3) + 0.01)
        << name;
    const long live = live_bytes();
    for (std::size_t i = 0; i < 3 * portion; ++i) open(i);
    EXPECT_EQ(live_bytes(), live) << name;
    const auto& opener = open;  // compilers differ on captured bindings
    const auto again = [&](std::size_t i) { return [&opener, i] { opener(i); }; };
    EXPECT_EQ(fault_of(1, again(0), again(3 * portion)), "") << name << " opened again";
  }
  // Releases that are looked for without end keep no more than the first few.
  const auto reload = [&] {
    EXPECT_EQ(jwnls_reload_zones(nullptr), JWNLS_OK);
    zone(0);
  };
  for (int i = 0; i < 4; ++i) reload();
  const long live = live_bytes();
  for (int i = 0; i < 40; ++i) reload();
  EXPECT_LE(live_bytes() - live, 4096);
}

// A thread beside others takes no longer, and leaves nothing behind.
TEST(Growth, ThreadsDoNotWaitForEachOther) {
  const auto amounts = open_layout("de_DE", JWNLS_AMOUNT);
  const auto dates = open_layout("pl_PL", JWNLS_DATE, "style=long");
  const auto instants = open_layout("de_DE", JWNLS_INSTANT, "zone=Europe/Berlin");
  const auto work = [&] {
    std::array<char, 128> out;
    std::size_t length = 0;
    double value = 0;
    std::int32_t days = 0;
    (void)jwnls_read_number(amounts.get(), "1.234,50 \u20AC", 12, &value, nullptr);
    (void)jwnls_read_date(dates.get(), "15 marca 2024", 13, &days, nullptr);
    (void)jwnls_write_number(amounts.get(), -1234567.5, out.data(), out.size(), &length);
    (void)jwnls_write_date(dates.get(), 19797, out.data(), out.size(), &length);
    (void)jwnls_write_datetime(instants.get(), 1'720'000'000'000'000, out.data(), out.size(),
                               &length);
  };
  // Of the slowest of some threads, the best of their runs.
  const auto slowest = [&](std::size_t count) {
    std::vector<double> costs(count);
    std::vector<long> left(count);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) {
      threads.emplace_back([&, i] {
        const long before = live_bytes();
        costs[i] = cost([&] {
          for (int round = 0; round < 50; ++round) work();
        });
        left[i] = live_bytes() - before;
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(*std::max_element(left.begin(), left.end()), 0);
    return *std::max_element(costs.begin(), costs.end());
  };
  double alone = slowest(1);
  double together = slowest(16);
  for (int attempt = 0; attempt < 5 && together > 2 * some * alone; ++attempt) {
    alone = std::min(alone, slowest(1));
    together = std::min(together, slowest(16));
  }
  EXPECT_LE(together, 2 * some * alone);
}

}  // namespace
}  // namespace jwnls::test
