#include "tests/support/fake_host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "module/record/status.h"

namespace jwnls::test {
namespace {

FakeHost* the_host = nullptr;  // for `fill`, which is not given its own object

[[noreturn]] void unlisted_word() {
  std::fputs("the module called a word that is not its to call\n", stderr);
  std::abort();
}

// Gives a table words that abort when they are called. Data words are set afterwards.
template <typename Table>
void set_unlisted(Table& table) {
  void (*const word)() = unlisted_word;
  for (std::size_t at = 0; at < sizeof(Table); at += sizeof word) {
    std::memcpy(reinterpret_cast<std::byte*>(&table) + at, &word, sizeof word);
  }
}

std::string narrow(std::u16string_view text) {
  std::string result = "'";
  for (const char16_t unit : text) {
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, unit < 0x80 ? "%c" : "\\u%04X", unit);
    result += escaped;
  }
  return result + "'";
}
std::string narrow(const char16_t* text, std::int64_t length) {
  return text == nullptr ? "null" : narrow({text, static_cast<std::size_t>(length)});
}
// A track's key: UTF-16 in bytes.
std::string narrow_key(const void* key, std::int64_t bytes) {
  std::u16string text(static_cast<std::size_t>(bytes) / 2, u'\0');
  std::memcpy(text.data(), key, text.size() * 2);
  return narrow(text);
}

// The parts of a call's record, joined with blanks.
template <typename... Parts>
std::string line(const Parts&... parts) {
  std::ostringstream out;
  ((out << parts << ' '), ...);
  std::string result = out.str();
  result.pop_back();
  return result;
}
std::string hex(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(value));
  return text;
}
std::string zeros(const void* block, std::size_t bytes) {
  const auto* first = static_cast<const unsigned char*>(block);
  const bool all = std::all_of(first, first + bytes, [](unsigned char byte) { return byte == 0; });
  return std::to_string(bytes) + (all ? " zeros" : " bytes");
}

template <typename Table>
auto& fake(Table* table) {
  auto& object = *static_cast<Fake<Table>*>(table);
  if (!object.alive) object.host->fault("use of destroyed " + object.name);
  return object;
}
FakePool& fake(Pool* pool) { return static_cast<FakePool&>(fake<Pool>(pool)); }
FakeLock& fake(Lock* lock) { return static_cast<FakeLock&>(fake<Lock>(lock)); }
FakeTrack& fake(Track* track) { return static_cast<FakeTrack&>(fake<Track>(track)); }

template <typename Table, typename Object>
Object& make(std::deque<Object>& objects, FakeHost* host, std::string name) {
  Object& object = objects.emplace_back();
  set_unlisted<Table>(object);
  object.host = host;
  object.name = std::move(name);
  return object;
}

// Marks an object destroyed. Destroying it again is a use of a destroyed object.
template <typename Table>
auto& end(Table* table) {
  auto& object = fake(table);
  object.host->note(line("destroy", object.name));
  object.alive = false;
  return object;
}

std::string label(Journal* journal) {
  return journal == nullptr ? "no journal" : fake(journal).name;
}

// ---- Pools

void destroy_pool(Pool* table) {
  FakePool& pool = end(table);
  for (const auto& [block, bytes] : pool.blocks) std::free(block);
  pool.blocks.clear();
}

void* allocate(Pool* table, std::uint64_t bytes, std::uint32_t flags) {
  FakePool& pool = fake(table);
  if (pool.host->fails(line("allocate", pool.name, bytes, hex(flags)))) return nullptr;
  void* block = std::malloc(bytes);
  std::memset(block, (flags & allocate_zeroed) != 0 ? 0 : 0xA5, bytes);
  pool.blocks[block] = bytes;
  return block;
}

void free_block(Pool* table, void* block) {
  FakePool& pool = fake(table);
  const auto found = pool.blocks.find(block);
  if (found == pool.blocks.end()) return pool.host->fault("free of what is not the pool's");
  pool.host->note(line("free", pool.name, found->second));
  std::free(block);
  pool.blocks.erase(found);
}

FakePool& make_pool(FakeHost* host, std::string name) {
  FakePool& pool = make<Pool>(host->pools, host, std::move(name));
  pool.destroy = destroy_pool;
  pool.allocate = allocate;
  pool.free = free_block;
  return pool;
}

// ---- Locks

void take(Lock* table, std::int64_t a, std::int64_t b) {
  FakeLock& lock = fake(table);
  lock.host->note(line("take", lock.name, a, b));
  if (lock.held) lock.host->fault("deadlock on " + lock.name);
  lock.held = true;
  if (lock.host->when_taken) lock.host->when_taken(lock);
}

void release(Lock* table) {
  FakeLock& lock = fake(table);
  lock.host->note(line("release", lock.name));
  // A refused zone name releases the creation lock untaken; hosts ignore that.
  if (!lock.held && &lock != lock.host->creation_lock) {
    lock.host->fault("release of " + lock.name + ", which is not held");
  }
  lock.held = false;
}

FakeLock& make_lock(FakeHost* host, std::string name) {
  FakeLock& lock = make<Lock>(host->locks, host, std::move(name));
  lock.destroy = [](Lock* gone) {
    if (end(gone).held) fake(gone).host->fault("destroyed while held");
  };
  lock.take = take;
  lock.release = release;
  return lock;
}

