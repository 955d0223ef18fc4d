#include "module/frame/handle_creation.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstring>
#include <string_view>

#include "abi/status.h"
#include "module/frame/handle_teardown.h"
#include "module/frame/service_table.h"
#include "module/host_calls/kernel_handle.h"
#include "module/host_calls/time_zone.h"
#include "module/text/copy_text.h"

namespace jwnls {
namespace {

constexpr std::u16string_view app_node_name = u"App.NLS";
constexpr std::u16string_view default_zone = u"America/New_York";
constexpr std::u16string_view message_extension_name = u"jwemsg";
constexpr std::u16string_view locale_database_name = u"jwnlsldb";
constexpr char16_t zone_warning[] =
    u"Invalid OS TIMEZONE value is detected. Use default TIMEZONE value instead";
constexpr std::uint8_t lock_parameters[2] = {};
constexpr std::uint8_t journal_parameters[88] = {};

constexpr std::int64_t signed_size(std::u16string_view text) {
  return static_cast<std::int64_t>(text.size());
}

// The zone's name, and the key that the handle cache knows a handle by: locale name, one blank and
// zone name. The zone's name is written first and stays where it is; the locale's name is put
// before it, so that the common case, a handle that exists, copies as little as possible. Nothing
// is cleared in advance either: only what was written is read.
struct KeyedZone {
  char16_t room[64];  // the locale's name ends here, with a blank
  ZoneName name;
  const char16_t* key;
  std::int64_t key_bytes;

  KeyedZone() noexcept {}

  // Puts a locale name of at most 60 units before the zone's name.
  void set_locale(std::u16string_view locale) noexcept {
    constexpr std::int64_t longest_key = 110;  // units
    char16_t* const start = room + std::size(room) - 1 - locale.size();
    if (std::endian::native == std::endian::little && locale.size() < 2 * word_units) [[likely]] {
      store_first_words(start, locale);
    } else {
      copy_text(start, locale.data(), locale.size() * sizeof(char16_t));
      start[locale.size()] = u' ';
    }
    key = start;
    key_bytes = std::min(signed_size(locale) + 1 + name.length, longest_key) *
                static_cast<std::int64_t>(sizeof(char16_t));
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t word_units = sizeof(Word) / sizeof(char16_t);
  static constexpr unsigned unit_bits = 16;

  static Word load(const char16_t* units) noexcept {
    Word word = 0;
    std::memcpy(&word, units, sizeof word);
    return word;
  }

  // The key's first two words, from a locale name that ends in them; the zone's name goes on behind
  // it. The host reads the key at once, to look it up: it would wait for narrower stores.
  void store_first_words(char16_t* start, std::u16string_view locale) const noexcept {
    const Word from_blank = load(name.units) << unit_bits | u' ';
    Word first = 0;
    Word second = 0;
    if (locale.size() >= word_units) {  // "de_DE"
      const unsigned bits = static_cast<unsigned>(locale.size() - word_units) * unit_bits;
      first = load(locale.data());
      second = load(locale.data() + locale.size() - word_units) >> unit_bits >> (48 - bits);
      second |= from_blank << bits;
    } else {  // "de"
      for (std::size_t at = locale.size(); at-- > 0;) first = first << unit_bits | locale[at];
      first |= from_blank << static_cast<unsigned>(locale.size()) * unit_bits;
      second = load(name.units + word_units - 1 - locale.size());
    }
    std::memcpy(start, &first, sizeof first);
    std::memcpy(start + word_units, &second, sizeof second);
  }
};
static_assert(offsetof(KeyedZone, name) == sizeof(KeyedZone::room) &&
              offsetof(ZoneName, units) == 0);

// One call of the create slot. Steps return false after they have set `status_` to what the caller
// is to see; create() then undoes what the steps so far have made, the innermost first. A failure
// with status ok is possible, deliberately: hosts test the handle, not only the status.
class Creation {
 public:
  // Each step sets what the later ones read: clearing it all first would cost what finding a handle
  // that exists has to spare.
  // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject)
  Creation(NlsContext* context, const CreationOptions* options) noexcept
      : context_(context), options_(options) {}

