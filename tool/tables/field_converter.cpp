#include "tool/tables/field_converter.h"

#include "tool/tables/field_text.h"

namespace jwnls::tool {

FieldConverter::FieldConverter(const TablePlan& plan, const ByteSource& source)
    : plan_(plan), quotes_(plan.job.quotes), rejects_(plan, source) {
  for (const ConvertedColumn& each : plan.columns) {
    columns_.push_back({each.values.get(), 0, 0, {}, {}});
  }
  outcome_.columns.resize(plan.columns.size());
  outcome_.first_two_ways.resize(plan.columns.size());
  if (!plan.job.report.empty()) report_.emplace(plan);
}

void FieldConverter::start(const Chunk& chunk, std::uint64_t rejects_allowed,
                           std::uint64_t messages_left) {
  rejects_.start(chunk, messages_left);
  if (report_) report_->start(chunk);
  rejects_allowed_ = rejects_allowed;
  outcome_.ragged = outcome_.malformed = 0;
  for (Column& column : columns_) column = {column.values, 0, 0, {}, {}};
  for (std::string& text : outcome_.first_two_ways) text.clear();
}

const ChunkOutcome& FieldConverter::finish(std::string_view text, std::uint64_t rows,
                                           std::size_t end, bool is_stopped) {
  if (report_) report_->finish(end);
  outcome_.text = text;
  outcome_.rows = rows;
  outcome_.stopped = is_stopped;
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    const Column& column = columns_[index];
    const auto& [neither, two_ways, deciding, both] = column.read;
    static_assert(JWNLS_TWO_WAYS == 1 && JWNLS_DECIDES == 2);
    outcome_.columns[index] = {.read = neither + two_ways + deciding + both,
                               .missing = column.missing,
                               .refused = column.refused,
                               .two_ways = two_ways + both,
                               .deciding = deciding + both};
    outcome_.columns[index] += column.batches;
  }
  return outcome_;
}

bool FieldConverter::unquote(const Row& row, std::size_t column) {
  const auto text = text_of_field(text_, undoubled_);
  if (text) {
    text_ = *text;
  } else {
    refuse(row, column, "text stands behind the closing quote");
  }
  return text.has_value();
}

void FieldConverter::count_not_read(const Row& row, std::size_t column, FieldOutcome outcome) {
  if (outcome == FieldOutcome::missing) {
    ++columns_[column].missing;
  } else {
    refuse(row, column, nullptr);
  }
}

void FieldConverter::count_unread(const Row& row, std::size_t column, std::string_view field,
                                  bool is_missing) {
  text_ = field;
  if (quotes_ && field.starts_with('"') && !unquote(row, column)) return;
  count_not_read(row, column, is_missing ? FieldOutcome::missing : FieldOutcome::refused);
}

void FieldConverter::take_back(const Row& row, std::size_t column, const FieldValue& value) {
  --columns_[column].read[value.facts & (JWNLS_TWO_WAYS | JWNLS_DECIDES)];
  refuse(row, column, "what it becomes holds the separator, and quotes are not used");
}

void FieldConverter::refuse(const Row& row, std::size_t column, const char* cause) {
  ++columns_[column].refused;
  const ConvertedColumn& asked = plan_.columns[column];
  const std::size_t offset = row.field_begin(asked.field);
  if (report_) report_->add_refused(column, text_, offset, cause);
  if (!rejects_.count()) return;
  rejects_.add_value(row.number, offset, asked, text_,
                     cause != nullptr ? cause : asked.values->reason(text_));
}

// One of the chunk is enough, of several ways to read it the first.
void FieldConverter::keep_two_ways(std::size_t column, std::string_view text) {
  std::string& first = outcome_.first_two_ways[column];
  if (first.empty()) first = text;
}

void FieldConverter::refuse_row(const Row& row) {
  ++outcome_.ragged;
  if (rejects_.count()) rejects_.add_row(row.number, row.begin, row.fields, row.text());
}

}  // namespace jwnls::tool
