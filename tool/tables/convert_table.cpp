#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "tool/tables/byte_source.h"
#include "tool/tables/chunk_converter.h"
#include "tool/tables/chunk_reader.h"
#include "tool/tables/progress_line.h"
#include "tool/tables/report_collector.h"
#include "tool/tables/report_file.h"
#include "tool/tables/row_turns.h"
#include "tool/tables/run_log.h"
#include "tool/tables/sample_rows.h"
#include "tool/tables/table_head.h"
#include "tool/tables/table_job.h"
#include "tool/tables/table_plan.h"
#include "tool/tables/target_file.h"

namespace jwnls::tool {
namespace {

constexpr std::uint64_t bytes_for_threads = 1024 * 1024;  // below, one is as fast

bool is_standard(const std::string& path) { return path.empty() || path == "-"; }

TablePlan plan_of(const TableJob& job, ByteSource& source, const TableHead& head) {
  std::optional<SampleRows> sample;
  auto columns = job.columns(head.header, [&]() -> const TableSample& {
    if (!sample) sample.emplace(source, job, head);
    return *sample;
  });
  return {job, head, std::move(columns)};
}

// Where the rows go. An input that is written to while it is read never ends.
std::unique_ptr<TargetFile> open_target(const TableJob& job, const ByteSource& source) {
  if (job.in_place && source.is_standard_input()) {
    throw Failure{ExitCode::usage, "--in-place needs a file"};
  }
  const std::string& path = job.in_place ? job.input : job.output;
  auto target = std::make_unique<TargetFile>(is_standard(path) ? std::string() : path);
  if (!job.in_place && S_ISREG(source.facts().st_mode) && target->is_same_as(source.facts())) {
    throw Failure{ExitCode::usage,
                  (is_standard(path) ? source.name() : path) +
                      ": input and output are the same file (--in-place replaces a file)"};
  }
  return target;
}

// A file that the rejects or the report may not go to, and what it is.
struct OtherFile {
  const TargetFile* file;
  const char* what;
};

void check_is_other(const TargetFile& file, const std::string& path, const char* holds,
                    const ByteSource& source, const std::vector<OtherFile>& others) {
  const auto refuse = [&](const char* what) {
    throw Failure{ExitCode::usage, path + ": is " + what + ", and shall hold " + holds};
  };
  if (S_ISREG(source.facts().st_mode) && file.is_same_as(source.facts())) refuse("the input");
  for (const OtherFile& other : others) {
    if (other.file != nullptr && file.is_same_as(*other.file)) refuse(other.what);
  }
}

std::unique_ptr<TargetFile> open_rejects(const TableJob& job, const ByteSource& source,
                                         const TargetFile& target) {
  if (job.rejects.empty()) return nullptr;
  auto rejects = std::make_unique<TargetFile>(job.rejects);
  check_is_other(*rejects, job.rejects, "the rejects", source, {{&target, "the output"}});
  return rejects;
}

std::unique_ptr<ReportFile> open_report(const TableJob& job, const ByteSource& source,
                                        const TargetFile& target, const TargetFile* rejects) {
  if (job.report.empty()) return nullptr;
  auto report = std::make_unique<ReportFile>(job.report);
  if (report->file() != nullptr) {
    check_is_other(*report->file(), job.report, "the report", source,
                   {{&target, "the output"}, {rejects, "for the rejects"}});
  }
  return report;
}

// A progress line between the rows would be in their way.
bool shows_progress(const TableJob& job, const TargetFile& target) {
  return job.progress.value_or(::isatty(STDERR_FILENO) == 1 && !target.is_terminal());
}

class TableRun {
 public:
  TableRun(const TableJob& job, ByteSource& source, const TablePlan& plan, const TableHead& head,
           TargetFile& target, TargetFile* rejects)
      : job_(job),
        source_(source),
        plan_(plan),
        target_(target),
        progress_(shows_progress(job, target), total_bytes()),
        log_(plan, rejects, progress_),
        findings_(plan),
        reader_(source, FieldScanner(head.header.separator, job.quotes), job.chunk_bytes, head.size,
                head.first_line) {
    rejects_allowed_ = job.max_rejects.value_or(std::numeric_limits<std::uint64_t>::max());
    if (job.invalid == Invalid::stop) rejects_allowed_ = 0;
    source.set_on_wait([this] {
      progress_.tick();
      return !turns_.is_stopped();
    });
  }

