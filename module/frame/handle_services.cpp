#include "module/frame/handle_services.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "abi/status.h"
#include "module/frame/handle_teardown.h"
#include "module/host_calls/time_zone.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

constexpr std::uint32_t blank_padded = 1;

// Where the areas of selectors 0 to 9 begin in the record.
constexpr std::size_t record_areas[] = {
    0,
    offsetof(LocaleRecord, own_name),
    offsetof(LocaleRecord, area_2),
    offsetof(LocaleRecord, language),
    offsetof(LocaleRecord, language_tag),
    offsetof(LocaleRecord, full_weekdays),
    offsetof(LocaleRecord, currency_code),
    offsetof(LocaleRecord, first_weekday),
    offsetof(LocaleRecord, english_name),
    offsetof(LocaleRecord, area_9),
};

std::u16string_view text_argument(const char16_t* text, std::int64_t length) noexcept {
  if (text == nullptr || length <= 0) return {};
  return {text, static_cast<std::size_t>(length)};
}

}  // namespace

std::uint32_t no_operation(LocaleHandle* /*handle*/) noexcept { return 0; }

std::int32_t compare_texts(LocaleHandle* /*handle*/, const char16_t* a, std::int64_t a_length,
                           const char16_t* b, std::int64_t b_length, std::uint32_t mode) noexcept {
  const std::u16string_view text_a = text_argument(a, a_length);
  const std::u16string_view text_b = text_argument(b, b_length);
  const std::size_t shared = std::min(text_a.size(), text_b.size());
  if (const int order = text_a.substr(0, shared).compare(text_b.substr(0, shared))) {
    return order < 0 ? -1 : 1;
  }
  if (text_a.size() == text_b.size()) return 0;

  const bool a_is_longer = text_a.size() > text_b.size();
  const std::int32_t longer_is_greater = a_is_longer ? 1 : -1;
  if (mode != blank_padded) return longer_is_greater;
  const std::u16string_view rest = (a_is_longer ? text_a : text_b).substr(shared);
  const std::size_t first = rest.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return 0;
  return rest[first] > u' ' ? longer_is_greater : -longer_is_greater;
}

std::uint32_t record_area(LocaleHandle* handle, std::uint32_t selector, void** area) noexcept {
  if (selector >= std::size(record_areas)) return code(Status::unknown_selector);
  *area = reinterpret_cast<std::byte*>(handle->record) + record_areas[selector];
  return code(Status::ok);
}

std::uint32_t copy_locale_name(LocaleHandle* handle, char16_t* name,
                               std::int64_t* length) noexcept {
  if (name == nullptr || length == nullptr) return code(Status::null_argument);
  *length = handle->name_length;
  std::copy_n(handle->name, bounded_length(handle->name_length, text_entry_capacity), name);
  return code(Status::ok);
}

Track* create_handle_cache(LocaleHandle* handle) noexcept {
  NlsContext* context = handle->context;
  Track* cache = host_calls::create_track(context->host_service, host_calls::journal_of(context),
                                          "JWNLS Locale track");
  if (cache == nullptr) return nullptr;
  if (cache->set_destructor == nullptr) {  // its handles would never be destroyed
    host_calls::destroy(cache);
    return nullptr;
  }
  host_calls::set_destructor(cache, destroy_cached_handle);
  return cache;
}

std::uint32_t set_time_zone(LocaleHandle* handle, const char16_t* zone,
                            std::int64_t length) noexcept {
  if (zone == nullptr || length == 0) return code(Status::ok);
  if (length < 0) return code(Status::lookup_failed);
  Zone* opened = look_up_zone(handle, zone, length);
  if (opened == nullptr) return code(Status::lookup_failed);
  set_current_zone(handle, opened);  // the previous one stays in the track
  return code(Status::ok);
}

}  // namespace jwnls
