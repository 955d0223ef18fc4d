#include "host/objects/journal.h"

namespace jwnls::host {

HostJournal::HostJournal(ObjectRegistry& registry, MessageOutlet& outlet)
    : KernelObject(registry, ObjectKind::journal), Journal{}, outlet_(outlet) {
  write = [](Journal* journal, std::uint32_t level, const char16_t* message, std::uint64_t) {
    if (message != nullptr) static_cast<HostJournal&>(*journal).outlet_.write(level, message);
  };
}

HostErrorSink::HostErrorSink(MessageOutlet& outlet) : ErrorSink{}, outlet_(outlet) {
  report = [](ErrorSink* sink, std::uint32_t severity, std::uint32_t status) {
    static_cast<HostErrorSink&>(*sink).outlet_.report(severity, status);
  };
}

}  // namespace jwnls::host
