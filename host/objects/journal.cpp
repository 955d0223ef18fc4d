#include "host/objects/journal.h"

namespace jwnls::host {

HostJournal::HostJournal(ObjectRegistry& registry, const char* name, MessageOutlet& outlet)
    : KernelObject(registry, "journal", name), Journal{}, outlet_(outlet) {
  belong_to_host();  // a journal has no operation to destroy it
  write = [](Journal* journal, std::uint32_t level, const char16_t* message, std::uint64_t) {
    if (message != nullptr) static_cast<HostJournal*>(journal)->outlet_.write(level, message);
  };
}

HostErrorSink::HostErrorSink(MessageOutlet& outlet) : ErrorSink{}, outlet_(outlet) {
  report = [](ErrorSink* sink, std::uint32_t severity, std::uint32_t status) {
    static_cast<HostErrorSink*>(sink)->outlet_.report(severity, status);
  };
}

}  // namespace jwnls::host
