// What a layout of numbers holds beside its options: how they are read and how they are written.

#ifndef JWNLS_LIBRARY_LAYOUTS_NUMBER_LAYOUT_H_
#define JWNLS_LIBRARY_LAYOUTS_NUMBER_LAYOUT_H_

#include "library/layouts/options.h"
#include "library/numbers/number_style.h"
#include "library/numbers/number_syntax.h"
#include "library/process/process.h"

namespace jwnls::library {

struct NumberLayout {
  NumberSyntax syntax;
  NumberStyle style;
};

/// Of the kinds number and integer.
[[nodiscard]] inline NumberLayout number_layout(const Locale& locale, const Options& options,
                                                bool integers) noexcept {
  const NumberData data = number_data(*locale.record);
  return {number_syntax(data, options, integers), number_style(data, options, locale.handle)};
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LAYOUTS_NUMBER_LAYOUT_H_
