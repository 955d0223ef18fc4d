// The symbols that a locale's numbers show, in units of the output.

#ifndef JWNLS_MODULE_PLACEMENT_SYMBOLS_H_
#define JWNLS_MODULE_PLACEMENT_SYMBOLS_H_

#include "abi/locale_record.h"

namespace jwnls {

/// The decimal and the grouping symbol of a record. In 8-bit text they are one unit only where they
/// are narrow; the others take several bytes each.
template <typename Unit>
struct Symbols {
  const LocaleRecord& record;

  Unit decimal() const noexcept { return static_cast<Unit>(record.decimal_symbol); }
  Unit grouping() const noexcept { return static_cast<Unit>(record.grouping_symbol); }

  /// Whether every symbol that a number shows is one unit of the output.
  bool narrow(bool grouped) const noexcept {
    return is_narrow(record.decimal_symbol | (grouped ? record.grouping_symbol : 0));
  }
  /// The same of a number without a decimal symbol.
  bool narrow_grouping() const noexcept { return is_narrow(record.grouping_symbol); }

 private:
  static constexpr bool is_narrow(int symbols) noexcept {
    return sizeof(Unit) == 2 || symbols < 0x80;
  }
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_SYMBOLS_H_
