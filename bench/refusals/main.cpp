// What a text that is not read costs beside one that is: in every locale and for every kind, the
// texts that the locale writes, and each of them spoiled in some fifty ways.
//
//   jwnls_refusals [LOCALE...]

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "include/jwnls/jwnls.h"

namespace {

constexpr std::int64_t second = 1'000'000;
constexpr std::int64_t moments[] = {(17788 * 86400LL + 52205) * second,
                                    (17627 * 86400LL + 4205) * second};

constexpr double numbers[] = {1234567.89, -1234.5, 0.25, 98.7};

bool is_number(int kind) {
  return kind == JWNLS_NUMBER || kind == JWNLS_AMOUNT || kind == JWNLS_PERCENT;
}

bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }
bool is_ascii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

int read(const jwnls_layout* layout, int kind, const std::string& text) {
  std::int64_t microseconds = 0;
  std::int32_t days = 0;
  const char* const bytes = text.data();
  double number = 0;
  if (is_number(kind)) return jwnls_read_number(layout, bytes, text.size(), &number, nullptr);
  if (kind == JWNLS_DATE) return jwnls_read_date(layout, bytes, text.size(), &days, nullptr);
  if (kind == JWNLS_TIME) {
    return jwnls_read_time(layout, bytes, text.size(), &microseconds, nullptr);
  }
  return jwnls_read_datetime(layout, bytes, text.size(), &microseconds, nullptr);
}

// One of the values that a kind has.
std::string write(const jwnls_layout* layout, int kind, std::size_t index) {
  char text[400];
  std::size_t length = 0;
  constexpr std::int64_t day = 86400 * second;
  const std::int64_t moment = moments[index % std::size(moments)];
  const auto days = static_cast<std::int32_t>(moment / day);
  const auto give = [&] {
    if (is_number(kind)) {
      return jwnls_write_number(layout, numbers[index], text, sizeof text, &length);
    }
    if (kind == JWNLS_DATE) return jwnls_write_date(layout, days, text, sizeof text, &length);
    if (kind == JWNLS_TIME) {
      return jwnls_write_time(layout, moment % day, text, sizeof text, &length);
    }
    return jwnls_write_datetime(layout, moment, text, sizeof text, &length);
  };
  const int code = give();
  return code == JWNLS_OK ? std::string(text, length) : std::string();
}

// Nanoseconds a call, the least of some rounds.
double cost(const jwnls_layout* layout, int kind, const std::string& text) {
  using Clock = std::chrono::steady_clock;
  constexpr int rounds = 5;
  constexpr int calls = 60;
  double least = 1e9;
  int code = 0;
  for (int round = 0; round < rounds; ++round) {
    const auto begin = Clock::now();
    for (int call = 0; call < calls; ++call) code |= read(layout, kind, text);
    const std::chrono::duration<double, std::nano> time = Clock::now() - begin;
    least = std::min(least, time.count() / calls);
  }
  return code < 0 ? 0 : least;
}

struct Piece {
  std::size_t begin, end;
};

std::vector<Piece> numbers_of(const std::string& text) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!is_digit(text[at])) continue;
    const std::size_t begin = at;
    while (at < text.size() && is_digit(text[at])) ++at;
    pieces.push_back({begin, at});
  }
  return pieces;
}

char other_mark(char mark) {
  constexpr std::string_view marks = "./:.  _~";
  const std::size_t at = marks.find(mark);
  return at == std::string_view::npos || at % 2 != 0 ? '~' : marks[at + 1];
}

std::vector<std::string> spoiled(const std::string& text, int kind) {
  std::vector<std::string> all;
  const auto replace = [&](Piece piece, const char* with) {
    all.push_back(std::string(text).replace(piece.begin, piece.end - piece.begin, with));
  };
  for (const char* behind : {" foo", "x", " жуй", "漢", " 12", ":4:5", ";", " - 5"}) {
    all.push_back(text + behind);
  }
  for (const char* before : {"foo ", "x", "жуй ", "n/a ", "\""}) all.push_back(before + text);
  const std::vector<Piece> numbers = numbers_of(text);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    for (const char* with : {"99", "123", ""}) replace(numbers[i], with);
    const std::size_t gap = numbers[i].end;
    if (i + 1 == numbers.size() || !is_ascii(text[gap])) continue;
    const char mark[] = {other_mark(text[gap]), '\0'};
    replace({gap, gap + 1}, mark);
  }
  const auto is_letter = [](char byte) { return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z'; };
  const auto letter = std::find_if(text.begin(), text.end(), is_letter);
  if (letter != text.end()) {
    const auto at = static_cast<std::size_t>(letter - text.begin());
    replace({at, at + 1}, "q");
    replace({at + 1, at + 1}, "ж");
  }
  const auto other = std::find_if_not(text.begin(), text.end(), is_ascii);
  if (other != text.end()) {
    const auto at = static_cast<std::size_t>(other - text.begin());
    std::size_t end = at + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) ++end;
    for (const char* with : {"ж", ""}) replace({at, end}, with);
    replace({at, at + 1}, "q");
  }
  if (!is_number(kind) && kind != JWNLS_DATE) {
    for (const char* behind : {"+99:00", " +99:00", "+1", " CET", " Europe/Berlin", "Zx"}) {
      all.push_back(text + behind);
    }
  }
  for (const char* foreign : {"n/a", "1:2:3:4:5", "25:00:00", "15.03.2024 foo", "x12:34"}) {
    all.emplace_back(foreign);
  }
  return all;
}

