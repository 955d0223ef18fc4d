// What jwnls_first_open and its peers do.

#ifndef JWNLS_BENCH_FIRST_OPEN_CONTESTANT_H_
#define JWNLS_BENCH_FIRST_OPEN_CONTESTANT_H_

/// Opens a number and a date layout of a locale, or formatters of both, and closes them. False when
/// that fails.
bool open_number_and_date(const char* locale);

#endif  // JWNLS_BENCH_FIRST_OPEN_CONTESTANT_H_
