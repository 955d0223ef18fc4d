// jwnls.Error, and what is raised for the codes of jwnls.h.

#ifndef JWNLS_BINDINGS_PYTHON_ERRORS_H_
#define JWNLS_BINDINGS_PYTHON_ERRORS_H_

#include <jwnls/jwnls.h>

#include "python_api.h"

namespace jwnls::python {

/// Finds the exception's class; false with a Python exception.
[[nodiscard]] bool prepare_errors() noexcept;

/// Raises jwnls.Error(message, code, at), MemoryError for JWNLS_MEMORY. Gives null, to be returned.
///   at  characters of the text that fit
std::nullptr_t raise(const char* message, int code, std::size_t at = 0) noexcept;

/// Raises what jwnls_explain() says of a text that was not read with `code`.
std::nullptr_t raise_unread(const jwnls_layout* layout, const char* text, std::size_t length,
                            int code) noexcept;

/// The exception that is being raised, which ends with that.
Reference take_exception() noexcept;

/// How many characters the first bytes of a UTF-8 text are.
[[nodiscard]] std::size_t characters_of(const char* text, std::size_t bytes) noexcept;

}  // namespace jwnls::python

#endif  // JWNLS_BINDINGS_PYTHON_ERRORS_H_
