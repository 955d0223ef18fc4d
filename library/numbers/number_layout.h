// What a layout of numbers holds beside its options: how they are read and how they are written.

#ifndef JWNLS_LIBRARY_NUMBERS_NUMBER_LAYOUT_H_
#define JWNLS_LIBRARY_NUMBERS_NUMBER_LAYOUT_H_

#include "library/numbers/number_style.h"
#include "library/numbers/number_syntax.h"

namespace jwnls::library {

struct NumberLayout {
  NumberSyntax syntax;
  NumberStyle style = plain_style;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_NUMBER_LAYOUT_H_
