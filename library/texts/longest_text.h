// The longest text that is read.

#ifndef JWNLS_LIBRARY_TEXTS_LONGEST_TEXT_H_
#define JWNLS_LIBRARY_TEXTS_LONGEST_TEXT_H_

#include <cstddef>

namespace jwnls::library {

/// A text of more bytes (units) is refused before anything of it is looked at.
inline constexpr std::size_t longest_text = 1024;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_LONGEST_TEXT_H_
