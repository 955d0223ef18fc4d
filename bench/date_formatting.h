// Dates, times and datetimes out, against strftime_l, {fmt}, absl, date and ICU.

#ifndef JWNLS_BENCH_DATE_FORMATTING_H_
#define JWNLS_BENCH_DATE_FORMATTING_H_

namespace jwnls::bench {

void enter_date_formatting();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_DATE_FORMATTING_H_
