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
using jwnls::library::MaskedSyntax;
using jwnls::library::TextAmongOthers;

// Short decimals among texts that Arrow's offsets tell apart: the bytes of all are there to read.
// For the kinds whose decimals are their digits, and columns of the same offsets.
class ShortDecimals {
 public:
  ShortDecimals(const jwnls_layout* layout, const jwnls_texts& texts,
                const jwnls_column& column) noexcept
      : syntax_(layout->number.syntax.quick),
        offsets_(texts.offsets),
        bytes_(texts.bytes),
        count_(texts.count) {
    const bool usable = (layout->is(JWNLS_NUMBER) || layout->is(JWNLS_INTEGER)) &&
                        layout->number.syntax.quick.masks && texts.texts == nullptr &&
                        offsets_ != nullptr && bytes_ != nullptr && texts.validity == nullptr &&
                        column.offsets != nullptr;
    constexpr std::int32_t behind = 17;  // a sign and sixteen bytes
    if (usable && offsets_[count_] >= behind) {
      begins_ = static_cast<std::uint32_t>(offsets_[count_] - behind + 1);
    }
  }

  void expect_all(ColumnWriter& writer) const noexcept {
    if (begins_ != 0) writer.expect(count_);
  }
  // Reads from the writer's next text on up to the first that is another's matter.
  void read(ColumnWriter& writer, FactsCounter& facts) const noexcept {
    if (begins_ != 0) read_run(*this, writer, facts);
  }

 private:
  // All that is asked for is its own, so that it stays in registers: any byte that is written could
  // be part of anything else.
  [[gnu::noinline]] static void read_run(const ShortDecimals texts, ColumnWriter& writer,
                                         FactsCounter& facts) noexcept {
    ColumnWriter::Run run = writer.run();
    FactsCounter counter = facts;
    std::size_t i = writer.count();
    for (; i < texts.count_; ++i) {
      const auto begin = static_cast<std::uint32_t>(texts.offsets_[i]);
      // Offsets that fall give a length that is no short one's.
      const std::uint32_t length = static_cast<std::uint32_t>(texts.offsets_[i + 1]) - begin;
      if (begin >= texts.begins_ || run.room() < static_cast<std::ptrdiff_t>(masked_decimal_room)) {
        break;
      }
      std::size_t written = 0;
      std::uint8_t found = 0;
      const Masked masked = masked_decimal<TextAmongOthers>(texts.syntax_, texts.bytes_ + begin,
                                                            length, run.next, written, found);
      if (masked == Masked::read) [[likely]] {
        run.add(i, written);
        if (found != JWNLS_DECIDES) counter.count_other(i, found);
        continue;
      }
      if (masked == Masked::other) break;
      run.add(i, 0);
      if (run.codes != nullptr) run.codes[i] = JWNLS_UNREAD;
      counter.count_refused(i);
    }
    counter.count_run(writer.count(), i);
    writer.go_on(run, i);
    facts = counter;
  }

  MaskedSyntax syntax_;
  const std::int32_t* offsets_;
  const char* bytes_;
  std::size_t count_;
  std::uint32_t begins_ = 0;  // before it a text's sixteen bytes are there; 0: not to be used
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
  const ShortDecimals short_decimals(layout, *texts, *column);
  FactsCounter counter;
  ColumnWriter writer(*column);
  short_decimals.expect_all(writer);
  while (true) {
    short_decimals.read(writer, counter);
    const size_t i = writer.count();
    if (i == input.count()) break;
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
