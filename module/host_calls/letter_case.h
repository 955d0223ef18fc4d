// Case services: the lower-case class and upper-casing of one unit, as the host decides them.

#ifndef JWNLS_MODULE_HOST_CALLS_LETTER_CASE_H_
#define JWNLS_MODULE_HOST_CALLS_LETTER_CASE_H_

#include <array>
#include <cstdint>

#include "module/host_calls/kernel_handle.h"

namespace jwnls {

/// The classes of a host that has none.
inline constexpr auto ascii_classes = [] {
  std::array<std::uint16_t, 128> classes{};
  for (std::size_t letter = 'a'; letter <= 'z'; ++letter) classes[letter] = lower_case_class;
  return classes;
}();

/// The host's case rules, fetched once for the length of a call.
class LetterCase {
 public:
  explicit LetterCase(NlsContext* context) noexcept : context_(context) {
    const Kernel* kernel = kernel_handle();
    if (kernel != nullptr && kernel->character_classes != nullptr) {
      classes_ = kernel->character_classes;
    }
  }

  /// True when the host's character classes call `unit`, which is below 128, a lower-case letter.
  bool is_lower(char16_t unit) const noexcept { return (classes_[unit] & lower_case_class) != 0; }

  /// `unit` in upper case, by the host's mapping.
  char16_t to_upper(char16_t unit) const noexcept { return context_->to_upper(context_, unit, 0); }

 private:
  NlsContext* context_;
  const std::uint16_t* classes_ = ascii_classes.data();
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_LETTER_CASE_H_
