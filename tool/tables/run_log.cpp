#include "tool/tables/run_log.h"

#include <string>

#include "tool/output.h"
#include "tool/reports/counted.h"
#include "tool/tables/two_ways.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
RunLog::RunLog(const TablePlan& plan, TargetFile* rejects, ProgressLine& progress)
    : plan_(plan),
      rejects_file_(rejects),
      progress_(progress),
      messages_left_(plan.job.summary == Summary::never ? 0 : plan.job.max_messages),
      columns_(plan.columns.size()),
      first_two_ways_(plan.columns.size()) {
  if (rejects != nullptr) rejects->write(RejectList::file_header);
}

void RunLog::add(const Chunk& chunk, const ChunkOutcome& outcome, const RejectList& rejects) {
  if (rejects_file_ != nullptr && rejects.counted() > 0) {
    std::string lines;
    rejects.append_file_lines(lines, rows_);
    rejects_file_->write(lines);
  } else if (rejects.counted() > 0) {
    std::uint64_t told = 0;
    if (messages_left_ > 0) progress_.clear();
    for (const std::string& message : rejects.messages()) {
      if (told == messages_left_) break;
      report(message);
      ++told;
    }
    messages_left_ -= told;
    untold_ += rejects.counted() - told;
  }
  rows_ += outcome.rows;
  ragged_ += outcome.ragged;
  malformed_ += outcome.malformed;
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (first_two_ways_[column].empty()) first_two_ways_[column] = outcome.first_two_ways[column];
    columns_[column] += outcome.columns[column];
    values_ += outcome.columns[column];
  }
  progress_.advance(chunk.first_byte + chunk.size, rows_, values_.refused);
  progress_.tick();
}

void RunLog::say_undecided(bool& undecided) const {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    const ColumnCounts& counts = columns_[index];
    if (counts.two_ways == 0 || counts.deciding > 0) continue;
    undecided = true;
    if (plan_.job.summary == Summary::never && !plan_.job.proved) continue;
    const ConvertedColumn& column = plan_.columns[index];
    const std::string& first = first_two_ways_[index];
    report((plan_.job.proved ? "not proved: " : "note: ") + column.name + ": " +
           undecided_values(counts.two_ways, in_quotes(first), column.values->meanings(first)));
  }
}

// "rows: 4, of another length: 2; values: 2 read, 0 missing, 0 not read (rejects.csv)"
void RunLog::say_summary() const {
  std::string line = "rows: ";
  line.append(std::to_string(rows_));
  if (ragged_ > 0) line.append(", of another length: ").append(std::to_string(ragged_));
  line.append("; values: ").append(std::to_string(values_.read)).append(" read, ");
  line.append(std::to_string(values_.missing)).append(" missing, ");
  line.append(std::to_string(values_.refused)).append(" not read");
  if (rejects_file_ != nullptr) line += " (" + plan_.job.rejects + ")";
  report(line);
}

ExitCode RunLog::finish(bool is_stopped) {
  progress_.clear();
  const TableJob& job = plan_.job;
  const bool is_quiet = job.summary == Summary::never;
  if (untold_ > 0 && rejects_file_ == nullptr && !is_quiet && job.max_messages > 0) {
    report(grouped(untold_) + " more like these");
  }
  if (is_stopped && job.max_rejects && rejects() > *job.max_rejects && !is_quiet) {
    report("stopped: more than " + grouped(*job.max_rejects) + " rejects");
  }
  if (malformed_ > 0 && !is_quiet) {
    report("note: " + grouped(malformed_) + (malformed_ == 1 ? " text is" : " texts are") +
           " not UTF-8; what is not became U+FFFD");
  }
  bool undecided = false;
  say_undecided(undecided);
  const bool has_rejects = rejects() > 0;
  if (job.summary == Summary::always || (has_rejects && !is_quiet)) say_summary();
  if (undecided && job.proved) return ExitCode::undecided;
  return has_rejects ? ExitCode::bad_values : ExitCode::ok;
}

}  // namespace jwnls::tool
