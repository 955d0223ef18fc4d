// Locale names that were resolved before, so that the next time is a look-up.

#ifndef JWNLS_HOST_LOCALES_RESOLVED_LOCALES_H_
#define JWNLS_HOST_LOCALES_RESOLVED_LOCALES_H_

#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "abi/host_tables.h"
#include "abi/status.h"
#include "host/lookup/answer_cache.h"
#include "host/lookup/key_table.h"

namespace jwnls::host {

/// A record for each canonical name, and a cache of the spellings that led to it. Records live as
/// long as this object. Unknown names are matched each time. Any thread.
class ResolvedLocales {
 public:
  /// Status and record of a name, as host/locales/locale_names.h matches it: ok,
  /// resolved_with_warning or, with a null record, lookup_failed or out_of_memory.
  Status resolve(std::u16string_view name, ResolvedLocale** out) noexcept;

 private:
  struct Spelling {
    Status status;
    ResolvedLocale* locale;
  };

  Status resolve_anew(std::u16string_view name, ResolvedLocale** out);
  ResolvedLocale* record_of(std::string_view canonical);

  AnswerCache<Spelling> spellings_;
  KeyTable canonical_;  // canonical name -> ResolvedLocale
  std::mutex mutex_;    // guards the list
  std::vector<std::unique_ptr<std::byte[]>> records_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOCALES_RESOLVED_LOCALES_H_
