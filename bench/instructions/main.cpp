#include "bench/instructions/counted.h"

int main() {
  jwnls::bench::count_services();
  jwnls::bench::count_reading();
  jwnls::bench::count_writing();
  jwnls::bench::count_columns();
}
