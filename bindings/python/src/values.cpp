// One value: texts in, values of jwnls.h out, and back.

#include <cstring>
#include <new>

#include "errors.h"
#include "layout.h"
#include "texts.h"

namespace jwnls::python {

namespace {

// A str or bytes as UTF-8. Of a text that is too long anyway, no more is looked at than shows that.
class TextArgument {
 public:
  // False with a Python exception.
  bool open(PyObject* object) noexcept {
    if (PyBytes_Check(object)) {
      text = PyBytes_AsString(object);
      length = static_cast<std::size_t>(PyBytes_Size(object));
      return true;
    }
    if (!PyUnicode_Check(object)) {
      PyErr_SetString(PyExc_TypeError, "a text is expected: str or bytes");
      return false;
    }
    constexpr auto longest = static_cast<Py_ssize_t>(longest_text);
    if (PyUnicode_GetLength(object) > longest) {
      beginning_.reset(PyUnicode_Substring(object, 0, longest + 1));
      object = beginning_.get();
    }
    Py_ssize_t size = 0;
    text = object == nullptr ? nullptr : PyUnicode_AsUTF8AndSize(object, &size);
    length = static_cast<std::size_t>(size);
    if (text == nullptr) raise_surrogate();
    return text != nullptr;
  }

  const char* text = nullptr;
  std::size_t length = 0;

 private:
  // In place of Python's UnicodeEncodeError.
  static void raise_surrogate() noexcept {
    if (PyErr_ExceptionMatches(PyExc_UnicodeEncodeError) == 0) return;
    const Reference error = take_exception();
    Py_ssize_t at = 0;
    if (PyUnicodeEncodeError_GetStart(error.get(), &at) != 0) PyErr_Clear();
    raise("half of a surrogate pair, which is no character", JWNLS_UNREAD,
          static_cast<std::size_t>(at));
  }

