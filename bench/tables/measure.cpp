// Runs a program and says what it took:  jwnls_measure RESULT PROGRAM [ARGUMENT...]
// RESULT gets one line: exit code, wall seconds, processor seconds, peak memory in KiB, those of
// the program's own children among them. A small program on its own, because a child's peak
// includes that of the process which started it.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: jwnls_measure RESULT PROGRAM [ARGUMENT...]\n");
    return 2;
  }
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    ::execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    ::_exit(127);
  }
  int status = 0;
  rusage usage = {};
  if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
    std::perror("jwnls_measure");
    return 2;
  }
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
  std::FILE* result = std::fopen(argv[1], "w");
  if (result == nullptr) {
    std::perror(argv[1]);
    return 2;
  }
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  std::fprintf(result, "%d %.6f %.6f %ld\n", code, wall.count(),
               seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss);
  return std::fclose(result) == 0 ? 0 : 2;
}
