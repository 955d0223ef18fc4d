#include "tool/tables/field_converter.h"

#include "tool/tables/field_text.h"

namespace jwnls::tool {

FieldConverter::FieldConverter(const TablePlan& plan, const ByteSource& source)
    : plan_(plan), quotes_(plan.job.quotes), rejects_(plan, source) {
  for (const char special : {plan.header.separator, '"', '\n', '\r'}) {
    is_special_[static_cast<unsigned char>(special)] = true;
  }
  if (!quotes_) is_special_['"'] = false;
  outcome_.columns.resize(plan.columns.size());
}

void FieldConverter::start(const Chunk& chunk, std::uint64_t rejects_allowed,
                           std::uint64_t messages_left) {
  rejects_.start(chunk, messages_left);
  rejects_allowed_ = rejects_allowed;
  outcome_.text = {};
  outcome_.rows = outcome_.ragged = outcome_.malformed = 0;
  outcome_.stopped = false;
  outcome_.columns.assign(outcome_.columns.size(), {});
}

FieldValue FieldConverter::convert(const Row& row, std::size_t column, char* out) {
  const ConvertedColumn& asked = plan_.columns[column];
  ColumnCounts& counts = outcome_.columns[column];
  text_ = row.field(asked.field);
  if (quotes_ && text_.starts_with('"')) {
    const auto text = text_of_field(text_, undoubled_);
    if (!text) {
      refuse(row, column, "text stands behind the closing quote");
      return {};
    }
    text_ = *text;
  }
  FieldValue value = asked.values->convert(text_, out);
  if (value.outcome == FieldOutcome::read) {
    if (!quotes_ && !plan_.job.json_lines && needs_quotes(out, value.length)) {
      refuse(row, column, "what it becomes holds the separator, and quotes are not used");
      return {};
    }
    ++counts.read;
    counts.two_ways += (value.facts & JWNLS_TWO_WAYS) != 0 ? 1 : 0;
    counts.deciding += (value.facts & JWNLS_DECIDES) != 0 ? 1 : 0;
  } else if (value.outcome == FieldOutcome::missing) {
    ++counts.missing;
  } else {
    refuse(row, column, nullptr);
  }
  return value;
}

void FieldConverter::refuse(const Row& row, std::size_t column, const char* cause) {
  ++outcome_.columns[column].refused;
  if (!rejects_.count()) return;
  const ConvertedColumn& asked = plan_.columns[column];
  rejects_.add_value(row.number, row.field_begin(asked.field), asked, text_,
                     cause != nullptr ? cause : asked.values->reason(text_));
}

void FieldConverter::refuse_row(const Row& row) {
  ++outcome_.ragged;
  if (rejects_.count()) rejects_.add_row(row.number, row.begin, row.fields, row.text());
}

}  // namespace jwnls::tool
