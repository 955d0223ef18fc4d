#include "host/host.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <utility>

#include "abi/status.h"
#include "host/kernel.h"
#include "host/loading/load_failure.h"
#include "host/nls_context.h"

namespace jwnls::host {
namespace {

constexpr std::u16string_view module_name = u"jwnlsloc";

// What the first handle is made of where nobody says. Any locale and zone would do; these are
// always there.
constexpr std::u16string_view first_locale = u"en_US";
constexpr std::u16string_view first_zone = u"UTC";

}  // namespace

class Host::Parts {
 public:
  explicit Parts(HostConfiguration configuration)
      : zone_directory_(std::move(configuration.zone_directory)),
        shares_handles_(configuration.shares_handles),
        kernel(std::move(configuration)),
        context(kernel, zone_directory_) {}

  ~Parts();
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  Factory* start(std::string& error);

  LocaleHandle* create_handle(Factory* factory, std::u16string_view locale,
                              std::u16string_view zone, bool is_private, std::uint32_t* status,
                              std::string& error);
  static void destroy_handle(Factory* factory, LocaleHandle* handle) noexcept;

 private:
  Track* make_handle_cache(std::string& error);

  std::filesystem::path zone_directory_;
  const bool shares_handles_;

 public:
  HostKernel kernel;
  HostContext context;
  std::atomic<Factory*> ready{nullptr};  // the factory, once any handle cache is there as well

 private:
  std::mutex starting_;
  Factory* loaded_ = nullptr;
};

Factory* Host::Parts::start(std::string& error) {
  const std::lock_guard guard(starting_);
  if (Factory* factory = ready.load(std::memory_order_relaxed)) return factory;
  if (loaded_ == nullptr) {
    LoadedObject module = kernel.extensions().load(module_name);
    loaded_ = static_cast<Factory*>(module.object);
    error = std::move(module.error);
    if (loaded_ == nullptr) return nullptr;
  }
  if (shares_handles_) {
    context.handle_cache = make_handle_cache(error);
    if (context.handle_cache == nullptr) return nullptr;
  }
  ready.store(loaded_, std::memory_order_release);
  return loaded_;
}

// Only a handle can make the cache, so the first handle is one that never goes into it.
Track* Host::Parts::make_handle_cache(std::string& error) {
  std::uint32_t status = 0;
  LocaleHandle* handle = create_handle(loaded_, first_locale, first_zone, true, &status, error);
  if (handle == nullptr) {
    if (error.empty()) error = "jwnlsloc: cannot make a handle of the locale en_US";
    return nullptr;
  }
  Track* cache = handle->services.create_handle_cache(handle);
  if (cache == nullptr) error = "jwnlsloc: cannot make the cache of locale handles";
  destroy_handle(loaded_, handle);
  return cache;
}

LocaleHandle* Host::Parts::create_handle(Factory* factory, std::u16string_view locale,
                                         std::u16string_view zone, bool is_private,
                                         std::uint32_t* status, std::string& error) {
  CreationOptions options = {};
  options.flags = is_private ? private_handle : 0;
  options.zone = zone.data();
  options.zone_length = static_cast<std::int64_t>(zone.size());
  const LoadFailure failure;
  LocaleHandle* handle = factory->create_handle(
      &context, locale.data(), static_cast<std::int64_t>(locale.size()), status, &options);
  if (handle == nullptr) error = failure.reason();
  return handle;
}

void Host::Parts::destroy_handle(Factory* factory, LocaleHandle* handle) noexcept {
  TrackEntry entry = {};
  entry.value = handle;
  factory->destroy_handle(&entry);
}

Host::Parts::~Parts() {
  if (Track* cache = context.handle_cache) cache->destroy(cache);
  if (LocaleDatabase* database = context.locale_database) {
    if (database->destroy != nullptr) database->destroy(database);
  }
  if (loaded_ != nullptr) loaded_->destroy(loaded_);
  // What nobody destroyed ends here, before the context goes: it may reach into it.
  kernel.registry().destroy_all();
}

Host::Host(HostConfiguration configuration)
    : parts_(std::make_unique<Parts>(std::move(configuration))) {}

Host::~Host() = default;

Kernel* Host::kernel() noexcept { return &parts_->kernel; }

NlsContext* Host::context() noexcept { return &parts_->context; }

Factory* Host::factory(std::string* error) {
  if (Factory* factory = parts_->ready.load(std::memory_order_acquire)) return factory;
  std::string why;
  Factory* factory = parts_->start(why);
  if (factory == nullptr && error != nullptr) *error = std::move(why);
  return factory;
}

LocaleHandle* Host::create_handle(std::u16string_view locale, std::u16string_view zone,
                                  bool private_handle, std::uint32_t* status, std::string* error) {
  std::string why;
  const auto told = [&](LocaleHandle* handle) {
    if (handle == nullptr && error != nullptr) *error = std::move(why);
    return handle;
  };
  Factory* ready = factory(&why);
  if (ready == nullptr) {
    if (status != nullptr) *status = code(Status::not_possible);
    return told(nullptr);
  }
  return told(parts_->create_handle(ready, locale, zone, private_handle, status, why));
}

void Host::destroy_handle(LocaleHandle* handle) noexcept {
  Factory* ready = parts_->ready.load(std::memory_order_acquire);
  if (handle != nullptr && ready != nullptr) Parts::destroy_handle(ready, handle);
}

void Host::set_option(std::string_view name, std::string_view value) {
  parts_->kernel.options().set(name, value);
}

const std::vector<std::string>& Host::zone_names() const { return parts_->context.zones().names(); }

std::string Host::zone_database_version() const { return parts_->context.zones().version(); }

}  // namespace jwnls::host
