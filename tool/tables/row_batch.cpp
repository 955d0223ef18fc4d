#include "tool/tables/row_batch.h"

#include <algorithm>

#include "tool/tables/field_text.h"

namespace jwnls::tool {
namespace {

static_assert(CopyInSteps::step <= Chunk::slack);
static_assert(ValueBatch::value_room == ColumnValues::room);

bool may_need_quotes(const TablePlan& plan, std::size_t column) {
  return plan.columns[column].values->may_need_quotes(plan.header.separator);
}

// A report is told each value with its currency, a run that a reject may stop counts no value
// behind it, and where there are no quotes a value that needs them is taken back. Rows of one field
// could be blank.
bool is_batched(const TablePlan& plan) {
  const TableJob& job = plan.job;
  const bool any_needs_quotes =
      std::any_of(plan.in_place.begin(), plan.in_place.end(),
                  [&](std::size_t column) { return may_need_quotes(plan, column); });
  return plan.header.fields > 1 && plan.added.empty() && plan.currencies.empty() &&
         job.report.empty() && !job.json_lines && job.invalid != Invalid::stop &&
         !job.max_rejects && (job.quotes || !any_needs_quotes);
}

}  // namespace

RowBatch::RowBatch(const TablePlan& plan) : fields_(plan.header.fields), quotes_(plan.job.quotes) {
  if (!is_batched(plan)) return;
  for (const std::size_t column : plan.in_place) {
    const ConvertedColumn& asked = plan.columns[column];
    columns_.push_back(
        {asked.field, column, asked.values.get(), may_need_quotes(plan, column), {}, {}});
  }
}

// What stands behind a closing quote is another's matter.
bool RowBatch::add_quoted(TextBatch& texts, std::string_view field) {
  const auto text = text_of_field(field, undoubled_);
  if (!text) return false;
  if (text->data() != undoubled_.data()) return texts.add(text->data(), text->size());
  // Behind this text stand no bytes that may be read.
  const std::size_t size = text->size();
  undoubled_.append(CopyInSteps::step, '\0');
  return texts.add(undoubled_.data(), size);
}

[[gnu::always_inline]] inline bool RowBatch::add_row(const char* bytes,
                                                     const std::uint32_t* marks) {
  for (Column& column : columns_) {
    const std::size_t begin = marks[static_cast<std::ptrdiff_t>(column.field) - 1] + 1U;
    std::size_t end = marks[column.field];
    if (column.field + 1 == fields_ && end > begin && bytes[end - 1] == '\r') --end;
    const bool is_taken = quotes_ && bytes[begin] == '"'
                              ? add_quoted(column.texts, {bytes + begin, end - begin})
                              : column.texts.add(bytes + begin, end - begin);
    if (!is_taken) return false;
  }
  return true;
}

void RowBatch::gather(const Chunk& chunk, std::size_t row, std::size_t first_mark) {
  const std::uint32_t* marks = chunk.marks.fields() + first_mark;
  const std::uint32_t* row_ends = chunk.marks.rows() + row;
  const std::size_t most = std::min({TextBatch::most, chunk.marks.row_count - row,
                                     (chunk.marks.field_count - first_mark) / fields_});
  for (Column& column : columns_) column.texts.clear();
  for (rows_ = 0; rows_ < most; ++rows_, marks += fields_) {
    const std::uint32_t end = marks[fields_ - 1];
    if (end != row_ends[rows_] || end == chunk.size) break;
    if (!add_row(chunk.bytes.data(), marks)) break;
  }
  for (Column& column : columns_) column.texts.cut(rows_);
}

void RowBatch::convert(FieldConverter& fields) {
  for (Column& column : columns_) {
    column.converter->convert_all(column.texts, column.values);
    fields.count_read(column.column, column.values);
  }
}

std::size_t RowBatch::most_bytes() const {
  std::size_t bytes = 0;
  for (const Column& column : columns_) {
    const auto values = static_cast<std::size_t>(column.values.offsets[rows_]);
    bytes += column.may_need_quotes ? 2 * (values + rows_) : values;
  }
  return bytes;
}

}  // namespace jwnls::tool