// ---- Tracks

void destroy_track(Track* table) {
  FakeTrack& track = end(table);
  for (auto& [key, entry] : track.entries) {
    if (entry.references != 0) track.host->fault("entry not released in " + track.name);
    if (track.destructor != nullptr && track.destructor != host_release) track.destructor(&entry);
  }
  track.entries.clear();
}

std::string key_bytes(const void* key, std::int64_t bytes) {
  return {static_cast<const char*>(key), static_cast<std::size_t>(bytes)};
}

TrackEntry* look_up(Track* table, std::uint32_t flags, std::uint64_t zero, const void* key,
                    std::int64_t bytes) {
  FakeTrack& track = fake(table);
  if (track.host->fails(
          line("look_up", track.name, hex(flags), zero, narrow_key(key, bytes), bytes))) {
    return nullptr;
  }
  const auto found = track.entries.find(key_bytes(key, bytes));
  if (found == track.entries.end()) return nullptr;
  ++found->second.references;
  return &found->second;
}

TrackEntry* insert(Track* table, std::uint32_t flags, std::uint64_t zero, void* value,
                   std::uint64_t zero_too, const void* key, std::int64_t bytes,
                   std::uint32_t* status) {
  FakeTrack& track = fake(table);
  if (track.host->fails(
          line("insert", track.name, hex(flags), zero, zero_too, narrow_key(key, bytes), bytes))) {
    *status = FakeHost::failure_status;
    return nullptr;
  }
  const auto [place, added] = track.entries.try_emplace(key_bytes(key, bytes));
  if (!added) track.host->fault("a second entry of one key in " + track.name);
  place->second.value = value;
  ++place->second.references;
  *status = 0;
  return &place->second;
}

FakeTrack& make_track(FakeHost* host, std::string name) {
  FakeTrack& track = make<Track>(host->tracks, host, std::move(name));
  track.destroy = destroy_track;
  track.look_up = look_up;
  track.insert = insert;
  track.set_destructor = [](Track* table, std::uint64_t zero, EntryDestructor destructor) {
    FakeTrack& self = fake(table);
    self.host->note(line("set_destructor", self.name, zero,
                         destructor == host_release ? "the host's" : "the module's"));
    self.destructor = destructor;
  };
  track.release_entry = [](Track* table, TrackEntry* entry) {
    FakeTrack& self = fake(table);
    self.host->note(line("release_entry", self.name));
    if (--static_cast<FakeEntry*>(entry)->references < 0) self.host->fault("entry released twice");
  };
  return track;
}

// ---- Kernel and host service object

Lock* create_lock(Kernel* table, const std::uint8_t parameters[2], Journal* journal,
                  const char* name) {
  auto& kernel = fake(table);
  const bool failed = kernel.host->fails(
      line(kernel.name + ".create_lock", zeros(parameters, 2), label(journal), name));
  return failed ? nullptr : &make_lock(kernel.host, name);
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
  return &journal;
}

Pool* create_pool(Kernel* table, const void* parameters, ErrorSink* sink, const char* name) {
  auto& kernel = fake(table);
  const bool standard = std::memcmp(parameters, &pool_parameters, sizeof pool_parameters) == 0;
  const bool failed =
      kernel.host->fails(line(kernel.name + ".create_pool", standard ? "standard" : "odd",
                              sink == nullptr ? "no sink" : "sink", name));
  return failed ? nullptr : &make_pool(kernel.host, name);
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
  return failed ? nullptr : &make_track(kernel.host, name);
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
  return static_cast<MessageExtension*>(&messages);
}

std::uint32_t read_option(Kernel* table, const char16_t* name, std::int64_t length,
                          std::uint32_t type, void* value, std::int64_t* size) {
  FakeHost& host = *fake(table).host;
  const std::u16string key(name, static_cast<std::size_t>(length));
  if (host.fails(line("read_option", narrow(key), type))) return FakeHost::failure_status;
  const auto found = host.integer_options.find(key);
  if (found == host.integer_options.end()) return FakeHost::failure_status;
  std::memcpy(value, &found->second, sizeof found->second);
  *size = sizeof found->second;
  return 0;
}

void set_up_kernel(Fake<Kernel>& kernel, FakeHost* host, const char* name) {
  set_unlisted<Kernel>(kernel);
  kernel.host = host;
  kernel.name = name;
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

template <typename Table>
void set_up(Fake<Table>& object, FakeHost* host, const char* name) {
  set_unlisted<Table>(object);
  object.host = host;
  object.name = name;
}

}  // namespace

FakeHost::FakeHost() {
  the_host = this;
  set_up_kernel(kernel, this, "kernel");
  set_up_kernel(service, this, "service");
  pool = &make_pool(this, "nls");
  creation_lock = &make_lock(this, "creation");

  set_up(store, this, "option store");
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
  set_up(zones, this, "zone service");
  zones.open = open_zone;
  zones.close = close_zone;
  zones.zone_info = zone_info;
  set_up(database, this, "locale database");
  database.fill = fill;
  set_up(errors, this, "error sink");
  errors.report = [](ErrorSink* self, std::uint32_t severity, std::uint32_t status) {
    fake(self).host->reports.push_back(line("error", severity, hex(status)));
  };

  set_up(context, this, "context");
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
