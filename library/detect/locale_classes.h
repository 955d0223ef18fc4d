// Locales that read alike: some ten conventions of numbers and some hundred sets of names and
// orders of dates stand for all of them.
//
// They are found by comparing what the readers of a kind go by, once for all locales, and stay.

#ifndef JWNLS_LIBRARY_DETECT_LOCALE_CLASSES_H_
#define JWNLS_LIBRARY_DETECT_LOCALE_CLASSES_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/detect/shapes.h"

namespace jwnls::library {

struct CloseLayout {
  void operator()(jwnls_layout* layout) const noexcept { jwnls_close(layout); }
};
using OwnedLayout = std::unique_ptr<jwnls_layout, CloseLayout>;

struct LocaleClass {
  OwnedLayout layout;                  // of its first locale
  std::vector<std::uint16_t> locales;  // indexes into the list of locales, rising
};

struct LocaleClasses {
  std::vector<LocaleClass> all;
};

/// How much of a layout the texts at hand can tell apart.
enum class Detail : std::uint8_t {
  plain,  // texts are numbers and marks: no names, no units
  words,
};

/// Every locale that the database has, the likelier ones first: languages without a country, those
/// of most countries before others.
[[nodiscard]] const std::vector<std::string>& every_locale();

/// The classes of some locales. Throws a Failure and bad_alloc.
[[nodiscard]] LocaleClasses make_classes(const std::vector<std::string>& locales, int kind,
                                         const char* words, Detail detail);

/// Those of every_locale(), made by the first call that needs them; they stay. Any thread.
[[nodiscard]] const LocaleClasses& classes_of_every_locale(int kind, Detail detail);

/// The words with which the weekdays of all these begin, which are classes of dates with words.
/// Throws bad_alloc.
[[nodiscard]] WeekdayWords weekday_words(const LocaleClasses& classes);

/// Those of every_locale(), likewise made once.
[[nodiscard]] const WeekdayWords& weekday_words_of_every_locale();

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DETECT_LOCALE_CLASSES_H_
