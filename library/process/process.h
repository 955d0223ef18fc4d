// What the process has once: the host with its modules, every locale that was opened, the zones.
//
// It is made by the first call that needs it and stays: no exit handler takes it away, so threads
// may format while the process ends.

#ifndef JWNLS_LIBRARY_PROCESS_PROCESS_H_
#define JWNLS_LIBRARY_PROCESS_PROCESS_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_handle.h"
#include "library/zones/zone.h"

namespace jwnls::library {

/// One locale, opened once for the life of the process; every layout of it shares it.
struct Locale {
  std::string name;                      // canonical: "de_DE"
  LocaleHandle* handle = nullptr;        //
  const LocaleRecord* record = nullptr;  // the handle's
  bool beyond_bmp =
      false;  // some text has characters beyond U+FFFF, which 8-bit services do not encode
  bool passing = false;  // a LocaleViewer's: nothing may be kept that points to it
};

/// The locale of a name as people write it. Throws a Failure and bad_alloc. Any thread.
const Locale& open_locale(std::string_view name);

/// Locales one after the other, for a look at their data: without handles, so that nothing is read
/// or written with them, and nothing of them stays.
class LocaleViewer {
 public:
  /// The locale of a canonical name, until the next one. Throws a Failure and bad_alloc. One
  /// thread.
  const Locale& look_at(const std::string& name);

 private:
  std::unique_ptr<LocaleRecord> record_;
  Locale locale_;
};

/// The zone of a name; empty: the system's. Throws a Failure and bad_alloc. Any thread.
std::shared_ptr<const Zone> open_zone(std::string_view name);

/// Every zone's name, sorted. Throws a Failure and bad_alloc. Any thread.
std::vector<std::string> zone_names();

/// The release of the zone database; empty when it does not say. Throws as open_zone().
std::string zones_version();

/// Looks for a new release of the zone database. Throws as open_zone().
void reload_zones();

/// jwnls_configure() and jwnls_set_journal().
void configure(std::string_view setting, std::string_view value);
void set_journal(void (*write)(void* context, const char* message), void* context) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_PROCESS_PROCESS_H_
