// What 200 threads do with layouts that they share, against one thread: values a second of
// processor time, so that other programs on the machine do not count.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>
#include <vector>

#include "include/jwnls/jwnls.h"

namespace {

double processor_seconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

jwnls_layout* open(int kind, const char* options) {
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  if (jwnls_open("de_DE", kind, options, &layout, &error) != JWNLS_OK) {
    std::fprintf(stderr, "%s\n", error.text);
    std::exit(1);
  }
  return layout;
}

struct Layouts {
  jwnls_layout* number = open(JWNLS_NUMBER, "decimals=2");
  jwnls_layout* date = open(JWNLS_DATE, "style=long");
};

// Writes and reads a number and a date.
void work(const Layouts& layouts, std::int32_t values) {
  for (std::int32_t value = 0; value < values; ++value) {
    char text[64];
    std::size_t length = 0;
    double number = 0;
    std::int32_t days = 0;
    if (jwnls_write_number(layouts.number, value * 1.25, text, sizeof text, &length) != JWNLS_OK ||
        jwnls_read_number(layouts.number, text, length, &number, nullptr) != JWNLS_OK ||
        jwnls_write_date(layouts.date, value % 20'000, text, sizeof text, &length) != JWNLS_OK ||
        jwnls_read_date(layouts.date, text, length, &days, nullptr) != JWNLS_OK ||
        days != value % 20'000) {
      std::abort();
    }
  }
}

double rate(const Layouts& layouts, std::int32_t threads, std::int32_t values) {
  const double before = processor_seconds();
  std::vector<std::thread> all;
  all.reserve(static_cast<std::size_t>(threads));
  for (std::int32_t i = 0; i < threads; ++i) {
    all.emplace_back([&layouts, values] { work(layouts, values); });
  }
  for (std::thread& thread : all) thread.join();
  return static_cast<double>(threads) * values / (processor_seconds() - before);
}

}  // namespace

int main() {
  const Layouts layouts;
  work(layouts, 10'000);
  constexpr int threads = 200;
  constexpr int values = 10'000;
  for (int round = 0; round < 5; ++round) {
    const double one = rate(layouts, 1, threads * values);
    const double many = rate(layouts, threads, values);
    std::printf("one thread %.2f M values a second, %d threads %.2f M a core: %.2f\n", one / 1e6,
                threads, many / 1e6, many / one);
  }
}
