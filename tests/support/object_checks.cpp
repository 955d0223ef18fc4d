#include "tests/support/object_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <set>
#include <thread>
#include <utility>

namespace jwnls::test {
namespace {

std::string title(const char* kind, const std::string& name) {
  return std::string(kind) + " '" + name + "'";
}

// A function of a table is given the table alone, so the checks of each kernel are found by it.
std::mutex watched_mutex;
std::map<const Kernel*, ObjectChecks*> watched;

}  // namespace

/// What the wrappers of locks and tracks share.
template <typename Table>
class CheckedObject : public Table {
 public:
  CheckedObject(Table* real, std::string title, FaultLog& faults)
      : Table{}, real_(real), title_(std::move(title)), faults_(faults) {}

  void add_fault(const std::string& what) { faults_.add(title_ + what); }
  [[nodiscard]] bool is_destroyed() const { return destroyed_; }

 protected:
  /// False for an object that was destroyed before.
  bool may_destroy() {
    const bool before = destroyed_.exchange(true);
    if (before) add_fault(" destroyed twice");
    return !before;
  }

  Table* const real_;

 private:
  const std::string title_;
  FaultLog& faults_;
  std::atomic<bool> destroyed_ = false;
};

class CheckedLock final : public CheckedObject<Lock> {
 public:
  CheckedLock(Lock* real, std::string title, FaultLog& faults)
      : CheckedObject(real, std::move(title), faults) {
    destroy = [](Lock* lock) {
      auto* self = static_cast<CheckedLock*>(lock);
      if (!self->may_destroy()) return;
      self->report_if_held();
      self->real_->destroy(self->real_);
    };
    take = [](Lock* lock, std::int64_t first, std::int64_t second) {
      auto* self = static_cast<CheckedLock*>(lock);
      self->real_->take(self->real_, first, second);
      self->holder_ = std::this_thread::get_id();
      ++self->depth_;
    };
    // A release by a thread that does not hold the lock is ignored, by the host as well.
    release = [](Lock* lock) {
      auto* self = static_cast<CheckedLock*>(lock);
      if (self->holder_.load() == std::this_thread::get_id() && --self->depth_ == 0) {
        self->holder_ = std::thread::id();
      }
      self->real_->release(self->real_);
    };
  }

  void report_if_held() {
    if (depth_ != 0) add_fault(" destroyed while it is held");
  }

 private:
  std::atomic<std::thread::id> holder_;
  std::atomic<int> depth_ = 0;  // of the holder's takes
};

class CheckedTrack final : public CheckedObject<Track> {
 public:
  CheckedTrack(Track* real, std::string title, FaultLog& faults)
      : CheckedObject(real, std::move(title), faults) {
    destroy = [](Track* track) {
      auto* self = static_cast<CheckedTrack*>(track);
      if (self->may_destroy()) self->real_->destroy(self->real_);
    };
    look_up = [](Track* track, std::uint32_t flags, std::uint64_t zero, const void* key,
                 std::int64_t key_bytes) {
      auto* self = static_cast<CheckedTrack*>(track);
      return self->given(self->real_->look_up(self->real_, flags, zero, key, key_bytes));
    };
    insert = [](Track* track, std::uint32_t flags, std::uint64_t zero, void* value,
                std::uint64_t zero_too, const void* key, std::int64_t key_bytes,
                std::uint32_t* status) {
      auto* self = static_cast<CheckedTrack*>(track);
      return self->given(
          self->real_->insert(self->real_, flags, zero, value, zero_too, key, key_bytes, status));
    };
    set_destructor = [](Track* track, std::uint64_t zero, EntryDestructor destructor) {
      auto* self = static_cast<CheckedTrack*>(track);
      self->real_->set_destructor(self->real_, zero, destructor);
    };
    release_entry = [](Track* track, TrackEntry* entry) {
      auto* self = static_cast<CheckedTrack*>(track);
      if (entry != nullptr) --self->given_out_;
      self->real_->release_entry(self->real_, entry);
    };
  }

  /// Adds a fault where entries were not released as often as they were given.
  void report_entries() {
    const int left = given_out_;
    if (left > 0) add_fault(": " + std::to_string(left) + " entries not released");
    if (left < 0) add_fault(": entries released more often than given");
  }

 private:
  TrackEntry* given(TrackEntry* entry) {
    if (entry != nullptr) ++given_out_;
    return entry;
  }

  std::atomic<int> given_out_ = 0;
};

class CheckedZones final : public ZoneService {
 public:
  CheckedZones(ZoneService* real, FaultLog& faults) : ZoneService{}, real_(real), faults_(faults) {
    open = [](ZoneService* service, const char16_t* name, std::int64_t length, std::uint64_t zero) {
      auto* self = static_cast<CheckedZones*>(service);
      Zone* zone = self->real_->open(self->real_, name, length, zero);
      const std::lock_guard guard(self->mutex_);
      if (zone != nullptr) self->open_.insert(zone);
      return zone;
    };
    close = [](ZoneService* service, Zone* zone) {
      auto* self = static_cast<CheckedZones*>(service);
      {
        const std::lock_guard guard(self->mutex_);
        if (self->open_.erase(zone) == 0) {
          self->faults_.add("a time zone closed that is not open");
          return;
        }
      }
      self->real_->close(self->real_, zone);
    };
    zone_info = [](ZoneService* service, Zone* zone, char16_t* abbreviation, std::int64_t* length,
                   std::int64_t* offset_seconds) {
      auto* self = static_cast<CheckedZones*>(service);
      return self->real_->zone_info(self->real_, zone, abbreviation, length, offset_seconds);
    };
  }

