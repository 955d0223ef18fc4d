#include "client/locale.h"

#include <atomic>

#include "abi/locale_handle.h"
#include "client/locale_state.h"
#include "client/quoting.h"
#include "client/utf8.h"
#include "client/zones.h"
#include "host/host.h"
#include "host/locales/locale_names.h"

namespace jwnls::client {
namespace {

Zone* current_zone(LocaleHandle* handle) {
  return std::atomic_ref<Zone*>(handle->zone).load(std::memory_order_acquire);
}

}  // namespace

Result<Locale> Locale::open(std::shared_ptr<host::Host> host, std::string_view name,
                            std::string_view zone, Sharing sharing) {
  const auto wide_name = to_utf16(name);
  const std::string what = "locale " + in_quotes(name) + ": ";
  if (!wide_name) return failure(Status::lookup_failed, what + "not valid UTF-8");
  NlsContext& context = *host->context();
  auto zone_name =
      zone.empty() ? Result<std::u16string>(system_zone(context)) : normalised_zone(context, zone);
  if (!zone_name) return tl::unexpected<Error>(zone_name.error());
  // Without a name the module asks for the system's zone itself, and warns when there is none.
  const std::u16string_view zone_asked = zone.empty() ? std::u16string_view() : *zone_name;
  std::uint32_t status_code = 0;
  std::string load_error;
  LocaleHandle* handle = host->create_handle(*wide_name, zone_asked, sharing == Sharing::own,
                                             &status_code, &load_error);
  if (handle == nullptr) {
    const Status status{status_code};
    if (host::match_locale_name(*wide_name).status == Status::lookup_failed) {
      return failure(Status::lookup_failed, what + "unknown");
    }
    return failure(status, what + (load_error.empty() ? status_text(nullptr, status) : load_error));
  }
  return Locale(std::make_shared<State>(std::move(host), handle, sharing, *std::move(zone_name)));
}

std::string Locale::name() const {
  char16_t units[64];
  std::int64_t length = 0;
  (void)handle()->services.copy_locale_name(handle(), units, &length);
  return to_utf8({units, bounded_length(length, 64)});
}

Result<TimeZone> Locale::time_zone() const {
  const std::lock_guard lock(state_->zone_mutex);
  return zone_now(*handle()->context, current_zone(handle()), state_->zone);
}

Result<Locale> Locale::in_time_zone(std::string_view zone) const {
  return open(state_->host, name(), zone, state_->sharing);
}

Result<void> Locale::set_time_zone(std::string_view zone) {
  if (state_->sharing == Sharing::shared) {
    return failure(Status::not_possible, "locale " + in_quotes(name()) +
                                             ": others share it, so its time zone cannot be "
                                             "changed; use a private locale or in_time_zone()");
  }
  auto zone_name = normalised_zone(*handle()->context, zone);
  if (!zone_name) return tl::unexpected<Error>(zone_name.error());
  const std::lock_guard lock(state_->zone_mutex);
  const Status status{handle()->services.set_time_zone(
      handle(), zone_name->data(), static_cast<std::int64_t>(zone_name->size()))};
  if (status != Status::ok) {
    return failure(status, "time zone " + in_quotes(zone) + ": " + status_text(handle(), status));
  }
  state_->zone = *std::move(zone_name);
  return {};
}

Result<std::chrono::local_seconds> Locale::local_time(std::chrono::sys_seconds instant) const {
  // Far enough beyond the calendar that no offset brings an instant back into it.
  constexpr auto first = std::chrono::sys_days{std::chrono::year{1581} / 12 / 1};
  constexpr auto end = std::chrono::sys_days{std::chrono::year{20001} / 2 / 1};
  const std::chrono::seconds moment = instant.time_since_epoch();
  if (instant < first || instant >= end) {
    return failure(Status::out_of_range, "instant " + std::to_string(moment.count()) +
                                             " seconds from 1970: outside 1582 to 20000");
  }
  const auto offset = state_->host->zone_offset(current_zone(handle()), moment.count());
  return std::chrono::local_seconds{moment + std::chrono::seconds{offset}};
}

Conventions Locale::conventions() const { return conventions_of(record()); }

const LocaleRecord& Locale::record() const noexcept { return *handle()->record; }

LocaleHandle* Locale::handle() const noexcept { return state_->handle; }

}  // namespace jwnls::client
