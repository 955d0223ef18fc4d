#include "client/zones.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "abi/status.h"
#include "client/quoting.h"
#include "client/utf8.h"

namespace jwnls::client {
namespace {

// What the module gives a handle when the system has no usable zone.
constexpr std::u16string_view fallback_zone = u"America/New_York";

struct ZoneName {
  char16_t units[zone_name_capacity];
  std::int64_t length = zone_name_capacity;

  [[nodiscard]] std::u16string text() const {
    return {units,
            static_cast<std::size_t>(std::clamp<std::int64_t>(length, 0, zone_name_capacity))};
  }
};

tl::unexpected<Error> unknown_zone(std::string_view name) {
  return failure(Status::lookup_failed, "time zone " + in_quotes(name) + ": unknown");
}

std::optional<std::u16string> normalised(NlsContext& context, std::u16string_view name) {
  ZoneName zone;
  std::uint64_t extra = 0;
  const Status status{
      context.normalise_zone(&context, name.data(), static_cast<std::int64_t>(name.size()),
                             normalise_zone_flags, zone.units, &zone.length, &extra)};
  if (status != Status::ok) return std::nullopt;
  return zone.text();
}

}  // namespace

Result<std::u16string> normalised_zone(NlsContext& context, std::string_view name) {
  const auto wide_name = to_utf16(name);
  auto zone = wide_name ? normalised(context, *wide_name) : std::nullopt;
  if (!zone) return unknown_zone(name);
  return *std::move(zone);
}

std::u16string system_zone(NlsContext& context) {
  ZoneName zone;
  const Status status{context.os_zone(&context, zone.units, &zone.length, os_zone_flags)};
  const bool usable = status != Status::no_os_zone && status != Status::lookup_failed;
  return normalised(context, usable ? zone.text() : std::u16string(fallback_zone))
      .value_or(std::u16string(fallback_zone));
}

Result<TimeZone> zone_now(NlsContext& context, Zone* zone, std::u16string_view name) {
  char16_t abbreviation[zone_abbreviation_capacity];
  std::int64_t length = 0;
  std::int64_t offset_seconds = 0;
  ZoneService* service = context.zone_service;
  const Status status{service->zone_info(service, zone, abbreviation, &length, &offset_seconds)};
  if (status != Status::ok) {
    return failure(status,
                   "time zone " + in_quotes(to_utf8(name)) + ": the host has no information on it");
  }
  const auto bounded = std::clamp<std::int64_t>(length, 0, zone_abbreviation_capacity);
  return TimeZone{to_utf8(name), to_utf8({abbreviation, static_cast<std::size_t>(bounded)}),
                  std::chrono::seconds{offset_seconds}};
}

Result<TimeZone> zone_now(NlsContext& context, std::string_view name) {
  const auto zone_name = normalised_zone(context, name);
  if (!zone_name) return tl::unexpected<Error>(zone_name.error());
  ZoneService* service = context.zone_service;
  const auto close = [service](Zone* zone) { service->close(service, zone); };
  const std::unique_ptr<Zone, decltype(close)> zone(
      service->open(service, zone_name->data(), static_cast<std::int64_t>(zone_name->size()), 0),
      close);
  if (!zone) return unknown_zone(name);
  return zone_now(context, zone.get(), *zone_name);
}

}  // namespace jwnls::client
