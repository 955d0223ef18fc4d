// What may stand at a place of a command line, for the shells' completions.

#ifndef JWNLS_TOOL_COMMANDS_COMPLETE_WORDS_H_
#define JWNLS_TOOL_COMMANDS_COMPLETE_WORDS_H_

#include <cstddef>
#include <string>
#include <vector>

namespace jwnls::tool {

struct Candidate {
  std::string word;
  std::string help = {};
};

struct Candidates {
  bool are_files = false;  // names of files, too
  std::vector<Candidate> all = {};
};

/// What may stand in the place of words[index], and begins as it does. words[0] is the program;
/// words behind the index count as well, where they say which file is meant.
[[nodiscard]] Candidates complete_words(const std::vector<std::string>& words, std::size_t index);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_COMPLETE_WORDS_H_
