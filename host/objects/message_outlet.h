// Where messages and errors leave the host: the embedder's own functions.

#ifndef JWNLS_HOST_OBJECTS_MESSAGE_OUTLET_H_
#define JWNLS_HOST_OBJECTS_MESSAGE_OUTLET_H_

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string_view>
#include <thread>

#include "host/objects/message_sinks.h"

namespace jwnls::host {

/// Calls the embedder's functions one at a time, and drops what they throw, and what reaches the
/// outlet from inside of one of them. Any thread.
class MessageOutlet {
 public:
  MessageOutlet(JournalSink journal, ErrorReporter errors);

  void write(std::uint32_t level, std::u16string_view message) noexcept;
  void report(std::uint32_t severity, std::uint32_t status) noexcept;

 private:
  template <typename Call>
  void one_at_a_time(Call call) noexcept;

  std::mutex calling_;
  std::atomic<std::thread::id> caller_{std::thread::id()};
  JournalSink journal_;
  ErrorReporter errors_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_MESSAGE_OUTLET_H_
