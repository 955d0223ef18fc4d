#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/tool/tables/table_runs.h"

namespace jwnls::tool {
namespace {

namespace fs = std::filesystem;

const std::string text = "a;b\n1;1,5\n2;u\n";
const std::string converted = "a;b\n1;1.5\n2;u\n";

std::vector<std::string> names_here() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(".")) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(TableFiles, GetTheirNameWhenAllIsWritten) {
  const OwnFolder folder;
  using Names = std::vector<std::string>;
  EXPECT_EQ(run_table(text, {{"b"}}, {.output = "new.csv"}).exit_code, 1);
  EXPECT_EQ(read_file("new.csv"), converted);

  write_file("old.csv", "old");
  ASSERT_EQ(::chmod("old.csv", 0640), 0);
  fs::create_symlink("old.csv", "link.csv");
  EXPECT_EQ(run_table(text, {{"b"}}, {.output = "link.csv"}).exit_code, 1);
  EXPECT_EQ(read_file("old.csv"), converted);
  EXPECT_TRUE(fs::is_symlink("link.csv"));
  EXPECT_EQ(fs::status("old.csv").permissions(), static_cast<fs::perms>(0640));

  EXPECT_EQ(run_table(text, {{"b"}}, {.in_place = true, .in_place_suffix = "~"}).exit_code, 1);
  EXPECT_EQ(read_file("r.csv"), converted);
  EXPECT_EQ(read_file("r.csv~"), text);
  EXPECT_EQ(names_here(), (Names{"link.csv", "new.csv", "old.csv", "r.csv", "r.csv~"}));
}

TEST(TableFiles, StayAsTheyAreWhenSomethingFails) {
  const OwnFolder folder;
  fs::create_directory("folder");
  write_file("old.csv", "old");
  const struct {
    const char* what;
    TableJob job;
    std::string table;
    std::string error;
    int exit_code;
  } rows[] = {
      {"a folder", {.output = "folder"}, text, "jwnls: folder: Is a directory\n", 4},
      {"no folder", {.output = "none/x"}, text, "jwnls: none/x: No such file or directory\n", 4},
      {"the input",
       {.output = "./r.csv"},
       text,
       "jwnls: ./r.csv: input and output are the same file (--in-place replaces a file)\n",
       2},
      {"the rejects are the input",
       {.rejects = "r.csv"},
       text,
       "jwnls: r.csv: is the input, and shall hold the rejects\n",
       2},
      {"the rejects are the output",
       {.output = "old.csv", .rejects = "old.csv"},
       text,
       "jwnls: old.csv: is the output, and shall hold the rejects\n",
       2},
      {"the rejects are the new output",
       {.output = "new.csv", .rejects = "folder/../new.csv"},
       text,
       "jwnls: folder/../new.csv: is the output, and shall hold the rejects\n",
       2},
      {"the report is the rejects",
       {.rejects = "x", .report = "./x"},
       text,
       "jwnls: ./x: is for the rejects, and shall hold the report\n",
       2},
      {"the report is the input",
       {.report = "r.csv"},
       text,
       "jwnls: r.csv: is the input, and shall hold the report\n",
       2},
      {"a report on a full disk",
       {.output = "old.csv", .report = "/dev/full", .summary = Summary::never},
       text,
       "jwnls: /dev/full: No space left on device\n",
       4},
      {"a broken input",
       {.output = "old.csv"},
       "a;b\n1;\"2",
       "jwnls: r.csv:2: a quote is opened here and not closed\n",
       4},
      {"the same in place",
       {.in_place = true},
       "a;b\n1;\"2",
       "jwnls: r.csv:2: a quote is opened here and not closed\n",
       4},
      {"stopped",
       {.output = "old.csv", .invalid = Invalid::stop, .summary = Summary::never},
       text,
       "",
       1},
      {"a full disk",
       {.output = "/dev/full"},
       text,
       "jwnls: /dev/full: No space left on device\n",
       4},
      {"rejects on a full disk",
       {.output = "old.csv", .rejects = "/dev/full"},
       text,
       "jwnls: /dev/full: No space left on device\n",
       4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const TableOutcome outcome = run_table(row.table, {{"b"}}, row.job);
    EXPECT_EQ(outcome.exit_code, row.exit_code);
    EXPECT_EQ(outcome.errors, row.error);
    EXPECT_EQ(read_file("r.csv"), row.table);
    EXPECT_EQ(read_file("old.csv"), "old");
    EXPECT_EQ(names_here(), (std::vector<std::string>{"folder", "old.csv", "r.csv"}));
  }
  TableJob job{.input = "absent.csv"};
  ask(job, {{"b"}});
  EXPECT_EQ(run_job(job).errors, "jwnls: absent.csv: No such file or directory\n");
}

// A run in a process of its own, between two pipes.
class PipedRun {
 public:
  explicit PipedRun(TableJob job) {
    int in[2];
    int out[2];
    EXPECT_EQ(::pipe(in) + ::pipe(out), 0);
    ask(job, {{"b"}});
    process_ = ::fork();
    if (process_ == 0) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      for (const int end : {in[0], in[1], out[0], out[1]}) ::close(end);
      (void)std::signal(SIGPIPE, SIG_IGN);
      (void)std::signal(SIGHUP, SIG_DFL);  // ignored under nohup
      (void)std::signal(SIGINT, SIG_DFL);  // ignored in the background
      ExitCode code = ExitCode::ok;
      try {
        code = convert_table(job);
      } catch (const Failure& failure) {
        code = failure.message.empty() ? failure.code : ExitCode::usage;
      }
      ::_exit(static_cast<int>(code));
    }
    ::close(in[0]);
    ::close(out[1]);
    in_ = in[1];
    out_ = out[0];
  }
  ~PipedRun() {
    close_input();
    close_output();
  }

  void send(const std::string& text) {
    EXPECT_EQ(::write(in_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  // What arrives until nothing does for a while; the first byte may take longer.
  std::string receive() {
    std::string all;
    pollfd events = {out_, POLLIN, 0};
    while (::poll(&events, 1, all.empty() ? 10'000 : 50) > 0) {
      char bytes[4096];
      const auto count = ::read(out_, bytes, sizeof bytes);
      if (count <= 0) break;
      all.append(bytes, static_cast<std::size_t>(count));
    }
    return all;
  }
  void close_input() { ::close(std::exchange(in_, -1)); }
  void close_output() { ::close(std::exchange(out_, -1)); }
  void signal(int number) const { ::kill(process_, number); }
  // Waits until it has a file of this folder open.
  void await_file() const {
    const fs::path descriptors = "/proc/" + std::to_string(process_) + "/fd";
    const std::string folder = fs::current_path().string() + "/";
    for (bool is_open = false; !is_open;) {
      for (const auto& entry : fs::directory_iterator(descriptors)) {
        std::error_code error;
        is_open = is_open || fs::read_symlink(entry, error).string().starts_with(folder);
      }
    }
  }
  int wait() const {
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }

 private:
  pid_t process_ = 0;
  int in_ = -1;
  int out_ = -1;
};

TEST(TableFiles, PipesThatPauseAreAnswered) {
  for (const unsigned threads : {1U, 2U}) {
    PipedRun run({.threads = threads});
    run.send("a;b\n");
    EXPECT_EQ(run.receive(), "a;b\n");
    run.send("1;1,5\n2;2");
    EXPECT_EQ(run.receive(), "1;1.5\n");
    run.send(",5\n");
    EXPECT_EQ(run.receive(), "2;2.5\n");
    run.close_input();
    EXPECT_EQ(run.wait(), 0);
  }
}

TEST(TableFiles, ClosedPipesEndTheRunWithoutAWord) {
  for (const unsigned threads : {1U, 2U}) {
    PipedRun run({.threads = threads});
    run.send("a;b\n");
    EXPECT_EQ(run.receive(), "a;b\n");
    run.close_output();
    run.send("1;1,5\n");  // and no end of input
    EXPECT_EQ(run.wait(), 4);
  }
}

TEST(TableFiles, InterruptedRunsLeaveNothing) {
  const OwnFolder folder;
  write_file("old.csv", "old");
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
    PipedRun run({.output = "old.csv"});
    run.send("a;b\n1;1,5\n");
    run.await_file();
    run.signal(number);
    EXPECT_EQ(run.wait(), -number);
    EXPECT_EQ(read_file("old.csv"), "old");
    EXPECT_EQ(names_here(), (std::vector<std::string>{"old.csv"}));
  }
}

}  // namespace
}  // namespace jwnls::tool
