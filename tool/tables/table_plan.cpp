#include "tool/tables/table_plan.h"

#include <algorithm>

#include "tool/tables/field_text.h"

namespace jwnls::tool {

TablePlan::TablePlan(const TableJob& asked, const TableHead& head,
                     std::vector<ConvertedColumn> converted)
    : job(asked), header(head.header), columns(std::move(converted)) {
  for (std::size_t index = 0; index < columns.size(); ++index) {
    (columns[index].as ? added : in_place).push_back(index);
    if (columns[index].currency_as) currencies.push_back(index);
  }
  std::stable_sort(in_place.begin(), in_place.end(), [this](std::size_t left, std::size_t right) {
    return columns[left].field < columns[right].field;
  });
  append_field(null_field, job.null_out.value_or(""), header.separator);
}

std::string TablePlan::header_with_added(std::string_view head, std::size_t header_end) const {
  std::string all(head.substr(0, header_end));
  const auto add = [&](const std::string& name) {
    all.push_back(header.separator);
    append_field(all, name, header.separator);
  };
  if (!header.names.empty()) {
    for (const std::size_t index : added) add(*columns[index].as);
    for (const std::size_t index : currencies) add(*columns[index].currency_as);
  }
  return all.append(head.substr(header_end));
}

std::string TablePlan::key(std::size_t field) const {
  return field < header.names.size() ? header.names[field] : std::to_string(field + 1);
}

}  // namespace jwnls::tool
