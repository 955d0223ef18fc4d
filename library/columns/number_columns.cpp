// Columns of numbers, integers and exact decimals.

#include <cstddef>
#include <cstdint>

#include "abi/missing_value.h"
#include "include/jwnls/jwnls.h"
#include "library/columns/read_column.h"
#include "library/columns/write_column.h"
#include "library/layouts/layout.h"
#include "library/numbers/masked_decimal.h"

using jwnls::library::ColumnWriter;
using jwnls::library::FactsCounter;
using jwnls::library::read_column;
using jwnls::library::Texts;
using jwnls::library::write_column;
using jwnls::library::write_texts;

namespace {

using jwnls::library::Masked;
using jwnls::library::masked_decimal;
using jwnls::library::masked_decimal_room;
using jwnls::library::QuickSyntax;
using jwnls::library::TextAmongOthers;

// Short decimals among texts that Arrow's offsets tell apart: the bytes of all are there to read.
class ShortDecimals {
 public:
  ShortDecimals(const jwnls_layout* layout, const jwnls_texts& texts) noexcept
      : syntax_(layout->number.syntax.quick), offsets_(texts.offsets), bytes_(texts.bytes) {
    const bool usable = (layout->is(JWNLS_NUMBER) || layout->is(JWNLS_INTEGER)) &&
                        texts.texts == nullptr && offsets_ != nullptr && bytes_ != nullptr &&
                        texts.validity == nullptr;
    constexpr std::int32_t behind = 17;  // a sign and sixteen bytes
    if (usable && offsets_[texts.count] >= behind) begins_ = offsets_[texts.count] - behind + 1;
  }

  // False where the text is another's matter; nothing is written then.
  [[nodiscard]] bool read(std::size_t i, ColumnWriter& writer,
                          FactsCounter& counter) const noexcept {
    if (begins_ == 0) return false;
    const std::int32_t begin = offsets_[i];
    if (static_cast<std::uint32_t>(begin) >= static_cast<std::uint32_t>(begins_) ||
        writer.room() < masked_decimal_room) {
      return false;
    }
    // Offsets that fall give a length that is no short one's.
    const auto length = static_cast<std::size_t>(std::int64_t{offsets_[i + 1]} - begin);
    std::size_t written = 0;
    std::uint8_t facts = 0;
    if (masked_decimal<TextAmongOthers>(syntax_, bytes_ + begin, length, writer.next(), written,
                                        facts) != Masked::read) {
      return false;
    }
    writer.add(JWNLS_OK, written);
    counter.count(i, JWNLS_OK, facts);
    return true;
  }

 private:
  const QuickSyntax syntax_;  // its own, which no text that is written may be part of
  const std::int32_t* const offsets_;
  const char* const bytes_;
  std::int32_t begins_ = 0;  // before it a text's sixteen bytes are there; 0: not to be used
};

}  // namespace

extern "C" {

size_t jwnls_read_numbers(const jwnls_layout* layout, const jwnls_texts* texts, double* values,
                          uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, jwnls::missing_value(), jwnls_read_number, values, codes,
                     facts);
}

size_t jwnls_read_integers(const jwnls_layout* layout, const jwnls_texts* texts, int64_t* values,
                           uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, int64_t{0}, jwnls_read_integer, values, codes, facts);
}

size_t jwnls_write_numbers(const jwnls_layout* layout, const double* values, size_t count,
                           const jwnls_column* column) {
  return write_column(layout, values, count, column, jwnls_write_number);
}

size_t jwnls_write_integers(const jwnls_layout* layout, const int64_t* values, size_t count,
                            const jwnls_column* column) {
  return write_column(layout, values, count, column, jwnls_write_integer);
}

size_t jwnls_read_decimals(const jwnls_layout* layout, const jwnls_texts* texts,
                           const jwnls_column* column, jwnls_column_facts* facts) {
  const Texts input(*texts);
  const ShortDecimals short_decimals(layout, *texts);
  FactsCounter counter;
  ColumnWriter writer(*column);
  for (size_t i = 0; i < input.count(); ++i) {
    if (short_decimals.read(i, writer, counter)) continue;
    const jwnls_text text = input.at(i);
    int code = JWNLS_MISSING;
    uint8_t found = 0;
    size_t length = 0;
    if (text.bytes != nullptr) {
      code = jwnls_read_decimal(layout, text.bytes, text.length, writer.next(), writer.room(),
                                &length, nullptr, &found);
    }
    if (code == JWNLS_ROOM) break;
    counter.count(i, code, found);
    writer.add(code, length);
  }
  counter.add_to(facts);
  return writer.count();
}

size_t jwnls_write_decimals(const jwnls_layout* layout, const jwnls_texts* decimals,
                            const jwnls_column* column) {
  const Texts input(*decimals);
  return write_texts(
      input.count(), *column, [&](size_t i, char* out, size_t room, size_t* length) -> int {
        const jwnls_text text = input.at(i);
        if (text.bytes == nullptr) return JWNLS_MISSING;
        return jwnls_write_decimal(layout, text.bytes, text.length, out, room, length);
      });
}

}  // extern "C"
