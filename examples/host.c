// A complete host in C: it loads the module, writes a date and reads a number, in German.
//   host <folder of jwnlsloc.so, jwnlsldb.so and jwemsg.so>
// All that the module asks of a host is here; every word that may be null is left null. A real host
// knows more locales and zones, sets no limits, shares handles through a cache, and reports faults.
// clang-format off
#define _GNU_SOURCE
#include <dlfcn.h>
#include <pthread.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include "abi/locale_handle.h"
#include "abi/status.h"
// Words without a name are the host's: here the first of a table leads to the table's object.
// ---- Pools: a zeroed room of which any thread may take a piece, and which goes as a whole.
struct pool { jw_pool table; atomic_size_t used; max_align_t room[4096]; };
static void* allocate(jw_pool* table, uint64_t bytes, uint32_t flags) {
  struct pool* pool = table->word_0[0];
  const size_t pieces = bytes / sizeof(max_align_t) + 1;
  const size_t first = atomic_fetch_add(&pool->used, pieces);
  return first + pieces <= 4096 ? &pool->room[first] : NULL;
}
static void give_back(jw_pool* pool, void* memory) {}  // with the pool
static void destroy_pool(jw_pool* pool) { free(pool->word_0[0]); }
static jw_pool* create_pool(jw_kernel* host, const void* how, jw_error_sink* to, const char* name) {
  struct pool* pool = calloc(1, sizeof *pool);
  if (pool) pool->table = (jw_pool){{pool}, destroy_pool, allocate, give_back};
  return pool ? &pool->table : NULL; }
// ---- Locks: one for all, which a thread may take again; it ignores a release by another thread.
static pthread_mutex_t mutex = PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP;
static void take(jw_lock* lock, int64_t i, int64_t j) { pthread_mutex_lock(&mutex); }
static void release(jw_lock* lock) { pthread_mutex_unlock(&mutex); }
static void destroy_lock(jw_lock* lock) {}
static jw_lock* create_lock(jw_kernel* host, const uint8_t* how, jw_journal* to, const char* name) {
  static jw_lock lock = {.destroy = destroy_lock, .take = take, .release = release};
  return &lock;
}
// ---- Tracks: a few entries with copies of keys. One thread adds; others see what counts.
struct entry { jw_track_entry table; int64_t key_bytes; char key[220]; };
struct track { jw_track table; jw_entry_destructor ended; atomic_int count; struct entry all[8]; };
static jw_track_entry* look_up(jw_track* table, uint32_t flags, uint64_t zero, const void* key,
                               int64_t bytes) {
  struct track* track = table->word_0[0];
  for (struct entry* at = track->all; at < track->all + track->count; ++at)
    if (at->key_bytes == bytes && memcmp(at->key, key, bytes) == 0) return &at->table;
  return NULL;
}
static jw_track_entry* insert(jw_track* table, uint32_t flags, uint64_t zero, void* value,
                              uint64_t zero_too, const void* key, int64_t bytes, uint32_t* status) {
  struct track* track = table->word_0[0];
  *status = JW_OUT_OF_MEMORY;
  if (track->count == 8 || bytes > 220) return NULL;
  struct entry* entry = &track->all[track->count];
  entry->table.value = value, entry->key_bytes = bytes;
  memcpy(entry->key, key, bytes);
  ++track->count;
  return &entry->table;
}
static void release_entry(jw_track* track, jw_track_entry* entry) {}
static void set_destructor(jw_track* table, uint64_t zero, jw_entry_destructor destructor) {
  struct track* track = table->word_0[0];
  track->ended = destructor == JW_HOST_RELEASE ? NULL : destructor;
}
static void destroy_track(jw_track* table) {
  struct track* track = table->word_0[0];
  for (int i = 0; track->ended && i < track->count; ++i) track->ended(&track->all[i].table);
  free(track);
}
static jw_track* create_track(jw_kernel* host, const void* how, jw_journal* log, const char* name) {
  struct track* track = calloc(1, sizeof *track);
  if (track) track->table = (jw_track){{track}, destroy_track, {0}, look_up, insert, set_destructor,
                                       {0}, release_entry};
  return track ? &track->table : NULL;
}
// ---- Extensions: <folder>/<name>.so, with a factory of its name. They stay open.
static const char* folder = ".";
static void* factory_of(jw_kernel* host, const char* name) {
  char path[4096];
  snprintf(path, sizeof path, "%s/%s.so", folder, name);
  void* library = dlopen(path, RTLD_NOW);
  jw_extver_export* version;
  *(void**)&version = library ? dlsym(library, "jwextver") : NULL;
  int64_t major = 0, minor = 0;
  if (version) version(host, &major, &minor);
  return major == 6 && minor == 1 ? dlsym(library, name) : NULL;
}
static void* load(jw_kernel* host, const char16_t* name, int64_t length, uint64_t zero) {
  char symbol[32] = "";
  for (int64_t i = 0; i < length && i < 31; ++i) symbol[i] = name[i];
  jw_extension_export* make;
  *(void**)&make = factory_of(host, symbol);
  return make ? make(host, NULL) : NULL;
}
// ---- Locales, letters and zones: German, ASCII and UTC.
struct jw_zone { char16_t name[3]; } utc = {u"UTC"};
static jw_resolved_locale german = {.length = 5, .name = u"de_DE"};
static char16_t upper(jw_nls_context* context, char16_t unit, uint64_t zero) {
  return unit >= u'a' && unit <= u'z' ? unit - 32 : unit; }
