// What a host hands to the module: function tables, word by word.
//
// Each table is an object of the host whose 64-bit words hold operations and a few data pointers.
// The word positions are the interface, so each is pinned below; words that are not named are the
// host's own and never touched. An operation takes its own table's object first, with one
// exception: the locale database's `fill` takes the record first and is not given the extension.
//
// 8-bit object names end in a zero. UTF-16 names travel with their length in units and are not
// terminated, but for `find_node` and the journal's `write`, which take no length.
// Host and module never free or destroy null.

#ifndef JWNLS_ABI_HOST_TABLES_H_
#define JWNLS_ABI_HOST_TABLES_H_

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace jwnls {

struct Kernel;
struct NlsContext;

using HostWord = const void*;  // a word that the module does not use

// A keyed table's entry, as look-up and insertion give it. It stays valid until it is released.
struct TrackEntry {
  HostWord word_0[2];
  void* value;  // word 2
};

using EntryDestructor = std::uint32_t (*)(TrackEntry*);

/// The value that asks a track for the host's own release of its entries.
// NOLINTNEXTLINE(performance-no-int-to-ptr): the interface has a number where an address stands
inline const EntryDestructor host_release = reinterpret_cast<EntryDestructor>(std::uintptr_t{1});

struct Journal {
  HostWord word_0[5];
  /// Writes a zero-terminated message; the module writes only at journal_warning.
  void (*write)(Journal*, std::uint32_t level, const char16_t* message, std::uint64_t zero);
};
inline constexpr std::uint32_t journal_warning = 3;

struct ErrorSink {
  HostWord word_0[7];
  void (*report)(ErrorSink*, std::uint32_t severity, std::uint32_t status);
};
inline constexpr std::uint32_t severity_error = 4;

struct Pool {
  HostWord word_0[2];
  void (*destroy)(Pool*);  // frees everything in it as well
  void* (*allocate)(Pool*, std::uint64_t bytes, std::uint32_t flags);  // null when out of memory
  void (*free)(Pool*, void*);
};
inline constexpr std::uint32_t allocate_zeroed = 0x80000000;

struct Lock {
  HostWord word_0[2];
  void (*destroy)(Lock*);
  void (*take)(Lock*, std::int64_t, std::int64_t);  // the module passes 1, 1
  void (*release)(Lock*);  // ignored when the calling thread does not hold the lock
};

// A keyed table: keys are byte strings. Look-ups may run in any number of threads at once.
struct Track {
  HostWord word_0[2];
  void (*destroy)(Track*);  // calls the element destructor for each entry
  HostWord word_3[2];
  TrackEntry* (*look_up)(Track*, std::uint32_t flags, std::uint64_t zero, const void* key,
                         std::int64_t key_bytes);
  TrackEntry* (*insert)(Track*, std::uint32_t flags, std::uint64_t zero, void* value,
                        std::uint64_t zero_too, const void* key, std::int64_t key_bytes,
                        std::uint32_t* status);
  void (*set_destructor)(Track*, std::uint64_t zero, EntryDestructor);
  HostWord word_8[10];
  void (*release_entry)(Track*, TrackEntry*);
};
inline constexpr std::uint32_t track_look_up = 0x2000000;
inline constexpr std::uint32_t track_insert = 0x4000000;

struct TrackParameters {
  std::uint32_t word_0;  // 1
  std::uint32_t zero_4;
  std::uint64_t zero_8;
  std::uint64_t word_2;   // 1
  std::uint32_t word_24;  // 0x20000000
  std::uint32_t zero_28;
  std::uint64_t zero_32[4];
};
inline constexpr TrackParameters track_parameters = {1, 0, 0, 1, 0x20000000, 0, {}};

struct PoolParameters {
  std::uint32_t flags;  // 0x800000
  std::uint32_t zero_4;
  std::uint64_t zero_8[2];
};
inline constexpr PoolParameters pool_parameters = {0x800000, 0, {}};

struct OptionStore {
  HostWord word_0[18];
  void* (*create_node)(OptionStore*, const char16_t* name, std::int64_t length);
  HostWord word_19[3];
  void* (*find_node)(OptionStore*, const char16_t* name);  // zero-terminated name; null: absent
};

struct MessageExtension {
  HostWord word_0[2];
  void (*destroy)(MessageExtension*);
};

struct LocaleDatabase {
  HostWord word_0[10];
  /// Fills a locale record from its byte 128 on. 0 and filled_with_warning are success.
  std::uint32_t (*fill)(void* record, const char16_t* name, std::int64_t length);
};

// The floating formatter of the host's own, reached through word 29 of the kernel. Its arguments
// are those of service slot 55.
struct LocaleHandle;
struct FloatOptions;
struct HostFormatting {
  HostWord word_0[3];
  std::uint32_t (*format_float)(LocaleHandle*, double value, std::int32_t width,
                                std::int32_t decimals, std::uint32_t flags, char16_t* out,
                                std::int64_t capacity, std::int64_t* length,
                                const FloatOptions* options);
};

// The kernel handle and the NLS context's host service object share this layout.
struct Kernel {
  HostWord word_0[3];
  Lock* (*create_lock)(Kernel*, const std::uint8_t parameters[2], Journal*, const char* name);
  HostWord word_4;
  Journal* (*create_journal)(Kernel*, const std::uint8_t parameters[88], std::uint64_t zero,
                             const char* name);
  Pool* (*create_pool)(Kernel*, const void* parameters, ErrorSink*, const char* name);
  HostWord word_7;
  Track* (*create_track)(Kernel*, const void* parameters, Journal*, const char* name);
  void* (*load_extension)(Kernel*, const char16_t* name, std::int64_t length, std::uint64_t zero);
  HostWord word_10[4];
  std::uint32_t (*read_option)(Kernel*, const char16_t* name, std::int64_t length,
                               std::uint32_t type, void* value, std::int64_t* size);
  HostWord word_15[12];
  const std::uint16_t* character_classes;  // null, or 65,536 class words indexed by unit
  std::uint64_t formatter_state;           // 0: floating values go to the host's own formatter
  const HostFormatting* formatting;        // may be null
  HostWord word_30;
  OptionStore* option_store;  // may be null
};
inline constexpr std::uint16_t lower_case_class = 0x0002;
inline constexpr std::uint32_t integer_option = 3;

struct Zone;  // an opened time zone; only the host looks inside

struct ZoneService {
  HostWord word_0[48];
  Zone* (*open)(ZoneService*, const char16_t* name, std::int64_t length, std::uint64_t zero);
  HostWord word_49[2];
  void (*close)(ZoneService*, Zone*);
  HostWord word_52[7];
  /// The abbreviation in force now (up to 50 units) and the offset from UTC. 0 = success.
  std::uint32_t (*zone_info)(ZoneService*, Zone*, char16_t abbreviation[50], std::int64_t* length,
                             std::int64_t* offset_seconds);
};
inline constexpr std::int64_t zone_name_capacity = 50;          // units
inline constexpr std::int64_t zone_abbreviation_capacity = 50;  // units

// A resolved locale name. It belongs to the host and lives as long as the NLS context.
struct ResolvedLocale {
  HostWord word_0[2];
  std::int64_t length;  // units of the canonical name
  char16_t name[1];     // the name begins here and goes on for `length` units
};

// The host's object for national language support, one per process as a rule. The module writes
// words 146, 1168 and 1169 (each on first need); everything else in it is only read.
struct NlsContext {
  HostWord word_0[5];
  Kernel* host_service;
  HostWord word_6[25];
  char16_t (*to_upper)(NlsContext*, char16_t unit, std::uint64_t zero);
  HostWord word_32[7];
  std::uint32_t (*resolve_locale)(NlsContext*, const char16_t* name, std::int64_t length,
                                  std::uint32_t flags, ResolvedLocale** out);
  HostWord word_40[40];
  /// Brings a zone name into its canonical form; *length_io holds the capacity, then the length.
  std::uint32_t (*normalise_zone)(NlsContext*, const char16_t* name, std::int64_t length,
                                  std::uint64_t flags, char16_t* out, std::int64_t* length_io,
                                  std::uint64_t* extra);
  HostWord word_81[4];
  /// The operating system's zone name; *length_io holds the capacity, then the length.
  std::uint32_t (*os_zone)(NlsContext*, char16_t* out, std::int64_t* length_io,
                           std::uint32_t flags);
  HostWord word_86[56];
  Pool* pool;
  HostWord word_143;
  Track* handle_cache;  // may be null
  HostWord word_145;
  LocaleDatabase* locale_database;  // loaded by the first creation that needs it
  HostWord word_147[1015];
  Lock* creation_lock;
  HostWord word_1163[5];
  Journal* journal;  // created on first need; may stay null
  void* app_node;    // the "App.NLS" option node, found or created on first need
  HostWord word_1170[12];
  ZoneService* zone_service;
};
inline constexpr std::uint32_t resolve_flags = 8;
inline constexpr std::uint64_t normalise_zone_flags = 16;
inline constexpr std::uint32_t os_zone_flags = 8;

/// Turns one UTF-16 unit into one byte of the host's 8-bit or EBCDIC encoding.
struct Converter {
  HostWord word_0[3];
  std::uint32_t (*convert)(Converter*, char16_t unit, std::uint8_t* out);  // 0 = success
};

namespace host_layout {
// True when `member_offset` is that of 64-bit word `word`.
constexpr bool at_word(std::size_t member_offset, std::size_t word) {
  return member_offset == word * 8;
}
static_assert(sizeof(void*) == 8, "every word of the host's tables has 64 bits");
static_assert(at_word(offsetof(TrackEntry, value), 2));
static_assert(at_word(offsetof(Journal, write), 5));
static_assert(at_word(offsetof(ErrorSink, report), 7));
static_assert(at_word(offsetof(Pool, destroy), 2) && at_word(offsetof(Pool, allocate), 3) &&
              at_word(offsetof(Pool, free), 4));
static_assert(at_word(offsetof(Lock, destroy), 2) && at_word(offsetof(Lock, take), 3) &&
              at_word(offsetof(Lock, release), 4));
static_assert(at_word(offsetof(Track, destroy), 2) && at_word(offsetof(Track, look_up), 5) &&
              at_word(offsetof(Track, insert), 6) && at_word(offsetof(Track, set_destructor), 7) &&
              at_word(offsetof(Track, release_entry), 18));
static_assert(sizeof(TrackParameters) == 64 && offsetof(TrackParameters, word_2) == 16 &&
              offsetof(TrackParameters, word_24) == 24);
static_assert(sizeof(PoolParameters) == 24);
static_assert(at_word(offsetof(OptionStore, create_node), 18) &&
              at_word(offsetof(OptionStore, find_node), 22));
static_assert(at_word(offsetof(MessageExtension, destroy), 2));
static_assert(at_word(offsetof(LocaleDatabase, fill), 10));
static_assert(at_word(offsetof(HostFormatting, format_float), 3));
static_assert(
    at_word(offsetof(Kernel, create_lock), 3) && at_word(offsetof(Kernel, create_journal), 5) &&
    at_word(offsetof(Kernel, create_pool), 6) && at_word(offsetof(Kernel, create_track), 8) &&
    at_word(offsetof(Kernel, load_extension), 9) && at_word(offsetof(Kernel, read_option), 14) &&
    at_word(offsetof(Kernel, character_classes), 27) &&
    at_word(offsetof(Kernel, formatter_state), 28) && at_word(offsetof(Kernel, formatting), 29) &&
    at_word(offsetof(Kernel, option_store), 31));
static_assert(at_word(offsetof(ZoneService, open), 48) &&
              at_word(offsetof(ZoneService, close), 51) &&
              at_word(offsetof(ZoneService, zone_info), 59));
static_assert(at_word(offsetof(ResolvedLocale, length), 2) &&
              at_word(offsetof(ResolvedLocale, name), 3));
static_assert(at_word(offsetof(NlsContext, host_service), 5) &&
              at_word(offsetof(NlsContext, to_upper), 31) &&
              at_word(offsetof(NlsContext, resolve_locale), 39) &&
              at_word(offsetof(NlsContext, normalise_zone), 80) &&
              at_word(offsetof(NlsContext, os_zone), 85) &&
              at_word(offsetof(NlsContext, pool), 142) &&
              at_word(offsetof(NlsContext, handle_cache), 144) &&
              at_word(offsetof(NlsContext, locale_database), 146) &&
              at_word(offsetof(NlsContext, creation_lock), 1162) &&
              at_word(offsetof(NlsContext, journal), 1168) &&
              at_word(offsetof(NlsContext, app_node), 1169) &&
              at_word(offsetof(NlsContext, zone_service), 1182));
static_assert(at_word(offsetof(Converter, convert), 3));
static_assert(std::is_standard_layout_v<Kernel> && std::is_standard_layout_v<NlsContext>);
}  // namespace host_layout

}  // namespace jwnls

#endif  // JWNLS_ABI_HOST_TABLES_H_
