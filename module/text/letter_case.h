// Case services: the lower-case class and upper-casing of one unit, as the host decides them.

#ifndef JWNLS_MODULE_TEXT_LETTER_CASE_H_
#define JWNLS_MODULE_TEXT_LETTER_CASE_H_

#include "module/text/kernel_handle.h"

namespace jwnls {

/// The host's case rules, fetched once for the length of a call.
class LetterCase {
 public:
  explicit LetterCase(NlsContext* context) noexcept : context_(context) {
    if (const Kernel* kernel = kernel_handle()) classes_ = kernel->character_classes;
  }

  /// True when the host's character classes call `unit` a lower-case letter. A host without classes
  /// gets the ASCII range, which holds every letter that this module asks about.
  bool is_lower(char16_t unit) const noexcept {
    if (classes_ == nullptr) return unit >= u'a' && unit <= u'z';
    return (classes_[unit] & lower_case_class) != 0;
  }

  /// `unit` in upper case, by the host's mapping.
  char16_t to_upper(char16_t unit) const noexcept { return context_->to_upper(context_, unit, 0); }

 private:
  NlsContext* context_;
  const std::uint16_t* classes_ = nullptr;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_LETTER_CASE_H_