static uint32_t resolve(jw_nls_context* context, const char16_t* name, int64_t length,
                        uint32_t flags, jw_resolved_locale** out) {
  *out = &german;
  return length == 5 && memcmp(name, german.name, 10) == 0 ? JW_OK : JW_LOOKUP_FAILED;
}
static uint32_t normalise(jw_nls_context* context, const char16_t* name, int64_t length,
                          uint64_t flags, char16_t* out, int64_t* length_io, uint64_t* extra) {
  if (length != 3 || memcmp(name, utc.name, 6) != 0) return JW_LOOKUP_FAILED;
  if (*length_io < 3) return JW_DOES_NOT_FIT;
  return memcpy(out, utc.name, 6), *length_io = 3, JW_OK;
}
static uint32_t os_zone(jw_nls_context* context, char16_t* out, int64_t* length, uint32_t flags) {
  return normalise(context, utc.name, 3, 0, out, length, NULL); }
static jw_zone* open_zone(jw_zone_service* s, const char16_t* name, int64_t l, uint64_t zero) {
  return &utc; }
static void close_zone(jw_zone_service* service, jw_zone* zone) {}
static uint32_t zone_info(jw_zone_service* service, jw_zone* zone, char16_t abbreviation[50],
                          int64_t* length, int64_t* offset_seconds) {
  return memcpy(abbreviation, zone->name, 6), *length = 3, *offset_seconds = 0, JW_OK; }

int main(int argc, char** argv) {
  static jw_kernel kernel = {.create_lock = create_lock, .create_pool = create_pool,
                             .create_track = create_track, .load_extension = load};
  static jw_zone_service zones = {.open = open_zone, .close = close_zone, .zone_info = zone_info};
  static jw_nls_context context = {.host_service = &kernel, .os_zone = os_zone, .to_upper = upper,
      .resolve_locale = resolve, .normalise_zone = normalise, .zone_service = &zones};
  uint32_t status; char text[80]; int64_t length, consumed; double number;
  if (argc > 1) folder = argv[1];
  context.pool = create_pool(&kernel, NULL, NULL, "NLS pool");
  context.creation_lock = create_lock(&kernel, NULL, NULL, "NLS creation lock");
  jw_factory_export* make;  // of another type than the extensions' factories
  *(void**)&make = factory_of(&kernel, "jwnlsloc");
  jw_factory* factory = make ? make(&kernel, NULL) : NULL;
  if (factory == NULL) return fprintf(stderr, "%s/jwnlsloc.so: not loaded\n", folder), 1;
  jw_locale_handle* locale = factory->create_handle(&context, u"de_DE", 5, &status, NULL);
  if (locale == NULL) return fprintf(stderr, "de_DE: status 0x%X\n", status), 1;
  status = locale->services.format_date_8bit(locale, 3, 15, 2024, 2, text, sizeof text, &length);
  if (status == JW_OK) fwrite(text, 1, length, stdout), puts("");
  status = locale->services.read_number_8bit(locale, "1.234,5", 7, &number, &consumed);
  if (status == JW_OK) printf("%g\n", number);

  jw_track_entry last = {.value = locale};  // without a cache, handles are ours to destroy
  factory->destroy_handle(&last);
  context.locale_database->destroy(context.locale_database);
  factory->destroy(factory);
  context.creation_lock->destroy(context.creation_lock);
  context.pool->destroy(context.pool);
}
