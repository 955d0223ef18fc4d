#include "tool/tables/sample_rows.h"

#include <algorithm>

#include "tool/tables/field_text.h"

namespace jwnls::tool {

SampleRows::SampleRows(ByteSource& source, const TableJob& job, const TableHead& head)
    : quotes_(job.quotes) {
  const std::size_t bytes = job.sample_bytes;
  bool at_end = false;
  while (!at_end && source.ahead().size() < head.size + bytes) at_end = !source.look_ahead();
  text_ = source.ahead().substr(head.size, bytes);
  at_end = at_end && source.ahead().size() <= head.size + bytes;
  FieldScanner scanner(head.header.separator, quotes_);
  scanner.scan(text_.data(), 0, text_.size(), marks_);
  if (at_end && !scanner.is_inside() && !text_.empty() && text_.back() != '\n') {
    marks_.reserve(1);
    marks_.add_field(static_cast<std::uint32_t>(text_.size()));
    marks_.add_row(static_cast<std::uint32_t>(text_.size()));
  }
  std::uint64_t line = head.first_line;
  RowMarks row{0, 0, 0, 0};
  for (std::size_t index = 0; index < marks_.row_count; ++index) {
    const std::size_t end = marks_.rows()[index];
    row.first_mark += row.fields;
    row.fields = 1;
    while (marks_.fields()[row.first_mark + row.fields - 1] != end) ++row.fields;
    row.end = end < text_.size() && end > row.begin && text_[end - 1] == '\r' ? end - 1 : end;
    const bool is_blank = row.end == row.begin;
    const bool fits = row.fields == head.header.fields || job.ragged == Ragged::convert;
    if (!is_blank && fits) {
      rows_.push_back(row);
      lines_.push_back(line);
    }
    const auto begin = text_.begin() + static_cast<std::ptrdiff_t>(row.begin);
    const auto behind =
        text_.begin() + static_cast<std::ptrdiff_t>(std::min(end + 1, text_.size()));
    line += static_cast<std::uint64_t>(std::count(begin, behind, '\n'));
    row.begin = end + 1;
  }
}

std::vector<std::string> SampleRows::texts(std::size_t field) const {
  std::vector<std::string> all;
  all.reserve(rows_.size());
  const std::uint32_t* marks = marks_.fields();
  for (const RowMarks& row : rows_) {
    if (field >= row.fields) {
      all.emplace_back();
      continue;
    }
    const std::size_t mark = row.first_mark + field;
    const std::size_t begin = field == 0 ? row.begin : marks[mark - 1] + std::size_t{1};
    const std::size_t end = field + 1 < row.fields ? marks[mark] : row.end;
    all.push_back(shown_text(std::string_view(text_).substr(begin, end - begin), quotes_));
  }
  return all;
}

}  // namespace jwnls::tool
