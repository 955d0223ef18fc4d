// The message extension: English texts of the status codes.

#include <algorithm>
#include <array>
#include <string_view>

#include "abi/message_texts.h"
#include "abi/status.h"
#include "extensions/entry_points.h"
#include "extensions/extension_object.h"

namespace jwnls::emsg {
namespace {

struct Message {
  Status status;
  std::u16string_view text;
};

constexpr Message messages[] = {
    {Status::ok, u"success"},
    {Status::out_of_memory, u"out of memory"},
    {Status::not_possible,
     u"the request cannot be carried out: a directive that the pattern may "
     u"not hold, or a number of too many digits"},
    {Status::no_os_zone, u"the time zone of the operating system is not known"},
    {Status::no_match, u"the text is no such date, time or period"},
    {Status::missing_value, u"the value is a missing value"},
    {Status::out_of_range, u"the value is out of range"},
    {Status::does_not_fit, u"the result does not fit"},
    {Status::filled_with_warning, u"the locale's data was filled with a warning"},
    {Status::invalid_number, u"the text is no number"},
    {Status::integer_overflow, u"the integer is too large for its type"},
    {Status::cut_sequence, u"the UTF-8 text ends inside a character"},
    {Status::invalid_width, u"the width cannot be used with this number format"},
    {Status::decimals_dropped, u"the number is shown with fewer decimals than were asked for"},
    {Status::unknown_selector, u"the locale record has no such area"},
    {Status::negative_length, u"the length of the text is negative"},
    {Status::resolved_with_warning, u"a near locale is used in place of the one asked for"},
    {Status::null_argument, u"a required argument is null"},
    {Status::no_missing_symbol, u"the locale has no symbol for a missing value"},
    {Status::lookup_failed, u"the locale or time zone is not known or cannot be opened"},
    {Status::grouping_failed, u"the digit grouping does not fit the width"},
    {Status::calendar_failed, u"the calendar could not convert the date"},
};
static_assert(std::ranges::all_of(messages, [](const Message& row) {
  return row.text.size() <= message_text_capacity;
}));

// Copies what fits and says whether all of it did.
Status deliver(std::u16string_view text, char16_t* out, std::int64_t capacity,
               std::int64_t* length) noexcept {
  const auto room = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
  const std::size_t written = std::min(text.size(), room);
  std::copy_n(text.data(), written, out);
  *length = static_cast<std::int64_t>(written);
  return written == text.size() ? Status::ok : Status::does_not_fit;
}

Status deliver_unknown(std::uint32_t status, char16_t* out, std::int64_t capacity,
                       std::int64_t* length) noexcept {
  constexpr std::u16string_view prefix = u"unknown status 0x";
  std::array<char16_t, prefix.size() + 8> text{};
  auto* digit = std::copy(prefix.begin(), prefix.end(), text.begin());
  for (int shift = 28; shift >= 0; shift -= 4) {
    *digit++ = u"0123456789ABCDEF"[status >> shift & 0xF];
  }
  const Status delivered = deliver({text.data(), text.size()}, out, capacity, length);
  return delivered == Status::ok ? Status::lookup_failed : delivered;
}

std::uint32_t message(MessageExtension* /*extension*/, std::uint32_t status, char16_t* out,
                      std::int64_t capacity, std::int64_t* length) {
  if (out == nullptr || length == nullptr) return code(Status::null_argument);
  const auto* row = std::ranges::find(messages, static_cast<Status>(status), &Message::status);
  return code(row != std::end(messages) ? deliver(row->text, out, capacity, length)
                                        : deliver_unknown(status, out, capacity, length));
}

void destroy(MessageExtension* extension) {
  destroy_with_own_pool(reinterpret_cast<MessageTexts*>(extension));
}

}  // namespace
}  // namespace jwnls::emsg

void* jwnls::create_jwemsg(Kernel* kernel, ErrorSink* errors) {
  auto* texts = create_in_own_pool<MessageTexts>(kernel, errors, "jwemsg pool");
  if (texts == nullptr) return nullptr;
  texts->base.destroy = emsg::destroy;
  texts->message = emsg::message;
  return &texts->base;
}
