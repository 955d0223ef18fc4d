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
    columns_.push_back({asked.field,
                        column,
                        asked.values.get(),
                        asked.field + 1 == fields_,
                        may_need_quotes(plan, column),
                        {},
                        {}});
  }
}

// What stands behind a closing quote is another's matter.
bool RowBatch::add_long_or_quoted(TextBatch::Filler& texts, std::string_view field) {
  if (!quotes_ || !field.starts_with('"')) return texts.add(field.data(), field.size());
  const auto text = text_of_field(field, undoubled_);
  if (!text) return false;
  if (text->data() != undoubled_.data()) return texts.add(text->data(), text->size());
  // Behind this text stand no bytes that may be read.
  const std::size_t size = text->size();
  undoubled_.append(CopyInSteps::step, '\0');
  return texts.add(undoubled_.data(), size);
}

// Of rows one behind the other; gives how many are taken.
std::size_t RowBatch::add_texts(Column& column, const char* bytes, const std::uint32_t* marks) {
  TextBatch::Filler texts(column.texts);
  const std::uint32_t* ends = marks + column.field;
  const std::size_t fields = fields_;
  const bool is_last = column.is_last;
  const char quote = quotes_ ? '"' : '\n';
  for (std::size_t left = rows_; left > 0; --left, ends += fields) {
    const std::uint32_t begin = *(ends - 1) + 1U;
    std::uint32_t end = *ends;
    if (is_last && end > begin && bytes[end - 1] == '\r') --end;
    const char* const text = bytes + begin;
    const std::uint32_t size = end - begin;
    if (size <= CopyInSteps::short_step && *text != quote) [[likely]] {
      texts.add_short(text, size);
      continue;
    }
    // A copy, so that the other one stays in registers.
    TextBatch::Filler rest = texts;
    if (!add_long_or_quoted(rest, {text, size})) break;
    texts = rest;
  }
  return texts.count();
}

// A row has the header's length when its last field ends where the row does. The input's last row
// may have no line end.
void RowBatch::gather(const Chunk& chunk, std::size_t row, std::size_t first_mark) {
  const std::uint32_t* marks = chunk.marks.fields() + first_mark;
  const std::uint32_t* row_ends = chunk.marks.rows() + row;
  const std::size_t most = std::min({TextBatch::most, chunk.marks.row_count - row,
                                     (chunk.marks.field_count - first_mark) / fields_});
  const std::uint32_t* last_mark = marks + fields_ - 1;
  for (rows_ = 0; rows_ < most && *last_mark == row_ends[rows_]; ++rows_) last_mark += fields_;
  if (rows_ > 0 && row_ends[rows_ - 1] == chunk.size) --rows_;
  for (Column& column : columns_) rows_ = add_texts(column, chunk.bytes.data(), marks);
  for (Column& column : columns_) column.texts.cut(rows_);
}

void RowBatch::convert(FieldConverter& fields) {
  for (Column& column : columns_) {
    column.converter->convert_all(column.texts, column.values);
    fields.count_read(column.column, column.texts, column.values);
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
