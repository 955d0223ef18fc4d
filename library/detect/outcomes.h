// What each class of locales makes of each shape of a column.

#ifndef JWNLS_LIBRARY_DETECT_OUTCOMES_H_
#define JWNLS_LIBRARY_DETECT_OUTCOMES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "library/detect/locale_classes.h"
#include "library/detect/shapes.h"

namespace jwnls::library {

struct Outcome {
  std::uint8_t value = 0;  // 0: not read; equal numbers of one shape are equal values
  std::uint8_t facts = 0;

  bool operator==(const Outcome& other) const noexcept { return value == other.value; }
};

/// A class that was tried on every shape.
struct Candidate {
  const LocaleClass* locales = nullptr;
  std::vector<Outcome> outcomes;  // of each shape
  std::size_t read = 0;           // texts
  bool complete = false;          // reads every shape that some class reads

  [[nodiscard]] bool reads(std::size_t shape) const noexcept { return outcomes[shape].value != 0; }
};

struct Outcomes {
  std::vector<Candidate> candidates;  // as their first locales are listed
  bool all_complete = false;          // no class was left out, and none fails
  std::vector<bool> readable;         // of each shape: some class reads it
};

/// Tries classes: all of them on the sample, those that read most of it on everything. Those that
/// are left out miss texts of the sample that others read, so that they are never complete. No
/// candidates: no class reads a quarter of the sample. Throws bad_alloc.
[[nodiscard]] Outcomes try_classes(const LocaleClasses& classes, const Shapes& shapes, int kind);

/// Whether some text of the sample can be of a kind, whatever the locale.
[[nodiscard]] bool may_be(int kind, const Shapes& shapes);

/// What a layout reads, as a person would compare it: "1234.5", "2024-03-15T14:30:05"; empty where
/// the text is not read.
[[nodiscard]] std::string value_text(const jwnls_layout* layout, std::string_view text);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DETECT_OUTCOMES_H_
