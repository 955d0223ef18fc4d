// Journals and the error sink: what the module writes, handed to the embedder.

#ifndef JWNLS_HOST_OBJECTS_JOURNAL_H_
#define JWNLS_HOST_OBJECTS_JOURNAL_H_

#include "abi/host_tables.h"
#include "host/objects/message_outlet.h"
#include "host/objects/object_registry.h"

namespace jwnls::host {

/// A journal has no operation to destroy it: it ends with its registry.
class HostJournal final : public KernelObject, public Journal {
 public:
  HostJournal(ObjectRegistry& registry, MessageOutlet& outlet);

 private:
  MessageOutlet& outlet_;
};

class HostErrorSink final : public ErrorSink {
 public:
  explicit HostErrorSink(MessageOutlet& outlet);

 private:
  MessageOutlet& outlet_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_JOURNAL_H_
