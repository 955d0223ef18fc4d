#include "bench/contest.h"
#include "bench/date_formatting.h"
#include "bench/date_reading.h"
#include "bench/handles.h"
#include "bench/library_dates.h"
#include "bench/library_detect.h"
#include "bench/library_numbers.h"
#include "bench/number_formatting.h"
#include "bench/number_reading.h"

int main(int argc, char** argv) {
  using namespace jwnls::bench;
  if (!start_host()) return 3;
  enter_date_formatting();
  enter_date_reading();
  enter_number_formatting();
  enter_number_reading();
  enter_library_numbers();
  enter_handle_creation();
  enter_library_dates();
  enter_library_detect();
  return run_contests(argc, argv);
}
