#include <unicode/ustring.h>

#include <stdexcept>

#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"

namespace jwnls::generator {

void SectionWriter::byte(std::size_t value) {
  if (value > 0xFF) throw std::runtime_error("a number above 255 in layout data");
  bytes_ += static_cast<char>(value);
}

void SectionWriter::word(std::size_t value) {
  if (value > 0xFFFF) throw std::runtime_error("a number above 65535 in layout data");
  byte(value & 0xFF);
  byte(value >> 8);
}

void SectionWriter::text(std::u16string_view text, std::size_t most) {
  const std::string utf8 =
      icu_text<char>("u_strToUTF8", [&](char* out, int32_t room, UErrorCode* error) {
        int32_t length = 0;
        u_strToUTF8(out, room, &length, text.data(), static_cast<int32_t>(text.size()), error);
        return length;
      });
  if (utf8.size() > most) throw std::runtime_error("a text too long for layout data: " + utf8);
  byte(utf8.size());
  bytes_ += utf8;
}

}  // namespace jwnls::generator
