// The extension module jwnls._jwnls: what jwnls.h has that takes no layout, and the type of
// layouts.

#include <jwnls/jwnls.h>

#include "detect.h"
#include "errors.h"
#include "layout.h"

namespace jwnls::python {

namespace {

int append_locale(void* list, const jwnls_locale_info* locale) {
  const Reference item(
      Py_BuildValue("(sss)", locale->name, locale->english_name, locale->own_name));
  return item == nullptr ? -1 : PyList_Append(static_cast<PyObject*>(list), item.get());
}

int append_zone(void* list, const char* zone) {
  const Reference item(PyUnicode_FromString(zone));
  return item == nullptr ? -1 : PyList_Append(static_cast<PyObject*>(list), item.get());
}

template <typename Visit, typename Append>
PyObject* list_of(Visit visit, Append append) noexcept {
  Reference list(PyList_New(0));
  if (list == nullptr) return nullptr;
  const int code = visit(append, list.get());
  if (PyErr_Occurred() != nullptr) return nullptr;
  return code == JWNLS_OK ? list.release() : raise(jwnls_code_text(code), code);
}

PyObject* locales(PyObject* /*module*/, PyObject* /*unused*/) noexcept {
  return list_of(jwnls_locales, append_locale);
}

PyObject* zones(PyObject* /*module*/, PyObject* /*unused*/) noexcept {
  return list_of(jwnls_zones, append_zone);
}

PyObject* zones_version(PyObject* /*module*/, PyObject* /*unused*/) noexcept {
  char version[64];
  std::size_t length = 0;
  const int code = jwnls_zones_version(version, sizeof version, &length);
  if (code != JWNLS_OK) return raise(jwnls_code_text(code), code);
  return PyUnicode_FromStringAndSize(version, static_cast<Py_ssize_t>(length));
}

PyObject* match_locale(PyObject* /*module*/, PyObject* arguments) noexcept {
  const char* name = nullptr;
  if (!PyArg_ParseTuple(arguments, "s:match_locale", &name)) return nullptr;
  char canonical[64];
  int exact = 0;
  const int code = jwnls_match_locale(name, canonical, &exact);
  if (code == JWNLS_UNKNOWN) Py_RETURN_NONE;
  if (code != JWNLS_OK) return raise(jwnls_code_text(code), code);
  return Py_BuildValue("(sO)", canonical, exact != 0 ? Py_True : Py_False);
}

PyMethodDef functions[] = {
    {"locales", locales, METH_NOARGS, nullptr},
    {"zones", zones, METH_NOARGS, nullptr},
    {"zones_version", zones_version, METH_NOARGS,
     "The release of the time-zone database, such as '2025b'; '' when it does not say."},
    {"match_locale", match_locale, METH_VARARGS, nullptr},
    {"detect", detect, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr}};

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "_jwnls", nullptr, -1, functions, nullptr, nullptr, nullptr, nullptr};

}  // namespace

}  // namespace jwnls::python

PyMODINIT_FUNC PyInit__jwnls() {  // NOLINT(bugprone-reserved-identifier): Python names it
  using namespace jwnls::python;
  if (!prepare_errors()) return nullptr;
  Reference module(PyModule_Create(&definition));
  const Reference type(module == nullptr ? nullptr : make_layout_type());
  if (type == nullptr || PyObject_SetAttrString(module.get(), "Layout", type.get()) != 0 ||
      PyModule_AddStringConstant(module.get(), "version", jwnls_version()) != 0 ||
      PyModule_AddStringConstant(module.get(), "data_version", jwnls_data_version()) != 0) {
    return nullptr;
  }
  return module.release();
}
