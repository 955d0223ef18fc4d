// The quick way to find out which name of a list a text goes on with: several units and several
// names at once. It knows ASCII letters' cases only, and leaves everything else undecided.

#ifndef JWNLS_MODULE_DTPARSE_NAME_MATCH_H_
#define JWNLS_MODULE_DTPARSE_NAME_MATCH_H_

#include <cstddef>
#include <cstdint>

#include "module/dtparse/name_lists.h"
#include "module/record/locale_record.h"

namespace jwnls {

/// What became of the search, in one register.
class NameMatch {
 public:
  static constexpr NameMatch undecided() noexcept { return NameMatch(-2); }
  static constexpr NameMatch none() noexcept { return NameMatch(-1); }
  static constexpr NameMatch of(int index, std::size_t units) noexcept {
    return NameMatch(index << 8 | static_cast<std::int32_t>(units));
  }

  bool is_undecided() const noexcept { return bits_ == -2; }  // only read_name can tell
  bool is_none() const noexcept { return bits_ == -1; }       // no name of either list
  std::int32_t index() const noexcept { return bits_ >> 8; }  // in its list
  std::size_t units() const noexcept { return static_cast<std::size_t>(bits_ & 0xFF); }  // read

 private:
  constexpr explicit NameMatch(std::int32_t bits) noexcept : bits_(bits) {}

  std::int32_t bits_;
};
static_assert(text_entry_capacity <= 0xFF);

/// Looks for the first entry that the text goes on with in the first list, then in the second.
///   start    where the text, or what was read of it, begins: units from here on may be looked at
///   at, end  where the name begins, and the end of the text; not the same
template <typename Unit>
NameMatch match_name(const Unit* start, const Unit* at, const Unit* end, const LocaleRecord&,
                     const NameList (&lists)[2]) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DTPARSE_NAME_MATCH_H_
