// A folder for a test's files, which goes with it.

#ifndef JWNLS_TESTS_TOOL_FOLDER_H_
#define JWNLS_TESTS_TOOL_FOLDER_H_

#include <stdlib.h>

#include <filesystem>
#include <string>

namespace jwnls::tool {

class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "jwnls_tool_XXXXXX").string();
    path_ = ::mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }
  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TESTS_TOOL_FOLDER_H_
