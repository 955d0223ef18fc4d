// Columns of 64 values a round, and their detection.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/instructions/counted.h"

namespace jwnls::bench {
namespace {

constexpr std::size_t values = 64;

// Texts as Arrow holds them, that `write(i, out, room, length)` writes.
struct Texts {
  template <typename Write>
  explicit Texts(Write write) {
    std::array<char, 128> out;
    for (std::size_t i = 0; i < values; ++i) {
      std::size_t length = 0;
      check(write(static_cast<std::int32_t>(i), out.data(), out.size(), &length));
      bytes.append(out.data(), length);
      offsets.push_back(static_cast<std::int32_t>(bytes.size()));
    }
    all.size = sizeof all;
    all.count = values;
    all.bytes = bytes.data();
    all.offsets = offsets.data();
  }
  Texts(const Texts&) = delete;
  Texts& operator=(const Texts&) = delete;

  std::string bytes;
  std::vector<std::int32_t> offsets = {0};
  jwnls_texts all = {};
};

}  // namespace

void count_columns() {
  const jwnls_layout* amounts = layout("de_DE", JWNLS_NUMBER, "decimals=2");
  const jwnls_layout* dates = layout("de_DE", JWNLS_DATE);
  const Texts number_texts(
      [=](std::int32_t i, auto... to) { return jwnls_write_number(amounts, amount(i), to...); });
  const Texts date_texts(
      [=](std::int32_t i, auto... to) { return jwnls_write_date(dates, day(i), to...); });
  std::array<double, values> numbers;
  std::array<std::int32_t, values> days;
  std::vector<char> room(64 * values);
  std::vector<std::int32_t> ends(values + 1);
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = room.data();
  column.room = room.size();
  column.offsets = ends.data();
  count("column of 64 numbers in", [&](std::int32_t) {
    (void)jwnls_read_numbers(amounts, &number_texts.all, numbers.data(), nullptr, nullptr);
  });
  count("column of 64 numbers out",
        [&](std::int32_t) { (void)jwnls_write_numbers(amounts, numbers.data(), values, &column); });
  count("column of 64 dates in", [&](std::int32_t) {
    (void)jwnls_read_dates(dates, &date_texts.all, days.data(), nullptr, nullptr);
  });
  count("column of 64 dates out",
        [&](std::int32_t) { (void)jwnls_write_dates(dates, days.data(), values, &column); });
  count("column of 64 decimals in", [&](std::int32_t) {
    (void)jwnls_read_decimals(amounts, &number_texts.all, &column, nullptr);
  });
  const auto detect = [](const char* name, const jwnls_texts& texts, const char* kinds) {
    count(name, [&](std::int32_t) {
      jwnls_detection* detection = nullptr;
      check(jwnls_detect(&texts, kinds, "de_DE,en_US,fr_FR", &detection, nullptr));
      jwnls_detection_close(detection);
    });
  };
  detect("detect 64 numbers", number_texts.all, "number");
  detect("detect 64 dates", date_texts.all, "date");
}

}  // namespace jwnls::bench
