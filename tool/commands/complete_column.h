// What may stand in a -c, for the shells' completions.

#ifndef JWNLS_TOOL_COMMANDS_COMPLETE_COLUMN_H_
#define JWNLS_TOOL_COMMANDS_COMPLETE_COLUMN_H_

#include <string>
#include <vector>

#include "tool/commands/complete_words.h"
#include "tool/kinds.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// Continuations of the text of a -c: columns of the table that `job` names (none: a name is
/// unknown), kinds, words. `kind` is that of the command; null: none.
[[nodiscard]] std::vector<Candidate> complete_column(const std::string& text, unsigned command,
                                                     const KindRow* kind, const TableJob& job);

/// What may stand behind "WORD=" of a layout's or a column's word, or for an option of that name.
[[nodiscard]] std::vector<Candidate> values_of_word(const std::string& name);

/// The words of layouts that a command and a kind (null: any) have: "no-group", "decimals=".
[[nodiscard]] std::vector<Candidate> layout_words(unsigned command, const KindRow* kind);

[[nodiscard]] std::vector<Candidate> locale_candidates();

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_COMPLETE_COLUMN_H_
