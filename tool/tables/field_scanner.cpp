#include "tool/tables/field_scanner.h"

#include <bit>
#include <cstring>

#include "tool/tables/block_masks.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t group = 8;  // marks that are written at once, needed or not

#if JWNLS_BLOCK_MASKS

// Parts of the loop over blocks, which is compiled twice: for every processor, and for those of
// x86-64 that count and find bits in one instruction.
#define JWNLS_PART [[gnu::always_inline]] inline

// Bits that are set. Compilers make one instruction of it where there is one.
JWNLS_PART std::size_t bits_of(std::uint64_t mask) {
  mask -= (mask >> 1) & 0x5555555555555555U;
  mask = (mask & 0x3333333333333333U) + ((mask >> 2) & 0x3333333333333333U);
  mask = (mask + (mask >> 4)) & 0x0F0F0F0F0F0F0F0FU;
  return static_cast<std::size_t>((mask * 0x0101010101010101U) >> 56);
}

// Each bit becomes the parity of the bits up to it: set from an opening quote up to the byte before
// the closing one.
JWNLS_PART std::uint64_t parity_up_to(std::uint64_t bits) {
  for (int shift = 1; shift < 64; shift *= 2) bits ^= bits << shift;
  return bits;
}

// Writes the offsets of the bits, in groups, so that no branch depends on a single one.
JWNLS_PART void write_fields(std::uint64_t mask, std::uint32_t base, FieldMarks& marks) {
  std::uint32_t* out = marks.new_fields();
  const std::size_t count = bits_of(mask);
  marks.field_count += count;
  for (std::size_t written = 0; written < count; written += group) {
    for (std::size_t index = 0; index < group; ++index) {
      // What is written beyond the last bit does not matter; the bit saves asking whether there is
      // one.
      const std::uint64_t some = mask | std::uint64_t{1} << 63;
      out[written + index] = base + static_cast<std::uint32_t>(std::countr_zero(some));
      mask &= mask - 1;
    }
  }
}

JWNLS_PART void write_rows(std::uint64_t mask, std::uint32_t base, FieldMarks& marks) {
  for (; mask != 0; mask &= mask - 1) {
    marks.add_row(base + static_cast<std::uint32_t>(std::countr_zero(mask)));
  }
}

#endif

}  // namespace

void FieldMarks::reserve(std::size_t more) {
  fields_.reserve(1 + field_count, 1 + field_count + more + group);
  fields_.data()[0] = static_cast<std::uint32_t>(-1);
  rows_.reserve(row_count, row_count + more);
}

inline FieldScanner::State FieldScanner::after(State state, char byte) const {
  if (state == State::quoted) return byte == '"' ? State::quote_closed : State::quoted;
  if (byte == separator_ || byte == '\n') return State::field_begin;
  return byte == '"' && quotes_ && state != State::plain ? State::quoted : State::plain;
}

void FieldScanner::scan_bytes(const char* text, std::size_t begin, std::size_t end,
                              FieldMarks& marks) {
  marks.reserve(end - begin);
  for (std::size_t at = begin; at < end; ++at) {
    const State next = after(state_, text[at]);
    marks.line_feeds += text[at] == '\n' ? 1 : 0;
    if (next == State::field_begin) {
      marks.add_field(static_cast<std::uint32_t>(at));
      if (text[at] == '\n') marks.add_row(static_cast<std::uint32_t>(at));
    }
    state_ = next;
  }
}

std::size_t FieldScanner::open_quote(const char* text, std::size_t end) const {
  std::size_t opening = 0;
  State state = State::field_begin;
  for (std::size_t at = 0; at < end; ++at) {
    const State next = after(state, text[at]);
    if (next == State::quoted && state == State::field_begin) opening = at;
    state = next;
  }
  return opening;
}

#if JWNLS_BLOCK_MASKS

// The state between blocks: of the four at most one holds, none in plain text.
struct FieldScanner::Carry {
  std::uint64_t inside;       // all bits or none
  std::uint64_t field_begin;  // the lowest bit or none
  std::uint64_t closed;       // the same

  explicit Carry(State state)
      : inside(state == State::quoted ? ~std::uint64_t{0} : 0),
        field_begin(state == State::field_begin ? 1 : 0),
        closed(state == State::quote_closed ? 1 : 0) {}
  [[nodiscard]] State state() const {
    if (inside != 0) return State::quoted;
    if (field_begin != 0) return State::field_begin;
    return closed != 0 ? State::quote_closed : State::plain;
  }
};

// Parity tells what is inside quotes as long as every opening quote stands at a field's begin or
// right behind a closing one; a block in which one does not goes byte by byte.
JWNLS_PART void FieldScanner::scan_block(const char* text, std::size_t base, Carry& carry,
                                         FieldMarks& marks) {
  const Block block(text + base);
  const std::uint64_t line_feeds = block.where('\n');
  const std::uint64_t quotes = quotes_ ? block.where('"') : 0;
  std::uint64_t ends = block.where(separator_) | line_feeds;
  std::uint64_t closed = 0;
  if ((quotes | carry.inside) != 0) {
    const std::uint64_t inside = parity_up_to(quotes) ^ carry.inside;
    const std::uint64_t openings = quotes & inside;
    closed = quotes & ~inside;
    ends &= ~inside;
    const std::uint64_t may_open = (ends << 1) | (closed << 1) | carry.field_begin | carry.closed;
    if ((openings & ~may_open) != 0) {
      state_ = carry.state();
      scan_bytes(text, base, base + block_bytes, marks);
      carry = Carry(state_);
      return;
    }
    carry.inside = std::uint64_t{0} - (inside >> 63);
    marks.line_feeds += bits_of(line_feeds & inside);
  }
  carry.field_begin = ends >> 63;
  carry.closed = closed >> 63;
  write_fields(ends, static_cast<std::uint32_t>(base), marks);
  const std::size_t rows = marks.row_count;
  write_rows(ends & line_feeds, static_cast<std::uint32_t>(base), marks);
  marks.line_feeds += marks.row_count - rows;
}

JWNLS_PART void FieldScanner::scan_blocks(const char* text, std::size_t begin, std::size_t end,
                                          FieldMarks& marks) {
  marks.reserve(end - begin);
  Carry carry(state_);
  std::size_t at = begin;
  for (; end - at >= block_bytes; at += block_bytes) scan_block(text, at, carry, marks);
  state_ = carry.state();
  scan_bytes(text, at, end, marks);
}

void FieldScanner::scan_anywhere(const char* text, std::size_t begin, std::size_t end,
                                 FieldMarks& marks) {
  scan_blocks(text, begin, end, marks);
}

#else

void FieldScanner::scan_anywhere(const char* text, std::size_t begin, std::size_t end,
                                 FieldMarks& marks) {
  scan_bytes(text, begin, end, marks);
}

#endif

#if JWNLS_BLOCK_MASKS && defined(__x86_64__)

[[gnu::target("avx,bmi,popcnt")]] void FieldScanner::scan_with_bits(const char* text,
                                                                    std::size_t begin,
                                                                    std::size_t end,
                                                                    FieldMarks& marks) {
  scan_blocks(text, begin, end, marks);
}

void FieldScanner::scan(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks) {
  static const bool has_bits = __builtin_cpu_supports("avx") && __builtin_cpu_supports("bmi") &&
                               __builtin_cpu_supports("popcnt");
  has_bits ? scan_with_bits(text, begin, end, marks) : scan_anywhere(text, begin, end, marks);
}

#else

void FieldScanner::scan(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks) {
  scan_anywhere(text, begin, end, marks);
}

#endif

}  // namespace jwnls::tool
