// What the sample extension's factory makes.

#ifndef JWNLS_TESTS_HOST_LOADING_EXTENSIONS_SAMPLE_EXTENSION_H_
#define JWNLS_TESTS_HOST_LOADING_EXTENSIONS_SAMPLE_EXTENSION_H_

#include "abi/host_tables.h"

struct SampleObject {
  jwnls::Kernel* library_kernel;  // what jwextver was given last
  int number;                     // 1 for the first object of the library
};

#endif  // JWNLS_TESTS_HOST_LOADING_EXTENSIONS_SAMPLE_EXTENSION_H_
