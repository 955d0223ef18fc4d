#include "tests/tool/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace jwnls::tool {
namespace {

constexpr const char* tool_path = JWNLS_BUILD_DIR "/jwnls";

// An unnamed file, for a stream of the process: no pipe can fill up and block it.
class StreamFile {
 public:
  StreamFile() : file_(std::tmpfile(), &std::fclose) { EXPECT_NE(file_, nullptr); }

  [[nodiscard]] int descriptor() const { return fileno(file_.get()); }
  void write(const std::string& text) {
    EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), file_.get()), text.size());
    std::rewind(file_.get());
  }
  std::string read() {
    std::fseek(file_.get(), 0, SEEK_END);
    std::string text(static_cast<std::size_t>(std::ftell(file_.get())), '\0');
    std::rewind(file_.get());
    EXPECT_EQ(std::fread(text.data(), 1, text.size(), file_.get()), text.size());
    return text;
  }

 private:
  std::unique_ptr<FILE, int (*)(FILE*)> file_;
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> all;
  all.reserve(texts.size() + 1);
  for (std::string& text : texts) all.push_back(text.data());
  all.push_back(nullptr);
  return all;
}

Outcome run(const char* program, std::vector<std::string> arguments,
            std::vector<std::string> environment, const std::string& input,
            const std::string& output_path) {
  // Sanitizers are told how to run by the environment.
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) {
      environment.push_back(std::string(name) + "=" + value);
    }
  }
  StreamFile in;
  StreamFile out;
  StreamFile errors;
  in.write(input);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.descriptor(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors.descriptor(), STDERR_FILENO);
  if (output_path.empty()) {
    posix_spawn_file_actions_adddup2(&actions, out.descriptor(), STDOUT_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_path.c_str(), O_WRONLY, 0);
  }
  pid_t child = 0;
  const int error = posix_spawn(&child, program, &actions, nullptr, pointers(arguments).data(),
                                pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  EXPECT_EQ(error, 0) << program;
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), out.read(), errors.read()};
}

}  // namespace

Outcome run_tool(const Invocation& invocation) {
  std::vector<std::string> arguments = {"jwnls"};
  arguments.insert(arguments.end(), invocation.arguments.begin(), invocation.arguments.end());
  return run(tool_path, std::move(arguments), invocation.environment, invocation.input,
             invocation.output_path);
}

void expect(const std::vector<std::string>& arguments, const std::string& output,
            const std::string& errors, int exit_code, const std::vector<std::string>& environment,
            const std::string& input) {
  SCOPED_TRACE(testing::PrintToString(arguments));
  const Outcome outcome = run_tool({arguments, input, environment});
  EXPECT_EQ(outcome.output, output);
  EXPECT_EQ(outcome.errors, errors);
  EXPECT_EQ(outcome.exit_code, exit_code);
}

Outcome run_shell(const std::string& command) {
  return run("/bin/sh", {"sh", "-c", command},
             {std::string("jwnls=") + tool_path, "PATH=/usr/bin:/bin"}, "", "");
}

}  // namespace jwnls::tool
