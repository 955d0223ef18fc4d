#include "module/read_numbers/integer_scanner.h"
#include "module/read_numbers/number_services.h"

namespace jwnls {

template <typename Integer, typename Unit>
std::uint32_t read_integer(LocaleHandle* handle, const Unit* text, std::int64_t length,
                           std::uint32_t flags, Integer* value, std::int64_t* consumed) noexcept {
  if (length < 0) return code(Status::negative_length);
  const auto reading = IntegerScanner<Integer, Unit>(text, length, flags, *handle->record).read();
  *value = reading.value;
  *consumed = reading.consumed;
  return code(reading.status);
}

// NOLINTBEGIN(bugprone-macro-parentheses): types stand without parentheses
#define JWNLS_READ_INTEGER(Integer, Unit)                                                      \
  template std::uint32_t read_integer(LocaleHandle*, const Unit*, std::int64_t, std::uint32_t, \
                                      Integer*, std::int64_t*) noexcept
JWNLS_READ_INTEGER(std::int64_t, char16_t);
JWNLS_READ_INTEGER(std::uint64_t, char16_t);
JWNLS_READ_INTEGER(std::int32_t, char16_t);
JWNLS_READ_INTEGER(std::uint32_t, char16_t);
JWNLS_READ_INTEGER(std::int64_t, char);
JWNLS_READ_INTEGER(std::uint64_t, char);
JWNLS_READ_INTEGER(std::int32_t, char);
JWNLS_READ_INTEGER(std::uint32_t, char);
#undef JWNLS_READ_INTEGER
// NOLINTEND(bugprone-macro-parentheses)

}  // namespace jwnls
