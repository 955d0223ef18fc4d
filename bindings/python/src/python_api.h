// Python's limited interface of 3.9, and what of later versions 3.9 has as well.

#ifndef JWNLS_BINDINGS_PYTHON_PYTHON_API_H_
#define JWNLS_BINDINGS_PYTHON_PYTHON_API_H_

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

// One binary for 3.9 and later. Two things it needs were promised later than 3.9, but are exported
// by 3.9 in the same shape: texts as UTF-8 (promised from 3.10) and buffers (from 3.11, which
// froze a struct that had not changed since 3.3).
extern "C" {
#if Py_LIMITED_API + 0 < 0x030A0000
PyAPI_FUNC(const char*) PyUnicode_AsUTF8AndSize(PyObject* text, Py_ssize_t* size);
#endif
#if Py_LIMITED_API + 0 < 0x030B0000
struct Py_buffer {
  void* buf;
  PyObject* obj;
  Py_ssize_t len;
  Py_ssize_t itemsize;
  int readonly;
  int ndim;
  char* format;
  Py_ssize_t* shape;
  Py_ssize_t* strides;
  Py_ssize_t* suboffsets;
  void* internal;
};
PyAPI_FUNC(int) PyObject_GetBuffer(PyObject* object, Py_buffer* view, int flags);
PyAPI_FUNC(void) PyBuffer_Release(Py_buffer* view);
#define PyBUF_WRITABLE 0x0001
#define PyBUF_FORMAT 0x0004
#define PyBUF_C_CONTIGUOUS (0x0020 | 0x0010 | 0x0008)
#endif
}

namespace jwnls::python {

/// A strong reference.
struct Release {
  void operator()(PyObject* object) const noexcept { Py_DECREF(object); }
};
using Reference = std::unique_ptr<PyObject, Release>;

inline Reference new_reference(PyObject* object) noexcept {
  Py_INCREF(object);
  return Reference(object);
}

/// An object's contiguous memory, held until the end: nobody resizes it meanwhile.
class Buffer {
 public:
  Buffer() = default;
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  ~Buffer() {
    if (held_) PyBuffer_Release(&view_);
  }

  /// False with a Python exception when there is none. `writable`: to be written into.
  [[nodiscard]] bool open(PyObject* object, bool writable = false) noexcept {
    const int flags = PyBUF_C_CONTIGUOUS | PyBUF_FORMAT | (writable ? PyBUF_WRITABLE : 0);
    held_ = PyObject_GetBuffer(object, &view_, flags) == 0;
    return held_;
  }

  /// As open(), for `count` items of `item_bytes` each; ValueError for any other size.
  [[nodiscard]] bool open(PyObject* object, bool writable, std::size_t count,
                          std::size_t item_bytes) noexcept {
    if (!open(object, writable)) return false;
    if (item_bytes == item_size() && bytes() == count * item_bytes) return true;
    PyErr_SetString(PyExc_ValueError, "a buffer of another size than the column");
    return false;
  }

  [[nodiscard]] std::size_t bytes() const noexcept { return static_cast<std::size_t>(view_.len); }
  [[nodiscard]] std::size_t item_size() const noexcept {
    return static_cast<std::size_t>(view_.itemsize);
  }
  [[nodiscard]] const char* format() const noexcept {
    return view_.format != nullptr ? view_.format : "B";
  }
  template <typename Item>
  [[nodiscard]] Item* items() const noexcept {
    return static_cast<Item*>(view_.buf);
  }

 private:
  Py_buffer view_ = {};
  bool held_ = false;
};

/// Other Python threads run while this stands; nothing of Python may be touched.
class WithoutLock {
 public:
  WithoutLock() noexcept : state_(PyEval_SaveThread()) {}
  WithoutLock(const WithoutLock&) = delete;
  WithoutLock& operator=(const WithoutLock&) = delete;
  ~WithoutLock() { PyEval_RestoreThread(state_); }

 private:
  PyThreadState* state_;
};

}  // namespace jwnls::python

#endif  // JWNLS_BINDINGS_PYTHON_PYTHON_API_H_
