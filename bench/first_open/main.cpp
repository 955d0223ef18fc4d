// What the first layout of a process costs, and one of every further locale: in a process that has
// done nothing else, one of the two contestants.
//
//   jwnls_first_open jwnls|icu

#include <unicode/udat.h>
#include <unicode/unum.h>

#include <chrono>
#include <cstdio>
#include <cstring>

#include "include/jwnls/jwnls.h"

namespace {

constexpr const char* locales[] = {"de_DE", "fr_FR", "pl_PL", "en_IN", "ja_JP", "ru_RU", "tr_TR",
                                   "hi_IN", "ar_EG", "pt_BR", "sv_SE", "fi_FI", "cs_CZ", "el_GR",
                                   "he_IL", "th_TH", "ko_KR", "hu_HU", "lt_LT", "vi_VN"};

double microseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::micro>(time).count();
}

// A number and a date layout; a number and a date formatter.
bool open_layouts(const char* locale) {
  for (const int kind : {JWNLS_NUMBER, JWNLS_DATE}) {
    jwnls_layout* layout = nullptr;
    if (jwnls_open(locale, kind, "", &layout, nullptr) != JWNLS_OK) return false;
    jwnls_close(layout);
  }
  return true;
}

bool open_formatters(const char* locale) {
  UErrorCode error = U_ZERO_ERROR;
  unum_close(unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &error));
  udat_close(udat_open(UDAT_NONE, UDAT_MEDIUM, locale, u"UTC", 3, nullptr, 0, &error));
  return U_SUCCESS(error);
}

}  // namespace

int main(int argument_count, char** arguments) {
  if (argument_count != 2) return 2;
  const auto open = std::strcmp(arguments[1], "icu") == 0 ? open_formatters : open_layouts;
  const auto start = std::chrono::steady_clock::now();
  if (!open(locales[0])) return 1;
  const auto first = std::chrono::steady_clock::now();
  int further = 0;
  for (const char* locale : locales) {
    if (locale == locales[0]) continue;
    if (!open(locale)) return 1;
    ++further;
  }
  const auto end = std::chrono::steady_clock::now();
  std::printf("%s: first %.0f us, every further locale %.1f us\n", arguments[1],
              microseconds(first - start), microseconds(end - first) / further);
  return 0;
}
