// The host's operations as typed functions: the words of its tables are called in this folder only.
//
// Each is one call of one word, with the arguments that the interface fixes filled in. Words that
// are required are called as they stand: a handle is made only after required_words.h has found
// them. Where a word or its object is optional, the comment says what its absence means.

#ifndef JWNLS_MODULE_HOST_CALLS_TYPED_CALLS_H_
#define JWNLS_MODULE_HOST_CALLS_TYPED_CALLS_H_

#include <atomic>
#include <cstdint>
#include <string_view>

#include "abi/host_tables.h"
#include "abi/status.h"

namespace jwnls::host_calls {

constexpr std::int64_t units_of(std::u16string_view text) noexcept {
  return static_cast<std::int64_t>(text.size());
}

/// Destroys a host's object. Null, and an object that cannot be destroyed, are left alone.
template <typename Object>
void destroy(Object* object) noexcept {
  if (object != nullptr && object->destroy != nullptr) object->destroy(object);
}

// ---- Pools. Memory that is not zeroed holds anything. Null: out of memory.

template <typename Object>
Object* allocate(Pool* pool, std::uint32_t flags = 0) noexcept {
  return static_cast<Object*>(pool->allocate(pool, sizeof(Object), flags));
}

template <typename Object>
Object* allocate_zeroed(Pool* pool) noexcept {
  return allocate<Object>(pool, jwnls::allocate_zeroed);
}

/// `block` is not null.
inline void free(Pool* pool, void* block) noexcept { pool->free(pool, block); }

// ---- Kernel and host service object. Objects are null when they could not be made.

inline Pool* create_pool(Kernel* kernel, ErrorSink* errors, const char* name) noexcept {
  return kernel->create_pool(kernel, &pool_parameters, errors, name);
}

inline Lock* create_lock(Kernel* service, Journal* journal, const char* name) noexcept {
  constexpr std::uint8_t parameters[2] = {};
  return service->create_lock(service, parameters, journal, name);
}

inline Track* create_track(Kernel* service, Journal* journal, const char* name) noexcept {
  return service->create_track(service, &track_parameters, journal, name);
}

/// A service without the word makes no journals.
inline Journal* create_journal(Kernel* service, const char* name) noexcept {
  constexpr std::uint8_t parameters[88] = {};
  if (service == nullptr || service->create_journal == nullptr) return nullptr;
  return service->create_journal(service, parameters, 0, name);
}

/// The object of an extension, which the caller owns.
template <typename Extension>
Extension* load(Kernel* kernel, std::u16string_view name) noexcept {
  return static_cast<Extension*>(kernel->load_extension(kernel, name.data(), units_of(name), 0));
}

/// An integer option. `fallback` where the kernel leaves the value as it was, whatever the status
/// it returns, and where there is no kernel or it reads no options.
inline std::int64_t read_option(Kernel* kernel, std::u16string_view name,
                                std::int64_t fallback) noexcept {
  if (kernel == nullptr || kernel->read_option == nullptr) return fallback;
  std::int64_t value = fallback;
  std::int64_t size = sizeof value;
  (void)kernel->read_option(kernel, name.data(), units_of(name), integer_option, &value, &size);
  return value;
}

/// The node of a zero-terminated name, made when it is absent. Null without a store, and when the
/// store neither finds nor makes it.
inline void* find_or_create_node(OptionStore* store, std::u16string_view name) noexcept {
  if (store == nullptr) return nullptr;
  void* node = store->find_node != nullptr ? store->find_node(store, name.data()) : nullptr;
  if (node != nullptr || store->create_node == nullptr) return node;
  return store->create_node(store, name.data(), units_of(name));
}

// ---- Locks

inline void take(Lock* lock) noexcept { lock->take(lock, 1, 1); }
inline void release(Lock* lock) noexcept { lock->release(lock); }

// ---- Tracks, with UTF-16 keys

constexpr std::int64_t key_bytes(std::u16string_view key) noexcept {
  return units_of(key) * static_cast<std::int64_t>(sizeof(char16_t));
}

/// The entry of a key, to be released; null when there is none.
inline TrackEntry* look_up(Track* track, std::u16string_view key) noexcept {
  return track->look_up(track, track_look_up, 0, key.data(), key_bytes(key));
}

inline void release_entry(Track* track, TrackEntry* entry) noexcept {
  track->release_entry(track, entry);
}

/// Adds a value, and releases its entry at once. False when the track did not take it; `status` is
/// then the track's, or as it was when the track wrote none.
inline bool insert(Track* track, std::u16string_view key, void* value,
                   std::uint32_t& status) noexcept {
  TrackEntry* entry =
      track->insert(track, track_insert, 0, value, 0, key.data(), key_bytes(key), &status);
  if (entry != nullptr) release_entry(track, entry);
  return entry != nullptr;
}

inline void set_destructor(Track* track, EntryDestructor destructor) noexcept {
  track->set_destructor(track, 0, destructor);
}

// ---- What people read. Writing and reporting do nothing without an object, and without its word.

/// A context's journal, which the first creation makes and stores; null while there is none.
inline Journal* journal_of(NlsContext* context) noexcept {
  return std::atomic_ref<Journal*>(context->journal).load(std::memory_order_acquire);
}

/// `message` is zero-terminated.
inline void write_warning(Journal* journal, const char16_t* message) noexcept {
  if (journal != nullptr && journal->write != nullptr) {
    journal->write(journal, journal_warning, message, 0);
  }
}

inline void report(ErrorSink* errors, Status status) noexcept {
  if (errors != nullptr && errors->report != nullptr) {
    errors->report(errors, severity_error, code(status));
  }
}

// ---- Locales

/// Returns the host's own status. On success `locale` belongs to the host.
inline std::uint32_t resolve_locale(NlsContext* context, const char16_t* name, std::int64_t length,
                                    ResolvedLocale*& locale) noexcept {
  return context->resolve_locale(context, name, length, resolve_flags, &locale);
}

/// Fills a record behind its name. Returns the database's own status.
inline std::uint32_t fill(LocaleDatabase* database, void* record,
                          std::u16string_view locale) noexcept {
  return database->fill(record, locale.data(), units_of(locale));
}

/// The byte that the host's encoding has for `unit`; false without a converter, and when it has
/// none.
inline bool convert(Converter* converter, char16_t unit, std::uint8_t& byte) noexcept {
  return converter != nullptr && converter->convert != nullptr &&
         converter->convert(converter, unit, &byte) == 0;
}

}  // namespace jwnls::host_calls

#endif  // JWNLS_MODULE_HOST_CALLS_TYPED_CALLS_H_
