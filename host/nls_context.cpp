#include "host/nls_context.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <new>
#include <type_traits>

#include "abi/status.h"
#include "host/lookup/character_classes.h"
#include "host/objects/lock.h"
#include "host/objects/memory_refusals.h"
#include "host/objects/pool.h"

namespace jwnls::host {
namespace {

// Delivers a zone's name; *length_io is the room, then the length.
Status deliver(const ZoneNameText& name, char16_t* out, std::int64_t* length_io) noexcept {
  const auto length = static_cast<std::int64_t>(name.length);
  if (*length_io >= zone_name_capacity) {
    // Room for any name: a copy of fixed size is faster than one of the name's.
    std::memcpy(out, name.units, sizeof name.units);
  } else if (*length_io >= length) {
    std::copy(name.units, name.units + name.length, out);
  } else {
    return Status::does_not_fit;
  }
  *length_io = length;
  return Status::ok;
}

}  // namespace

// The base stays as it came from the heap, but for the words at its two ends. Of the 8 KB between
// them, which are the host's, nobody uses one, and new pages are dear.
HostContext::HostContext(HostKernel& kernel, const std::filesystem::path& zone_directory)
    : zone_names_(zone_directory), os_zone_(zone_names_), zone_service_(zone_names_) {
  static_assert(std::is_trivially_default_constructible_v<NlsContext>);
  auto* const words = reinterpret_cast<std::byte*>(static_cast<NlsContext*>(this));
  constexpr std::size_t unused = offsetof(NlsContext, word_147);
  constexpr std::size_t behind = offsetof(NlsContext, creation_lock);
  std::memset(words, 0, unused);
  std::memset(words + behind, 0, sizeof(NlsContext) - behind);
  host_service = &kernel;
  to_upper = [](NlsContext*, char16_t unit, std::uint64_t) { return upper_case(unit); };
  resolve_locale = [](NlsContext* context, const char16_t* name, std::int64_t length, std::uint32_t,
                      ResolvedLocale** out) {
    if (out == nullptr) return code(Status::null_argument);
    *out = nullptr;
    if (name == nullptr || length < 1) return code(Status::lookup_failed);
    auto& locales = static_cast<HostContext*>(context)->locales_;
    return code(locales.resolve({name, static_cast<std::size_t>(length)}, out));
  };
  // `extra` has no meaning here and is left alone.
  normalise_zone = [](NlsContext* context, const char16_t* name, std::int64_t length, std::uint64_t,
                      char16_t* out, std::int64_t* length_io, std::uint64_t*) {
    if (out == nullptr || length_io == nullptr) return code(Status::null_argument);
    if (name == nullptr || length < 1) return code(Status::lookup_failed);
    const ZoneNames& names = static_cast<HostContext*>(context)->zone_names_;
    const std::u16string_view text(name, static_cast<std::size_t>(length));
    if (const ZoneNameText* known = names.normal_before(text)) {
      return code(deliver(*known, out, length_io));
    }
    try {
      ZoneNameText normal;
      const Status status = names.normalise(text, normal);
      return code(status == Status::ok ? deliver(normal, out, length_io) : status);
    } catch (const std::bad_alloc&) {
      ++memory_refusals;
      return code(Status::out_of_memory);
    } catch (const std::exception&) {
      return code(Status::lookup_failed);  // the names cannot be read just now
    }
  };
  os_zone = [](NlsContext* context, char16_t* out, std::int64_t* length_io, std::uint32_t) {
    if (out == nullptr || length_io == nullptr) return code(Status::null_argument);
    try {
      const OsZone::Answer& answer = static_cast<HostContext*>(context)->os_zone_.now();
      return code(answer.status == Status::ok ? deliver(answer.name, out, length_io)
                                              : answer.status);
    } catch (const std::exception&) {
      return code(Status::no_os_zone);
    }
  };
  NlsContext::pool = kernel.registry().make<HostPool>();
  creation_lock = kernel.registry().make<HostLock>();
  if (NlsContext::pool == nullptr || creation_lock == nullptr) throw std::bad_alloc();
  zone_service = &zone_service_;
}

}  // namespace jwnls::host
