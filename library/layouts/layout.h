// What a layout holds: everything that reading and writing need, found out once at its opening.

#ifndef JWNLS_LIBRARY_LAYOUTS_LAYOUT_H_
#define JWNLS_LIBRARY_LAYOUTS_LAYOUT_H_

#include <memory>
#include <string>

#include "abi/locale_handle.h"
#include "include/jwnls/jwnls.h"
#include "library/dates/date_layout.h"
#include "library/moments/time_layout.h"
#include "library/numbers/number_layout.h"
#include "library/options/options.h"
#include "library/process/process.h"
#include "library/zones/zone.h"

struct jwnls_layout {
  int kind = 0;
  jwnls::library::Options options;
  const jwnls::library::Locale* locale = nullptr;           // stays as long as the process, or
                                                            // is a passing one
  std::shared_ptr<const jwnls::library::Zone> zone;         // of "zone="; null: none
  std::unique_ptr<const jwnls::library::DateLayout> dates;  // of dates, datetimes and instants
  const jwnls::library::TimeLayout* times = nullptr;        // of times, datetimes and instants
  std::string currency;                 // of amounts: the ISO code of the layout's own
  jwnls::library::NumberLayout number;  // of numbers and integers
  std::string description;              // "de_DE number decimals=2"

  [[nodiscard]] bool is(int one_kind) const noexcept { return kind == one_kind; }
};

namespace jwnls::library {

/// A layout of an open locale, which has to outlive it. Throws a Failure and bad_alloc.
[[nodiscard]] std::unique_ptr<jwnls_layout> make_layout(const Locale& locale, int kind,
                                                        const Options& options);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LAYOUTS_LAYOUT_H_
