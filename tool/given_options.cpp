#include "tool/given_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iterator>
#include <sstream>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/shielded_values.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// What the parser gives for a flag that may have a value and has none.
constexpr const char* no_value = "true";

std::string without_trailing_space(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

// Words of `-O "a b"`.
void append_words(const std::string& text, std::vector<std::string>& words) {
  std::istringstream parts(text);
  std::copy(std::istream_iterator<std::string>(parts), {}, std::back_inserter(words));
}

}  // namespace

void GivenOptions::add_to(CLI::App& app, Command command, const KindRow* kind) {
  const unsigned kinds = kind == nullptr ? all_kinds : kind_bits({kind->kind});
  for (const OptionRow& row : option_rows()) {
    if ((row.commands & command) == 0 || (row.kinds & kinds) == 0) continue;
    if (app.get_option_no_throw(std::string("--") + row.name) == nullptr) add_row(app, row);
  }
}

void GivenOptions::add_row(CLI::App& app, const OptionRow& row) {
  std::string names = std::string("--") + row.name;
  if (row.short_name != 0) names = std::string{'-', row.short_name, ','} + names;
  Given& given = given_[row.name];
  CLI::Option* option = nullptr;
  switch (row.takes) {
    case Takes::nothing:
      option = app.add_flag_callback(
          names, [&given] { given.is_set = true; }, row.help);
      break;
    case Takes::maybe_one:
      option = app.add_flag(names, given.maybe, row.help);
      option->type_name(std::string("[=") + row.value + "]");
      break;
    case Takes::one:
      option = app.add_option_function<std::string>(
          names, [this, &row](const std::string& value) { take(row, {value}); }, row.help);
      option->type_name(row.value);
      break;
    case Takes::several:
      option = app.add_option_function<std::vector<std::string>>(
          names, [this, &row](const std::vector<std::string>& values) { take(row, values); },
          row.help);
      option->type_name(row.value)->allow_extra_args(false);
      break;
  }
  if (row.takes != Takes::several) {
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  }
  option->group(title_of(row.group));
}

void GivenOptions::take(const OptionRow& row, const std::vector<std::string>& values) {
  const std::string name = std::string("--") + row.name;
  Given& given = given_[row.name];
  given.is_set = true;
  given.values.clear();
  std::transform(values.begin(), values.end(), std::back_inserter(given.values), unshielded);
  const bool may_be_empty = std::string_view(row.name).starts_with("null");
  for (const std::string& value : given.values) {
    if (value.empty() && !may_be_empty) {
      throw Failure{ExitCode::usage, name + ": its value is empty (see --help)"};
    }
    const auto choices = choices_of(row);
    const bool chosen = row.is_word || choices.empty() ||  // the library tells of words
                        std::find(choices.begin(), choices.end(), value) != choices.end();
    if (chosen) continue;
    std::string list;
    for (const std::string& each : choices) list += each + " ";
    throw Failure{ExitCode::usage, name + ": " + in_quotes(value) + " is none of " +
                                       without_trailing_space(list) + did_you_mean(value, choices)};
  }
}

void GivenOptions::add_operands_to(CLI::App& app, const char* name, const char* type,
                                   const char* help) {
  app.add_option(name, operands_, help)->type_name(type)->transform(unshielded);
}

bool GivenOptions::has(std::string_view name) const {
  const auto given = given_.find(name);
  return given != given_.end() && (given->second.is_set || !given->second.maybe.empty());
}

std::vector<std::string> GivenOptions::values(std::string_view name) const {
  const auto given = given_.find(name);
  if (given == given_.end()) return {};
  const std::string& maybe = given->second.maybe;
  if (!maybe.empty() && maybe != no_value) return {maybe};
  return given->second.values;
}

std::optional<std::string> GivenOptions::value(std::string_view name) const {
  const auto all = values(name);
  return all.empty() ? std::nullopt : std::optional(all.back());
}

std::optional<std::uint64_t> GivenOptions::number(std::string_view name, std::uint64_t least,
                                                  std::uint64_t most) const {
  const auto text = value(name);
  if (!text) return std::nullopt;
  std::uint64_t number = 0;
  const char* const end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) {
    throw Failure{ExitCode::usage, "--" + std::string(name) + ": " + in_quotes(*text) +
                                       " is no number from " + std::to_string(least) + " to " +
                                       std::to_string(most)};
  }
  return number;
}

std::vector<std::string> GivenOptions::words(Command command, Kind kind) const {
  std::vector<std::string> words;
  for (const OptionRow& row : option_rows()) {
    const bool serves = row.is_word && (row.commands & command) != 0 &&
                        (row.kinds & kind_bits({kind})) != 0 && has(row.name);
    if (!serves) continue;
    if (row.takes == Takes::nothing) {
      words.emplace_back(row.name);
      continue;
    }
    const std::string value = this->value(row.name).value_or("");
    if (value.find_first_of(" \t\n\r") != std::string::npos) {
      throw Failure{ExitCode::usage, std::string("--") + row.name + ": " + in_quotes(value) +
                                         ": a value has no blanks (see --help)"};
    }
    words.push_back(std::string(row.name) + "=" + value);
  }
  for (const std::string& each : values("option")) append_words(each, words);
  return words;
}

}  // namespace jwnls::tool
