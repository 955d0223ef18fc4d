// What a host hands to the module: the kernel, the NLS context, the zone service and a converter.
//
// The host makes and owns all of them, and keeps them until the last handle is gone. Their words
// are laid out as those of the smaller objects (abi/host_objects.h): named words are the interface,
// pinned below, the others the host's own. A word is required unless its comment says that it may
// be null; a word for "later" must be null at first.
//
// 8-bit object names end in a zero. UTF-16 names travel with their length in units and are not
// terminated. Operations may be called by any thread, at the same time as others, unless a comment
// says that the creation lock is held. Services call few of them: to_upper, zone_info, read_option
// and format_float, and what finds a zone (normalise_zone, open, the handle's zone track and lock,
// the pool) when a text that is read names one, or when a handle is given another. All others are
// called while a handle is made. No exception may leave an operation.
//
// examples/host.c is a small complete host.

#ifndef JWNLS_ABI_HOST_TABLES_H_
#define JWNLS_ABI_HOST_TABLES_H_

#include "abi/host_objects.h"

#ifdef __cplusplus
// A host in C++ defines jwnls::Zone, a host in C `struct jw_zone`.
namespace jwnls {
struct Zone;
}
typedef jwnls::Zone jw_zone;
extern "C" {
#else
/// An opened time zone. The host defines it; only the host looks inside.
typedef struct jw_zone jw_zone;
#endif

struct jw_locale_handle;
struct jw_float_options;

/// What a pool is asked for with. A host need not read it.
typedef struct jw_pool_parameters {
  uint32_t flags;  // 0x800000
  uint32_t zero_4;
  uint64_t zero_8[2];
} jw_pool_parameters;

/// What a track is asked for with. A host need not read it.
typedef struct jw_track_parameters {
  uint32_t word_0;  // 1
  uint32_t zero_4;
  uint64_t zero_8;
  uint64_t word_2;   // 1
  uint32_t word_24;  // 0x20000000
  uint32_t zero_28;
  uint64_t zero_32[4];
} jw_track_parameters;

/// The floating formatter of the host's own. Its arguments and answers are those of service slot 55
/// (abi/services.h); `options` is null for slot 24. For 8-bit output, too, it writes UTF-16.
typedef struct jw_host_formatting {
  jw_host_word word_0[3];
  /// May be null: the module then formats.
  uint32_t (*format_float)(struct jw_locale_handle* handle, double value, int32_t width,
                           int32_t decimals, uint32_t flags, char16_t* out, int64_t capacity,
                           int64_t* length, const struct jw_float_options* options);
} jw_host_formatting;

/// The kernel handle, which the module keeps for the whole process, and the NLS context's host
/// service object. They share this layout, and may be one object.
typedef struct jw_kernel jw_kernel;
struct jw_kernel {
  jw_host_word word_0[3];
  /// A lock, or null. `parameters` are zeros, `journal` may be null. Creation lock held.
  jw_lock* (*create_lock)(jw_kernel* kernel, const uint8_t parameters[2], jw_journal* journal,
                          const char* name);
  jw_host_word word_4;
  /// May be null: there is no journal. A journal, or null; `parameters` are zeros. Two creations at
  /// once may both ask for one; the later stays in the NLS context.
  jw_journal* (*create_journal)(jw_kernel* kernel, const uint8_t parameters[88], uint64_t zero,
                                const char* name);
  /// A pool, or null, with the reason reported to `errors`, which may be null. `parameters` is a
  /// jw_pool_parameters.
  jw_pool* (*create_pool)(jw_kernel* kernel, const void* parameters, jw_error_sink* errors,
                          const char* name);
  jw_host_word word_7;
  /// A track, or null. `parameters` is a jw_track_parameters, `journal` may be null.
  jw_track* (*create_track)(jw_kernel* kernel, const void* parameters, jw_journal* journal,
                            const char* name);
  /// Loads an extension by name ("jwemsg", "jwnlsldb") and makes an object of it: opens <name>.so,
  /// calls its `jwextver`, refuses an interface other than 6.1, and calls the factory that has the
  /// extension's name (abi/locale_handle.h). A library may be opened once, but every call makes a
  /// new object. Null when any step fails. Creation lock held.
  void* (*load_extension)(jw_kernel* kernel, const char16_t* name, int64_t length, uint64_t zero);
  jw_host_word word_10[4];
  /// May be null: no option is set. Writes an option's value. The module asks for the integer
  /// JW_NAME_YEARCUTOFF, the first year of the hundred that two-digit years of periods belong to:
  /// `type` is JW_INTEGER_OPTION, `value` an int64_t, `*size` the bytes of room there, then those
  /// written. For an option that is not set (or `*size` below 8) `value` must be left as it is: it
  /// holds the default, 1950. The status says why, and is not read.
  uint32_t (*read_option)(jw_kernel* kernel, const char16_t* name, int64_t length, uint32_t type,
                          void* value, int64_t* size);
  jw_host_word word_15[12];
  /// May be null: ASCII's letters count. 65,536 class words indexed by unit, which stay as they
  /// are; JW_LOWER_CASE_CLASS marks lower-case letters.
  const uint16_t* character_classes;
  /// 0: floating values go to `formatting`, where there is one. Else the module formats.
  uint64_t formatter_state;
  const jw_host_formatting* formatting;  // may be null: the module formats
  jw_host_word word_30;
  jw_option_store* option_store;  // may be null: neither option node nor journal is looked for
};
#define JW_LOWER_CASE_CLASS 0x0002u
#define JW_INTEGER_OPTION 3u

/// The host's time zones.
typedef struct jw_zone_service jw_zone_service;
struct jw_zone_service {
  jw_host_word word_0[48];
  /// Opens a zone by its normalised name, or gives null. The handle's track owns it. At least the
  /// zones that `os_zone` gives and America/New_York should open.
  jw_zone* (*open)(jw_zone_service* service, const char16_t* name, int64_t length, uint64_t zero);
  jw_host_word word_49[2];
  /// Ends a zone. No service uses it any more.
  void (*close)(jw_zone_service* service, jw_zone* zone);
  jw_host_word word_52[7];
  /// What is in force in the zone now: its abbreviation, at most JW_ZONE_CAPACITY units, and the
  /// seconds that it is east of UTC. JW_OK; after any other status "XST" and "+0000" are shown.
  uint32_t (*zone_info)(jw_zone_service* service, jw_zone* zone, char16_t abbreviation[50],
                        int64_t* length, int64_t* offset_seconds);
};
#define JW_ZONE_CAPACITY 50  // units of a zone's name, and of its abbreviation

/// A resolved locale name. It belongs to the host and lives as long as the NLS context.
typedef struct jw_resolved_locale {
  jw_host_word word_0[2];
  int64_t length;     // units of the canonical name, 1 to 60
  char16_t name[60];  // the object may end behind the last unit in use
} jw_resolved_locale;

/// The host's object for national language support, one per process as a rule. The module writes
/// locale_database, journal and app_node, each on first need; everything else in it is only read.
typedef struct jw_nls_context jw_nls_context;
struct jw_nls_context {
  jw_host_word word_0[5];
  jw_kernel* host_service;
  jw_host_word word_6[25];
  /// The upper case of one unit, at least of ASCII's letters; a unit without one is its own.
  char16_t (*to_upper)(jw_nls_context* context, char16_t unit, uint64_t zero);
  jw_host_word word_32[7];
  /// Resolves the name that create_handle was given, whatever it is, and points `out` to the
  /// locale. The canonical name must be one that the locale database knows ("de_DE"). JW_OK, or
  /// JW_RESOLVED_WITH_WARNING for a locale that is only near; any other status refuses the name,
  /// and is what create_handle answers. `flags` is JW_RESOLVE_FLAGS. Creation lock held.
  uint32_t (*resolve_locale)(jw_nls_context* context, const char16_t* name, int64_t length,
                             uint32_t flags, jw_resolved_locale** out);
  jw_host_word word_40[40];
  /// Writes the canonical form of a zone's name. `*length_io` holds the capacity, then the length;
  /// `*extra` is 0 and may be left. `flags` is JW_NORMALISE_ZONE_FLAGS. JW_OK; JW_LOOKUP_FAILED for
  /// a name that is no zone, JW_DOES_NOT_FIT for one beyond the capacity, past which nothing may be
  /// written. A failure refuses the name, and is what create_handle answers for its caller's zone.
  uint32_t (*normalise_zone)(jw_nls_context* context, const char16_t* name, int64_t length,
                             uint64_t flags, char16_t* out, int64_t* length_io, uint64_t* extra);
  jw_host_word word_81[4];
  /// Writes the operating system's zone, likewise. JW_OK; JW_NO_OS_ZONE or JW_LOOKUP_FAILED when
  /// there is none: the handle gets America/New_York, and a journal a warning. Any other status is
  /// not read: name and length count as they were left. `flags` is JW_OS_ZONE_FLAGS.
  uint32_t (*os_zone)(jw_nls_context* context, char16_t* out, int64_t* length_io, uint32_t flags);
  jw_host_word word_86[56];
  jw_pool* pool;  // of handles, records and zone entries
  jw_host_word word_143;
  /// May be null: handles are not shared, and belong to whoever made them. Else the track that
  /// service slot 78 of any handle made for it; set before other threads create handles.
  jw_track* handle_cache;
  jw_host_word word_145;
  jw_locale_database* locale_database;  // null at first: later the host's to destroy
  jw_host_word word_147[1015];
  jw_lock* creation_lock;
  jw_host_word word_1163[5];
  jw_journal* journal;  // null at first, and may stay so; later the host's to end
  void* app_node;       // null at first, and may stay so: the option store's "App.NLS"
  jw_host_word word_1170[12];
  jw_zone_service* zone_service;
};
#define JW_RESOLVE_FLAGS 8u
#define JW_NORMALISE_ZONE_FLAGS 16u
#define JW_OS_ZONE_FLAGS 8u

/// A host's encoder, for slots 57 and 58 (abi/services.h).
typedef struct jw_converter jw_converter;
struct jw_converter {
  jw_host_word word_0[3];
  /// Writes the one byte of a unit in the host's 8-bit or EBCDIC encoding; not 0 when it has none.
  uint32_t (*convert)(jw_converter* converter, char16_t unit, uint8_t* out);
};

#ifdef __cplusplus
}  // extern "C"
#endif

