#include <unicode/udat.h>
#include <unicode/unum.h>

#include "bench/first_open/contestant.h"

bool open_number_and_date(const char* locale) {
  UErrorCode error = U_ZERO_ERROR;
  unum_close(unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &error));
  udat_close(udat_open(UDAT_NONE, UDAT_MEDIUM, locale, u"UTC", 3, nullptr, 0, &error));
  return U_SUCCESS(error);
}
