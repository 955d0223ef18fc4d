// The services that read dates, times and periods, by what they read.

#ifndef JWNLS_TESTS_SUPPORT_READING_CALL_H_
#define JWNLS_TESTS_SUPPORT_READING_CALL_H_

#include "abi/locale_handle.h"

namespace jwnls::test {

enum class ReadingService { date, period, time };

template <typename Unit>
ReadDate<Unit>* reading_slot(const ServiceTable& slots, ReadingService service) {
  if constexpr (sizeof(Unit) == 2) {
    return service == ReadingService::date     ? slots.read_date
           : service == ReadingService::period ? slots.read_period
                                               : slots.read_time;
  } else {
    return service == ReadingService::date     ? slots.read_date_8bit
           : service == ReadingService::period ? slots.read_period_8bit
                                               : slots.read_time_8bit;
  }
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_READING_CALL_H_