JW_SIZE_IS(jw_pool_parameters, 24);
JW_SIZE_IS(jw_track_parameters, 64);
JW_AT_WORD(jw_track_parameters, word_2, 2);
JW_AT_WORD(jw_track_parameters, word_24, 3);
JW_AT_WORD(jw_host_formatting, format_float, 3);
JW_AT_WORD(jw_kernel, create_lock, 3);
JW_AT_WORD(jw_kernel, create_journal, 5);
JW_AT_WORD(jw_kernel, create_pool, 6);
JW_AT_WORD(jw_kernel, create_track, 8);
JW_AT_WORD(jw_kernel, load_extension, 9);
JW_AT_WORD(jw_kernel, read_option, 14);
JW_AT_WORD(jw_kernel, character_classes, 27);
JW_AT_WORD(jw_kernel, formatter_state, 28);
JW_AT_WORD(jw_kernel, formatting, 29);
JW_AT_WORD(jw_kernel, option_store, 31);
JW_AT_WORD(jw_zone_service, open, 48);
JW_AT_WORD(jw_zone_service, close, 51);
JW_AT_WORD(jw_zone_service, zone_info, 59);
JW_AT_WORD(jw_resolved_locale, length, 2);
JW_AT_WORD(jw_resolved_locale, name, 3);
JW_AT_WORD(jw_nls_context, host_service, 5);
JW_AT_WORD(jw_nls_context, to_upper, 31);
JW_AT_WORD(jw_nls_context, resolve_locale, 39);
JW_AT_WORD(jw_nls_context, normalise_zone, 80);
JW_AT_WORD(jw_nls_context, os_zone, 85);
JW_AT_WORD(jw_nls_context, pool, 142);
JW_AT_WORD(jw_nls_context, handle_cache, 144);
JW_AT_WORD(jw_nls_context, locale_database, 146);
JW_AT_WORD(jw_nls_context, creation_lock, 1162);
JW_AT_WORD(jw_nls_context, journal, 1168);
JW_AT_WORD(jw_nls_context, app_node, 1169);
JW_AT_WORD(jw_nls_context, zone_service, 1182);
JW_AT_WORD(jw_converter, convert, 3);

