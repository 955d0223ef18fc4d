// Time zones through the host's tables.

#ifndef JWNLS_CLIENT_ZONES_H_
#define JWNLS_CLIENT_ZONES_H_

#include <string>
#include <string_view>

#include "abi/host_tables.h"
#include "client/locale.h"
#include "client/result.h"

namespace jwnls::client {

/// The canonical form of a zone name in UTF-8; lookup_failed when it is none.
Result<std::u16string> normalised_zone(NlsContext& context, std::string_view name);

/// The name of the zone that a handle made without one has.
std::u16string system_zone(NlsContext& context);

/// What holds in an opened zone now.
Result<TimeZone> zone_now(NlsContext& context, Zone* zone, std::u16string_view name);

/// The same for a zone that nobody has opened yet.
Result<TimeZone> zone_now(NlsContext& context, std::string_view name);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_ZONES_H_