  LocaleHandle* create(const char16_t* name, std::int64_t length, std::uint32_t* status) noexcept {
    const bool has_node = find_app_node();
    if (has_node) find_journal();
    // The creation lock is not taken yet when the caller's zone name is refused, and is released
    // all the same: hosts ignore the release of a lock that is not held.
    LocaleHandle* handle = nullptr;
    if (choose_zone(has_node)) {
      Lock* lock = context_->creation_lock;
      lock->take(lock, 1, 1);
      if (resolve(name, length)) handle = find_or_make();
    }
    context_->creation_lock->release(context_->creation_lock);
    if (status != nullptr) *status = handle != nullptr ? code(Status::ok) : status_;
    return handle;
  }

 private:
  bool fail(std::uint32_t status) noexcept {
    status_ = status;
    return false;
  }
  bool fail(Status status) noexcept { return fail(code(status)); }

  // The first two steps run before the creation lock. Their stores are atomic; the last one wins.

  // Returns false when there is neither a node nor a store to make it in.
  bool find_app_node() noexcept {
    const std::atomic_ref<void*> shared(context_->app_node);
    if (shared.load(std::memory_order_acquire) != nullptr) return true;
    OptionStore* store = context_->host_service->option_store;
    if (store == nullptr) return false;
    void* node = store->find_node(store, app_node_name.data());
    if (node == nullptr) {
      node = store->create_node(store, app_node_name.data(), signed_size(app_node_name));
    }
    if (node == nullptr) return false;
    shared.store(node, std::memory_order_release);
    return true;
  }

  void find_journal() noexcept {
    const std::atomic_ref<Journal*> shared(context_->journal);
    if (shared.load(std::memory_order_acquire) != nullptr) return;
    Kernel* service = context_->host_service;
    shared.store(service->create_journal(service, journal_parameters, 0, "jwnlsLocaleJnl"),
                 std::memory_order_release);
  }

  Journal* journal() const noexcept {
    return std::atomic_ref<Journal*>(context_->journal).load(std::memory_order_acquire);
  }

  // The caller's zone, else the operating system's, else the default with a warning.
  bool choose_zone(bool may_warn) noexcept {
    if (options_ != nullptr && options_->zone != nullptr && options_->zone_length >= 1) {
      const std::uint32_t status =
          normalise_zone(context_, options_->zone, options_->zone_length, zone_.name);
      return status == code(Status::ok) || fail(status);
    }
    ZoneName& name = zone_.name;
    name = {.units = {}, .length = zone_name_capacity};
    const std::uint32_t status =
        context_->os_zone(context_, name.units, &name.length, os_zone_flags);
    name.bound_length();
    if (status == code(Status::no_os_zone) || status == code(Status::lookup_failed)) {
      std::copy(default_zone.begin(), default_zone.end(), name.units);
      name.length = signed_size(default_zone);
      Journal* log = may_warn ? journal() : nullptr;
      if (log != nullptr) log->write(log, journal_warning, zone_warning, 0);
    }
    return true;  // any other status is ignored: name and length count as the query left them
  }

  bool resolve(const char16_t* name, std::int64_t length) noexcept {
    ResolvedLocale* resolved = nullptr;
    const std::uint32_t status =
        context_->resolve_locale(context_, name, length, resolve_flags, &resolved);
    if (status != code(Status::ok) && status != code(Status::resolved_with_warning)) {
      return fail(status);
    }
    // The record's name entry has room for 60 units.
    if (resolved == nullptr || resolved->length < 1 || resolved->length > text_entry_capacity) {
      return fail(Status::lookup_failed);
    }
    status_ = status;
    locale_row_ = resolved;
    return true;
  }

  LocaleHandle* find_or_make() noexcept {
    const bool shared = options_ == nullptr || (options_->flags & private_handle) == 0;
    Track* cache = shared ? context_->handle_cache : nullptr;
    if (cache == nullptr) return make() ? handle_ : nullptr;

    zone_.set_locale(locale());
    if (TrackEntry* entry = cache->look_up(cache, track_look_up, 0, zone_.key, zone_.key_bytes)) {
      auto* found = static_cast<LocaleHandle*>(entry->value);
      cache->release_entry(cache, entry);
      return found;
    }
    if (!make()) return nullptr;
    if (!enter(cache)) {
      undo();
      return nullptr;
    }
    return handle_;
  }

  // Builds handle_ up to its registration; on failure nothing of it is left.
  bool make() noexcept {
    Pool* pool = context_->pool;
    handle_ =
        static_cast<LocaleHandle*>(pool->allocate(pool, sizeof(LocaleHandle), allocate_zeroed));
    if (handle_ == nullptr) return fail(Status::out_of_memory);
    record_ = static_cast<LocaleRecord*>(pool->allocate(pool, sizeof(LocaleRecord), 0));
    if (record_ == nullptr) {
      pool->free(pool, handle_);
      return fail(Status::out_of_memory);
    }
    fill_head();
    if (load_messages() && fill_record() && fill_services() && create_locks() && create_tracks() &&
        open_handle_zone()) {
      return true;
    }
    undo();
    return false;
  }

