#include "include/jwnls/jwnls.h"

#include <initializer_list>

#include "bench/first_open/contestant.h"

bool open_number_and_date(const char* locale) {
  for (const int kind : {JWNLS_NUMBER, JWNLS_DATE}) {
    jwnls_layout* layout = nullptr;
    if (jwnls_open(locale, kind, "", &layout, nullptr) != JWNLS_OK) return false;
    jwnls_close(layout);
  }
  return true;
}
