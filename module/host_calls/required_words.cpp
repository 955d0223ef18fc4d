#include "module/host_calls/required_words.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

using enum HostObject;

// What the lack of a word comes to, which is what it comes to when the word's call fails.
constexpr Status no_lock = Status::ok;           // deliberate: hosts test the handle as well
constexpr Status no_message_track = Status::ok;  // likewise
constexpr Status no_memory = Status::out_of_memory;
constexpr Status no_locale = Status::lookup_failed;
constexpr Status no_zone = Status::lookup_failed;
constexpr Status no_handle = Status::lookup_failed;  // to be found in the cache, or entered
constexpr std::nullopt_t no_extension = std::nullopt;

// By object, in the order of HostObject.
constexpr RequiredWord required_words[] = {
    {context, offsetof(NlsContext, normalise_zone), no_zone},
    {context, offsetof(NlsContext, os_zone), Status::no_os_zone},
    {context, offsetof(NlsContext, creation_lock), no_lock},
    {context, offsetof(NlsContext, resolve_locale), no_locale},
    {context, offsetof(NlsContext, pool), no_memory},
    {context, offsetof(NlsContext, host_service), no_extension},
    {context, offsetof(NlsContext, zone_service), no_zone},
    // No step calls it: the services do, for the locale that is resolved.
    {context, offsetof(NlsContext, to_upper), no_locale},
    {creation_lock, offsetof(Lock, take), no_lock},
    {creation_lock, offsetof(Lock, release), no_lock},
    {handle_cache, offsetof(Track, look_up), no_handle},
    {handle_cache, offsetof(Track, release_entry), no_handle},
    {handle_cache, offsetof(Track, insert), no_handle},
    {pool, offsetof(Pool, allocate), no_memory},
    {pool, offsetof(Pool, free), no_memory},
    {kernel, offsetof(Kernel, load_extension), no_extension},
    {messages, offsetof(MessageExtension, destroy), no_extension},
    {host_service, offsetof(Kernel, load_extension), no_extension},
    {host_service, offsetof(Kernel, create_lock), no_lock},
    {host_service, offsetof(Kernel, create_track), no_message_track},
    {database, offsetof(LocaleDatabase, fill), no_extension},
    {message_lock, offsetof(Lock, destroy), no_lock},
    {zone_lock, offsetof(Lock, destroy), no_lock},
    {zone_lock, offsetof(Lock, take), no_lock},
    {zone_lock, offsetof(Lock, release), no_lock},
    {message_track, offsetof(Track, destroy), no_message_track},
    {message_track, offsetof(Track, set_destructor), no_message_track},
    {zone_track, offsetof(Track, destroy), no_memory},
    {zone_track, offsetof(Track, look_up), no_memory},
    {zone_track, offsetof(Track, insert), no_memory},
    {zone_track, offsetof(Track, set_destructor), no_memory},
    {zone_track, offsetof(Track, release_entry), no_memory},
    {zone_service, offsetof(ZoneService, open), no_zone},
    {zone_service, offsetof(ZoneService, close), no_zone},
    {zone_service, offsetof(ZoneService, zone_info), no_zone},
};
static_assert(std::ranges::is_sorted(required_words, {}, &RequiredWord::object));

constexpr auto object_count = static_cast<std::size_t>(HostObject::count);

// Where the rows of each object begin, and those of the last one end.
constexpr auto first_rows = [] {
  std::array<const RequiredWord*, object_count + 1> rows{};
  for (std::size_t object = 0; object < rows.size(); ++object) {
    rows[object] = std::ranges::lower_bound(required_words, static_cast<HostObject>(object), {},
                                            &RequiredWord::object);
  }
  return rows;
}();

// As a message names them, by HostObject.
constexpr std::u16string_view object_names[] = {
    u"the NLS context",  u"the creation lock", u"the handle cache",
    u"the pool",         u"the kernel",        u"jwemsg",
    u"the host service", u"jwnlsldb",          u"the message lock",
    u"the zone lock",    u"the message track", u"the zone track",
    u"the zone service",
};
static_assert(std::size(object_names) == object_count);

// Words hold a pointer to an operation or to an object: null is zero in either.
bool is_null(const void* object, std::size_t offset) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, static_cast<const std::byte*>(object) + offset, sizeof word);
  return word == 0;
}

}  // namespace

HostObjects objects_before_creation(const NlsContext& nls, const Kernel* kernel_handle) noexcept {
  HostObjects objects;
  objects[context] = &nls;
  objects[creation_lock] = nls.creation_lock;
  objects[handle_cache] = nls.handle_cache;
  objects[pool] = nls.pool;
  objects[kernel] = kernel_handle;
  objects[host_service] = nls.host_service;
  objects[database] = nls.locale_database;
  objects[zone_service] = nls.zone_service;
  return objects;
}

const RequiredWord* missing_word(HostObject object, const void* address) noexcept {
  const auto at = static_cast<std::size_t>(object);
  for (const RequiredWord* row = first_rows[at]; row != first_rows[at + 1]; ++row) {
    if (is_null(address, row->offset)) return row;
  }
  return nullptr;
}

const RequiredWord* missing_word(const HostObjects& objects) noexcept {
  for (std::size_t at = 0; at < object_count; ++at) {
    const auto object = static_cast<HostObject>(at);
    if (objects[object] == nullptr) continue;
    if (const RequiredWord* missing = missing_word(object, objects[object])) return missing;
  }
  return nullptr;
}

void write_missing_word(Journal* journal, const RequiredWord& missing) noexcept {
  // "No locale handle: word 1182 of the NLS context is null"
  char16_t message[80];
  char16_t* end = message;
  const auto append = [&](std::u16string_view text) {
    end = std::copy(text.begin(), text.end(), end);
  };
  append(u"No locale handle: word ");
  const std::size_t number = missing.offset / sizeof(std::uint64_t);
  for (std::size_t place = 1000; place > 0; place /= 10) {  // no object needs its word 0
    if (number >= place) *end++ = static_cast<char16_t>(u'0' + number / place % 10);
  }
  append(u" of ");
  append(object_names[static_cast<std::size_t>(missing.object)]);
  append(u" is null");
  *end = u'\0';
  host_calls::write_warning(journal, message);
}

}  // namespace jwnls
