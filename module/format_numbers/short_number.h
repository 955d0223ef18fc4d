// A number of a few units with its place in the field: what the width-bound kinds and the special
// values make.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_SHORT_NUMBER_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_SHORT_NUMBER_H_

#include "module/placement/field.h"

namespace jwnls {

struct ShortNumber {
  static constexpr int longest = 32;  // units

  Placement placement;
  char16_t body[longest + 32];  // and what whole blocks write behind it

  ShortNumber() noexcept {}  // the body stays as it is: only what is written is read
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_SHORT_NUMBER_H_
