#include "tool/tables/json_rows.h"

#include "tool/tables/field_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t no_column = static_cast<std::size_t>(-1);

std::string key_of(const std::string& name, bool is_first) {
  std::string key = is_first ? "{" : ",";
  (void)append_json_string(key, name);
  return key + ':';
}

}  // namespace

JsonRows::JsonRows(const TablePlan& plan, FieldConverter& fields)
    : plan_(plan),
      fields_(fields),
      column_of_(plan.header.fields, no_column),
      values_(plan.columns.size()) {
  for (std::size_t field = 0; field < plan.header.fields; ++field) {
    keys_.push_back(key_of(plan.key(field), field == 0));
  }
  for (const std::size_t column : plan.in_place) column_of_[plan.columns[column].field] = column;
  for (const std::size_t column : plan.added) {
    added_keys_.push_back(key_of(*plan.columns[column].as, false));
  }
  for (const std::size_t column : plan.currencies) {
    added_keys_.push_back(key_of(*plan.columns[column].currency_as, false));
  }
}

void JsonRows::add_string(std::string_view text) {
  if (!append_json_string(out_, text)) fields_.count_malformed();
}

// False when the value is refused.
bool JsonRows::add_converted(const Row& row, std::size_t column) {
  const FieldValue value =
      fields_.convert(row, column, row.field(plan_.columns[column].field), value_.data());
  values_[column] = value;
  const std::string_view written(value_.data(), value.length);
  const bool is_refused = value.outcome == FieldOutcome::refused;
  if (value.outcome == FieldOutcome::read) {
    if (plan_.columns[column].values->is_json_number()) {
      out_.append(written);
    } else {
      add_string(written);
    }
  } else if (is_refused && plan_.job.invalid == Invalid::keep) {
    add_string(fields_.text());
  } else {
    out_ += "null";
  }
  return !is_refused;
}

void JsonRows::add_columns(const Row& row, bool& all_read) {
  std::size_t key = 0;
  for (const std::size_t column : plan_.added) {
    out_ += added_keys_[key++];
    all_read = add_converted(row, column) && all_read;
    if (fields_.is_stopped()) return;
  }
  for (const std::size_t column : plan_.currencies) {
    out_ += added_keys_[key++];
    if (values_[column].outcome == FieldOutcome::read) {
      add_string(values_[column].currency);
    } else {
      out_ += "null";
    }
  }
}

bool JsonRows::write(const Row& row, bool is_other) {
  const std::size_t size_before = out_.size();
  const bool converts = !is_other || plan_.job.ragged == Ragged::convert;
  bool all_read = true;
  for (std::size_t field = 0; field < row.fields && !fields_.is_stopped(); ++field) {
    const bool has_name = field < keys_.size();
    out_ += has_name ? keys_[field] : key_of(std::to_string(field + 1), false);
    if (has_name && converts && column_of_[field] != no_column) {
      all_read = add_converted(row, column_of_[field]) && all_read;
      continue;
    }
    const std::string_view text = row.field(field);
    add_string(plan_.job.quotes ? text_of_field(text, undoubled_).value_or(text) : text);
  }
  if (!is_other && !fields_.is_stopped()) add_columns(row, all_read);
  out_ += "}\n";
  const bool is_left_out = !all_read && plan_.job.invalid == Invalid::drop;
  if (is_left_out || fields_.is_stopped()) out_.resize(size_before);
  return !fields_.is_stopped();
}

bool JsonRows::other_row(const Row& row) {
  if (plan_.job.ragged == Ragged::reject) {
    fields_.refuse_row(row);
    if (fields_.is_stopped()) return false;
    if (plan_.job.invalid == Invalid::drop) return true;
  }
  return write(row, true);
}

}  // namespace jwnls::tool
