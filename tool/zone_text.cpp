#include "tool/zone_text.h"

namespace jwnls::tool {

std::string offset_text(std::chrono::seconds offset) {
  const auto two_digits = [](long value) {
    return (value < 10 ? "0" : "") + std::to_string(value);
  };
  const long seconds = std::abs(static_cast<long>(offset.count()));
  std::string text = offset.count() < 0 ? "UTC-" : "UTC+";
  text += two_digits(seconds / 3600) + ":" + two_digits(seconds / 60 % 60);
  if (seconds % 60 != 0) text += ":" + two_digits(seconds % 60);
  return text;
}

}  // namespace jwnls::tool
