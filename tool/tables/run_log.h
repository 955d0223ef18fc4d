// What a run says: messages and rejects in the order of the input, counts and what follows from
// them.

#ifndef JWNLS_TOOL_TABLES_RUN_LOG_H_
#define JWNLS_TOOL_TABLES_RUN_LOG_H_

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/exit_code.h"
#include "tool/tables/chunk_outcome.h"
#include "tool/tables/progress_line.h"
#include "tool/tables/reject_list.h"
#include "tool/tables/table_plan.h"
#include "tool/tables/target_file.h"

namespace jwnls::tool {

class RunLog {
 public:
  /// `rejects`: their file; null: messages.
  RunLog(const TablePlan& plan, TargetFile* rejects, ProgressLine& progress);

  /// Adds a chunk; to be called in the order of the input.
  void add(const Chunk& chunk, const ChunkOutcome& outcome, const RejectList& rejects);

  /// How many messages may still be written. Any thread; at worst more than there will be.
  [[nodiscard]] std::uint64_t messages_left() const { return messages_left_; }
  [[nodiscard]] std::uint64_t rejects() const { return values_.refused + ragged_; }

  /// Says what is to be said at the end, and how the program ends if nothing failed.
  ExitCode finish(bool is_stopped);

 private:
  void say_undecided(bool& undecided) const;
  void say_summary() const;

  const TablePlan& plan_;
  TargetFile* rejects_file_;
  ProgressLine& progress_;
  std::atomic<std::uint64_t> messages_left_;
  std::uint64_t untold_ = 0;
  std::uint64_t rows_ = 0;
  std::uint64_t ragged_ = 0;
  std::uint64_t malformed_ = 0;
  ColumnCounts values_;
  std::vector<ColumnCounts> columns_;
  std::vector<std::string> first_two_ways_;  // of each column; empty: none so far
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_RUN_LOG_H_
