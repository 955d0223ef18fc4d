// A pattern of the record taken apart into directives and the texts between them.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_PATTERN_PARTS_H_
#define JWNLS_LIBRARY_LOCALE_DATA_PATTERN_PARTS_H_

#include <string>
#include <string_view>
#include <vector>

namespace jwnls::library {

struct PatternParts {
  struct Part {
    char directive;       // its letter, as in "%#I"; 0: a literal
    std::string literal;  // UTF-8
  };
  std::vector<Part> parts;

  /// Throws bad_alloc. A "%" that begins no directive ends the pattern.
  explicit PatternParts(std::string_view pattern);
};

/// The words of a literal: runs of letters, with the dots inside them. Whatever is not ASCII and no
/// blank is a letter.
std::vector<std::string> words_of(std::string_view literal);

/// The letters with which a literal ends, or begins.
std::string letters_at_end(std::string_view literal);
std::string letters_at_begin(std::string_view literal);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_PATTERN_PARTS_H_
