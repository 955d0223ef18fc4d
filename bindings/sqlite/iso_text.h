/* Days and moments as SQLite's own date functions write and read them, in ISO 8601, and as numbers.
   Days count from 1970-01-01, microseconds from its midnight. */

#ifndef JWNLS_BINDINGS_SQLITE_ISO_TEXT_H_
#define JWNLS_BINDINGS_SQLITE_ISO_TEXT_H_

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

enum { iso_text_room = 64 };
static const int64_t day_microseconds = INT64_C(86400000000);

/* "2024-03-15", "14:30:05", "2024-03-15 14:30:05", with six digits of a second when they are not
   all zero. Terminated; gives the length. */
int iso_date(int32_t days, char out[iso_text_room]);
int iso_time(int64_t microseconds, char out[iso_text_room]);
int iso_moment(int64_t microseconds, char out[iso_text_room]);

/* moment = date [[" " | "T"] time [offset]]    date = YYYY-MM-DD    time = HH:MM[:SS[.digits]]
   offset = "Z" | ("+" | "-") HH:MM, only with `offset`; it is taken off. A date alone is its
   midnight. Digits of a second behind the sixth are cut off. False: no such text. */
bool moment_of_iso(const char* text, size_t length, bool offset, int64_t* microseconds);
bool time_of_iso(const char* text, size_t length, int64_t* microseconds);

/* As a Julian day, and back, to the nearest millisecond. False: outside the years 0 to 9999. */
double julian_day_of(int64_t microseconds);
bool moment_of_julian_day(double julian_day, int64_t* microseconds);
/* Days and seconds since 1970 likewise; `unit` is the microseconds of one. */
bool moment_of_count(double count, int64_t unit, int64_t* microseconds);

int32_t day_of(int64_t microseconds);

#endif /* JWNLS_BINDINGS_SQLITE_ISO_TEXT_H_ */
