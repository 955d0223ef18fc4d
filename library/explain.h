// Why a text is not read, kind by kind.

#ifndef JWNLS_LIBRARY_EXPLAIN_H_
#define JWNLS_LIBRARY_EXPLAIN_H_

#include <string_view>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {

/// Of numbers and integers. As jwnls_explain().
int explain_number(const jwnls_layout* layout, std::string_view text, jwnls_error* error) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_EXPLAIN_H_
