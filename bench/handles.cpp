#include "bench/handles.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "abi/status.h"
#include "bench/contest.h"
#include "host/host.h"

namespace jwnls::bench {
namespace {

std::unique_ptr<host::Host> bench_host;

constexpr std::u16string_view locale = u"de_DE";
constexpr std::u16string_view zone = u"Europe/Berlin";

// The host's own calls in the finding of a handle that exists: normalise the zone's name, take the
// lock, resolve the locale's name, look up, release the entry, release the lock.
void hosts_own_calls(NlsContext* context, std::u16string_view key) {
  std::array<char16_t, zone_name_capacity> name;
  std::int64_t length = zone_name_capacity;
  std::uint64_t extra = 0;
  context->normalise_zone(context, zone.data(), static_cast<std::int64_t>(zone.size()),
                          normalise_zone_flags, name.data(), &length, &extra);
  Lock* lock = context->creation_lock;
  lock->take(lock, 1, 1);
  ResolvedLocale* resolved = nullptr;
  context->resolve_locale(context, locale.data(), static_cast<std::int64_t>(locale.size()),
                          resolve_flags, &resolved);
  Track* cache = context->handle_cache;
  TrackEntry* entry = cache->look_up(cache, track_look_up, 0, key.data(),
                                     static_cast<std::int64_t>(key.size() * sizeof(char16_t)));
  benchmark::DoNotOptimize(entry);
  if (entry != nullptr) cache->release_entry(cache, entry);
  lock->release(lock);
}

}  // namespace

bool start_host() {
  host::HostConfiguration configuration;
  configuration.extension_path = {JWNLS_BUILD_DIR};
  bench_host = std::make_unique<host::Host>(std::move(configuration));
  std::string error;
  if (bench_host->factory(&error) != nullptr) return true;
  std::fprintf(stderr, "jwnls_bench: %s\n", error.c_str());
  return false;
}

LocaleHandle* handle_of(std::u16string_view name) {
  std::uint32_t status = 0;
  LocaleHandle* handle = bench_host->create_handle(name, u"UTC", true, &status);
  if (handle == nullptr) {
    std::fprintf(stderr, "jwnls_bench: no handle: status %08X\n", status);
    std::exit(3);
  }
  return handle;
}

void set_pattern(TextEntry& entry, std::u16string_view pattern) {
  entry.length = static_cast<std::int64_t>(pattern.size());
  std::copy(pattern.begin(), pattern.end(), entry.units);
}

void enter_handle_creation() {
  NlsContext* context = bench_host->context();
  Factory* factory = bench_host->factory(nullptr);
  static const CreationOptions options = {
      0, {}, zone.data(), static_cast<std::int64_t>(zone.size())};
  static const CreationOptions private_options = {
      private_handle, {}, zone.data(), static_cast<std::int64_t>(zone.size())};
  const auto create = [=](const CreationOptions& wanted) {
    std::uint32_t status = 0;
    return factory->create_handle(context, locale.data(), static_cast<std::int64_t>(locale.size()),
                                  &status, &wanted);
  };
  create(options);

  declare({"a handle that exists", 1.35, 0});
  enter("a handle that exists", Side::ours, "create slot", [=](benchmark::State& state) {
    walk(state, [&](std::size_t) { benchmark::DoNotOptimize(create(options)); });
  });
  enter("a handle that exists", Side::peer, "the host's own calls", [=](benchmark::State& state) {
    const std::u16string key = std::u16string(locale) + u' ' + std::u16string(zone);
    walk(state, [&](std::size_t) { hosts_own_calls(context, key); });
  });
  declare({"a new handle, zone known", 0, 0});
  enter("a new handle, zone known", Side::ours, "create and destroy", [=](benchmark::State& state) {
    walk(state, [&](std::size_t) {
      LocaleHandle* handle = create(private_options);
      bench_host->destroy_handle(handle);
    });
  });
}

}  // namespace jwnls::bench
