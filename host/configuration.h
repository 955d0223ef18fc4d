// What an embedder decides when it starts a host.

#ifndef JWNLS_HOST_CONFIGURATION_H_
#define JWNLS_HOST_CONFIGURATION_H_

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/loading/linked_module.h"
#include "host/objects/message_sinks.h"

namespace jwnls::host {

struct HostConfiguration {
  /// Folders that are searched in order for "<name>.so".
  std::vector<std::filesystem::path> extension_path;
  /// Modules that are linked in: used for what is not in those folders. One host at a time.
  std::vector<LinkedModule> linked_modules;
  /// Folders that are searched for what is in neither.
  std::vector<std::filesystem::path> last_extension_path;
  /// Option name -> value. An option that is not here is taken from the environment.
  std::map<std::string, std::string> options;
  JournalSink journal;   // empty: messages are dropped
  ErrorReporter errors;  // empty: errors are dropped
  /// False: the embedder keeps its handles itself. There is no cache of them, so each belongs to
  /// who made it, and factory() loads the module alone.
  bool shares_handles = true;
  /// The compiled time-zone database; empty: $TZDIR, else the system's.
  std::filesystem::path zone_directory;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_CONFIGURATION_H_
