#include "tool/tables/csv_rows.h"

#include <algorithm>
#include <cstring>

#include "tool/tables/field_text.h"

namespace jwnls::tool {
namespace {

// What a value takes at most: a separator before it, its room, twice where all of it are quotes,
// two around it, and what is copied beyond its end.
constexpr std::size_t value_bytes = 1 + 2 * ColumnValues::room + 2 + CopyInSteps::step;

}  // namespace

void CsvRows::start(const Chunk& chunk) {
  bytes_ = chunk.bytes.data();
  // Enough where values do not grow by more than a quarter.
  out_.reserve(0, chunk.size + chunk.size / 4 + 4 * value_bytes);
  copied_ = row_copied_ = bytes_;
  size_ = row_size_ = 0;
}

// Leaves room for a value behind what is copied.
inline void CsvRows::copy_up_to(const char* end) {
  const auto span = static_cast<std::size_t>(end - copied_);
  const std::size_t needed = size_ + span + value_bytes;
  if (needed > out_.capacity()) out_.reserve(size_, needed);
  CopyInSteps::copy(out_.data() + size_, copied_, span);
  size_ += span;
  copied_ = end;
}

void CsvRows::append(std::string_view text) {
  out_.reserve(size_, size_ + text.size() + value_bytes);
  if (!text.empty()) std::memcpy(out_.data() + size_, text.data(), text.size());
  size_ += text.size();
}

// The value stands at the output's end. False when it needs quotes and may have none.
inline bool CsvRows::write_value(std::size_t length, bool may_need_quotes) {
  if (may_need_quotes && specials_.is_in(out_.data() + size_, length)) {
    return write_in_quotes(length);
  }
  size_ += length;
  return true;
}

// The value moves up, from behind.
bool CsvRows::write_in_quotes(std::size_t length) {
  if (!plan_.job.quotes) return false;
  char* value = out_.data() + size_;
  const auto inner = static_cast<std::size_t>(std::count(value, value + length, '"'));
  char* end = value + length + inner + 2;
  size_ += length + inner + 2;
  *--end = '"';
  for (std::size_t at = length; at > 0; --at) {
    *--end = value[at - 1];
    if (*end == '"') *--end = '"';
  }
  *value = '"';
  return true;
}

// False when a value is refused.
inline bool CsvRows::convert_in_place(const Row& row) {
  bool all_read = true;
  for (const InPlace& place : in_place_) {
    if (place.field >= row.fields) break;
    const std::string_view field = row.field(place.field);
    copy_up_to(field.data());
    FieldValue& value = fields_.convert(row, place.column, field, out_.data() + size_);
    if (value.outcome == FieldOutcome::read && write_value(value.length, place.may_need_quotes)) {
      copied_ = field.data() + field.size();
    } else if (!keep_or_empty(row, place.column, field, value)) {
      all_read = false;
      if (fields_.is_stopped()) break;
    }
    if (keeps_values_) values_[place.column] = value;
  }
  return all_read;
}

// What is not read stays, or becomes what a missing value does. False when it is refused.
bool CsvRows::keep_or_empty(const Row& row, std::size_t column, std::string_view field,
                            FieldValue& value) {
  if (value.outcome == FieldOutcome::read) {
    fields_.take_back(row, column, value);
    value = {};
  }
  const bool is_missing = value.outcome == FieldOutcome::missing;
  const bool stays = is_missing ? !plan_.job.null_out && is_blank(fields_.text())
                                : plan_.job.invalid != Invalid::empty;
  if (!stays) {
    append(plan_.null_field);
    copied_ = field.data() + field.size();
  }
  return is_missing;
}

bool CsvRows::add_columns(const Row& row) {
  bool all_read = true;
  copy_up_to(row.bytes + row.text_end());
  for (const std::size_t column : plan_.added) {
    append({&plan_.header.separator, 1});
    const std::string_view field = row.field(plan_.columns[column].field);
    FieldValue& value = fields_.convert(row, column, field, out_.data() + size_);
    if (value.outcome == FieldOutcome::read && !write_value(value.length, true)) {
      fields_.take_back(row, column, value);
      value = {};
    }
    values_[column] = value;
    if (value.outcome == FieldOutcome::read) continue;
    all_read = all_read && value.outcome == FieldOutcome::missing;
    if (fields_.is_stopped()) return false;
    append(is_taken_as_missing(value) ? plan_.null_field : field);
  }
  add_currencies();
  return all_read;
}

void CsvRows::add_currencies() {
  for (const std::size_t column : plan_.currencies) {
    append({&plan_.header.separator, 1});
    const FieldValue& value = values_[column];
    if (value.outcome == FieldOutcome::read) {
      append(value.currency);
    } else if (is_taken_as_missing(value)) {
      append(plan_.null_field);
    }
  }
}

// A row that is dropped, or behind which all is, leaves the output as it was before.
inline bool CsvRows::end_row(const Row& row, bool all_read) {
  if (all_read) return true;
  const bool is_stopped = fields_.is_stopped();
  if (!is_stopped && plan_.job.invalid != Invalid::drop) return true;
  size_ = row_size_;
  copied_ = row_copied_;
  copy_up_to(row.bytes + row.begin);
  copied_ = row.bytes + row.end + (row.has_line_feed ? 1 : 0);
  return !is_stopped;
}

// A row as most are: all its values are read and need no quotes. False, with nothing written, where
// it is not. There is room for all that is copied and written.
[[gnu::always_inline]] inline bool CsvRows::write_read(const std::uint32_t* marks,
                                                       std::size_t index, Written& written) const {
  const char* const bytes = bytes_;
  auto [out, copied] = written;
  for (const RowBatch::Column& column : batch_.columns()) {
    if (column.values.codes[index] != JWNLS_OK) return false;
    const char* const field = bytes + (*(marks + column.field - 1) + 1U);
    const auto span = static_cast<std::size_t>(field - copied);
    CopyInSteps::copy(out, copied, span);
    out += span;
    const ValueBatch& values = column.values;
    const std::int32_t begin = values.offsets[index];
    const auto length = static_cast<std::size_t>(values.offsets[index + 1] - begin);
    CopyInSteps::copy(out, values.bytes.data() + begin, length);
    if (column.may_need_quotes && specials_.is_in(out, length)) return false;
    out += length;
    copied = bytes + marks[column.field];
    if (column.is_last && copied != field && copied[-1] == '\r') --copied;
  }
  written = {out, copied};
  return true;
}

// Any other row. What stays as it was is not copied by itself, but with what follows.
bool CsvRows::write_batched(const Row& row, std::size_t index) {
  bool all_read = true;
  const bool keeps_refused = plan_.job.invalid != Invalid::empty;
  const bool only_counts = keeps_refused && fields_.only_counts();
  for (const RowBatch::Column& column : batch_.columns()) {
    const ValueBatch& values = column.values;
    const bool is_read = values.codes[index] == JWNLS_OK;
    const bool is_missing = values.codes[index] == JWNLS_MISSING;
    if (!is_read && !is_missing) all_read = false;
    if (!is_read && !is_missing && only_counts) {
      fields_.count_refused(column.column);
      continue;
    }
    const std::string_view field = row.field(column.field);
    if (!is_read) fields_.count_unread(row, column.column, field, is_missing);
    if (!is_read && !is_missing && keeps_refused) continue;
    copy_up_to(field.data());
    if (is_read) {
      const auto begin = static_cast<std::size_t>(values.offsets[index]);
      const std::size_t length = static_cast<std::size_t>(values.offsets[index + 1]) - begin;
      CopyInSteps::copy(out_.data() + size_, values.bytes.data() + begin, length);
      copied_ = field.data() + field.size();
      (void)write_value(length, column.may_need_quotes);
    } else {
      FieldValue value;
      value.outcome = is_missing ? FieldOutcome::missing : FieldOutcome::refused;
      (void)keep_or_empty(row, column.column, field, value);
    }
  }
  return all_read;
}

std::size_t CsvRows::rows(const Chunk& chunk, std::size_t index, Row row) {
  if (!batch_.is_usable()) return 0;
  const auto first_mark = static_cast<std::size_t>(row.marks - chunk.marks.fields());
  batch_.gather(chunk, index, first_mark);
  const std::size_t count = batch_.rows();
  if (count == 0) return 0;
  batch_.convert(fields_);
  const std::uint32_t* const row_ends = chunk.marks.rows() + index;
  const auto span = static_cast<std::size_t>(bytes_ + row_ends[count - 1] + 1 - copied_);
  const std::size_t nulls = count * in_place_.size() * plan_.null_field.size();
  out_.reserve(size_, size_ + span + batch_.most_bytes() + nulls + 2 * value_bytes);
  row.fields = plan_.header.fields;
  row.has_line_feed = true;
  const std::uint64_t first_number = row.number;
  Written written = {out_.data() + size_, copied_};
  for (std::size_t i = 0; i < count; ++i, row.marks += row.fields) {
    if (write_read(row.marks, i, written)) [[likely]]
      continue;
    row.begin = i == 0 ? row.begin : row_ends[i - 1] + std::size_t{1};
    row.end = row_ends[i];
    row.number = first_number + i;
    row_size_ = size_ = static_cast<std::size_t>(written.end - out_.data());
    row_copied_ = copied_ = written.copied;
    (void)end_row(row, write_batched(row, i));
    written = {out_.data() + size_, copied_};
  }
  size_ = static_cast<std::size_t>(written.end - out_.data());
  copied_ = written.copied;
  return count;
}

bool CsvRows::row(const Row& row) {
  if (plan_.changes_nothing()) return true;
  row_size_ = size_;
  row_copied_ = copied_;
  bool all_read = convert_in_place(row);
  const bool adds = !plan_.added.empty() || !plan_.currencies.empty();
  if (adds && !fields_.is_stopped()) all_read = add_columns(row) && all_read;
  return end_row(row, all_read);
}

bool CsvRows::other_row(const Row& row) {
  row_size_ = size_;
  row_copied_ = copied_;
  if (plan_.job.ragged == Ragged::convert) return end_row(row, convert_in_place(row));
  fields_.refuse_row(row);
  return end_row(row, false);
}

std::string_view CsvRows::finish(std::size_t end) {
  if (copied_ == bytes_ && size_ == 0) return {bytes_, end};  // not a byte has changed
  if (copied_ < bytes_ + end) copy_up_to(bytes_ + end);
  return {out_.data(), size_};
}

}  // namespace jwnls::tool
