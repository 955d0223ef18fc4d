// What the module hands to a host: its exports, the locale factory and the locale handle.
//
// The module makes factories and handles, in pools of the host's; the host ends them through the
// factory. Word positions are the interface and are pinned below. What each service of a handle
// does is said in abi/services.h. The host looks at a handle's words, and writes none of them.
//
// The order of calls: `jwextver` (the interface must be 6.1) or `jwextent`, then `jwnlsloc`, then
// the factory's operations from any thread; the services of a handle from any thread as long as the
// handle lives. The module keeps the kernel in one variable for the whole process. At the end the
// handles go first, then the NLS context's locale database and pool, and the factory at any time.

#ifndef JWNLS_ABI_LOCALE_HANDLE_H_
#define JWNLS_ABI_LOCALE_HANDLE_H_

#include "abi/host_tables.h"
#include "abi/locale_record.h"
#include "abi/services.h"

/// The characters "nevo", as word 0 of every factory and handle; the upper half is zero.
#define JW_OBJECT_TAG 0x6F76656Eu

#ifdef __cplusplus
extern "C" {
#endif

/// One locale with one time zone. Shared by every caller that asks for the pair, and immutable but
/// for `zone`. Owned by the host's handle cache, or by the caller that made it.
struct jw_locale_handle {
  uint64_t tag;                    // JW_OBJECT_TAG
  const char* type_text;           // "JWLocale handle"
  jw_no_operation* no_operation;   //
  jw_nls_context* context;         // outlives the handle
  jw_message_extension* messages;  // owned; a jw_message_texts (abi/message_texts.h)
  int64_t name_length;             // units of the canonical locale name
  char16_t name[64];               //
  jw_service_table services;       // slots 22 to 85
  uint64_t zero_86[6];             //
  jw_locale_record* record;        // owned; read-only once the handle is made
  uint64_t zero_93;                //
  jw_lock* message_lock;           // owned
  jw_track* message_track;         // owned
  jw_lock* zone_lock;              // owned; guards insertions into zone_track
  jw_track* zone_track;            // owned; every zone that the handle ever had, by name
  jw_zone* zone;         // the current one, owned by zone_track; read and stored atomically
  uint64_t zero_99[13];  //
};

/// What `create_handle` may be asked for. Null options are the same as all zero.
typedef struct jw_creation_options {
  uint8_t flags;         // JW_PRIVATE_HANDLE or 0
  uint8_t zero_1[7];     //
  const char16_t* zone;  // the handle's time zone; null: the operating system's
  int64_t zone_length;   // units; below 1: as a null zone
} jw_creation_options;
#define JW_PRIVATE_HANDLE 0x1u  // neither looked up in the handle cache nor registered there

typedef struct jw_factory jw_factory;
struct jw_factory {
  uint64_t tag;  // JW_OBJECT_TAG
  uint64_t zero_1[2];
  uint32_t (*version_a)(jw_factory* factory, int64_t* a, int64_t* b, int64_t* c);  // 6, 1, 1
  uint32_t (*version_b)(jw_factory* factory, int64_t* a, int64_t* b, int64_t* c);  // 6, 0, 0
  jw_kernel* kernel;
  /// Destroys the factory's pool, and with it the factory; handles live on. A null factory is
  /// ignored. Returns 0.
  uint32_t (*destroy)(jw_factory* factory);
  uint64_t zero_7[2];
  jw_pool* pool;
  /// Gives the shared handle of a locale and zone, made on first need, or a private one; without a
  /// handle cache in the context every handle is its caller's. `context` may not be null: it is
  /// used unseen. `name` is UTF-16, `length` units, and goes to the host's resolve_locale as it is.
  /// `status` and `options` may be null. Null on failure, with the status written where `status` is
  /// not null: JW_OUT_OF_MEMORY; JW_LOOKUP_FAILED for a zone that cannot be opened or a canonical
  /// name outside 1 to 60 units; what the host's resolution, zone normalisation, cache or locale
  /// database answered; and JW_OK or JW_RESOLVED_WITH_WARNING where an extension, a lock or the
  /// message track could not be had. So a null handle with JW_OK is a failure too: test the handle.
  jw_locale_handle* (*create_handle)(jw_nls_context* context, const char16_t* name, int64_t length,
                                     uint32_t* status, const jw_creation_options* options);
  /// Destroys the handle in the third word of a record such as a jw_track_entry, with everything
  /// that it owns. Nobody may use it any more. Not for a handle that a cache owns. Returns 0.
  uint32_t (*destroy_handle)(void* entry);
};

// ---- Exports of the module, which a host finds by name. The extensions `jwnlsldb` and `jwemsg`
// have the same, with their own name in place of "jwnlsloc".

/// "jwextent": keeps the kernel handle, which must outlive the module's use. Returns 0.
typedef uint32_t jw_extent_export(jw_kernel* kernel);
/// "jwextver": the same, and reports the interface version: 6 and 1. Returns 0.
typedef uint32_t jw_extver_export(jw_kernel* kernel, int64_t* major, int64_t* minor);
/// "jwnlsloc": makes a factory in a pool of its own, or gives null: the kernel gave no pool, or the
/// pool no memory, which is reported to `errors` (it may be null).
typedef jw_factory* jw_factory_export(jw_kernel* kernel, jw_error_sink* errors);
/// Any extension's: its object, a jw_factory, jw_locale_database or jw_message_extension, or null.
typedef void* jw_extension_export(jw_kernel* kernel, jw_error_sink* errors);
/// "jwvercn1": copies the version record (abi/version_record.h), 208 bytes. Returns 0.
typedef uint32_t jw_version_record_export(void* record);

#ifdef __cplusplus
}  // extern "C"
#endif

