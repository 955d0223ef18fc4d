// The answer of a detection, kind by kind.

#ifndef JWNLS_LIBRARY_DETECT_DETECTION_H_
#define JWNLS_LIBRARY_DETECT_DETECTION_H_

#include <cstddef>
#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/detect/outcomes.h"
#include "library/detect/shapes.h"

namespace jwnls::library {

struct DetectedReading {
  std::vector<std::uint16_t> locales;  // indexes into the list, as it has them
  std::size_t read = 0;
  std::size_t two_ways = 0;
  std::string value;  // of the text that tells the readings apart
};

struct DetectedKind {
  int kind = 0;
  const char* options = "";
  jwnls_detected_kind found = {};  // but for the rival's name
  std::string rival;
  std::vector<DetectedReading> readings;
};

/// The answer for one kind.
///   count  of the column: the number of no text
/// Throws bad_alloc.
[[nodiscard]] DetectedKind judge(const Shapes& shapes, const Outcomes& outcomes, int kind,
                                 std::size_t count, const std::vector<std::string>& locales);

}  // namespace jwnls::library

struct jwnls_detection {
  std::vector<std::string> locales;
  std::vector<jwnls::library::DetectedKind> kinds;
  int best = 0;
};

#endif  // JWNLS_LIBRARY_DETECT_DETECTION_H_