  Reference beginning_;
};

template <typename Value, typename Read, typename Make>
PyObject* read_with(const jwnls_layout* layout, const TextArgument& text, Read read, Make make) {
  Value value;
  const int code = read(layout, text.text, text.length, &value, nullptr);
  if (code == JWNLS_OK) return make(value);
  if (code == JWNLS_MISSING) Py_RETURN_NONE;
  return raise_unread(layout, text.text, text.length, code);
}

PyObject* integer_object(std::int64_t value) noexcept { return PyLong_FromLongLong(value); }

// Writes with the function, into longer room if need be; None for a missing value.
template <typename Write>
PyObject* write_with(Write write) noexcept {
  char out[512];
  std::size_t length = 0;
  int code = write(out, sizeof out, &length);
  if (code == JWNLS_OK) return PyUnicode_DecodeUTF8(out, static_cast<Py_ssize_t>(length), nullptr);
  if (code == JWNLS_MISSING) Py_RETURN_NONE;
  if (code != JWNLS_ROOM) return raise(jwnls_code_text(code), code);
  const std::unique_ptr<char[]> longer(new (std::nothrow) char[length]);
  if (longer == nullptr) return PyErr_NoMemory();
  const std::size_t room = length;
  code = write(longer.get(), room, &length);
  if (code != JWNLS_OK) return raise(jwnls_code_text(code), code);
  return PyUnicode_DecodeUTF8(longer.get(), static_cast<Py_ssize_t>(length), nullptr);
}

}  // namespace

PyObject* read_value(PyObject* self, PyObject* argument) noexcept {
  const jwnls_layout* layout = layout_of(self);
  TextArgument text;
  switch (jwnls_layout_kind(layout)) {
    case JWNLS_AMOUNT:
      return read_decimal(self, argument);
    case JWNLS_NUMBER:
    case JWNLS_PERCENT:
      if (!text.open(argument)) return nullptr;
      return read_with<double>(layout, text, jwnls_read_number, PyFloat_FromDouble);
    case JWNLS_INTEGER:
      if (!text.open(argument)) return nullptr;
      return read_with<std::int64_t>(layout, text, jwnls_read_integer, integer_object);
    case JWNLS_DATE:
    case JWNLS_PERIOD:
      if (!text.open(argument)) return nullptr;
      return read_with<std::int32_t>(layout, text, jwnls_read_date, integer_object);
    case JWNLS_TIME:
      if (!text.open(argument)) return nullptr;
      return read_with<std::int64_t>(layout, text, jwnls_read_time, integer_object);
    default:
      if (!text.open(argument)) return nullptr;
      return read_with<std::int64_t>(layout, text, jwnls_read_datetime, integer_object);
  }
}

PyObject* read_decimal(PyObject* self, PyObject* argument) noexcept {
  TextArgument text;
  if (!text.open(argument)) return nullptr;
  char out[2 * longest_text + 64];
  std::size_t length = 0;
  char currency[4] = "";
  const int code = jwnls_read_decimal(layout_of(self), text.text, text.length, out, sizeof out,
                                      &length, currency, nullptr);
  if (code == JWNLS_MISSING) Py_RETURN_NONE;
  if (code != JWNLS_OK) return raise_unread(layout_of(self), text.text, text.length, code);
  return Py_BuildValue("(s#s)", out, static_cast<Py_ssize_t>(length), currency);
}

PyObject* read_facts(PyObject* self, PyObject* argument) noexcept {
  const jwnls_layout* layout = layout_of(self);
  TextArgument text;
  if (!text.open(argument)) return nullptr;
  std::uint8_t facts = 0;
  std::int64_t value = 0;
  std::int32_t days = 0;
  double number = 0;
  int code = JWNLS_KIND;
  switch (jwnls_layout_kind(layout)) {
    case JWNLS_NUMBER:
    case JWNLS_AMOUNT:
    case JWNLS_PERCENT:
      code = jwnls_read_number(layout, text.text, text.length, &number, &facts);
      break;
    case JWNLS_INTEGER:
      code = jwnls_read_integer(layout, text.text, text.length, &value, &facts);
      break;
    case JWNLS_DATE:
    case JWNLS_PERIOD:
      code = jwnls_read_date(layout, text.text, text.length, &days, &facts);
      break;
    case JWNLS_TIME:
      code = jwnls_read_time(layout, text.text, text.length, &value, &facts);
      break;
    default:
      code = jwnls_read_datetime(layout, text.text, text.length, &value, &facts);
  }
  return Py_BuildValue("(ii)", code, static_cast<int>(facts));
}

PyObject* explain(PyObject* self, PyObject* argument) noexcept {
  TextArgument text;
  int code = JWNLS_UNREAD;
  if (text.open(argument)) {
    jwnls_error error;
    code = jwnls_explain(layout_of(self), text.text, text.length, &error);
    if (code == JWNLS_OK || code == JWNLS_MISSING) Py_RETURN_NONE;
    raise_unread(layout_of(self), text.text, text.length, code);
  } else if (PyErr_ExceptionMatches(PyExc_ValueError) == 0) {
    return nullptr;
  }
  return take_exception().release();
}

PyObject* write_number(PyObject* self, PyObject* argument) noexcept {
  const double value = PyFloat_AsDouble(argument);
  if (value == -1.0 && PyErr_Occurred() != nullptr) return nullptr;
  return write_with([&](char* out, std::size_t room, std::size_t* length) {
    return jwnls_write_number(layout_of(self), value, out, room, length);
  });
}

PyObject* write_integer(PyObject* self, PyObject* argument) noexcept {
  const std::int64_t value = PyLong_AsLongLong(argument);
  if (value == -1 && PyErr_Occurred() != nullptr) return nullptr;
  return write_with([&](char* out, std::size_t room, std::size_t* length) {
    return jwnls_write_integer(layout_of(self), value, out, room, length);
  });
}

PyObject* write_decimal(PyObject* self, PyObject* argument) noexcept {
  Py_ssize_t size = 0;
  const char* decimal = PyUnicode_AsUTF8AndSize(argument, &size);
  if (decimal == nullptr) return nullptr;
  return write_with([&](char* out, std::size_t room, std::size_t* length) {
    return jwnls_write_decimal(layout_of(self), decimal, static_cast<std::size_t>(size), out, room,
                               length);
  });
}

// Days of dates, microseconds of datetimes and times.
PyObject* write_moment(PyObject* self, PyObject* argument) noexcept {
  const std::int64_t value = PyLong_AsLongLong(argument);
  if (value == -1 && PyErr_Occurred() != nullptr) return nullptr;
  const jwnls_layout* layout = layout_of(self);
  const int kind = jwnls_layout_kind(layout);
  return write_with([&](char* out, std::size_t room, std::size_t* length) -> int {
    if (kind == JWNLS_TIME) return jwnls_write_time(layout, value, out, room, length);
    if (kind != JWNLS_DATE && kind != JWNLS_PERIOD) {
      return jwnls_write_datetime(layout, value, out, room, length);
    }
    const auto days = static_cast<std::int32_t>(value);
    *length = 0;
    return days != value ? JWNLS_RANGE : jwnls_write_date(layout, days, out, room, length);
  });
}

}  // namespace jwnls::python
