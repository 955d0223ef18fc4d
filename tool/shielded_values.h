// Values on the command line that the parser would take for options.

#ifndef JWNLS_TOOL_SHIELDED_VALUES_H_
#define JWNLS_TOOL_SHIELDED_VALUES_H_

#include <string>
#include <vector>

namespace jwnls::tool {

/// Puts a shield before each word that is a value although it begins with "-", so that the parser
/// takes it for one, and drops the first "--":
///
///   words  = {word | hidden} ["--" {value}]       values, and hidden ones, are shielded
///   hidden = any word behind an option whose values are any text                "-c" "-3"
///          | "-" (any character but a letter, a digit and "-") ...              "-.5"
///          | "-" ("0x" | "0X" | "inf" | "Inf" | "INF" | "nan") ...              "-0x10"
///
/// The parser knows "-5" and "-5e3" by itself, but not what "--" means before a subcommand's
/// values.
[[nodiscard]] std::vector<std::string> with_shielded_values(std::vector<std::string> words);

/// The word as it was.
[[nodiscard]] std::string unshielded(std::string word);

/// A message of the parser, without the shields of the words that it quotes.
[[nodiscard]] std::string without_shields(std::string message);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_SHIELDED_VALUES_H_
