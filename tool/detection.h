// What a column was detected to be, by jwnls_detect().

#ifndef JWNLS_TOOL_DETECTION_H_
#define JWNLS_TOOL_DETECTION_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "jwnls/jwnls.h"

namespace jwnls::tool {

class Detection {
 public:
  /// Asks canonical locales, separated by commas; "*" stands for all others; empty: all. `kinds`:
  /// as jwnls_detect() takes them. Throws Failure{unavailable}.
  Detection(const jwnls_texts& texts, const std::string& locales, const char* kinds = nullptr);

  /// Of the column, by jwnls_detection_kind(): 0 where no kind reads half of its texts.
  [[nodiscard]] int kind() const;

  /// The kind that reads most texts; of equals the first, as the library ranks them.
  [[nodiscard]] int most_read() const;

  [[nodiscard]] jwnls_detected_kind found(int kind) const;
  [[nodiscard]] jwnls_detected_reading reading(int kind, std::size_t index) const;
  [[nodiscard]] std::vector<std::string> locales(int kind, std::size_t reading) const;

 private:
  std::unique_ptr<jwnls_detection, decltype(&jwnls_detection_close)> detection_;
};

/// The canonical names of the locales of a list, as Detection takes them; an empty one is empty.
/// Throws Failure{unavailable} for one that is unknown.
[[nodiscard]] std::string find_locales(const std::string& list);

/// "a, b and 3 more"
[[nodiscard]] std::string listed(const std::vector<std::string>& items, std::size_t limit);

constexpr std::size_t names_listed = 5;  // of more locales or readings only these are named

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_DETECTION_H_
