#include "bindings/sqlite/iso_text.h"

#include <math.h>
#include <string.h>

/* Julian days begin at noon; 1970-01-01 begins half a day behind this one. */
static const double julian_day_1970 = 2440587.5;

/* Years of the proleptic Gregorian calendar that four digits write. */
static const int32_t first_day = -719528; /* 0000-01-01 */
static const int32_t last_day = 2932896;  /* 9999-12-31 */

static char* write_digits(char* out, int value, int digits) {
  for (int i = digits - 1; i >= 0; --i, value /= 10) out[i] = (char)('0' + value % 10);
  return out + digits;
}

/* Counts from 0000-03-01 in eras of 400 years, so that a leap day ends a year. */
static char* write_date(int32_t days, char* out) {
  const int32_t from_march = days + 719468 + 146097; /* an era more, so that nothing is negative */
  const int32_t era = from_march / 146097;
  const int32_t day_of_era = from_march - era * 146097;
  const int32_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const int32_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const int32_t shifted_month = (5 * day_of_year + 2) / 153; /* 0 is March */
  const int32_t month = shifted_month < 10 ? shifted_month + 3 : shifted_month - 9;
  const int32_t year = year_of_era + (era - 1) * 400 + (month <= 2);
  out = write_digits(out, year, year > 9999 ? 5 : 4);
  *out++ = '-';
  out = write_digits(out, month, 2);
  *out++ = '-';
  return write_digits(out, day_of_year - (153 * shifted_month + 2) / 5 + 1, 2);
}

static char* write_time(int64_t microseconds, char* out) {
  const int seconds = (int)(microseconds / 1000000);
  out = write_digits(out, seconds / 3600, 2);
  *out++ = ':';
  out = write_digits(out, seconds / 60 % 60, 2);
  *out++ = ':';
  out = write_digits(out, seconds % 60, 2);
  if (microseconds % 1000000 != 0) {
    *out++ = '.';
    out = write_digits(out, (int)(microseconds % 1000000), 6);
  }
  return out;
}

static int ended(char* end, const char* out) {
  *end = 0;
  return (int)(end - out);
}

int32_t day_of(int64_t microseconds) {
  return (int32_t)((microseconds - (microseconds < 0 ? day_microseconds - 1 : 0)) /
                   day_microseconds);
}

int iso_date(int32_t days, char out[iso_text_room]) { return ended(write_date(days, out), out); }

int iso_time(int64_t microseconds, char out[iso_text_room]) {
  return ended(write_time(microseconds, out), out);
}

int iso_moment(int64_t microseconds, char out[iso_text_room]) {
  const int32_t day = day_of(microseconds);
  char* end = write_date(day, out);
  *end++ = ' ';
  return ended(write_time(microseconds - day * day_microseconds, end), out);
}

typedef struct Cursor {
  const char* at;
  const char* end;
} Cursor;

static bool take(Cursor* in, char c) {
  if (in->at == in->end || *in->at != c) return false;
  ++in->at;
  return true;
}

/* So many digits, at most so much. */
static bool take_number(Cursor* in, int digits, int most, int* value) {
  if (in->end - in->at < digits) return false;
  *value = 0;
  for (int i = 0; i < digits; ++i) {
    const char c = *in->at++;
    if (c < '0' || c > '9') return false;
    *value = *value * 10 + (c - '0');
  }
  return *value <= most;
}

static bool take_date(Cursor* in, int32_t* days) {
  static const char month_days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int year = 0;
  int month = 0;
  int day = 0;
  if (!take_number(in, 4, 9999, &year) || !take(in, '-') || !take_number(in, 2, 12, &month) ||
      !take(in, '-') || !take_number(in, 2, 31, &day) || month == 0 || day == 0) {
    return false;
  }
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  if (day > month_days[month - 1] + (month == 2 && leap)) return false;
  const int march_year = year - (month <= 2) + 400;
  const int month_from_march = month > 2 ? month - 3 : month + 9;
  *days = march_year * 365 + march_year / 4 - march_year / 100 + march_year / 400 +
          (153 * month_from_march + 2) / 5 + day - 1 - 146097 - 719468;
  return true;
}

static bool take_time(Cursor* in, int64_t* microseconds) {
  int hour = 0;
  int minute = 0;
  int second = 0;
  int64_t fraction = 0;
  if (!take_number(in, 2, 23, &hour) || !take(in, ':') || !take_number(in, 2, 59, &minute)) {
    return false;
  }
  if (take(in, ':')) {
    if (!take_number(in, 2, 59, &second)) return false;
    if (take(in, '.')) {
      int64_t place = 100000;
      const char* const from = in->at;
      for (; in->at < in->end && *in->at >= '0' && *in->at <= '9'; ++in->at, place /= 10) {
        fraction += (*in->at - '0') * place;
      }
      if (in->at == from) return false;
    }
  }
  *microseconds = ((hour * 60 + minute) * 60 + second) * INT64_C(1000000) + fraction;
  return true;
}

static bool take_offset(Cursor* in, int64_t* microseconds) {
  if (take(in, 'Z')) return true;
  const bool west = take(in, '-');
  if (!west && !take(in, '+')) return true;
  int hours = 0;
  int minutes = 0;
  if (!take_number(in, 2, 15, &hours) || !take(in, ':') || !take_number(in, 2, 59, &minutes)) {
    return false;
  }
  *microseconds -= (west ? -1 : 1) * (hours * 60 + minutes) * INT64_C(60000000);
  return true;
}

bool moment_of_iso(const char* text, size_t length, bool offset, int64_t* microseconds) {
  Cursor in = {text, text + length};
  int32_t days = 0;
  int64_t time = 0;
  if (!take_date(&in, &days)) return false;
  if (take(&in, ' ') || take(&in, 'T')) {
    if (!take_time(&in, &time) || (offset && !take_offset(&in, &time))) return false;
  }
  *microseconds = days * day_microseconds + time;
  return in.at == in.end;
}

bool time_of_iso(const char* text, size_t length, int64_t* microseconds) {
  Cursor in = {text, text + length};
  return take_time(&in, microseconds) && in.at == in.end;
}

bool moment_of_count(double count, int64_t unit, int64_t* microseconds) {
  const double exact = count * (double)unit;
  if (!(exact >= (double)(first_day * day_microseconds)) ||
      !(exact < (double)((last_day + 1) * day_microseconds))) {
    return false;
  }
  *microseconds = llround(exact);
  return true;
}

double julian_day_of(int64_t microseconds) {
  const int32_t day = day_of(microseconds);
  return julian_day_1970 + day +
         (double)(microseconds - day * day_microseconds) / (double)day_microseconds;
}

/* A double of today's Julian days has steps of 40 microseconds: as SQLite's own functions, the
   nearest millisecond is meant. */
bool moment_of_julian_day(double julian_day, int64_t* microseconds) {
  if (!moment_of_count(julian_day - julian_day_1970, day_microseconds, microseconds)) return false;
  *microseconds = llround((double)*microseconds / 1000) * 1000;
  return true;
}
