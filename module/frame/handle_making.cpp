#include "module/frame/handle_making.h"

#include <algorithm>

#include "module/frame/handle_teardown.h"
#include "module/frame/service_table.h"
#include "module/host_calls/kernel_handle.h"
#include "module/host_calls/required_words.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

constexpr std::u16string_view message_extension_name = u"jwemsg";
constexpr std::u16string_view locale_database_name = u"jwnlsldb";

// The failure for want of a word, which the journal is told of; none when `missing` is null.
Failure fail_without(const RequiredWord* missing, NlsContext* context,
                     std::uint32_t resolution) noexcept {
  if (missing == nullptr) return success;
  write_missing_word(host_calls::journal_of(context), *missing);
  return missing->status ? Failure(*missing->status) : resolution;
}

// One handle in the making, step by step.
class Making {
 public:
  Making(NlsContext* context, const CanonicalLocale& locale, const ZoneName& zone) noexcept
      : context_(context), locale_(locale.name), resolution_(locale.status), zone_(zone) {}

  Outcome make(const Track* cache) noexcept {
    HostObjects objects = objects_before_creation(*context_, kernel_handle());
    objects[HostObject::handle_cache] = cache;
    Failure failed = fail_without(missing_word(objects), context_, resolution_);
    if (!failed) failed = allocate();
    if (failed) return {nullptr, failed.status};

    fill_head();
    using Step = Failure (Making::*)() noexcept;
    constexpr Step steps[] = {
        &Making::load_messages,        &Making::fill_record,       &Making::create_locks,
        &Making::create_message_track, &Making::create_zone_track, &Making::open_handle_zone,
    };
    for (const Step step : steps) {
      failed = (this->*step)();
      if (failed) {
        undo_handle(handle_);
        return {nullptr, failed.status};
      }
    }
    return {handle_, code(Status::ok)};
  }

 private:
  Failure allocate() noexcept {
    Pool* pool = context_->pool;
    handle_ = host_calls::allocate_zeroed<LocaleHandle>(pool);
    if (handle_ == nullptr) return Status::out_of_memory;
    handle_->record = host_calls::allocate<LocaleRecord>(pool);
    if (handle_->record == nullptr) {
      host_calls::free(pool, handle_);
      return Status::out_of_memory;
    }
    return success;
  }

  void fill_head() noexcept {
    handle_->tag = object_tag;
    handle_->type_text = "JWLocale handle";
    handle_->no_operation = services.no_operation_40;
    handle_->context = context_;
    handle_->services = services;
    handle_->name_length = host_calls::units_of(locale_);
    std::copy(locale_.begin(), locale_.end(), handle_->name);
  }

  // An extension that is not to be had leaves the status of the resolution, ok or its warning.

  Failure load_messages() noexcept {
    Kernel* kernel = kernel_handle();
    if (kernel == nullptr) return resolution_;
    handle_->messages = host_calls::load<MessageExtension>(kernel, message_extension_name);
    if (handle_->messages == nullptr) return resolution_;
    return check(HostObject::messages, handle_->messages);
  }

  Failure fill_record() noexcept {
    TextEntry& name = handle_->record->locale_name;
    name.length = host_calls::units_of(locale_);
    std::copy(locale_.begin(), locale_.end(), name.units);
    LocaleDatabase*& database = context_->locale_database;
    if (database == nullptr) {
      database = host_calls::load<LocaleDatabase>(context_->host_service, locale_database_name);
      if (database == nullptr) return resolution_;
      if (const Failure failed = check(HostObject::database, database)) return failed;
    }
    const std::uint32_t status = host_calls::fill(database, handle_->record, locale_);
    const bool filled = status == code(Status::ok) || status == code(Status::filled_with_warning);
    return filled ? success : Failure(status);
  }

  Failure create_locks() noexcept {
    handle_->message_lock = create_lock("jwnls Locale JWMSG lock");
    handle_->zone_lock = create_lock("jwnls Locale JWZ lock");
    // Deliberate: a missing lock is a failure with status ok.
    if (handle_->message_lock == nullptr || handle_->zone_lock == nullptr) {
      return Status::ok;
    }
    if (const Failure failed = check(HostObject::message_lock, handle_->message_lock)) {
      return failed;
    }
    return check(HostObject::zone_lock, handle_->zone_lock);
  }

  Lock* create_lock(const char* name) const noexcept {
    Journal* journal = host_calls::journal_of(context_);
    return host_calls::create_lock(context_->host_service, journal, name);
  }

  Failure create_message_track() noexcept {
    Track* track = create_track("jwnls Locale JWMSG track");
    handle_->message_track = track;
    if (track == nullptr) return Status::ok;  // deliberate, as for the locks
    if (const Failure failed = check(HostObject::message_track, track)) return failed;
    host_calls::set_destructor(track, host_release);
    return success;
  }

  Failure create_zone_track() noexcept {
    Track* track = create_track("jwnls Locale JWETZ track");
    handle_->zone_track = track;
    if (track == nullptr) return Status::out_of_memory;
    if (const Failure failed = check(HostObject::zone_track, track)) return failed;
    host_calls::set_destructor(track, destroy_zone_entry);
    return success;
  }

  Track* create_track(const char* name) const noexcept {
    Journal* journal = host_calls::journal_of(context_);
    return host_calls::create_track(context_->host_service, journal, name);
  }

  Failure open_handle_zone() noexcept {
    Zone* zone = look_up_zone(handle_, zone_.units, zone_.length);
    set_current_zone(handle_, zone);
    return zone != nullptr ? success : Failure(Status::lookup_failed);
  }

  // Fails when an object that the host has just made lacks a word that the module calls.
  Failure check(HostObject object, const void* address) const noexcept {
    return fail_without(missing_word(object, address), context_, resolution_);
  }

  NlsContext* context_;
  std::u16string_view locale_;
  std::uint32_t resolution_;
  const ZoneName& zone_;
  LocaleHandle* handle_ = nullptr;
};

}  // namespace

Outcome make_handle(NlsContext* context, const CanonicalLocale& locale, const ZoneName& zone,
                    const Track* cache) noexcept {
  return Making(context, locale, zone).make(cache);
}

void undo_handle(LocaleHandle* handle) noexcept {
  Pool* pool = handle->context->pool;
  host_calls::free(pool, handle->record);
  destroy_parts(handle);
  host_calls::free(pool, handle);
}

Outcome refuse_host(NlsContext* context) noexcept {
  const RequiredWord* missing = missing_word(objects_before_creation(*context, kernel_handle()));
  const Failure failed = fail_without(missing, context, code(Status::ok));
  return {nullptr, failed.status};
}

}  // namespace jwnls
