// Why loads failed that a call of the module led to.

#ifndef JWNLS_HOST_LOADING_LOAD_FAILURE_H_
#define JWNLS_HOST_LOADING_LOAD_FAILURE_H_

#include <string>
#include <utility>

namespace jwnls::host {

/// While one lives, the latest reason that a load of this thread failed. The module asks for
/// extensions inside its own calls and learns only that there is none; whoever called the module
/// has one of these around the call, and so gets the reason of that call and of no other.
class LoadFailure {
 public:
  LoadFailure() noexcept : outer_(innermost_) { innermost_ = this; }
  ~LoadFailure() { innermost_ = outer_; }
  LoadFailure(const LoadFailure&) = delete;
  LoadFailure& operator=(const LoadFailure&) = delete;

  /// Empty while no load failed.
  [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

  /// A load of this thread failed. Forgotten where nobody asks.
  static void note(std::string reason) noexcept {
    if (innermost_ != nullptr) innermost_->reason_ = std::move(reason);
  }

 private:
  // In the room that every thread has from its start: a thread cannot run out of memory here.
  [[gnu::tls_model("initial-exec")]] static inline thread_local LoadFailure* innermost_ = nullptr;
  LoadFailure* const outer_;
  std::string reason_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_LOAD_FAILURE_H_
