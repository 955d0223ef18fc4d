// Memory for plain values that grows and is used again: nothing is initialised, so that what is
// never used is never touched.

#ifndef JWNLS_TOOL_TABLES_GROWING_ARRAY_H_
#define JWNLS_TOOL_TABLES_GROWING_ARRAY_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace jwnls::tool {

template <typename Value>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<Value>);

 public:
  /// Makes room for `count` values and keeps the first `used` ones, as far as there are such.
  void reserve(std::size_t used, std::size_t count) {
    if (count <= capacity_) return;
    const std::size_t capacity = std::max(count, capacity_ * 2);
    auto values = std::make_unique_for_overwrite<Value[]>(capacity);
    std::copy_n(values_.get(), std::min(used, capacity_), values.get());
    values_ = std::move(values);
    capacity_ = capacity;
  }

  [[nodiscard]] Value* data() { return values_.get(); }
  [[nodiscard]] const Value* data() const { return values_.get(); }
  [[nodiscard]] std::size_t capacity() const { return capacity_; }

 private:
  std::unique_ptr<Value[]> values_;
  std::size_t capacity_ = 0;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_GROWING_ARRAY_H_
