// Which locales read a column.

#ifndef JWNLS_BINDINGS_PYTHON_DETECT_H_
#define JWNLS_BINDINGS_PYTHON_DETECT_H_

#include "python_api.h"

namespace jwnls::python {

/// _jwnls.detect(values, kinds, locales, missing): (best kind or None, [kinds]), as tuples.
PyObject* detect(PyObject* module, PyObject* arguments) noexcept;

}  // namespace jwnls::python

#endif  // JWNLS_BINDINGS_PYTHON_DETECT_H_
