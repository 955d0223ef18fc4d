// The small objects that a host makes for the module: pools, locks, tracks, journals, error sinks,
// option stores, and the objects of extensions.
//
// Each is a table whose 64-bit words hold operations. Word positions are the interface and are
// pinned below; words that have no name are the host's own and never touched, so a host may keep
// its data there or behind the table. An operation takes its own table's object first.
//
// The host makes them (see abi/host_tables.h for the calls that ask for them). Each says who ends
// it; nobody ever frees or destroys null. Every operation named here is required. Any thread may
// call any of them, at the same time as others unless it says otherwise. No exception may leave
// one.

#ifndef JWNLS_ABI_HOST_OBJECTS_H_
#define JWNLS_ABI_HOST_OBJECTS_H_

#include "abi/language.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void* jw_host_word;  // a word that the module does not use

/// A source of memory. Ended by whoever asked for it; the NLS context's pool by the host.
typedef struct jw_pool jw_pool;
struct jw_pool {
  jw_host_word word_0[2];
  /// Frees everything in it, and the pool.
  void (*destroy)(jw_pool* pool);
  /// `bytes` of memory, aligned for any type, or null when there is none. `flags` is 0 or
  /// JW_ALLOCATE_ZEROED. Handles ask for at most 40,248 bytes at a time.
  void* (*allocate)(jw_pool* pool, uint64_t bytes, uint32_t flags);
  /// Takes back memory that this pool gave.
  void (*free)(jw_pool* pool, void* memory);
};
#define JW_ALLOCATE_ZEROED 0x80000000u

/// A mutex. Ended by its handle; the NLS context's creation lock by the host.
typedef struct jw_lock jw_lock;
struct jw_lock {
  jw_host_word word_0[2];
  /// Called when no thread holds it.
  void (*destroy)(jw_lock* lock);
  /// Waits until the lock is the calling thread's. The module passes 1, 1, and never takes a lock
  /// that its thread holds; it takes a handle's zone lock while it holds the creation lock.
  void (*take)(jw_lock* lock, int64_t one, int64_t one_too);
  /// Must be ignored when the calling thread does not hold the lock: a creation that fails early
  /// releases a lock that it has not taken yet.
  void (*release)(jw_lock* lock);
};

/// A keyed table's entry, as look-up and insertion give it. The track owns it.
typedef struct jw_track_entry {
  jw_host_word word_0[2];
  void* value;  // as inserted
} jw_track_entry;

/// What a track calls with each entry when it ends. The result means nothing.
typedef uint32_t (*jw_entry_destructor)(jw_track_entry* entry);

/// In place of a destructor: nobody is called, and values are left alone.
#define JW_HOST_RELEASE ((jw_entry_destructor)(uintptr_t)1)

/// A keyed table: keys are byte strings, compared byte by byte. Ended by its handle; the cache of
/// handles (service slot 78) by the host. Look-ups run in any number of threads, also while one
/// thread inserts; the module's locks keep insertions into one track apart.
typedef struct jw_track jw_track;
struct jw_track {
  jw_host_word word_0[2];
  /// Calls the destructor, where one is set, once for each entry; then frees entries and track.
  void (*destroy)(jw_track* track);
  jw_host_word word_3[2];
  /// The entry of a key, or null. `flags` is JW_TRACK_LOOK_UP. The caller releases it.
  jw_track_entry* (*look_up)(jw_track* track, uint32_t flags, uint64_t zero, const void* key,
                             int64_t key_bytes);
  /// Adds an entry and returns it; the caller releases it. The key must be copied: the module's
  /// keys are on its stack. `flags` is JW_TRACK_INSERT. Null when the entry cannot be made or the
  /// key is there already, with a status that says why; on success `status` may be left alone.
  jw_track_entry* (*insert)(jw_track* track, uint32_t flags, uint64_t zero, void* value,
                            uint64_t zero_too, const void* key, int64_t key_bytes,
                            uint32_t* status);
  /// Called once, before the first insertion. JW_HOST_RELEASE asks for no call.
  void (*set_destructor)(jw_track* track, uint64_t zero, jw_entry_destructor destructor);
  jw_host_word word_8[10];
  /// Gives back an entry that look_up or insert returned. It stays in the track: a host whose
  /// entries live as long as their track has nothing to do.
  void (*release_entry)(jw_track* track, jw_track_entry* entry);
};
#define JW_TRACK_LOOK_UP 0x2000000u
#define JW_TRACK_INSERT 0x4000000u

/// A log. Ended by the host, with the NLS context that it belongs to.
typedef struct jw_journal jw_journal;
struct jw_journal {
  jw_host_word word_0[5];
  /// Writes a zero-terminated message, which the host copies when it keeps it. The module writes at
  /// JW_JOURNAL_WARNING only.
  void (*write)(jw_journal* journal, uint32_t level, const char16_t* message, uint64_t zero);
};
#define JW_JOURNAL_WARNING 3u

