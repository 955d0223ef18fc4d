#include "host/kernel.h"

#include <utility>

#include "abi/status.h"
#include "host/loading/load_failure.h"
#include "host/lookup/character_classes.h"
#include "host/objects/lock.h"
#include "host/objects/pool.h"
#include "host/objects/track.h"

namespace jwnls::host {
namespace {

HostKernel& host(Kernel* kernel) { return *static_cast<HostKernel*>(kernel); }

// The names of objects are for people who trace a host; this one has no use for them.
Lock* make_lock(Kernel* kernel, const std::uint8_t*, Journal*, const char*) {
  return host(kernel).registry().make<HostLock>();
}

Track* make_track(Kernel* kernel, const void*, Journal*, const char*) {
  return host(kernel).registry().make<HostTrack>();
}

// Out of memory is the one failure that a caller cannot report itself: it has only null.
Pool* make_pool(Kernel* kernel, const void*, ErrorSink* errors, const char*) {
  Pool* pool = host(kernel).registry().make<HostPool>();
  if (pool == nullptr && errors != nullptr) {
    errors->report(errors, severity_error, code(Status::out_of_memory));
  }
  return pool;
}

void* load(Kernel* kernel, const char16_t* name, std::int64_t length, std::uint64_t) {
  if (name == nullptr || length < 1) return nullptr;
  LoadedObject loaded = host(kernel).extensions().load({name, static_cast<std::size_t>(length)});
  if (loaded.object == nullptr) LoadFailure::note(std::move(loaded.error));
  return loaded.object;
}

// Integers are the one type of value that options have. `size` holds the room at `value` in bytes,
// then what was written.
std::uint32_t read_integer(Kernel* kernel, const char16_t* name, std::int64_t length,
                           std::uint32_t type, void* value, std::int64_t* size) {
  if (name == nullptr || value == nullptr || size == nullptr) return code(Status::null_argument);
  if (type != integer_option) return code(Status::not_possible);
  constexpr std::int64_t integer_size = sizeof(std::int64_t);
  if (*size < integer_size) return code(Status::does_not_fit);
  if (length < 1) return code(Status::lookup_failed);
  const Status status = host(kernel).options().read({name, static_cast<std::size_t>(length)},
                                                    *static_cast<std::int64_t*>(value));
  if (status == Status::ok) *size = integer_size;
  return code(status);
}

}  // namespace

HostKernel::HostKernel(HostConfiguration configuration)
    : Kernel{},
      outlet_(std::move(configuration.journal), std::move(configuration.errors)),
      error_sink_(outlet_),
      options_(std::move(configuration.options)),
      extensions_({std::move(configuration.extension_path), std::move(configuration.linked_modules),
                   std::move(configuration.last_extension_path)},
                  this, &error_sink_) {
  create_lock = make_lock;
  create_journal = [](Kernel* kernel, const std::uint8_t*, std::uint64_t, const char*) -> Journal* {
    HostKernel& self = host(kernel);
    return self.registry().make<HostJournal>(self.outlet_);
  };
  create_pool = make_pool;
  create_track = make_track;
  load_extension = load;
  read_option = read_integer;
  Kernel::character_classes = host::character_classes;
  formatter_state = 1;  // not 0: there is no formatter here to hand floating values to
  option_store = &option_store_;
}

}  // namespace jwnls::host
