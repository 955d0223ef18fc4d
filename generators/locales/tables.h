// The C++ sources that the generator writes.

#ifndef JWNLS_GENERATORS_LOCALES_TABLES_H_
#define JWNLS_GENERATORS_LOCALES_TABLES_H_

#include <iosfwd>
#include <vector>

#include "generators/locales/cldr_locale.h"

namespace jwnls::generator {

/// Writes the locale database's tables (extensions/locale_database/locale_tables.h) to `out` and
/// their counts to `counts`. Throws std::runtime_error when a text is too long for its entry or a
/// table too long for its indexes.
void write_database_tables(const std::vector<CldrLocale>& locales, std::ostream& out,
                           std::ostream& counts);

/// Writes the locale names' tables (host/locales/name_tables.h) likewise.
void write_name_tables(const std::vector<CldrLocale>& locales, std::ostream& out,
                       std::ostream& counts);

}  // namespace jwnls::generator

#endif  // JWNLS_GENERATORS_LOCALES_TABLES_H_
