#include "tool/commands/complete_words.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "tool/commands/command_rows.h"
#include "tool/commands/complete_column.h"
#include "tool/commands/table_command.h"
#include "tool/options_table.h"

namespace jwnls::tool {
namespace {

class Completer {
 public:
  Completer(const std::vector<std::string>& words, std::size_t index)
      : words_(words), index_(index), current_(index < words.size() ? words[index] : "") {
    if (index > 1) command_ = find_command(words[1]);
    if (command_ != nullptr && index > 2) kind_ = find_kind(command_->command, words[2]);
  }

  Candidates complete() {
    find();
    std::erase_if(found_.all,
                  [this](const Candidate& each) { return !each.word.starts_with(current_); });
    return std::move(found_);
  }

 private:
  void add(std::string word, std::string help = {}) {
    found_.all.push_back({std::move(word), std::move(help)});
  }

  void find() {
    if (index_ <= 1) return commands(true);
    if (command_ == nullptr) return;
    if (command_->command == 0) return of_other_command();
    if (words_[index_ - 1].starts_with('-')) {
      const OptionRow* const row = option(words_[index_ - 1]);
      const bool wants_value =
          row != nullptr && (row->takes == Takes::one || row->takes == Takes::several);
      if (wants_value) return values(*row, "");
    }
    const std::size_t equals = current_.find('=');
    if (current_.starts_with("--") && equals != std::string::npos) {
      const OptionRow* const row = option(current_.substr(0, equals));
      if (row != nullptr) values(*row, current_.substr(0, equals + 1));
      return;
    }
    if (current_.starts_with('-')) return options();
    operands();
  }

  void commands(bool with_options) {
    for (const CommandRow& row : command_rows()) add(row.name, row.summary);
    if (!with_options || !current_.starts_with('-')) return;
    add("--help", "All there is");
    add("--version", "The versions of program, data and time zones");
  }

  void kind_names(unsigned command) {
    for (const KindRow& row : kinds()) {
      if (has_kind(command, row)) add(row.name, row.plural);
    }
  }

  void of_other_command() {
    if (command_ == find_command("completions")) {
      for (const char* shell : {"bash", "zsh", "fish"}) add(shell);
    } else if (index_ == 2) {
      commands(false);
    } else if (const CommandRow* const of = find_command(words_[2]); of != nullptr) {
      kind_names(of->command);
    }
  }

  [[nodiscard]] bool has(const OptionRow& row) const {
    const unsigned kinds = kind_ == nullptr ? all_kinds : kind_bits({kind_->kind});
    return (row.commands & command_->command) != 0 && (row.kinds & kinds) != 0;
  }

  // The option that a word is, "-c" or "--columns"; null: none of this command.
  [[nodiscard]] const OptionRow* option(const std::string& word) const {
    const auto rows = option_rows();
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const OptionRow& each) {
      const bool is_short =
          word.size() == 2 && word[0] == '-' && each.short_name != 0 && word[1] == each.short_name;
      return has(each) && (is_short || word == std::string("--").append(each.name));
    });
    return row == rows.end() ? nullptr : &*row;
  }

  void options() {
    for (const OptionRow& row : option_rows()) {
      if (has(row)) add(std::string("--").append(row.name), row.help);
    }
    add("--help", "All there is");
  }

  // `before`: what stands in front of the value in the same word.
  void values(const OptionRow& row, std::string before) {
    const std::string name = row.name;
    const std::string value = current_.substr(before.size());
    if (name == "columns") {
      found_.all = complete_column(value, command_->command, kind_, job());
    } else if (name == "option") {
      const std::size_t equals = value.find('=');
      found_.all = equals == std::string::npos ? layout_words(command_->command, kind_)
                                               : values_of_word(value.substr(0, equals));
      if (equals != std::string::npos) before += value.substr(0, equals + 1);
    } else {
      found_.are_files = row.value != nullptr && std::string_view(row.value) == "FILE";
      found_.all = values_of_word(name);
      const bool is_list = name == "locale" || name == "locales";
      const std::size_t comma = is_list ? value.rfind(',') : std::string::npos;
      if (comma != std::string::npos) before += value.substr(0, comma + 1);
    }
    for (Candidate& each : found_.all) each.word.insert(0, before);
  }

  [[nodiscard]] bool is_table() const {
    return command_->command == detect_command ||
           std::any_of(words_.begin(), words_.end(), [](const std::string& word) {
             return word.starts_with("-c") || word.starts_with("--columns");
           });
  }

  void operands() {
    const unsigned command = command_->command;
    if ((command & value_commands) != 0 && index_ == 2) kind_names(command);
    if ((command & table_commands) != 0) found_.are_files = is_table();
    if (command == show_command || command == locales_command) found_.all = locale_candidates();
    if (command == zones_command) found_.all = values_of_word("zone");
  }

  // The table of the command line: the last file that is no option's value.
  [[nodiscard]] TableJob job() const {
    TableJob job;
    for (std::size_t at = 2; at < words_.size(); ++at) {
      const OptionRow* const before = option(words_[at - 1]);
      const bool is_value = before != nullptr && before->takes != Takes::nothing;
      const std::string& word = words_[at];
      if (is_value && std::string_view(before->name) == "separator") {
        job.separator = separator_of(word);
      } else if (word == "-n" || word == "--no-header") {
        job.has_header = false;
      } else if (at != index_ && !is_value && is_file(with_home(word))) {
        job.input = with_home(word);
      }
    }
    return job;
  }

  // Shells hand out words as they are written.
  static std::string with_home(const std::string& word) {
    const char* const home = std::getenv("HOME");
    return word.starts_with("~/") && home != nullptr ? home + word.substr(1) : word;
  }
  static bool is_file(const std::string& path) {
    struct stat facts = {};
    return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
  }

  const std::vector<std::string>& words_;
  std::size_t index_;
  std::string current_;
  const CommandRow* command_ = nullptr;
  const KindRow* kind_ = nullptr;
  Candidates found_;
};

}  // namespace

Candidates complete_words(const std::vector<std::string>& words, std::size_t index) {
  return Completer(words, index).complete();
}

}  // namespace jwnls::tool
