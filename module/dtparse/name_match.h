// The quick way to find out which name of a list a text goes on with: several units and several
// names at once. It knows ASCII letters' cases only, and leaves everything else undecided.

#ifndef JWNLS_MODULE_DTPARSE_NAME_MATCH_H_
#define JWNLS_MODULE_DTPARSE_NAME_MATCH_H_

#include <cstdint>

#include "module/dtparse/name_lists.h"
#include "module/record/locale_record.h"

namespace jwnls {

/// What became of the search, in two registers.
struct NameMatch {
  std::int64_t index;  // in its list, or one of those below
  std::int64_t units;  // of the name, when there is one

  static constexpr std::int64_t none = -1;       // no name of either list
  static constexpr std::int64_t undecided = -2;  // only read_name can tell
};

/// Looks for the first entry that the text goes on with in the first list, then in the second.
///   start    where the text, or what was read of it, begins: units from here on may be looked at
///   at, end  where the name begins, and the end of the text; not the same
template <typename Unit>
NameMatch match_name(const Unit* start, const Unit* at, const Unit* end, const LocaleRecord&,
                     const NameList (&lists)[2]) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DTPARSE_NAME_MATCH_H_
