// Dates, times and datetimes in, against strptime, date and ICU.

#ifndef JWNLS_BENCH_DATE_READING_H_
#define JWNLS_BENCH_DATE_READING_H_

namespace jwnls::bench {

void enter_date_reading();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_DATE_READING_H_
