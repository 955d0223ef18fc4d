// The kernel: the table through which module and extensions reach everything else of the host.

#ifndef JWNLS_HOST_KERNEL_H_
#define JWNLS_HOST_KERNEL_H_

#include "abi/host_tables.h"
#include "host/configuration.h"
#include "host/loading/extension_loader.h"
#include "host/objects/journal.h"
#include "host/objects/message_outlet.h"
#include "host/objects/object_registry.h"
#include "host/options.h"

namespace jwnls::host {

/// Also the host service object of the NLS context. The host has no floating formatter of its own:
/// the state word says that the module's is to be used.
class HostKernel final : public Kernel {
 public:
  explicit HostKernel(HostConfiguration configuration);

  [[nodiscard]] ObjectRegistry& registry() noexcept { return registry_; }
  [[nodiscard]] Options& options() noexcept { return options_; }
  [[nodiscard]] ExtensionLoader& extensions() noexcept { return extensions_; }

 private:
  MessageOutlet outlet_;
  HostErrorSink error_sink_;
  Options options_;
  HostOptionStore option_store_;
  // The libraries close after the objects that call into them have gone.
  ExtensionLoader extensions_;
  ObjectRegistry registry_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_KERNEL_H_