  void undo() noexcept {
    Pool* pool = context_->pool;
    pool->free(pool, record_);
    destroy_parts(handle_);
    pool->free(pool, handle_);
  }

  void fill_head() noexcept {
    handle_->tag = object_tag;
    handle_->type_text = "JWLocale handle";
    handle_->no_operation = services.no_operation_40;
    handle_->context = context_;
  }

  bool load_messages() noexcept {
    Kernel* kernel = kernel_handle();
    if (kernel == nullptr) return false;  // with the status of the resolution, ok or its warning
    handle_->messages = static_cast<MessageExtension*>(kernel->load_extension(
        kernel, message_extension_name.data(), signed_size(message_extension_name), 0));
    return handle_->messages != nullptr;  // likewise
  }

  bool fill_record() noexcept {
    handle_->name_length = signed_size(locale());
    std::copy(locale().begin(), locale().end(), handle_->name);
    record_->locale_name.length = signed_size(locale());
    std::copy(locale().begin(), locale().end(), record_->locale_name.units);

    if (context_->locale_database == nullptr) {
      Kernel* service = context_->host_service;
      context_->locale_database = static_cast<LocaleDatabase*>(service->load_extension(
          service, locale_database_name.data(), signed_size(locale_database_name), 0));
    }
    if (context_->locale_database == nullptr) return false;
    const std::uint32_t status =
        context_->locale_database->fill(record_, locale().data(), signed_size(locale()));
    return status == code(Status::ok) || status == code(Status::filled_with_warning) ||
           fail(status);
  }

  bool fill_services() noexcept {
    handle_->services = services;
    handle_->record = record_;
    return true;
  }

  bool create_locks() noexcept {
    handle_->message_lock = create_lock("jwnls Locale JWMSG lock");
    handle_->zone_lock = create_lock("jwnls Locale JWZ lock");
    // Deliberate: a missing lock is a failure with status ok.
    return (handle_->message_lock != nullptr && handle_->zone_lock != nullptr) || fail(Status::ok);
  }

  Lock* create_lock(const char* name) noexcept {
    Kernel* service = context_->host_service;
    return service->create_lock(service, lock_parameters, journal(), name);
  }

  bool create_tracks() noexcept {
    Kernel* service = context_->host_service;
    Track* messages =
        service->create_track(service, &track_parameters, journal(), "jwnls Locale JWMSG track");
    if (messages == nullptr) return fail(Status::ok);  // deliberate, as for the locks
    handle_->message_track = messages;
    messages->set_destructor(messages, 0, host_release);

    Track* zones =
        service->create_track(service, &track_parameters, journal(), "jwnls Locale JWETZ track");
    if (zones == nullptr) return fail(Status::out_of_memory);
    handle_->zone_track = zones;
    zones->set_destructor(zones, 0, destroy_zone_entry);
    return true;
  }

  bool open_handle_zone() noexcept {
    Zone* zone = look_up_zone(handle_, zone_.name.units, zone_.name.length);
    set_current_zone(handle_, zone);
    return zone != nullptr || fail(Status::lookup_failed);
  }

  bool enter(Track* cache) noexcept {
    std::uint32_t status = 0;
    TrackEntry* entry =
        cache->insert(cache, track_insert, 0, handle_, 0, zone_.key, zone_.key_bytes, &status);
    if (entry == nullptr) return fail(status);
    cache->release_entry(cache, entry);
    return true;
  }

  std::u16string_view locale() const noexcept {
    return {locale_row_->name, static_cast<std::size_t>(locale_row_->length)};
  }

  NlsContext* context_;
  const CreationOptions* options_;
  std::uint32_t status_ = 0;
  KeyedZone zone_;
  const ResolvedLocale* locale_row_;
  LocaleHandle* handle_;
  LocaleRecord* record_;
};

}  // namespace

LocaleHandle* create_handle(NlsContext* context, const char16_t* name, std::int64_t length,
                            std::uint32_t* status, const CreationOptions* options) noexcept {
  return Creation(context, options).create(name, length, status);
}

}  // namespace jwnls
