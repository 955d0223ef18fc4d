#include "tool/tables/column_selection.h"

#include <algorithm>
#include <regex>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

using Form = ColumnSelector::Form;

[[noreturn]] void refuse(const std::string& problem) { throw Failure{ExitCode::usage, problem}; }

// A case apart from the rest of the name is named first: `there is 'b'` for 'B'.
std::string nearest_column(const std::string& name, const std::vector<std::string>& names) {
  const auto nearest = nearest_name(name, names);
  if (nearest) return "; there is " + in_quotes(*nearest);
  constexpr std::size_t most_named = 12;
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), most_named); ++i) {
    list.append(list.empty() ? "" : ", ").append(in_quotes(names[i]));
  }
  if (names.size() > most_named)
    list += " and " + std::to_string(names.size() - most_named) + " more";
  return (names.size() == 1 ? "; there is only " : "; there are ") + list;
}

// Whether "*" in the glob stand for any texts that make it the name.
bool matches_glob(std::string_view glob, std::string_view name) {
  std::size_t g = 0;
  std::size_t n = 0;
  std::size_t star = std::string_view::npos;  // the last one, and what it stands for so far
  std::size_t starred = 0;
  while (n < name.size()) {
    if (g < glob.size() && glob[g] == '*') {
      star = g++;
      starred = n;
    } else if (g < glob.size() && glob[g] == name[n]) {
      ++g;
      ++n;
    } else if (star != std::string_view::npos) {
      g = star + 1;
      n = ++starred;
    } else {
      return false;
    }
  }
  return glob.find_first_not_of('*', g) == std::string_view::npos;
}

class Selection {
 public:
  explicit Selection(const TableHeader& header) : header_(header) {}

  void add(const ColumnSpec& spec) {
    const std::size_t before = columns_.size();
    for (const ColumnSelector& selector : spec.selectors) {
      for (const std::size_t field : fields_of(selector)) add(spec, field);
    }
    const bool one = columns_.size() == before + 1;
    if (!one && (spec.as || spec.currency_as)) {
      refuse("-c " + in_quotes(spec.text) + ": " + std::to_string(columns_.size() - before) +
             " columns cannot be one new column; give each a -c of its own");
    }
    for (const auto& name : {spec.as, spec.currency_as}) {
      if (name) add_name(*name);
    }
  }

  [[nodiscard]] std::vector<SelectedColumn> columns() && { return std::move(columns_); }

 private:
  void add(const ColumnSpec& spec, std::size_t field) {
    const std::string name = name_of(field);
    const bool twice = !spec.as && std::any_of(columns_.begin(), columns_.end(), [&](auto& each) {
      return each.field == field && !each.spec->as;
    });
    if (twice) {
      refuse("column " + in_quotes(name) + " is asked for twice; as=NAME makes a new column of it");
    }
    columns_.push_back({field, name, &spec});
  }

  void add_name(const std::string& name) {
    const bool taken =
        has_name(name) || std::find(new_names_.begin(), new_names_.end(), name) != new_names_.end();
    if (taken) refuse("a new column cannot be named " + in_quotes(name) + ": there is one");
    new_names_.push_back(name);
  }

  [[nodiscard]] bool has_name(const std::string& name) const {
    return std::find(header_.names.begin(), header_.names.end(), name) != header_.names.end();
  }

  [[nodiscard]] std::string name_of(std::size_t field) const {
    const bool named = field < header_.names.size() && !header_.names[field].empty();
    return named ? header_.names[field] : std::to_string(field + 1);
  }

  [[nodiscard]] std::vector<std::size_t> fields_of(const ColumnSelector& selector) const {
    if (selector.form == Form::range) return fields_of_range(selector);
    if (header_.fields == 0)
      refuse("no column " + in_quotes(selector.text) + ": the table is empty");
    if (header_.names.empty()) {
      refuse("column " + in_quotes(selector.text) +
             ": the table has no header; say the column's number");
    }
    auto fields = selector.form == Form::name   ? fields_of_name(selector.text)
                  : selector.form == Form::glob ? matching([&selector](const std::string& name) {
                      return matches_glob(selector.text, name);
                    })
                                                : fields_of_expression(selector.text);
    if (fields.empty() && selector.form == Form::name) {
      refuse("no column " + in_quotes(selector.text) +
             nearest_column(selector.text, header_.names));
    }
    if (fields.empty()) refuse("no column is named like " + in_quotes(selector.text));
    return fields;
  }

  [[nodiscard]] std::vector<std::size_t> fields_of_range(const ColumnSelector& range) const {
    const std::size_t last = range.last == 0 ? header_.fields : range.last;
    if (std::max(range.first, last) > header_.fields) {
      refuse("no column " + range.text + "; there are " + std::to_string(header_.fields));
    }
    std::vector<std::size_t> fields;
    for (std::size_t number = range.first; number <= last; ++number) fields.push_back(number - 1);
    return fields;
  }

  template <typename Matches>
  [[nodiscard]] std::vector<std::size_t> matching(Matches matches) const {
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < header_.names.size(); ++field) {
      if (matches(header_.names[field])) fields.push_back(field);
    }
    return fields;
  }

  [[nodiscard]] std::vector<std::size_t> fields_of_name(const std::string& name) const {
    auto fields = matching([&name](const std::string& each) { return each == name; });
    if (fields.size() > 1) {
      refuse("there are " + std::to_string(fields.size()) + " columns " + in_quotes(name) +
             ": say the number, " + std::to_string(fields[0] + 1) + " or " +
             std::to_string(fields[1] + 1));
    }
    return fields;
  }

  [[nodiscard]] std::vector<std::size_t> fields_of_expression(const std::string& text) const {
    try {
      const std::regex expression(text);
      return matching(
          [&expression](const std::string& name) { return std::regex_search(name, expression); });
    } catch (const std::regex_error& error) {
      refuse("/" + text + "/: " + error.what());
    }
  }

  const TableHeader& header_;
  std::vector<SelectedColumn> columns_;
  std::vector<std::string> new_names_;
};

}  // namespace

std::vector<SelectedColumn> select_columns(const std::vector<ColumnSpec>& specs,
                                           const TableHeader& header) {
  Selection selection(header);
  for (const ColumnSpec& spec : specs) selection.add(spec);
  return std::move(selection).columns();
}

std::vector<std::string> plain_names(const std::vector<ColumnSpec>& specs) {
  std::vector<std::string> names;
  for (const ColumnSpec& spec : specs) {
    for (const ColumnSelector& selector : spec.selectors) {
      if (selector.form == Form::name) names.push_back(selector.text);
    }
  }
  return names;
}

}  // namespace jwnls::tool
