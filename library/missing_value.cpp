// The value that stands for "no value".

#include "abi/missing_value.h"

#include "include/jwnls/jwnls.h"

extern "C" {

double jwnls_missing(void) { return jwnls::missing_value(); }
int jwnls_is_missing(double value) { return jwnls::is_missing(value) ? 1 : 0; }

}  // extern "C"