  void report_open_zones() {
    if (!open_.empty()) faults_.add(std::to_string(open_.size()) + " time zones never closed");
  }

 private:
  ZoneService* const real_;
  FaultLog& faults_;
  std::mutex mutex_;
  std::set<const Zone*> open_;
};

ObjectChecks::ObjectChecks(std::vector<std::string>* faults) : out_(faults) {}

ObjectChecks::~ObjectChecks() {
  {
    const std::lock_guard guard(watched_mutex);
    watched.erase(kernel_);
  }
  if (zones_ != nullptr) zones_->report_open_zones();
  if (context_pool_ != nullptr) context_pool_->report_blocks_in_use();
  if (context_lock_ != nullptr) context_lock_->report_if_held();
  for (const auto& pool : pools_) {
    if (pool.get() != context_pool_ && !pool->is_destroyed()) {
      faults_.add(pool->title() + " never destroyed");
    }
  }
  for (const auto& lock : locks_) {
    if (!lock->is_destroyed()) lock->add_fault(" never destroyed");
  }
  for (const auto& track : tracks_) {
    if (!track->is_destroyed()) track->add_fault(" never destroyed");
    track->report_entries();
  }
  if (out_ != nullptr) {
    *out_ = faults_.texts();
    return;
  }
  for (const std::string& fault : faults_.texts()) ADD_FAILURE() << fault;
}

void ObjectChecks::watch(Kernel* kernel, NlsContext* context) {
  {
    const std::lock_guard guard(watched_mutex);
    watched.emplace(kernel, this);
  }
  kernel_ = kernel;
  create_lock_ = std::exchange(kernel->create_lock, [](Kernel* host, const std::uint8_t* parameters,
                                                       Journal* journal, const char* name) {
    return of(host).make_lock(host, parameters, journal, name);
  });
  create_pool_ = std::exchange(kernel->create_pool, [](Kernel* host, const void* parameters,
                                                       ErrorSink* errors, const char* name) {
    return of(host).make_pool(host, parameters, errors, name);
  });
  create_track_ = std::exchange(kernel->create_track, [](Kernel* host, const void* parameters,
                                                         Journal* journal, const char* name) {
    return of(host).make_track(host, parameters, journal, name);
  });
  context->pool = context_pool_ = check_pool(context->pool, "of the context");
  context_lock_ = std::make_unique<CheckedLock>(context->creation_lock,
                                                title("lock", "of the context"), faults_);
  context->creation_lock = context_lock_.get();
  zones_ = std::make_unique<CheckedZones>(context->zone_service, faults_);
  context->zone_service = zones_.get();
}

std::vector<std::string> ObjectChecks::faults() {
  const std::lock_guard guard(mutex_);
  for (const auto& pool : pools_) pool->check_guards();
  return faults_.texts();
}

Lock* ObjectChecks::make_lock(Kernel* kernel, const std::uint8_t* parameters, Journal* journal,
                              const char* name) {
  Lock* real = create_lock_(kernel, parameters, journal, name);
  if (real == nullptr) return nullptr;
  const std::lock_guard guard(mutex_);
  return locks_.emplace_back(std::make_unique<CheckedLock>(real, title("lock", name), faults_))
      .get();
}

Pool* ObjectChecks::make_pool(Kernel* kernel, const void* parameters, ErrorSink* errors,
                              const char* name) {
  Pool* real = create_pool_(kernel, parameters, errors, name);
  return real != nullptr ? check_pool(real, name) : nullptr;
}

Track* ObjectChecks::make_track(Kernel* kernel, const void* parameters, Journal* journal,
                                const char* name) {
  Track* real = create_track_(kernel, parameters, journal, name);
  if (real == nullptr) return nullptr;
  const std::lock_guard guard(mutex_);
  return tracks_.emplace_back(std::make_unique<CheckedTrack>(real, title("track", name), faults_))
      .get();
}

CheckedPool* ObjectChecks::check_pool(Pool* real, const std::string& name) {
  const auto is_of_any_pool = [this](const void* memory) {
    const std::lock_guard guard(mutex_);
    return std::any_of(pools_.begin(), pools_.end(),
                       [memory](const auto& pool) { return pool->has_in_use(memory); });
  };
  const std::lock_guard guard(mutex_);
  return pools_
      .emplace_back(
          std::make_unique<CheckedPool>(real, title("pool", name), faults_, is_of_any_pool))
      .get();
}

ObjectChecks& ObjectChecks::of(Kernel* kernel) {
  const std::lock_guard guard(watched_mutex);
  return *watched.at(kernel);
}

}  // namespace jwnls::test
