#include "tool/tables/column_spec.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/options_table.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

bool is_number(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

void add_words(bool flags, std::vector<std::string>& names) {
  for (const OptionRow& row : option_rows()) {
    if (row.is_word && (row.takes == Takes::nothing) == flags) names.emplace_back(row.name);
  }
}

class SpecReader {
 public:
  explicit SpecReader(const std::string& text) : text_(text) { spec_.text = text; }

  ColumnSpec read() {
    do {
      spec_.selectors.push_back(read_selector());
    } while (take(','));
    if (take('=')) {
      spec_.kind = &kind_of_name(std::string(until(":")), where());
    }
    while (take(':')) read_word();
    if (!at_end()) refuse(in_quotes(rest().substr(0, 1)) + " does not belong there");
    return std::move(spec_);
  }

 private:
  [[nodiscard]] bool at_end() const { return at_ == text_.size(); }
  [[nodiscard]] std::string_view rest() const { return std::string_view(text_).substr(at_); }
  bool take(char c) {
    if (!rest().starts_with(c)) return false;
    ++at_;
    return true;
  }
  std::string_view until(std::string_view ends) {
    const std::string_view part = rest().substr(0, rest().find_first_of(ends));
    at_ += part.size();
    return part;
  }

  [[nodiscard]] std::string where() const { return "-c " + in_quotes(text_) + ": "; }
  [[noreturn]] void refuse(const std::string& problem) const {
    throw Failure{ExitCode::usage, where() + problem};
  }

  // What stands between quotes, the first of which is behind the place.
  std::string quoted() {
    std::string inner;
    while (true) {
      const std::size_t quote = rest().find('"');
      if (quote == std::string_view::npos) refuse("a quote is opened and not closed");
      inner.append(rest().substr(0, quote));
      at_ += quote + 1;
      if (!take('"')) return inner;
      inner += '"';
    }
  }

  ColumnSelector read_selector() {
    using Form = ColumnSelector::Form;
    if (take('"')) return {Form::name, quoted()};
    if (take('/')) return {Form::expression, expression()};
    const std::string_view text = until(",=:");
    if (text.empty()) refuse("a column's name or number is missing");
    if (const auto range = range_of(text)) return *range;
    const bool glob = text.find('*') != std::string_view::npos;
    return {glob ? Form::glob : Form::name, std::string(text)};
  }

  // Up to the slash that ends it; "\/" is a slash.
  std::string expression() {
    std::string inner;
    while (!at_end()) {
      if (take('/')) {
        if (inner.empty()) refuse("an expression is empty");
        return inner;
      }
      if (rest().starts_with("\\/")) {
        ++at_;
      } else if (rest().starts_with('\\') && rest().size() > 1) {
        inner += text_[at_++];
      }
      inner += text_[at_++];
    }
    refuse("an expression is not closed by \"/\"");
  }

  std::optional<ColumnSelector> range_of(std::string_view text) const {
    const std::size_t dash = text.find('-');
    const std::string_view first = text.substr(0, dash);
    const bool is_range = dash != std::string_view::npos;
    const std::string_view last = is_range ? text.substr(dash + 1) : first;
    const bool digits = (is_number(first) || (is_range && first.empty())) &&
                        (is_number(last) || (is_range && last.empty())) &&
                        !(first.empty() && last.empty());
    if (!digits) return std::nullopt;
    ColumnSelector range{ColumnSelector::Form::range, std::string(text), 1, 0};
    if (!first.empty()) range.first = number(first);
    if (!last.empty()) range.last = number(last);
    if (range.last != 0 && range.last < range.first) {
      refuse(in_quotes(text) + " runs backwards");
    }
    return range;
  }

  [[nodiscard]] std::size_t number(std::string_view digits) const {
    std::size_t value = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), value).ec;
    constexpr std::size_t most = 1'000'000;
    if (error != std::errc() || value > most) refuse(in_quotes(digits) + ": no table is so wide");
    if (value == 0) refuse("columns are counted from 1");
    return value;
  }

  void read_word() {
    const std::size_t begin = at_;
    const std::string key(until("=:"));
    if (!take('=')) return add_bare_word(key);
    const std::string value = take('"') ? quoted() : std::string(until(":"));
    if (value.empty()) refuse(in_quotes(key) + " has no value");
    for (const auto& [name, target] : own_words_) {
      if (key == name) {
        *target = value;
        return;
      }
    }
    if (find_word(key) == nullptr) refuse_word(text_.substr(begin, at_ - begin), key);
    if (value.find_first_of(" \t\r\n") != std::string::npos) {
      refuse(in_quotes(key + "=" + value) + ": a value of this word has no blanks");
    }
    spec_.words.push_back(key + "=" + value);
  }

  [[noreturn]] void refuse_word(const std::string& word, const std::string& key) const {
    std::vector<std::string> names;
    add_words(false, names);
    for (const ColumnWordRow& row : column_word_rows()) names.emplace_back(row.name);
    refuse(in_quotes(word) + ": no such word" + did_you_mean(key, names));
  }

  // A flag, else a locale.
  void add_bare_word(const std::string& word) {
    if (word.empty()) refuse("a word is missing behind \":\"");
    const OptionRow* const row = find_word(word);
    if (row != nullptr && row->takes == Takes::nothing) {
      spec_.words.push_back(word);
      return;
    }
    const bool needs_value =
        row != nullptr || std::any_of(own_words_.begin(), own_words_.end(),
                                      [&word](const OwnWord& own) { return word == own.name; });
    if (needs_value) refuse(in_quotes(word) + " needs a value: " + word + "=...");
    char canonical[64];
    int exact = 0;
    if (jwnls_match_locale(word.c_str(), canonical, &exact) != JWNLS_OK) {
      std::vector<std::string> names;
      add_words(true, names);
      (void)each_locale([&names](const jwnls_locale_info& each) { names.emplace_back(each.name); });
      throw Failure{
          ExitCode::unavailable,
          where() + in_quotes(word) + ": neither a word nor a locale" + did_you_mean(word, names)};
    }
    if (!spec_.locale.empty()) refuse("two locales, " + spec_.locale + " and " + word);
    spec_.locale = word;
  }

  struct OwnWord {
    const char* name;
    std::optional<std::string>* target;
  };

  const std::string& text_;
  std::size_t at_ = 0;
  ColumnSpec spec_;
  const std::vector<OwnWord> own_words_ = {{"from", &spec_.from},
                                           {"to", &spec_.to},
                                           {"as", &spec_.as},
                                           {"currency-as", &spec_.currency_as}};
};

}  // namespace

ColumnSpec read_column_spec(const std::string& text) { return SpecReader(text).read(); }

const KindRow& kind_of_name(const std::string& name, const std::string& where) {
  std::vector<std::string> names;
  for (const KindRow& row : kinds()) {
    if (name == row.name || (row.alias != nullptr && name == row.alias)) return row;
    names.emplace_back(row.name);
    if (row.alias != nullptr) names.emplace_back(row.alias);
  }
  std::string list;
  for (const std::string& each : names) list.append(list.empty() ? "" : " ").append(each);
  std::string hint = did_you_mean(name, names);
  if (hint.empty()) hint = "; kinds are " + list;
  throw Failure{ExitCode::usage, where + in_quotes(name) + ": no such kind" + hint};
}

}  // namespace jwnls::tool
