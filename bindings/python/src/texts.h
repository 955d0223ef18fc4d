// The texts of a Python column, copied piece by piece into one block of UTF-8 that belongs to the
// call: they are read without Python's lock, whatever other threads do with the column meanwhile.

#ifndef JWNLS_BINDINGS_PYTHON_TEXTS_H_
#define JWNLS_BINDINGS_PYTHON_TEXTS_H_

#include <jwnls/jwnls.h>

#include <cstring>

#include "python_api.h"

namespace jwnls::python {

/// The longest text that is looked at, and what stands for one that is longer: a text of one byte
/// more, which is refused as any such text is.
inline constexpr std::size_t longest_text = 1024;

// Most texts have at most 16 bytes: two moves that may overlap, instead of a call.
inline void copy_text(char* out, const char* text, std::size_t length) noexcept {
  if (length > 16) {
    std::memcpy(out, text, length);
  } else if (length >= 8) {
    std::uint64_t head, tail;
    std::memcpy(&head, text, 8);
    std::memcpy(&tail, text + length - 8, 8);
    std::memcpy(out, &head, 8);
    std::memcpy(out + length - 8, &tail, 8);
  } else if (length >= 4) {
    std::uint32_t head, tail;
    std::memcpy(&head, text, 4);
    std::memcpy(&tail, text + length - 4, 4);
    std::memcpy(out, &head, 4);
    std::memcpy(out + length - 4, &tail, 4);
  } else {
    for (std::size_t i = 0; i < length; ++i) out[i] = text[i];
  }
}

/// A piece of a column. Texts that cannot be UTF-8 (half of a surrogate pair, a number among texts)
/// stand as a byte that no UTF-8 has, so that they are refused; values that are missing are empty.
class Piece {
 public:
  static constexpr std::size_t most_texts = 1 << 16;
  static constexpr std::size_t most_bytes = 1 << 20;

  /// Makes room for a column of `count` texts; false with MemoryError.
  [[nodiscard]] bool prepare(std::size_t count) noexcept;

  void clear() noexcept { count_ = used_ = 0; }
  [[nodiscard]] bool full() const noexcept {
    return count_ == room_ || used_ + longest_text + 1 > bytes_room_;
  }
  [[nodiscard]] std::size_t count() const noexcept { return count_; }
  [[nodiscard]] std::size_t bytes_used() const noexcept { return used_; }
  [[nodiscard]] jwnls_texts texts() const noexcept;
  [[nodiscard]] const char* text(std::size_t i) const noexcept { return &bytes_[begin(i)]; }
  [[nodiscard]] std::size_t length(std::size_t i) const noexcept { return begin(i + 1) - begin(i); }

  /// Each appends a text; the piece is not full.
  void add(const char* text, std::size_t length) noexcept {
    if (length > longest_text) [[unlikely]]
      return add_too_long();
    copy_text(&bytes_[used_], text, length);
    used_ += length;
    end_text();
  }
  void add_missing() noexcept { end_text(); }
  void add_unreadable() noexcept;
  void add_too_long() noexcept;
  /// UTF-32 units as NumPy holds them.
  void add_characters(const Py_UCS4* characters, std::size_t length) noexcept;
  /// A str, bytes, or one of the objects that mean "missing": None, a float's NaN, those of
  /// `missing` (a tuple). Never runs Python code.
  void add_object(PyObject* object, PyObject* missing) noexcept {
    if (object != nullptr && Py_IS_TYPE(object, &PyUnicode_Type)) [[likely]] {
      add_str(object);
    } else {
      add_other(object, missing);
    }
  }

 private:
  void add_str(PyObject* object) noexcept {
    Py_ssize_t length = PyUnicode_GetLength(object);
    if (length > static_cast<Py_ssize_t>(longest_text)) [[unlikely]]
      return add_too_long();
    const char* text = PyUnicode_AsUTF8AndSize(object, &length);
    if (text != nullptr) [[likely]]
      return add(text, static_cast<std::size_t>(length));
    PyErr_Clear();
    add_unreadable();
  }
  void add_other(PyObject* object, PyObject* missing) noexcept;
  [[nodiscard]] std::size_t begin(std::size_t i) const noexcept {
    return static_cast<std::size_t>(offsets_[i]);
  }
  void end_text() noexcept { offsets_[++count_] = static_cast<std::int32_t>(used_); }

  std::unique_ptr<char[]> bytes_;
  std::unique_ptr<std::int32_t[]> offsets_;
  std::size_t room_ = 0, bytes_room_ = 0, count_ = 0, used_ = 0;
};

/// A column: a list or tuple, or a contiguous buffer of objects ("O"), bytes ("s") or UTF-32 ("w").
class TextColumn {
 public:
  /// False with a Python exception. Borrows `values` and `missing`.
  [[nodiscard]] bool open(PyObject* values, PyObject* missing) noexcept;

  [[nodiscard]] std::size_t count() const noexcept { return count_; }

  /// Fills the piece with texts from number `from` on, under Python's lock; false with a Python
  /// exception (a list that became shorter meanwhile, a signal).
  [[nodiscard]] bool fill(Piece& piece, std::size_t from) noexcept;

 private:
  enum class Form { list, tuple, objects, bytes, characters };

  [[nodiscard]] bool open_buffer() noexcept;
  template <typename Object>
  void fill_with(Piece& piece, std::size_t from, Object object) const noexcept;
  void add_bytes(Piece& piece, std::size_t i) const noexcept;
  void add_characters(Piece& piece, std::size_t i) const noexcept;

  PyObject* values_ = nullptr;
  PyObject* missing_ = nullptr;
  Buffer buffer_;
  Form form_ = Form::list;
  std::size_t count_ = 0;
};

}  // namespace jwnls::python

#endif  // JWNLS_BINDINGS_PYTHON_TEXTS_H_