JW_SIZE_IS(jw_locale_handle, 112 * 8);
JW_AT_WORD(jw_locale_handle, no_operation, 2);
JW_AT_WORD(jw_locale_handle, context, 3);
JW_AT_WORD(jw_locale_handle, messages, 4);
JW_AT_WORD(jw_locale_handle, name_length, 5);
JW_AT_WORD(jw_locale_handle, name, 6);
JW_AT_WORD(jw_locale_handle, services, JW_FIRST_SLOT);
JW_AT_WORD(jw_locale_handle, record, 92);
JW_AT_WORD(jw_locale_handle, message_lock, 94);
JW_AT_WORD(jw_locale_handle, message_track, 95);
JW_AT_WORD(jw_locale_handle, zone_lock, 96);
JW_AT_WORD(jw_locale_handle, zone_track, 97);
JW_AT_WORD(jw_locale_handle, zone, 98);
JW_SIZE_IS(jw_factory, 12 * 8);
JW_AT_WORD(jw_factory, version_a, 3);
JW_AT_WORD(jw_factory, version_b, 4);
JW_AT_WORD(jw_factory, kernel, 5);
JW_AT_WORD(jw_factory, destroy, 6);
JW_AT_WORD(jw_factory, pool, 9);
JW_AT_WORD(jw_factory, create_handle, 10);
JW_AT_WORD(jw_factory, destroy_handle, 11);
JW_AT_OFFSET(jw_creation_options, zone, 8);
JW_AT_OFFSET(jw_creation_options, zone_length, 16);

#ifdef __cplusplus
namespace jwnls {

using CreationOptions = ::jw_creation_options;
using Factory = ::jw_factory;
using JwExtent = ::jw_extent_export;
using JwExtver = ::jw_extver_export;
using JwFactory = ::jw_factory_export;
using JwVersionRecord = ::jw_version_record_export;

inline constexpr std::uint64_t object_tag = JW_OBJECT_TAG;
inline constexpr std::uint8_t private_handle = JW_PRIVATE_HANDLE;

static_assert(std::is_standard_layout_v<LocaleHandle>);

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_LOCALE_HANDLE_H_
