// Columns of texts in. Python's lock is held while a piece of texts is copied, not while it is
// read.

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <vector>

#include "errors.h"
#include "layout.h"
#include "texts.h"

namespace jwnls::python {

namespace {

// NumPy's "not a time", in days as in microseconds.
constexpr std::int64_t not_a_time = INT64_MIN;

jwnls_column_facts no_facts() noexcept {
  jwnls_column_facts facts = {};
  facts.size = sizeof facts;
  return facts;
}

PyObject* facts_object(const jwnls_column_facts& facts) noexcept {
  const auto number = [](std::size_t count) { return static_cast<Py_ssize_t>(count); };
  return Py_BuildValue("(nnnnnnn)", number(facts.read), number(facts.refused),
                       number(facts.missing), number(facts.two_ways), number(facts.deciding),
                       number(facts.first_refused), number(facts.first_two_ways));
}

// Reads a piece into values of 64 bits; those that are no time get not_a_time.
void read_piece(const jwnls_layout* layout, const jwnls_texts& texts, std::int64_t* values,
                std::int32_t* days, std::uint8_t* codes, jwnls_column_facts* facts) noexcept {
  switch (jwnls_layout_kind(layout)) {
    case JWNLS_NUMBER:
    case JWNLS_AMOUNT:
    case JWNLS_PERCENT:
      jwnls_read_numbers(layout, &texts, reinterpret_cast<double*>(values), codes, facts);
      return;
    case JWNLS_INTEGER:
      jwnls_read_integers(layout, &texts, values, codes, facts);
      return;
    case JWNLS_DATE:
    case JWNLS_PERIOD:
      jwnls_read_dates(layout, &texts, days, codes, facts);
      for (std::size_t i = 0; i < texts.count; ++i) {
        values[i] = codes[i] == JWNLS_OK ? days[i] : not_a_time;
      }
      return;
    case JWNLS_TIME:
      jwnls_read_times(layout, &texts, values, codes, facts);
      break;
    default:
      jwnls_read_datetimes(layout, &texts, values, codes, facts);
  }
  for (std::size_t i = 0; i < texts.count; ++i) {
    if (codes[i] != JWNLS_OK) values[i] = not_a_time;
  }
}

struct ExactValue {
  std::size_t end;  // in the block of their texts
  char currency[4];
  std::uint8_t code;
};

// Reads a piece exactly: the decimals one behind the other in `block`.
void read_exactly(const jwnls_layout* layout, const Piece& piece, std::vector<char>& block,
                  std::vector<ExactValue>& values) {
  block.clear();
  values.clear();
  for (std::size_t i = 0; i < piece.count(); ++i) {
    ExactValue value = {};
    const std::size_t begin = block.size();
    constexpr std::size_t room = 2 * longest_text + 64;
    block.resize(begin + room);
    std::size_t length = 0;
    value.code = static_cast<std::uint8_t>(jwnls_read_decimal(layout, piece.text(i),
                                                              piece.length(i), &block[begin], room,
                                                              &length, value.currency, nullptr));
    value.end = begin + (value.code == JWNLS_OK ? length : 0);
    block.resize(value.end);
    values.push_back(value);
  }
}

// (decimal, currency) by calling `make`; a new reference to None where nothing was read.
PyObject* exact_object(PyObject* make, const char* text, std::size_t length,
                       const ExactValue& value) noexcept {
  if (value.code != JWNLS_OK) return new_reference(Py_None).release();
  return PyObject_CallFunction(make, "s#s", text, static_cast<Py_ssize_t>(length), value.currency);
}

}  // namespace

// _read_column(values, out, codes, missing): `out` is a buffer of 64-bit items, `codes` of bytes.
PyObject* read_column(PyObject* self, PyObject* arguments) noexcept {
  PyObject* values = nullptr;
  PyObject* out = nullptr;
  PyObject* codes = nullptr;
  PyObject* missing = nullptr;
  if (!PyArg_ParseTuple(arguments, "OOOO!", &values, &out, &codes, &PyTuple_Type, &missing)) {
    return nullptr;
  }
  const jwnls_layout* layout = layout_of(self);
  TextColumn column;
  Buffer out_buffer, codes_buffer;
  Piece piece;
  if (!column.open(values, missing) || !out_buffer.open(out, true, column.count(), 8) ||
      !codes_buffer.open(codes, true, column.count(), 1) || !piece.prepare(column.count())) {
    return nullptr;
  }
  const std::unique_ptr<std::int32_t[]> days(
      new (std::nothrow) std::int32_t[std::min(column.count(), Piece::most_texts) + 1]);
  if (days == nullptr) return PyErr_NoMemory();
  jwnls_column_facts facts = no_facts();
  for (std::size_t at = 0; at < column.count(); at += piece.count()) {
    if (!column.fill(piece, at)) return nullptr;
    const WithoutLock unlocked;
    read_piece(layout, piece.texts(), out_buffer.items<std::int64_t>() + at, days.get(),
               codes_buffer.items<std::uint8_t>() + at, &facts);
  }
  return facts_object(facts);
}

// _read_decimals(values, out, codes, missing, make): `out` is a buffer of objects, which get what
// make(decimal, currency) gives, None where nothing was read; `codes` is one of bytes.
PyObject* read_decimals(PyObject* self, PyObject* arguments) noexcept try {
  PyObject* values = nullptr;
  PyObject* out = nullptr;
  PyObject* codes = nullptr;
  PyObject* missing = nullptr;
  PyObject* make = nullptr;
  if (!PyArg_ParseTuple(arguments, "OOOO!O", &values, &out, &codes, &PyTuple_Type, &missing,
                        &make)) {
    return nullptr;
  }
  TextColumn column;
  Buffer out_buffer, codes_buffer;
  Piece piece;
  if (!column.open(values, missing) ||
      !out_buffer.open(out, true, column.count(), sizeof(PyObject*)) ||
      !codes_buffer.open(codes, true, column.count(), 1) || !piece.prepare(column.count())) {
    return nullptr;
  }
  PyObject** objects = out_buffer.items<PyObject*>();
  std::vector<char> block;
  std::vector<ExactValue> exact;
  for (std::size_t at = 0; at < column.count(); at += piece.count()) {
    if (!column.fill(piece, at)) return nullptr;
    {
      const WithoutLock unlocked;
      read_exactly(layout_of(self), piece, block, exact);
    }
    std::size_t begin = 0;
    for (std::size_t i = 0; i < exact.size(); ++i) {
      PyObject* value = exact_object(make, block.data() + begin, exact[i].end - begin, exact[i]);
      if (value == nullptr) return nullptr;
      PyObject* before = std::exchange(objects[at + i], value);
      Py_XDECREF(before);
      codes_buffer.items<std::uint8_t>()[at + i] = exact[i].code;
      begin = exact[i].end;
    }
  }
  Py_RETURN_NONE;
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

}  // namespace jwnls::python
