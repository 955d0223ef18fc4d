// Columns of values out, piece by piece as columns of texts in.

#include <algorithm>
#include <cstring>
#include <new>

#include "errors.h"
#include "layout.h"

namespace jwnls::python {

namespace {

constexpr std::size_t piece_values = 1 << 13;
constexpr std::size_t piece_bytes = 1 << 20;

// Values in, and the texts that are written of them.
struct WrittenPiece {
  std::int64_t values[piece_values];  // doubles where numbers are written
  std::int32_t days[piece_values];
  std::int32_t offsets[piece_values + 1];
  std::uint8_t codes[piece_values];
  char bytes[piece_bytes];
};

enum class Values { doubles, integers };

// Gives how many were written.
std::size_t write_piece(const jwnls_layout* layout, Values form, std::size_t count,
                        WrittenPiece& piece) noexcept {
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = piece.bytes;
  column.room = sizeof piece.bytes;
  column.offsets = piece.offsets;
  column.codes = piece.codes;
  if (form == Values::doubles) {
    return jwnls_write_numbers(layout, reinterpret_cast<const double*>(piece.values), count,
                               &column);
  }
  switch (jwnls_layout_kind(layout)) {
    case JWNLS_DATE:
    case JWNLS_PERIOD:
      for (std::size_t i = 0; i < count; ++i) {
        // Days beyond 32 bits are beyond the calendar, as the end of 32 bits is.
        piece.days[i] = static_cast<std::int32_t>(
            std::clamp<std::int64_t>(piece.values[i], INT32_MIN, INT32_MAX));
      }
      return jwnls_write_dates(layout, piece.days, count, &column);
    case JWNLS_TIME:
      return jwnls_write_times(layout, piece.values, count, &column);
    case JWNLS_DATETIME:
    case JWNLS_INSTANT:
      return jwnls_write_datetimes(layout, piece.values, count, &column);
    default:
      return jwnls_write_integers(layout, piece.values, count, &column);
  }
}

}  // namespace

// _write_column(values, out, codes): `values` is a buffer of doubles or 64-bit integers, `out` one
// of objects, which get str or None, `codes` of bytes.
PyObject* write_column(PyObject* self, PyObject* arguments) noexcept {
  PyObject* values = nullptr;
  PyObject* out = nullptr;
  PyObject* codes = nullptr;
  if (!PyArg_ParseTuple(arguments, "OOO", &values, &out, &codes)) return nullptr;
  Buffer in_buffer, out_buffer, codes_buffer;
  if (!in_buffer.open(values)) return nullptr;
  const std::size_t count = in_buffer.bytes() / sizeof(std::int64_t);
  if (!out_buffer.open(out, true, count, sizeof(PyObject*)) ||
      !codes_buffer.open(codes, true, count, 1)) {
    return nullptr;
  }
  const char* format = in_buffer.format();
  const Values form = format[std::strlen(format) - 1] == 'd' ? Values::doubles : Values::integers;
  const std::unique_ptr<WrittenPiece> piece(new (std::nothrow) WrittenPiece);
  if (piece == nullptr) return PyErr_NoMemory();
  PyObject** texts = out_buffer.items<PyObject*>();
  for (std::size_t at = 0, written = 0; at < count; at += written) {
    if (PyErr_CheckSignals() != 0) return nullptr;
    const std::size_t some = std::min(count - at, piece_values);
    std::memcpy(piece->values, in_buffer.items<std::int64_t>() + at, some * sizeof(std::int64_t));
    {
      const WithoutLock unlocked;
      written = write_piece(layout_of(self), form, some, *piece);
    }
    if (written == 0) return raise(jwnls_code_text(JWNLS_KIND), JWNLS_KIND);
    for (std::size_t i = 0; i < written; ++i) {
      const std::int32_t begin = piece->offsets[i];
      const bool is_text = piece->codes[i] == JWNLS_OK;
      PyObject* text = is_text ? PyUnicode_DecodeUTF8(piece->bytes + begin,
                                                      piece->offsets[i + 1] - begin, nullptr)
                               : new_reference(Py_None).release();
      if (text == nullptr) return nullptr;
      PyObject* before = std::exchange(texts[at + i], text);
      Py_XDECREF(before);
    }
    std::memcpy(codes_buffer.items<std::uint8_t>() + at, piece->codes, written);
  }
  Py_RETURN_NONE;
}

}  // namespace jwnls::python
