/* How the databases' jwnls_detect() shows a verdict. */

#ifndef JWNLS_BINDINGS_SQL_VERDICTS_H_
#define JWNLS_BINDINGS_SQL_VERDICTS_H_

#include <stddef.h>
#include <stdint.h>

#include "jwnls/jwnls.h"

static const char* const verdicts[] = {"",     "proved",    "ambiguous", "contradiction",
                                       "none", "any locale"};

/* The number of the text that shows the verdict. */
static inline size_t example_of(const jwnls_detected_kind* found) {
  switch (found->verdict) {
    case JWNLS_PROVED:
      return found->deciding;
    case JWNLS_AMBIGUOUS:
      return found->witness;
    case JWNLS_CONTRADICTION:
      return found->first_other;
    case JWNLS_NONE:
      return found->first_dirty;
    default:
      return SIZE_MAX;
  }
}

#endif /* JWNLS_BINDINGS_SQL_VERDICTS_H_ */
