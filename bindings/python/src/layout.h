// The type beneath jwnls.Layout: an open layout and the calls of jwnls.h on it. What values are in
// Python (dates, Decimals, arrays) is made of theirs in jwnls/.

#ifndef JWNLS_BINDINGS_PYTHON_LAYOUT_H_
#define JWNLS_BINDINGS_PYTHON_LAYOUT_H_

#include <jwnls/jwnls.h>

#include "python_api.h"

namespace jwnls::python {

struct LayoutObject {
  PyObject_HEAD jwnls_layout* layout;
};

inline const jwnls_layout* layout_of(PyObject* self) noexcept {
  return reinterpret_cast<LayoutObject*>(self)->layout;
}

/// The type, a new reference; null with a Python exception.
PyObject* make_layout_type() noexcept;

// Methods, as Python calls them.
PyObject* read_value(PyObject* self, PyObject* text) noexcept;
PyObject* read_decimal(PyObject* self, PyObject* text) noexcept;
PyObject* read_facts(PyObject* self, PyObject* text) noexcept;
PyObject* explain(PyObject* self, PyObject* text) noexcept;
PyObject* write_number(PyObject* self, PyObject* value) noexcept;
PyObject* write_integer(PyObject* self, PyObject* value) noexcept;
PyObject* write_decimal(PyObject* self, PyObject* value) noexcept;
PyObject* write_moment(PyObject* self, PyObject* value) noexcept;
PyObject* read_column(PyObject* self, PyObject* arguments) noexcept;
PyObject* read_decimals(PyObject* self, PyObject* arguments) noexcept;
PyObject* write_column(PyObject* self, PyObject* arguments) noexcept;

}  // namespace jwnls::python

#endif  // JWNLS_BINDINGS_PYTHON_LAYOUT_H_
