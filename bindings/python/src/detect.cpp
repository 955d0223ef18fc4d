#include "detect.h"

#include <climits>
#include <string>
#include <vector>

#include "errors.h"
#include "texts.h"

namespace jwnls::python {

namespace {

struct CloseDetection {
  void operator()(jwnls_detection* detection) const noexcept { jwnls_detection_close(detection); }
};
using Detection = std::unique_ptr<jwnls_detection, CloseDetection>;

// A whole column in one block.
struct Block {
  std::vector<char> bytes;
  std::vector<std::int64_t> offsets = {0};

  void append(const Piece& piece) {
    const auto before = static_cast<std::int64_t>(bytes.size());
    const jwnls_texts texts = piece.texts();
    bytes.insert(bytes.end(), texts.bytes, texts.bytes + piece.bytes_used());
    for (std::size_t i = 1; i <= texts.count; ++i) offsets.push_back(before + texts.offsets[i]);
  }

  [[nodiscard]] jwnls_texts texts() const noexcept {
    jwnls_texts texts = {};
    texts.size = sizeof texts;
    texts.count = offsets.size() - 1;
    texts.bytes = bytes.data();
    texts.large_offsets = offsets.data();
    return texts;
  }
};

// (options, locales, read, two_ways, value)
PyObject* reading_object(const jwnls_detection* detection, int kind, std::size_t index) noexcept {
  jwnls_detected_reading found = {};
  found.size = sizeof found;
  const int code = jwnls_detected_reading_of(detection, kind, index, &found);
  if (code != JWNLS_OK) return raise(jwnls_code_text(code), code);
  const Reference locales(PyTuple_New(static_cast<Py_ssize_t>(found.locales)));
  if (locales == nullptr) return nullptr;
  for (std::size_t i = 0; i < found.locales; ++i) {
    PyObject* name = PyUnicode_FromString(jwnls_detected_locale(detection, kind, index, i));
    if (name == nullptr) return nullptr;
    PyTuple_SetItem(locales.get(), static_cast<Py_ssize_t>(i), name);
  }
  return Py_BuildValue("(sOnns)", found.options, locales.get(), static_cast<Py_ssize_t>(found.read),
                       static_cast<Py_ssize_t>(found.two_ways), found.value);
}

// (kind, verdict, values, read, dirty, first_dirty, others, first_other, witness, deciding, rival,
// rival_read, readings); a text that does not exist has the number of the column's count.
PyObject* kind_object(const jwnls_detection* detection, int kind) noexcept {
  jwnls_detected_kind found = {};
  found.size = sizeof found;
  if (jwnls_detected_kind_of(detection, kind, &found) != JWNLS_OK) Py_RETURN_NONE;
  const Reference readings(PyTuple_New(static_cast<Py_ssize_t>(found.readings)));
  if (readings == nullptr) return nullptr;
  for (std::size_t i = 0; i < found.readings; ++i) {
    PyObject* reading = reading_object(detection, kind, i);
    if (reading == nullptr) return nullptr;
    PyTuple_SetItem(readings.get(), static_cast<Py_ssize_t>(i), reading);
  }
  const auto number = [](std::size_t count) { return static_cast<Py_ssize_t>(count); };
  return Py_BuildValue("(sinnnnnnnnsnO)", jwnls_kind_name(kind), found.verdict,
                       number(found.values), number(found.read), number(found.dirty),
                       number(found.first_dirty), number(found.others), number(found.first_other),
                       number(found.witness), number(found.deciding), found.rival,
                       number(found.rival_read), readings.get());
}

PyObject* detection_object(const jwnls_detection* detection) noexcept {
  const Reference kinds(PyList_New(0));
  if (kinds == nullptr) return nullptr;
  for (int kind = JWNLS_NUMBER; kind <= JWNLS_PERIOD; ++kind) {
    const Reference found(kind_object(detection, kind));
    if (found == nullptr) return nullptr;
    if (found.get() != Py_None && PyList_Append(kinds.get(), found.get()) != 0) return nullptr;
  }
  const int best = jwnls_detection_kind(detection);
  return Py_BuildValue("(zO)", best == 0 ? nullptr : jwnls_kind_name(best), kinds.get());
}

}  // namespace

PyObject* detect(PyObject* /*module*/, PyObject* arguments) noexcept try {
  PyObject* values = nullptr;
  PyObject* missing = nullptr;
  const char* kinds = "";
  const char* locales = "";
  if (!PyArg_ParseTuple(arguments,
                        "Oss"
                        "O!",
                        &values, &kinds, &locales, &PyTuple_Type, &missing)) {
    return nullptr;
  }
  TextColumn column;
  Piece piece;
  if (!column.open(values, missing) || !piece.prepare(column.count())) return nullptr;
  Block block;
  for (std::size_t at = 0; at < column.count(); at += piece.count()) {
    if (!column.fill(piece, at)) return nullptr;
    block.append(piece);
  }
  jwnls_detection* opened = nullptr;
  jwnls_error error;
  int code = JWNLS_OK;
  {
    const WithoutLock unlocked;
    const jwnls_texts texts = block.texts();
    code = jwnls_detect(&texts, kinds, locales, &opened, &error);
  }
  if (code != JWNLS_OK) return raise(error.text, code, error.at);
  const Detection detection(opened);
  return detection_object(detection.get());
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

}  // namespace jwnls::python