/// Where extensions report that they cannot be made. The host's own.
typedef struct jw_error_sink jw_error_sink;
struct jw_error_sink {
  jw_host_word word_0[7];
  /// The module reports JW_OUT_OF_MEMORY at JW_SEVERITY_ERROR.
  void (*report)(jw_error_sink* sink, uint32_t severity, uint32_t status);
};
#define JW_SEVERITY_ERROR 4u

/// Where the host keeps its configuration. The host's own. Nodes are the host's too: the module
/// keeps the one named "App.NLS" in the NLS context and does not look inside.
typedef struct jw_option_store jw_option_store;
struct jw_option_store {
  jw_host_word word_0[18];
  /// Makes a node; null when it cannot. The name is UTF-16, `length` units, not terminated.
  void* (*create_node)(jw_option_store* store, const char16_t* name, int64_t length);
  jw_host_word word_19[3];
  /// The node of a zero-terminated name, or null.
  void* (*find_node)(jw_option_store* store, const char16_t* name);
};

/// An object of the message extension `jwemsg`, one for each handle, which ends it. See
/// abi/message_texts.h for what else it can do. Made by the extension, not by the host.
typedef struct jw_message_extension jw_message_extension;
struct jw_message_extension {
  jw_host_word word_0[2];
  void (*destroy)(jw_message_extension* extension);
};

/// The object of the locale database `jwnlsldb`, one for each NLS context, ended by the host after
/// the last handle. Made by the extension, not by the host.
typedef struct jw_locale_database jw_locale_database;
struct jw_locale_database {
  jw_host_word word_0[2];
  void (*destroy)(jw_locale_database* database);
  jw_host_word word_3[7];
  /// Fills a locale record (abi/locale_record.h) from its byte 128 on; the head is the caller's.
  /// The record comes first, and the object is not given. The name is canonical ("de_DE"), UTF-16,
  /// `length` units. JW_OK and JW_FILLED_WITH_WARNING are success; JW_LOOKUP_FAILED for a name that
  /// the database does not know and JW_NULL_ARGUMENT for no record leave it alone.
  uint32_t (*fill)(void* record, const char16_t* name, int64_t length);
};

#ifdef __cplusplus
}  // extern "C"
#endif

JW_AT_WORD(jw_pool, destroy, 2);
JW_AT_WORD(jw_pool, allocate, 3);
JW_AT_WORD(jw_pool, free, 4);
JW_AT_WORD(jw_lock, destroy, 2);
JW_AT_WORD(jw_lock, take, 3);
JW_AT_WORD(jw_lock, release, 4);
JW_AT_WORD(jw_track_entry, value, 2);
JW_AT_WORD(jw_track, destroy, 2);
JW_AT_WORD(jw_track, look_up, 5);
JW_AT_WORD(jw_track, insert, 6);
JW_AT_WORD(jw_track, set_destructor, 7);
JW_AT_WORD(jw_track, release_entry, 18);
JW_AT_WORD(jw_journal, write, 5);
JW_AT_WORD(jw_error_sink, report, 7);
JW_AT_WORD(jw_option_store, create_node, 18);
JW_AT_WORD(jw_option_store, find_node, 22);
JW_AT_WORD(jw_message_extension, destroy, 2);
JW_AT_WORD(jw_locale_database, destroy, 2);
JW_AT_WORD(jw_locale_database, fill, 10);

#ifdef __cplusplus
namespace jwnls {

using HostWord = ::jw_host_word;
using Pool = ::jw_pool;
using Lock = ::jw_lock;
using TrackEntry = ::jw_track_entry;
using EntryDestructor = ::jw_entry_destructor;
using Track = ::jw_track;
using Journal = ::jw_journal;
using ErrorSink = ::jw_error_sink;
using OptionStore = ::jw_option_store;
using MessageExtension = ::jw_message_extension;
using LocaleDatabase = ::jw_locale_database;

// NOLINTNEXTLINE(performance-no-int-to-ptr): the interface has a number where an address stands
inline const EntryDestructor host_release = reinterpret_cast<EntryDestructor>(std::uintptr_t{1});
inline constexpr std::uint32_t allocate_zeroed = JW_ALLOCATE_ZEROED;
inline constexpr std::uint32_t track_look_up = JW_TRACK_LOOK_UP;
inline constexpr std::uint32_t track_insert = JW_TRACK_INSERT;
inline constexpr std::uint32_t journal_warning = JW_JOURNAL_WARNING;
inline constexpr std::uint32_t severity_error = JW_SEVERITY_ERROR;

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_HOST_OBJECTS_H_
