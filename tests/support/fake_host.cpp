// The fake host's kernel, context, zones and the host itself.

#include "tests/support/fake_host.h"

#include <cctype>

#include "abi/status.h"
#include "tests/support/fake_objects.h"

namespace jwnls::test {
namespace {

FakeHost* the_host = nullptr;  // for `fill`, which is not given its own object

// ---- Kernel and host service object

template <typename Table>
Table* hand_out(FakeHost* host, const std::string& name, Table* table) {
  if (host->when_made) host->when_made(name, table);
  return table;
}

Lock* create_lock(Kernel* table, const std::uint8_t parameters[2], Journal* journal,
                  const char* name) {
  auto& kernel = fake(table);
  const bool failed = kernel.host->fails(
      line(kernel.name + ".create_lock", zeros(parameters, 2), label(journal), name));
  return failed ? nullptr : hand_out<Lock>(kernel.host, name, &make_lock(kernel.host, name));
}

Journal* create_journal(Kernel* table, const std::uint8_t parameters[88], std::uint64_t zero,
                        const char* name) {
  auto& kernel = fake(table);
  if (kernel.host->fails(
          line(kernel.name + ".create_journal", zeros(parameters, 88), zero, name))) {
    return nullptr;
  }
  auto& journal = make<Journal>(kernel.host->journals, kernel.host, name);
  journal.write = [](Journal* self, std::uint32_t level, const char16_t* message,
                     std::uint64_t zero_too) {
    auto& host = *fake(self).host;
    host.note("write");
    host.reports.push_back(line("journal", level, narrow(message), zero_too));
  };
  return hand_out<Journal>(kernel.host, name, &journal);
}

Pool* create_pool(Kernel* table, const void* parameters, ErrorSink* sink, const char* name) {
  auto& kernel = fake(table);
  const bool standard = std::memcmp(parameters, &pool_parameters, sizeof pool_parameters) == 0;
  const bool failed =
      kernel.host->fails(line(kernel.name + ".create_pool", standard ? "standard" : "odd",
                              sink == nullptr ? "no sink" : "sink", name));
  return failed ? nullptr : hand_out<Pool>(kernel.host, name, &make_pool(kernel.host, name));
}

Track* create_track(Kernel* table, const void* parameters, Journal* journal, const char* name) {
  auto& kernel = fake(table);
  // Literally, as bytes: 1 in word 0, 1 in word 2, 0x20000000 in the 32 bits behind it.
  std::uint32_t block[16];
  std::memcpy(block, parameters, sizeof block);
  const std::uint32_t expected[16] = {1, 0, 0, 0, 1, 0, 0x20000000};
  const bool standard = std::equal(block, block + 16, expected);
  const bool failed = kernel.host->fails(
      line(kernel.name + ".create_track", standard ? "standard" : "odd", label(journal), name));
  return failed ? nullptr : hand_out<Track>(kernel.host, name, &make_track(kernel.host, name));
}

void* load_extension(Kernel* table, const char16_t* name, std::int64_t length, std::uint64_t zero) {
  auto& kernel = fake(table);
  FakeHost* host = kernel.host;
  const std::string text = narrow(name, length);
  if (host->fails(line(kernel.name + ".load_extension", text, zero))) return nullptr;
  if (text == "'jwnlsldb'") return static_cast<LocaleDatabase*>(&host->database);
  if (text != "'jwemsg'") return nullptr;
  auto& messages = make<MessageExtension>(host->messages, host, "jwemsg");
  messages.destroy = [](MessageExtension* self) { end(self); };
  return hand_out<MessageExtension>(host, "jwemsg", &messages);
}

std::uint32_t read_option(Kernel* table, const char16_t* name, std::int64_t length,
                          std::uint32_t type, void* value, std::int64_t* size) {
  FakeHost& host = *fake(table).host;
  const std::u16string key(name, static_cast<std::size_t>(length));
  std::int64_t preset = 0;
  std::memcpy(&preset, value, sizeof preset);
  if (host.fails(line("read_option", narrow(key), type, "default", preset, "size", *size))) {
    return FakeHost::failure_status;
  }
  const auto found = host.integer_options.find(key);
  if (found == host.integer_options.end()) return FakeHost::failure_status;
  std::memcpy(value, &found->second, sizeof found->second);
  *size = sizeof found->second;
  return 0;
}

void set_up_kernel(Fake<Kernel>& kernel, FakeHost* host, const char* name) {
  set_up<Kernel>(kernel, host, name);
  kernel.create_lock = create_lock;
  kernel.create_journal = create_journal;
  kernel.create_pool = create_pool;
  kernel.create_track = create_track;
  kernel.load_extension = load_extension;
  kernel.read_option = read_option;
  kernel.character_classes = nullptr;
  kernel.formatter_state = 1;
  kernel.formatting = nullptr;
  kernel.option_store = &host->store;
}

// ---- NLS context

char16_t to_upper(NlsContext* table, char16_t unit, std::uint64_t /*zero*/) {
  const auto& map = fake(table).host->upper_case;
  const auto found = map.find(unit);
  if (found != map.end()) return found->second;
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

std::uint32_t resolve_locale(NlsContext* table, const char16_t* name, std::int64_t length,
                             std::uint32_t flags, ResolvedLocale** out) {
  FakeHost& host = *fake(table).host;
  if (host.fails(line("resolve_locale", narrow(name, length), flags))) {
    return FakeHost::failure_status;
  }
  const std::u16string& canonical = host.canonical_locale;
  host.resolved.assign(3 + canonical.size() / 4 + 1, 0);
  host.resolved[2] = canonical.size();
  std::memcpy(&host.resolved[3], canonical.data(), canonical.size() * 2);
  *out = reinterpret_cast<ResolvedLocale*>(host.resolved.data());
  return host.resolve_status;
}

bool same_ignoring_case(std::u16string_view a, std::u16string_view b) {
  const auto lower = [](char16_t unit) { return unit < 0x80 ? std::tolower(unit) : int{unit}; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char16_t x, char16_t y) { return lower(x) == lower(y); });
}

std::uint32_t normalise_zone(NlsContext* table, const char16_t* name, std::int64_t length,
                             std::uint64_t flags, char16_t* out, std::int64_t* length_io,
                             std::uint64_t* /*extra*/) {
  FakeHost& host = *fake(table).host;
  const std::u16string given(name, static_cast<std::size_t>(length));
  if (host.fails(line("normalise_zone", narrow(given), flags, *length_io))) {
    return FakeHost::failure_status;
  }
  for (const std::u16string& known : host.known_zones) {
    if (!same_ignoring_case(known, given)) continue;
    std::copy(known.begin(), known.end(), out);
    *length_io = static_cast<std::int64_t>(known.size());
    return 0;
  }
  return FakeHost::failure_status;
}

std::uint32_t query_os_zone(NlsContext* table, char16_t* out, std::int64_t* length_io,
                            std::uint32_t flags) {
  FakeHost& host = *fake(table).host;
  if (host.fails(line("os_zone", flags, *length_io))) return code(Status::no_os_zone);
  std::copy(host.os_zone.begin(), host.os_zone.end(), out);
  *length_io = host.os_zone_length != -1 ? host.os_zone_length
                                         : static_cast<std::int64_t>(host.os_zone.size());
  return host.os_zone_status;
}

// ---- Zones

Zone* open_zone(ZoneService* table, const char16_t* name, std::int64_t length, std::uint64_t zero) {
  FakeHost& host = *fake(table).host;
  if (host.fails(line("open", narrow(name, length), zero))) return nullptr;
  return reinterpret_cast<Zone*>(&host.opened_zones.emplace_back(FakeZone{narrow(name, length)}));
}

void close_zone(ZoneService* table, Zone* zone) {
  FakeHost& host = *fake(table).host;
  auto& closed = *reinterpret_cast<FakeZone*>(zone);
  host.note(line("close", closed.name));
  if (!closed.alive) host.fault("zone closed twice: " + closed.name);
  closed.alive = false;
}

std::uint32_t zone_info(ZoneService* table, Zone* zone, char16_t abbreviation[50],
                        std::int64_t* length, std::int64_t* offset_seconds) {
  FakeHost& host = *fake(table).host;
  if (!reinterpret_cast<FakeZone*>(zone)->alive) host.fault("use of a closed zone");
  std::copy_n(host.abbreviation.begin(), std::min<std::size_t>(host.abbreviation.size(), 50),
              abbreviation);
  *length = host.abbreviation_length;
  *offset_seconds = host.offset_seconds;
  return host.zone_info_status;
}

// ---- The rest

std::uint32_t fill(void* record, const char16_t* name, std::int64_t length) {
  FakeHost& host = *the_host;
  auto& locale = *static_cast<LocaleRecord*>(record);
  if (host.fails(line("fill", narrow(text_of(locale.locale_name)), narrow(name, length)))) {
    return FakeHost::failure_status;
  }
  constexpr std::size_t head = sizeof(TextEntry);
  std::memset(static_cast<std::byte*>(record) + head, 0, sizeof(LocaleRecord) - head);
  if (host.fill_record) host.fill_record(locale);
  return host.fill_status;
}

}  // namespace

FakeHost::FakeHost() {
  the_host = this;
  set_up_kernel(kernel, this, "kernel");
  set_up_kernel(service, this, "service");
  pool = &make_pool(this, "nls");
  creation_lock = &make_lock(this, "creation");

  set_up<OptionStore>(store, this, "option store");
  store.create_node = [](OptionStore* self, const char16_t* name, std::int64_t length) -> void* {
    FakeHost& host = *fake(self).host;
    if (host.fails(line("create_node", narrow(name, length)))) return nullptr;
    return &host.nodes.emplace_back(name, static_cast<std::size_t>(length));
  };
  store.find_node = [](OptionStore* self, const char16_t* name) -> void* {
    FakeHost& host = *fake(self).host;
    if (host.fails(line("find_node", narrow(name)))) return nullptr;
    const auto found = std::find(host.nodes.begin(), host.nodes.end(), name);
    return found == host.nodes.end() ? nullptr : &*found;
  };
  set_up<ZoneService>(zones, this, "zone service");
  zones.open = open_zone;
  zones.close = close_zone;
  zones.zone_info = zone_info;
  set_up<LocaleDatabase>(database, this, "locale database");
  database.fill = fill;
  set_up<ErrorSink>(errors, this, "error sink");
  errors.report = [](ErrorSink* self, std::uint32_t severity, std::uint32_t status) {
    fake(self).host->reports.push_back(line("error", severity, hex(status)));
  };

  set_up<NlsContext>(context, this, "context");
  context.host_service = &service;
  context.to_upper = to_upper;
  context.resolve_locale = resolve_locale;
  context.normalise_zone = normalise_zone;
  context.os_zone = query_os_zone;
  context.pool = pool;
  context.handle_cache = nullptr;
  context.locale_database = nullptr;
  context.creation_lock = creation_lock;
  context.journal = nullptr;
  context.app_node = nullptr;
  context.zone_service = &zones;
}

FakeHost::~FakeHost() {
  for (FakePool& each : pools) {
    for (const auto& [block, bytes] : each.blocks) std::free(block);
  }
}

std::vector<std::string> FakeHost::live() const {
  std::vector<std::string> result;
  const auto add = [&](const auto& objects, const auto&... keepers) {
    for (const auto& object : objects) {
      if (object.alive && ((&object != keepers) && ...)) result.push_back(object.name);
    }
  };
  add(pools, pool);
  add(locks, creation_lock);
  add(tracks, context.handle_cache);
  add(journals, context.journal);
  add(messages);
  add(opened_zones);
  for (const FakePool& each : pools) {
    for (const auto& [block, bytes] : each.blocks) {
      result.push_back("block of " + std::to_string(bytes));
    }
  }
  std::sort(result.begin(), result.end());
  return result;
}

FakeTrack* FakeHost::track(std::string_view name) {
  for (auto each = tracks.rbegin(); each != tracks.rend(); ++each) {
    if (each->alive && each->name == name) return &*each;
  }
  return nullptr;
}

void FakeHost::forget_failures() {
  failing_call = 0;
  fail_from_there_on = false;
  fallible_calls = 0;
  failed.clear();
}

void FakeHost::note(const std::string& call) {
  if (recording) calls.push_back(call);
}

bool FakeHost::fails(const std::string& call) {
  note(call);
  ++fallible_calls;
  const bool fails = failing_call != 0 && (fail_from_there_on ? fallible_calls >= failing_call
                                                              : fallible_calls == failing_call);
  if (fails) failed.push_back(call);
  return fails;
}

}  // namespace jwnls::test
