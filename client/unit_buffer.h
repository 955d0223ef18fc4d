// The room that a formatting service writes into, and the text that the caller gets from it.

#ifndef JWNLS_CLIENT_UNIT_BUFFER_H_
#define JWNLS_CLIENT_UNIT_BUFFER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "client/utf8.h"

namespace jwnls::client {

struct UnitBuffer {
  // Dates, times and datetimes have 512 units at most, the services' own work area; numbers a field
  // of 1,000, or 350 digits, a separator between any two of them, a currency symbol of 128 and a
  // few more.
  static constexpr std::int64_t capacity = 1024;

  char16_t units[capacity];
  std::int64_t length = 0;

  template <typename String>
  String text() const {
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(length, 0, capacity));
    if constexpr (std::is_same_v<String, std::u16string>) {
      return String(units, count);
    } else {
      return to_utf8(std::u16string_view(units, count));
    }
  }
};

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_UNIT_BUFFER_H_
