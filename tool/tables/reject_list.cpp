#include "tool/tables/reject_list.h"

#include <algorithm>

#include "tool/tables/field_text.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {

void RejectList::start(const Chunk& chunk, std::uint64_t messages_left) {
  chunk_ = &chunk;
  messages_left_ = messages_left;
  count_ = 0;
  known_offset_ = 0;
  known_line_ = chunk.first_line;
  messages_.clear();
  lines_.clear();
}

// Rejects come in order, but for those of added columns: all line ends are counted once.
std::uint64_t RejectList::line_at(std::size_t offset) {
  const char* bytes = chunk_->bytes.data();
  const auto [from, to] = std::minmax(known_offset_, offset);
  const auto lines = static_cast<std::uint64_t>(std::count(bytes + from, bytes + to, '\n'));
  known_line_ = offset >= known_offset_ ? known_line_ + lines : known_line_ - lines;
  known_offset_ = offset;
  return known_line_;
}

void RejectList::add_value(std::uint64_t row, std::size_t offset, const ConvertedColumn& column,
                           std::string_view text, std::string_view reason) {
  if (!plan_.job.rejects.empty()) return add_line(row, offset, &column, text, reason);
  std::string message = source_.place(line_at(offset)) + column.name + ": ";
  message.append(column.values->kind_name()).append(" ").append(in_quotes(text)).append(": ");
  messages_.push_back(message.append(reason));
}

void RejectList::add_row(std::uint64_t row, std::size_t offset, std::size_t fields,
                         std::string_view text) {
  const std::string reason = std::to_string(fields) + (fields == 1 ? " field, " : " fields, ") +
                             (plan_.job.has_header ? "the header" : "the first row") + " has " +
                             std::to_string(plan_.header.fields);
  if (!plan_.job.rejects.empty()) return add_line(row, offset, nullptr, text, reason);
  messages_.push_back(source_.place(line_at(offset)) + reason);
}

void RejectList::add_line(std::uint64_t row, std::size_t offset, const ConvertedColumn* column,
                          std::string_view text, std::string_view reason) {
  Line line{row, ","};
  line.rest.append(std::to_string(line_at(offset))).append(",");
  if (column != nullptr) line.rest += std::to_string(column->field + 1);
  line.rest += ',';
  if (column != nullptr) append_field(line.rest, column->name, ',');
  line.rest.append(",").append(std::to_string(chunk_->first_byte + offset)).append(",");
  append_field(line.rest, text, ',');
  line.rest += ',';
  append_field(line.rest, reason, ',');
  line.rest += '\n';
  lines_.push_back(std::move(line));
}

void RejectList::append_file_lines(std::string& out, std::uint64_t rows_before) const {
  for (const Line& line : lines_) {
    out.append(std::to_string(rows_before + line.row + 1)).append(line.rest);
  }
}

}  // namespace jwnls::tool
