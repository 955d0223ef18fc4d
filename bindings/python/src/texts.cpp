#include "texts.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace jwnls::python {

namespace {

// A byte that stands nowhere in UTF-8.
constexpr char no_text = '\xFF';

bool is_missing(PyObject* object, PyObject* missing) noexcept {
  if (object == nullptr || object == Py_None) return true;
  if (PyFloat_Check(object)) {
    const double value = PyFloat_AsDouble(object);
    return value != value;
  }
  for (Py_ssize_t i = 0, count = PyTuple_Size(missing); i < count; ++i) {
    if (PyTuple_GetItem(missing, i) == object) return true;
  }
  return false;
}

}  // namespace

bool Piece::prepare(std::size_t count) noexcept {
  room_ = std::min(count, most_texts);
  bytes_room_ = std::min(count * (longest_text + 1), most_bytes);
  bytes_.reset(new (std::nothrow) char[bytes_room_ + 1]);
  offsets_.reset(new (std::nothrow) std::int32_t[room_ + 1]);
  if (bytes_ == nullptr || offsets_ == nullptr) {
    PyErr_NoMemory();
    return false;
  }
  offsets_[0] = 0;
  clear();
  return true;
}

jwnls_texts Piece::texts() const noexcept {
  jwnls_texts texts = {};
  texts.size = sizeof texts;
  texts.count = count_;
  texts.bytes = bytes_.get();
  texts.offsets = offsets_.get();
  return texts;
}

void Piece::add_unreadable() noexcept {
  bytes_[used_++] = no_text;
  end_text();
}

void Piece::add_too_long() noexcept {
  std::memset(&bytes_[used_], no_text, longest_text + 1);
  used_ += longest_text + 1;
  end_text();
}

void Piece::add_characters(const Py_UCS4* characters, std::size_t length) noexcept {
  char text[4 * (longest_text + 1)];
  std::size_t used = 0;
  const auto put = [&](Py_UCS4 byte) { text[used++] = static_cast<char>(byte); };
  for (std::size_t i = 0; i < length && used <= longest_text; ++i) {
    const Py_UCS4 c = characters[i];
    if (c < 0x80) {
      put(c);
    } else if (c < 0x800) {
      put(0xC0 | c >> 6);
      put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      if (c >= 0xD800 && c < 0xE000) return add_unreadable();
      put(0xE0 | c >> 12);
      put(0x80 | (c >> 6 & 0x3F));
      put(0x80 | (c & 0x3F));
    } else if (c < 0x110000) {
      put(0xF0 | c >> 18);
      put(0x80 | (c >> 12 & 0x3F));
      put(0x80 | (c >> 6 & 0x3F));
      put(0x80 | (c & 0x3F));
    } else {
      return add_unreadable();
    }
  }
  add(text, used);
}

void Piece::add_other(PyObject* object, PyObject* missing) noexcept {
  if (is_missing(object, missing)) {
    add_missing();
  } else if (PyUnicode_Check(object)) {  // of a class of its own
    add_str(object);
  } else if (PyBytes_Check(object)) {
    add(PyBytes_AsString(object), static_cast<std::size_t>(PyBytes_Size(object)));
  } else {
    add_unreadable();
  }
}

bool TextColumn::open(PyObject* values, PyObject* missing) noexcept {
  values_ = values;
  missing_ = missing;
  if (PyList_Check(values)) {
    form_ = Form::list;
    count_ = static_cast<std::size_t>(PyList_Size(values));
    return true;
  }
  if (PyTuple_Check(values)) {
    form_ = Form::tuple;
    count_ = static_cast<std::size_t>(PyTuple_Size(values));
    return true;
  }
  return open_buffer();
}

bool TextColumn::open_buffer() noexcept {
  if (!buffer_.open(values_)) return false;
  const char* format = buffer_.format();
  const char letter = format[std::strlen(format) - 1];
  if (letter == 'O' && buffer_.item_size() == sizeof(PyObject*)) {
    form_ = Form::objects;
  } else if (letter == 's') {
    form_ = Form::bytes;
  } else if (letter == 'w' && format[0] != '>') {
    form_ = Form::characters;
  } else {
    PyErr_Format(PyExc_TypeError, "a column of texts is expected, not a buffer of \"%s\"", format);
    return false;
  }
  count_ = buffer_.item_size() == 0 ? 0 : buffer_.bytes() / buffer_.item_size();
  return true;
}

// As NumPy has them: zeros at the end are no part of the text.
void TextColumn::add_bytes(Piece& piece, std::size_t i) const noexcept {
  const std::size_t size = buffer_.item_size();
  const char* text = buffer_.items<const char>() + i * size;
  std::size_t length = size;
  while (length > 0 && text[length - 1] == '\0') --length;
  piece.add(text, length);
}

void TextColumn::add_characters(Piece& piece, std::size_t i) const noexcept {
  const std::size_t size = buffer_.item_size() / sizeof(Py_UCS4);
  const Py_UCS4* text = buffer_.items<const Py_UCS4>() + i * size;
  std::size_t length = size;
  while (length > 0 && text[length - 1] == 0) --length;
  piece.add_characters(text, length);
}

// Of objects, the next are fetched while one is copied.
template <typename Object>
void TextColumn::fill_with(Piece& piece, std::size_t from, Object object) const noexcept {
  constexpr std::size_t ahead = 12;
  std::size_t i = from;
  for (; i + ahead < count_ && !piece.full(); ++i) {
    __builtin_prefetch(object(i + ahead));
    piece.add_object(object(i), missing_);
  }
  for (; i < count_ && !piece.full(); ++i) piece.add_object(object(i), missing_);
}

bool TextColumn::fill(Piece& piece, std::size_t from) noexcept {
  if (PyErr_CheckSignals() != 0) return false;
  if (form_ == Form::list && static_cast<std::size_t>(PyList_Size(values_)) < count_) {
    PyErr_SetString(PyExc_RuntimeError, "the list became shorter while it was read");
    return false;
  }
  piece.clear();
  switch (form_) {
    case Form::list:
      fill_with(piece, from, [this](std::size_t i) {
        return PyList_GetItem(values_, static_cast<Py_ssize_t>(i));
      });
      break;
    case Form::tuple:
      fill_with(piece, from, [this](std::size_t i) {
        return PyTuple_GetItem(values_, static_cast<Py_ssize_t>(i));
      });
      break;
    case Form::objects:
      fill_with(piece, from, [this](std::size_t i) { return buffer_.items<PyObject*>()[i]; });
      break;
    case Form::bytes:
      for (std::size_t i = from; i < count_ && !piece.full(); ++i) add_bytes(piece, i);
      break;
    case Form::characters:
      for (std::size_t i = from; i < count_ && !piece.full(); ++i) add_characters(piece, i);
  }
  return true;
}

}  // namespace jwnls::python
