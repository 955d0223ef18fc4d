#include "tool/tables/report_collector.h"

#include <algorithm>
#include <functional>
#include <limits>

#include "tool/tables/explain_table.h"
#include "tool/tables/field_text.h"
#include "tool/trimmed_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t texts_counted = 1000;  // of a column
constexpr std::size_t texts_shown = 10;

// Of the input.
std::uint64_t line_of(const Chunk& chunk, std::size_t offset) {
  const char* const bytes = chunk.bytes.data();
  return chunk.first_line + static_cast<std::uint64_t>(std::count(bytes, bytes + offset, '\n'));
}

}  // namespace

ReportCollector::ReportCollector(const TablePlan& plan) : plan_(plan), room_(ColumnValues::room) {
  columns_.reserve(plan.columns.size());
  for (const ConvertedColumn& column : plan.columns) {
    columns_.push_back({ValueTotals(column.values->kind_name()), {}, column.values->month_first()});
  }
}

void ReportCollector::start(const Chunk& chunk) {
  chunk_ = &chunk;
  for (Column& column : columns_) {
    column.totals.clear();
    column.texts.clear();
    column.forms.clear();
  }
}

void ReportCollector::finish(std::size_t end_of_rows) {
  const char* const bytes = chunk_->bytes.data();
  well_formed_ = utf8_bytes({bytes, end_of_rows});
  is_well_formed_ = well_formed_ == end_of_rows;
  line_feeds_ = both_ends_ = 0;
  for (std::size_t row = 0; row < chunk_->marks.row_count; ++row) {
    const std::uint32_t end = chunk_->marks.rows()[row];
    if (end >= end_of_rows) break;  // an input without a last line end has one at its end
    ++(end > 0 && bytes[end - 1] == '\r' ? both_ends_ : line_feeds_);
  }
}

// What cannot be written without quotes is refused after it was read.
bool ReportCollector::is_taken_back(std::string_view written) const {
  if (plan_.job.quotes || plan_.job.json_lines) return false;
  const char specials[] = {plan_.header.separator, '\n', '\r'};
  return written.find_first_of(std::string_view(specials, sizeof specials)) !=
         std::string_view::npos;
}

void ReportCollector::add_read(std::size_t column, std::string_view text, std::string_view written,
                               const FieldValue& value) {
  if (is_taken_back(written)) return;
  const std::string_view plain =
      plan_.columns[column].values->value_of(text, written, room_.data());
  Column& into = columns_[column];
  into.totals.add(plain, value.currency);
  if (into.month_first) into.forms.add(date_form(trimmed(text), plain, *into.month_first), 1);
}

bool ReportCollector::is_in_chunk(std::string_view text) const {
  const char* const begin = chunk_->bytes.data();
  return std::greater_equal<>()(text.data(), begin) &&
         std::less_equal<>()(text.data() + text.size(), begin + chunk_->size);
}

void ReportCollector::add_refused(std::size_t column, std::string_view text, std::size_t offset,
                                  const char* cause) {
  constexpr std::size_t any = std::numeric_limits<std::size_t>::max();
  UnreadText& found = *columns_[column].texts.find_or_add(text, any);
  if (found.count++ > 0) return;
  found.place = offset;
  found.full = is_in_chunk(text) ? text : std::string_view(found.text);
  if (cause != nullptr) found.reason = cause;
}

ReportBuilder::ReportBuilder(const TablePlan& plan) : plan_(plan) {
  const TableHeader& header = plan.header;
  written_ = {header.byte_order_mark, 0, header.line_feeds, header.both_ends};
  for (const ConvertedColumn& column : plan.columns) {
    columns_.push_back({ValueTotals(column.values->kind_name()), {}});
  }
}

void ReportBuilder::add(const Chunk& chunk, const ReportCollector& found,
                        const ChunkOutcome& outcome) {
  add_input(chunk, found);
  rows_ += outcome.rows;
  ragged_ += outcome.ragged;
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    columns_[index].counts += outcome.columns[index];
    columns_[index].totals.add(found.columns_[index].totals);
    columns_[index].forms.add(found.columns_[index].forms);
    for (const UnreadText& text : found.columns_[index].texts.all()) add_text(chunk, index, text);
  }
}

void ReportBuilder::add_input(const Chunk& chunk, const ReportCollector& found) {
  written_.line_feeds += found.line_feeds_;
  written_.both_ends += found.both_ends_;
  if (written_.malformed_line == 0 && !found.is_well_formed_) {
    written_.malformed_line = line_of(chunk, found.well_formed_);
  }
}

void ReportBuilder::add_text(const Chunk& chunk, std::size_t column, const UnreadText& text) {
  Column& into = columns_[column];
  UnreadText* const known = into.texts.find_or_add(text.text, texts_counted);
  if (known == nullptr) {
    into.untold += text.count;
    return;
  }
  if (known->count == 0) {
    known->place = line_of(chunk, text.place);
    known->is_cut = text.is_cut;
    known->reason = text.reason;
    // Of the others it is told at the end, for those that are shown.
    if (text.is_cut && text.reason.empty()) {
      known->reason = plan_.columns[column].values->reason(text.full);
    }
  }
  known->count += text.count;
}

ReportedColumn ReportBuilder::reported(std::size_t column) const {
  const ConvertedColumn& asked = plan_.columns[column];
  const Column& found = columns_[column];
  ReportedColumn all;
  all.number = asked.field + 1;
  all.name = asked.name;
  all.kind = asked.values->kind_name();
  all.layout = asked.values->description();
  all.read = found.counts.read;
  all.missing = found.counts.missing;
  all.not_read = found.counts.refused;
  all.two_ways = found.counts.two_ways;
  all.deciding = found.counts.deciding;
  all.forms = found.forms.reported();
  all.values = found.totals.reported();
  for (const UnreadText* text : found.texts.most_frequent(texts_shown)) {
    const std::string reason =
        text->reason.empty() ? asked.values->reason(text->text) : text->reason;
    all.texts.push_back({text->text, text->is_cut, text->count, text->place, reason});
  }
  all.different_texts = found.texts.all().size();
  all.untold = found.untold;
  return all;
}

TableReport ReportBuilder::report(const std::string& input, const std::string& ended) const {
  TableReport all;
  all.input = input;
  all.separator = separator_name(plan_.header.separator);
  all.written = written_;
  all.has_header = plan_.job.has_header;
  all.rows = rows_;
  all.ragged = ragged_;
  all.ended = ended;
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    all.columns.push_back(reported(column));
  }
  return all;
}

}  // namespace jwnls::tool
