#include "tool/zone_text.h"

#include <cstdio>

namespace jwnls::tool {

std::string offset_text(std::chrono::seconds offset) {
  const std::chrono::hh_mm_ss parts(offset);
  char text[32];
  int length = std::snprintf(text, sizeof text, "UTC%c%02ld:%02ld", parts.is_negative() ? '-' : '+',
                             static_cast<long>(parts.hours().count()),
                             static_cast<long>(parts.minutes().count()));
  if (parts.seconds().count() != 0) {
    length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), ":%02ld",
                            static_cast<long>(parts.seconds().count()));
  }
  return {text, static_cast<std::size_t>(length)};
}

}  // namespace jwnls::tool