  /// True when the run was stopped by a value. Throws what failed, after it is said what was done.
  ExitCode run(bool& is_stopped) {
    if (total_bytes() >= bytes_for_threads || job_.threads > 1) start_threads();
    work(true);
    for (std::thread& thread : threads_) thread.join();
    source_.set_on_wait({});
    is_stopped = turns_.is_stopped();
    if (turns_.failure()) rethrow();
    return log_.finish(is_stopped);
  }

  [[nodiscard]] const ReportBuilder& findings() const { return findings_; }

 private:
  std::uint64_t total_bytes() const {
    const struct stat& facts = source_.facts();
    return S_ISREG(facts.st_mode) ? static_cast<std::uint64_t>(facts.st_size) : 0;
  }

  [[noreturn]] void rethrow() {
    try {
      std::rethrow_exception(turns_.failure());
    } catch (const Failure& failure) {
      // Of a closed pipe nothing is said: nobody is left to miss the rest.
      if (!failure.message.empty()) (void)log_.finish(false);
      throw;
    }
  }

  void start_threads() {
    constexpr unsigned most = 4;
    const unsigned wanted =
        job_.threads > 0 ? job_.threads : std::clamp(std::thread::hardware_concurrency(), 1U, most);
    try {
      while (threads_.size() + 1 < wanted) threads_.emplace_back([this] { work(false); });
    } catch (const std::system_error&) {
      // Those that there are do the work.
    }
  }

  // What every thread does; the first one gets the others when there is enough for them.
  void work(bool is_first) {
    try {
      Chunk chunk;
      ChunkConverter converter(plan_, source_);
      while (!turns_.is_stopped() && reader_.next(chunk)) {
        (void)converter.convert(chunk, rejects_allowed_, log_.messages_left());
        if (!turns_.await(chunk.ticket)) return;
        finish(chunk, converter);
        turns_.pass();
        if (is_first && threads_.empty() && chunk.first_byte >= bytes_for_threads) start_threads();
      }
    } catch (...) {
      turns_.stop(std::current_exception());
    }
  }

  // In turn. Where all chunks together have too many rejects, only now is it known which row is the
  // last.
  void finish(const Chunk& chunk, ChunkConverter& converter) {
    const std::uint64_t allowed = rejects_allowed_ - log_.rejects();
    const ChunkOutcome* outcome = &converter.outcome();
    if (converter.rejects().counted() > allowed && log_.rejects() > 0) {
      outcome = &converter.convert(chunk, allowed, log_.messages_left());
    }
    target_.write(outcome->text);
    log_.add(chunk, *outcome, converter.rejects());
    if (converter.report() != nullptr) findings_.add(chunk, *converter.report(), *outcome);
    if (outcome->stopped) return turns_.stop();
    if (chunk.failure) throw Failure{*chunk.failure};
  }

  const TableJob& job_;
  ByteSource& source_;
  const TablePlan& plan_;
  TargetFile& target_;
  ProgressLine progress_;
  RunLog log_;
  ReportBuilder findings_;
  ChunkReader reader_;
  RowTurns turns_;
  std::uint64_t rejects_allowed_ = 0;
  std::vector<std::thread> threads_;
};

}  // namespace

ExitCode convert_table(const TableJob& job) {
  ByteSource source(job.input);
  const TableHead head = find_head(source, job);
  const TablePlan plan = plan_of(job, source, head);
  const auto target = open_target(job, source);
  const auto rejects = open_rejects(job, source, *target);
  const auto report = open_report(job, source, *target, rejects.get());
  const auto write_side_files = [&](const TableRun& run, const std::string& ended) {
    if (rejects != nullptr) rejects->commit();
    if (report != nullptr) report->write(run.findings().report(source.name(), ended));
  };
  const std::string_view before = source.ahead().substr(0, head.size);
  if (!job.json_lines) target->write(plan.header_with_added(before, head.header_end));
  source.skip(head.size);
  TableRun run(job, source, plan, head, *target, rejects.get());
  bool is_stopped = false;
  ExitCode code = ExitCode::ok;
  try {
    code = run.run(is_stopped);
  } catch (const Failure& failure) {
    write_side_files(run, failure.message.empty() ? "the output was closed" : failure.message);
    throw;
  }
  write_side_files(run, is_stopped ? "a value was not read" : "");
  if (!is_stopped && code != ExitCode::undecided) target->commit(job.in_place_suffix);
  return code;
}

}  // namespace jwnls::tool
