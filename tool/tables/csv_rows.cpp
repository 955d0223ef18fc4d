#include "tool/tables/csv_rows.h"

#include <algorithm>
#include <cstring>

#include "tool/tables/field_text.h"

namespace jwnls::tool {
namespace {

// Spans are short, and there is room behind both ends: whole steps instead of exact bytes.
constexpr std::size_t step = 32;
// What a value takes at most: a separator before it, its room, twice where all of it are quotes,
// and two around it.
constexpr std::size_t value_bytes = 1 + 2 * ColumnValues::room + 2 + step;

void copy_in_steps(char* to, const char* from, std::size_t size) {
  static_assert(step <= Chunk::slack);
  for (std::size_t at = 0; at < size; at += step) std::memcpy(to + at, from + at, step);
}

}  // namespace

void CsvRows::start(const Chunk& chunk) {
  bytes_ = chunk.bytes.data();
  copied_ = size_ = row_size_ = row_copied_ = 0;
}

// Leaves room for a value behind what is copied.
inline void CsvRows::copy_up_to(std::size_t end) {
  const std::size_t span = end - copied_;
  const std::size_t needed = size_ + span + value_bytes;
  if (needed > out_.capacity()) out_.reserve(size_, needed);
  copy_in_steps(out_.data() + size_, bytes_ + copied_, span);
  size_ += span;
  copied_ = end;
}

void CsvRows::append(std::string_view text) {
  out_.reserve(size_, size_ + text.size() + value_bytes);
  if (!text.empty()) std::memcpy(out_.data() + size_, text.data(), text.size());
  size_ += text.size();
}

// The value stands at the output's end; where it needs quotes it moves up, from behind.
inline void CsvRows::write_value(std::size_t length) {
  char* value = out_.data() + size_;
  if (!fields_.needs_quotes(value, length)) {
    size_ += length;
    return;
  }
  const auto inner = static_cast<std::size_t>(std::count(value, value + length, '"'));
  char* end = value + length + inner + 2;
  size_ += length + inner + 2;
  *--end = '"';
  for (std::size_t at = length; at > 0; --at) {
    *--end = value[at - 1];
    if (value[at - 1] == '"') *--end = '"';
  }
  *value = '"';
}

// False when a value was refused.
inline bool CsvRows::convert_in_place(const Row& row) {
  bool all_read = true;
  for (const std::size_t column : plan_.in_place) {
    const std::size_t field = plan_.columns[column].field;
    if (field >= row.fields) break;
    copy_up_to(row.field_begin(field));
    const FieldValue value = fields_.convert(row, column, out_.data() + size_);
    values_[column] = value;
    if (value.outcome == FieldOutcome::read) {
      write_value(value.length);
      copied_ = row.field_end(field);
      continue;
    }
    const bool is_missing = value.outcome == FieldOutcome::missing;
    all_read = all_read && is_missing;
    if (fields_.is_stopped()) break;
    if (!is_taken_as_missing(value)) continue;
    if (is_missing && !plan_.job.null_out && is_blank(fields_.text())) continue;
    append(plan_.null_field);
    copied_ = row.field_end(field);
  }
  return all_read;
}

bool CsvRows::add_columns(const Row& row) {
  bool all_read = true;
  copy_up_to(row.text_end());
  for (const std::size_t column : plan_.added) {
    out_.data()[size_++] = plan_.header.separator;
    const FieldValue value = fields_.convert(row, column, out_.data() + size_);
    values_[column] = value;
    all_read = all_read && value.outcome != FieldOutcome::refused;
    if (fields_.is_stopped()) return false;
    if (value.outcome == FieldOutcome::read) {
      write_value(value.length);
    } else {
      append(is_taken_as_missing(value) ? plan_.null_field
                                        : row.field(plan_.columns[column].field));
    }
    out_.reserve(size_, size_ + 1 + value_bytes);
  }
  for (const std::size_t column : plan_.currencies) {
    append({&plan_.header.separator, 1});
    const FieldValue& value = values_[column];
    if (value.outcome == FieldOutcome::read) {
      append(value.currency);
    } else if (is_taken_as_missing(value)) {
      append(plan_.null_field);
    }
  }
  return all_read;
}

// A row that is dropped, or behind which all is, leaves the output as it was before.
inline bool CsvRows::end_row(const Row& row, bool refused) {
  if (!refused) return true;
  const bool is_stopped = fields_.is_stopped();
  if (!is_stopped && plan_.job.invalid != Invalid::drop) return true;
  size_ = row_size_;
  copied_ = row_copied_;
  copy_up_to(row.begin);
  copied_ = row.end + (row.has_line_feed ? 1 : 0);
  return !is_stopped;
}

bool CsvRows::row(const Row& row) {
  row_size_ = size_;
  row_copied_ = copied_;
  bool all_read = convert_in_place(row);
  const bool adds = !plan_.added.empty() || !plan_.currencies.empty();
  if (adds && !fields_.is_stopped()) all_read = add_columns(row) && all_read;
  return end_row(row, !all_read);
}

bool CsvRows::other_row(const Row& row) {
  row_size_ = size_;
  row_copied_ = copied_;
  if (plan_.job.ragged == Ragged::convert) return end_row(row, !convert_in_place(row));
  fields_.refuse_row(row);
  return end_row(row, true);
}

std::string_view CsvRows::finish(std::size_t end) {
  if (copied_ == 0) return {bytes_, end};  // not a byte has changed
  if (copied_ < end) copy_up_to(end);
  return {out_.data(), size_};
}

}  // namespace jwnls::tool
