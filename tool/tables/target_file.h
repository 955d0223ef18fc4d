// A file that gets its name when all of it is written.

#ifndef JWNLS_TOOL_TABLES_TARGET_FILE_H_
#define JWNLS_TOOL_TABLES_TARGET_FILE_H_

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

namespace jwnls::tool {

/// Standard output, a device or a pipe, which are written to at once; or a file, which is written
/// without a name and takes the place of the one that is there. Until then that one is as it was,
/// and when the program fails or is killed it stays, and nothing of the other does. Where the file
/// system has no files without a name, the other has one that begins with a dot, and only SIGKILL
/// leaves it.
class TargetFile {
 public:
  /// Empty: standard output. Throws Failure{io}.
  explicit TargetFile(const std::string& path);
  ~TargetFile();
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;

  /// Throws Failure{io}; of a closed pipe without a message, as nobody is left to miss the rest.
  void write(std::string_view text);

  /// Gives the file its name; the one that is there is kept under its name with `kept_suffix`
  /// behind it, if that is not empty. Throws Failure{io}.
  void commit(const std::string& kept_suffix = {});

  /// True when it is this open file.
  [[nodiscard]] bool is_same_as(const struct stat& other) const;
  /// True when both are written beside the same file, by whatever paths; also where there is none.
  [[nodiscard]] bool is_same_as(const TargetFile& other) const;
  [[nodiscard]] bool is_terminal() const;

 private:
  void open_file();
  void open_beside();
  void open_temporary();
  void name_nameless();
  void forget_temporary(bool removes);
  [[noreturn]] void fail(int error) const;

  std::string name_;       // for messages
  std::string path_;       // behind links and dots
  std::string beside_;     // the pattern of another name beside it; empty: written to at once
  std::string temporary_;  // that name, once it is taken
  bool is_nameless_ = false;
  int descriptor_ = -1;
  std::optional<struct stat> old_;  // what is there
};

/// Removes the files that are written beside their targets under a name of their own: for an end of
/// the program that nothing is told of. A signal's handler may call it.
void remove_unfinished_files() noexcept;

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TARGET_FILE_H_
