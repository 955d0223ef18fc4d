// The option words of layouts as options of the command line: "--order dmy" is the word
// "order=dmy".

#ifndef JWNLS_TOOL_LAYOUT_WORDS_H_
#define JWNLS_TOOL_LAYOUT_WORDS_H_

#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "jwnls/jwnls.hpp"

namespace CLI {
class App;
}

namespace jwnls::tool {

/// Whether a word says how texts are read, how they are written, or both.
enum class Side { reading, writing, both };

/// The words that one command line gave.
class LayoutWords {
 public:
  /// Adds the options of a kind that are of use to one side (both: all) and that the command does
  /// not have yet, and -O for any word.
  void add_options(CLI::App& command, Kind kind, Side side);

  /// The words of one side (both: all), in the order given; words that nobody knows are in each.
  /// Throws Failure{usage} for a value that holds a blank.
  [[nodiscard]] std::string of(Side side) const;

  /// True when a word was given with that value (of flags: empty).
  [[nodiscard]] bool gives(std::string_view name, std::string_view value = {}) const;

 private:
  [[nodiscard]] std::vector<std::string> all() const;

  struct Given {
    std::string name;
    std::string value;
    bool is_set = false;  // of flags
  };
  std::list<Given> options_;  // the parser keeps references
  std::vector<std::string> free_words_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_LAYOUT_WORDS_H_
