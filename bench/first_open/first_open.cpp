// What the first locale of a process costs, and one of every further locale: in a process that has
// done nothing else, one of the contestants. Each is a program of its own, so that none looks
// through the names of the other's libraries; compare.sh runs them in turn.
//   PROGRAM [first]     with a word, the first locale alone: for the time of the whole process

#include <chrono>
#include <cstdio>

#include "bench/first_open/contestant.h"

namespace {

constexpr const char* locales[] = {"de_DE", "fr_FR", "pl_PL", "en_IN", "ja_JP", "ru_RU", "tr_TR",
                                   "hi_IN", "ar_EG", "pt_BR", "sv_SE", "fi_FI", "cs_CZ", "el_GR",
                                   "he_IL", "th_TH", "ko_KR", "hu_HU", "lt_LT", "vi_VN"};

double microseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::micro>(time).count();
}

}  // namespace

int main(int count, char** /*words*/) {
  const auto start = std::chrono::steady_clock::now();
  if (!open_number_and_date(locales[0])) return 1;
  const auto first = std::chrono::steady_clock::now();
  if (count > 1) return 0;
  int further = 0;
  for (const char* locale : locales) {
    if (locale == locales[0]) continue;
    if (!open_number_and_date(locale)) return 1;
    ++further;
  }
  const auto end = std::chrono::steady_clock::now();
  std::printf("%.1f %.1f\n", microseconds(first - start), microseconds(end - first) / further);
  return 0;
}
