#include "errors.h"

#include <cstring>

namespace jwnls::python {

namespace {

PyObject* error_class = nullptr;  // lives as long as the process, as the module does

}  // namespace

bool prepare_errors() noexcept {
  const Reference module(PyImport_ImportModule("jwnls._errors"));
  if (module == nullptr) return false;
  error_class = PyObject_GetAttrString(module.get(), "Error");
  return error_class != nullptr;
}

std::nullptr_t raise(const char* message, int code, std::size_t at) noexcept {
  if (code == JWNLS_MEMORY) {
    PyErr_NoMemory();
    return nullptr;
  }
  const Reference text(
      PyUnicode_DecodeUTF8(message, static_cast<Py_ssize_t>(strlen(message)), "replace"));
  if (text == nullptr) return nullptr;
  const Reference error(
      PyObject_CallFunction(error_class, "Oin", text.get(), code, static_cast<Py_ssize_t>(at)));
  if (error != nullptr) PyErr_SetObject(error_class, error.get());
  return nullptr;
}

std::nullptr_t raise_unread(const jwnls_layout* layout, const char* text, std::size_t length,
                            int code) noexcept {
  jwnls_error error;
  const int explained = jwnls_explain(layout, text, length, &error);
  if (explained == JWNLS_OK) return raise(jwnls_code_text(code), code);
  return raise(error.text, explained, characters_of(text, error.at < length ? error.at : length));
}

Reference take_exception() noexcept {
  PyObject* type = nullptr;
  PyObject* value = nullptr;
  PyObject* traceback = nullptr;
  PyErr_Fetch(&type, &value, &traceback);
  PyErr_NormalizeException(&type, &value, &traceback);
  Py_XDECREF(type);
  Py_XDECREF(traceback);
  return Reference(value);
}

std::size_t characters_of(const char* text, std::size_t bytes) noexcept {
  std::size_t count = 0;
  for (std::size_t i = 0; i < bytes; ++i) {
    count += (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 ? 1 : 0;
  }
  return count;
}

}  // namespace jwnls::python