struct Mean {
  double sum = 0;
  std::size_t count = 0;
  void add(double value) {
    sum += value;
    ++count;
  }
  [[nodiscard]] double value() const { return sum / static_cast<double>(count); }
};

struct Outcome {
  std::string locale;
  double ratio;
  std::size_t texts, above;  // single ones that cost more than three times what is read
};

void measure(const std::string& locale, int kind, std::vector<Outcome>& outcomes) {
  Mean of_read, of_refused;
  std::vector<double> costs;
  std::vector<std::string> seen;
  const bool has_styles = !is_number(kind) && kind != JWNLS_TIME;
  for (const char* style : {"short", "medium", "long", "full"}) {
    std::string options = has_styles ? std::string("style=") + style : "";
    if (kind == JWNLS_INSTANT) options += " zone=Europe/Berlin";
    jwnls_layout* layout = nullptr;
    if (jwnls_open(locale.c_str(), kind, options.c_str(), &layout, nullptr) != JWNLS_OK) continue;
    const std::size_t values = is_number(kind) ? std::size(numbers) : std::size(moments);
    for (std::size_t value = 0; value < values; ++value) {
      const std::string text = write(layout, kind, value);
      if (std::find(seen.begin(), seen.end(), text) != seen.end()) continue;
      seen.push_back(text);
      if (read(layout, kind, text) != JWNLS_OK) continue;
      of_read.add(cost(layout, kind, text));
      for (const std::string& each : spoiled(text, kind)) {
        if (read(layout, kind, each) == JWNLS_OK) continue;
        costs.push_back(cost(layout, kind, each));
        of_refused.add(costs.back());
      }
    }
    jwnls_close(layout);
    if (!has_styles) break;
  }
  if (of_read.count == 0 || costs.empty()) return;
  const double limit = 3 * of_read.value();
  const auto above =
      std::count_if(costs.begin(), costs.end(), [limit](double each) { return each > limit; });
  outcomes.push_back({locale, of_refused.value() / of_read.value(), costs.size(),
                      static_cast<std::size_t>(above)});
}

}  // namespace

int main(int argument_count, char** arguments) {
  std::vector<std::string> locales(arguments + 1, arguments + argument_count);
  if (locales.empty()) {
    const auto add = [](void* list, const jwnls_locale_info* info) {
      static_cast<std::vector<std::string>*>(list)->emplace_back(info->name);
      return 0;
    };
    jwnls_locales(add, &locales);
  }
  for (const int kind : {JWNLS_NUMBER, JWNLS_AMOUNT, JWNLS_PERCENT, JWNLS_DATE, JWNLS_TIME,
                         JWNLS_DATETIME, JWNLS_INSTANT}) {
    std::vector<Outcome> outcomes;
    for (const std::string& locale : locales) measure(locale, kind, outcomes);
    if (outcomes.empty()) continue;
    std::size_t texts = 0;
    std::size_t above = 0;
    for (const Outcome& each : outcomes) {
      texts += each.texts;
      above += each.above;
    }
    std::sort(outcomes.begin(), outcomes.end(),
              [](const Outcome& a, const Outcome& b) { return a.ratio < b.ratio; });
    const auto at = [&](double share) {
      return outcomes[static_cast<std::size_t>(share * static_cast<double>(outcomes.size() - 1))];
    };
    std::printf("%-9s %zu locales, %zu refused texts; refused/read: median %.2f, nine tenths %.2f",
                jwnls_kind_name(kind), outcomes.size(), texts, at(0.5).ratio, at(0.9).ratio);
    std::printf(", most %.2f (%s); single texts above 3: %.1f %%;", at(1).ratio,
                at(1).locale.c_str(),
                100.0 * static_cast<double>(above) / static_cast<double>(texts));
    for (const Outcome& each : outcomes) {
      if (each.ratio > 3) std::printf(" %s %.2f", each.locale.c_str(), each.ratio);
    }
    std::printf("\n");
  }
  return 0;
}
