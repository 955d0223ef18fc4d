#include "layout.h"

#include <string>

#include "errors.h"

namespace jwnls::python {

namespace {

PyObject* new_layout(PyTypeObject* type, PyObject* arguments, PyObject* /*named*/) noexcept {
  const char* locale = nullptr;
  const char* kind_name = nullptr;
  const char* options = "";
  if (!PyArg_ParseTuple(arguments, "ss|s:Layout", &locale, &kind_name, &options)) return nullptr;
  const int kind = jwnls_kind_of_name(kind_name);
  if (kind == 0) {
    const Reference message(
        PyUnicode_FromFormat("no kind is called \"%.60s\": number, integer, amount, percent, date, "
                             "time, datetime, instant, period",
                             kind_name));
    const char* text =
        message == nullptr ? nullptr : PyUnicode_AsUTF8AndSize(message.get(), nullptr);
    return text == nullptr ? nullptr : raise(text, JWNLS_UNKNOWN);
  }
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  int code = JWNLS_OK;
  {
    const WithoutLock unlocked;  // the first layout of all loads the modules
    code = jwnls_open(locale, kind, options, &layout, &error);
  }
  if (code != JWNLS_OK) return raise(error.text, code, error.at);
  const auto allocate = reinterpret_cast<allocfunc>(PyType_GetSlot(type, Py_tp_alloc));
  PyObject* self = allocate(type, 0);
  if (self == nullptr) {
    jwnls_close(layout);
    return nullptr;
  }
  reinterpret_cast<LayoutObject*>(self)->layout = layout;
  return self;
}

void delete_layout(PyObject* self) noexcept {
  PyTypeObject* type = Py_TYPE(self);
  jwnls_close(reinterpret_cast<LayoutObject*>(self)->layout);
  reinterpret_cast<freefunc>(PyType_GetSlot(type, Py_tp_free))(self);
  Py_DECREF(type);
}

PyObject* describe(PyObject* self, PyObject* /*unused*/) noexcept {
  char line[512];
  std::size_t length = 0;
  int code = jwnls_describe(layout_of(self), line, sizeof line, &length);
  if (code == JWNLS_OK) return PyUnicode_FromStringAndSize(line, static_cast<Py_ssize_t>(length));
  if (code != JWNLS_ROOM) return raise(jwnls_code_text(code), code);
  const std::unique_ptr<char[]> longer(new (std::nothrow) char[length]);
  if (longer == nullptr) return PyErr_NoMemory();
  code = jwnls_describe(layout_of(self), longer.get(), length, &length);
  if (code != JWNLS_OK) return raise(jwnls_code_text(code), code);
  return PyUnicode_FromStringAndSize(longer.get(), static_cast<Py_ssize_t>(length));
}

PyObject* locale_of(PyObject* self, void* /*unused*/) noexcept {
  return PyUnicode_FromString(jwnls_layout_locale(layout_of(self)));
}

PyObject* kind_of(PyObject* self, void* /*unused*/) noexcept {
  return PyUnicode_FromString(jwnls_kind_name(jwnls_layout_kind(layout_of(self))));
}

PyObject* currency_of(PyObject* self, void* /*unused*/) noexcept {
  return PyUnicode_FromString(jwnls_layout_currency(layout_of(self)));
}

PyMethodDef methods[] = {
    {"describe", describe, METH_NOARGS,
     "The layout as one line, to be stored beside a column.\n\n"
     ">>> Layout('de-DE', 'number', 'no-group decimals=2').describe()\n"
     "'de_DE number decimals=2 no-group'"},
    {"_read", read_value, METH_O, nullptr},
    {"_read_decimal", read_decimal, METH_O, nullptr},
    {"_facts", read_facts, METH_O, nullptr},
    {"explain", explain, METH_O,
     "Why a text is not read: the jwnls.Error that read() would raise, or None.\n\n"
     ">>> why = Layout('de_DE', 'number').explain('1.234.')\n"
     ">>> why.code, why.at\n"
     "(<Code.UNREAD: 1>, 5)"},
    {"_write_number", write_number, METH_O, nullptr},
    {"_write_integer", write_integer, METH_O, nullptr},
    {"_write_decimal", write_decimal, METH_O, nullptr},
    {"_write_moment", write_moment, METH_O, nullptr},
    {"_read_column", read_column, METH_VARARGS, nullptr},
    {"_read_decimals", read_decimals, METH_VARARGS, nullptr},
    {"_write_column", write_column, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr}};

PyGetSetDef attributes[] = {
    {"locale", locale_of, nullptr, "The locale's canonical name, 'de_DE'.", nullptr},
    {"kind", kind_of, nullptr, "The kind of value, 'number'.", nullptr},
    {"currency", currency_of, nullptr, "The ISO code of an amount layout's own currency, or ''.",
     nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr}};

PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(new_layout)},
                       {Py_tp_dealloc, reinterpret_cast<void*>(delete_layout)},
                       {Py_tp_methods, methods},
                       {Py_tp_getset, attributes},
                       {0, nullptr}};

PyType_Spec spec = {"jwnls._jwnls.Layout", sizeof(LayoutObject), 0,
                    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE, slots};

}  // namespace

PyObject* make_layout_type() noexcept { return PyType_FromSpec(&spec); }

}  // namespace jwnls::python
