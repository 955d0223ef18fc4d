#include "module/frame/handle_creation.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <string_view>

#include "abi/status.h"
#include "module/frame/handle_key.h"
#include "module/frame/handle_making.h"
#include "module/host_calls/required_words.h"
#include "module/host_calls/time_zone.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

constexpr std::u16string_view app_node_name = u"App.NLS";
constexpr std::u16string_view default_zone = u"America/New_York";
constexpr char16_t zone_warning[] =
    u"Invalid OS TIMEZONE value is detected. Use default TIMEZONE value instead";

// The first two steps run before the creation lock. Their stores are atomic; the last one wins.

// Returns false when there is neither a node nor a store to make it in.
bool find_app_node(NlsContext* context) noexcept {
  const std::atomic_ref<void*> shared(context->app_node);
  if (shared.load(std::memory_order_acquire) != nullptr) return true;
  const Kernel* service = context->host_service;
  if (service == nullptr) return false;
  void* node = host_calls::find_or_create_node(service->option_store, app_node_name);
  if (node == nullptr) return false;
  shared.store(node, std::memory_order_release);
  return true;
}

void find_journal(NlsContext* context) noexcept {
  const std::atomic_ref<Journal*> shared(context->journal);
  if (shared.load(std::memory_order_acquire) != nullptr) return;
  shared.store(host_calls::create_journal(context->host_service, "jwnlsLocaleJnl"),
               std::memory_order_release);
}

// The caller's zone, else the operating system's, else the default with a warning.
Failure choose_zone(NlsContext* context, const CreationOptions* options, bool may_warn,
                    ZoneName& zone) noexcept {
  if (options != nullptr && options->zone != nullptr && options->zone_length >= 1) {
    const std::uint32_t status = normalise_zone(context, options->zone, options->zone_length, zone);
    return status == code(Status::ok) ? success : Failure(status);
  }
  const std::uint32_t status = query_os_zone(context, zone);
  if (status == code(Status::no_os_zone) || status == code(Status::lookup_failed)) {
    std::copy(default_zone.begin(), default_zone.end(), zone.units);
    zone.length = host_calls::units_of(default_zone);
    host_calls::write_warning(may_warn ? host_calls::journal_of(context) : nullptr, zone_warning);
  }
  return success;  // any other status is ignored: name and length count as the query left them
}

Failure resolve(NlsContext* context, const char16_t* name, std::int64_t length,
                CanonicalLocale& locale) noexcept {
  ResolvedLocale* resolved = nullptr;
  locale.status = host_calls::resolve_locale(context, name, length, resolved);
  if (locale.status != code(Status::ok) && locale.status != code(Status::resolved_with_warning)) {
    return locale.status;
  }
  // The record's name entry has room for 60 units.
  if (resolved == nullptr || resolved->length < 1 || resolved->length > text_entry_capacity) {
    return Status::lookup_failed;
  }
  locale.name = {resolved->name, static_cast<std::size_t>(resolved->length)};
  return success;
}

// The shared handle, made and entered into the cache on first need; or a private one.
Outcome share_or_make(NlsContext* context, const CreationOptions* options,
                      const CanonicalLocale& locale, HandleKey& key_room) noexcept {
  const bool shared = options == nullptr || (options->flags & private_handle) == 0;
  Track* cache = shared ? context->handle_cache : nullptr;
  if (cache == nullptr || !can_look_up(*cache)) {
    return make_handle(context, locale, key_room.zone(), cache);
  }
  const std::u16string_view key = key_room.with_locale(locale.name);
  if (TrackEntry* entry = host_calls::look_up(cache, key)) [[likely]] {
    auto* handle = static_cast<LocaleHandle*>(entry->value);
    host_calls::release_entry(cache, entry);
    return {handle, code(Status::ok)};
  }
  const Outcome made = make_handle(context, locale, key_room.zone(), cache);
  if (made.handle == nullptr) return made;
  std::uint32_t status = code(Status::ok);
  if (host_calls::insert(cache, key, made.handle, status)) return made;
  undo_handle(made.handle);
  return {nullptr, status};
}

[[gnu::always_inline]] inline Outcome find_or_make(NlsContext* context,
                                                   const CreationOptions* options,
                                                   const char16_t* name, std::int64_t length,
                                                   bool may_warn) noexcept {
  HandleKey key;
  CanonicalLocale locale;
  Outcome outcome = {};
  Failure failed = choose_zone(context, options, may_warn, key.zone());
  if (!failed) {
    host_calls::take(context->creation_lock);
    failed = resolve(context, name, length, locale);
    if (!failed) outcome = share_or_make(context, options, locale, key);
  }
  // The creation lock is not taken yet when the caller's zone name is refused, and is released all
  // the same: hosts ignore the release of a lock that is not held.
  host_calls::release(context->creation_lock);
  return failed ? Outcome{nullptr, failed.status} : outcome;
}

}  // namespace

LocaleHandle* create_handle(NlsContext* context, const char16_t* name, std::int64_t length,
                            std::uint32_t* status, const CreationOptions* options) noexcept {
  const bool has_node = find_app_node(context);
  if (has_node) find_journal(context);
  const Outcome outcome = can_find_handles(*context)
                              ? find_or_make(context, options, name, length, has_node)
                              : refuse_host(context);
  if (status != nullptr) *status = outcome.status;
  return outcome.handle;
}

}  // namespace jwnls
