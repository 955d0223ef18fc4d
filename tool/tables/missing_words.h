// The texts that stand for missing values: those of --null.

#ifndef JWNLS_TOOL_TABLES_MISSING_WORDS_H_
#define JWNLS_TOOL_TABLES_MISSING_WORDS_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

class MissingWords {
 public:
  MissingWords() = default;
  explicit MissingWords(const std::vector<std::string>& words);

  [[nodiscard]] bool empty() const noexcept { return words_.empty(); }

  /// Whether the text, without the blanks around it, is one of the words.
  [[nodiscard]] bool contains(std::string_view text) const noexcept {
    return !words_.empty() && has(text);
  }

 private:
  [[nodiscard]] bool has(std::string_view text) const noexcept;

  std::vector<std::string> words_;
  std::array<bool, 256> begins_ = {};  // by a word's first byte
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_MISSING_WORDS_H_
