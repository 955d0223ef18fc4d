#include "host/locales/resolved_locales.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "host/locales/locale_names.h"
#include "host/objects/memory_refusals.h"

namespace jwnls::host {

Status ResolvedLocales::resolve(std::u16string_view name, ResolvedLocale** out) noexcept {
  *out = nullptr;
  if (const Spelling* spelling = spellings_.find(name)) {
    *out = spelling->locale;
    return spelling->status;
  }
  try {
    return resolve_anew(name, out);
  } catch (const std::bad_alloc&) {
    ++memory_refusals;
    *out = nullptr;
    return Status::out_of_memory;
  }
}

Status ResolvedLocales::resolve_anew(std::u16string_view name, ResolvedLocale** out) {
  const LocaleMatch match = match_locale_name(name);
  if (match.status != Status::ok && match.status != Status::resolved_with_warning) {
    return match.status;
  }
  *out = record_of(match.canonical);
  spellings_.add(name, {match.status, *out});
  return match.status;
}

ResolvedLocale* ResolvedLocales::record_of(std::string_view canonical) {
  const std::lock_guard guard(mutex_);
  if (const auto* entry = canonical_.find(canonical.data(), canonical.size())) {
    return static_cast<ResolvedLocale*>(entry->value);
  }
  constexpr std::size_t head_bytes = offsetof(ResolvedLocale, name);
  const std::size_t bytes =
      std::max(sizeof(ResolvedLocale), head_bytes + canonical.size() * sizeof(char16_t));
  auto memory = std::make_unique<std::byte[]>(bytes);
  auto* locale = ::new (memory.get()) ResolvedLocale{};
  locale->length = static_cast<std::int64_t>(canonical.size());
  for (std::size_t at = 0; at < canonical.size(); ++at) {
    const char16_t unit = static_cast<unsigned char>(canonical[at]);
    std::memcpy(memory.get() + head_bytes + at * sizeof unit, &unit, sizeof unit);
  }
  records_.push_back(std::move(memory));
  canonical_.insert(canonical.data(), canonical.size(), locale);
  return locale;
}

}  // namespace jwnls::host
