// What one command line gave: options by their names in the options table, and the rest.

#ifndef JWNLS_TOOL_GIVEN_OPTIONS_H_
#define JWNLS_TOOL_GIVEN_OPTIONS_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/kinds.h"
#include "tool/options_table.h"

namespace CLI {
class App;
}

namespace jwnls::tool {

class GivenOptions {
 public:
  GivenOptions() = default;
  GivenOptions(const GivenOptions&) = delete;  // the parser keeps references
  GivenOptions& operator=(const GivenOptions&) = delete;

  /// Adds the options of a command to the parser: those that a kind has, or all.
  void add_to(CLI::App& app, Command command, const KindRow* kind);

  /// Adds the operands: values, files, parts of names.
  void add_operands_to(CLI::App& app, const char* name, const char* type, const char* help);

  [[nodiscard]] bool has(std::string_view name) const;
  /// Of options given several times the last value; nothing where it is not given.
  [[nodiscard]] std::optional<std::string> value(std::string_view name) const;
  [[nodiscard]] std::vector<std::string> values(std::string_view name) const;
  /// Throws Failure{usage} for what is no such number.
  [[nodiscard]] std::optional<std::uint64_t> number(std::string_view name, std::uint64_t least,
                                                    std::uint64_t most) const;

  [[nodiscard]] const std::vector<std::string>& operands() const { return operands_; }

  /// The option words of layouts that a command's kind takes, "order=dmy", those of -O last. Throws
  /// Failure{usage} for a value that holds a blank.
  [[nodiscard]] std::vector<std::string> words(Command command, Kind kind) const;

 private:
  struct Given {
    bool is_set = false;
    std::vector<std::string> values = {};
    std::string maybe = {};  // of options that may have a value
  };

  void add_row(CLI::App& app, const OptionRow& row);
  void take(const OptionRow& row, const std::vector<std::string>& values);

  std::map<std::string, Given, std::less<>> given_;
  std::vector<std::string> operands_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_GIVEN_OPTIONS_H_