#ifdef __cplusplus
namespace jwnls {

using PoolParameters = ::jw_pool_parameters;
using TrackParameters = ::jw_track_parameters;
using HostFormatting = ::jw_host_formatting;
using Kernel = ::jw_kernel;
using ZoneService = ::jw_zone_service;
using ResolvedLocale = ::jw_resolved_locale;
using NlsContext = ::jw_nls_context;
using Converter = ::jw_converter;

inline constexpr PoolParameters pool_parameters = {0x800000, 0, {}};
inline constexpr TrackParameters track_parameters = {1, 0, 0, 1, 0x20000000, 0, {}};
inline constexpr std::uint16_t lower_case_class = JW_LOWER_CASE_CLASS;
inline constexpr std::uint32_t integer_option = JW_INTEGER_OPTION;
inline constexpr std::int64_t zone_name_capacity = JW_ZONE_CAPACITY;
inline constexpr std::int64_t zone_abbreviation_capacity = JW_ZONE_CAPACITY;
inline constexpr std::uint32_t resolve_flags = JW_RESOLVE_FLAGS;
inline constexpr std::uint64_t normalise_zone_flags = JW_NORMALISE_ZONE_FLAGS;
inline constexpr std::uint32_t os_zone_flags = JW_OS_ZONE_FLAGS;

static_assert(std::is_standard_layout_v<Kernel> && std::is_standard_layout_v<NlsContext>);

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_HOST_TABLES_H_
