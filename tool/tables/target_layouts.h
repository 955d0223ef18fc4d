// The layouts that texts are written by: one, but of amounts one for each currency and, where a
// value has more decimals than its currency, one for each count: nothing is rounded unasked.

#ifndef JWNLS_TOOL_TABLES_TARGET_LAYOUTS_H_
#define JWNLS_TOOL_TABLES_TARGET_LAYOUTS_H_

#include <atomic>
#include <memory>
#include <mutex>
#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

class TargetLayouts {
 public:
  explicit TargetLayouts(const Layout& base);
  TargetLayouts(const TargetLayouts&) = delete;
  TargetLayouts& operator=(const TargetLayouts&) = delete;
  ~TargetLayouts();

  /// The layout that writes the decimal, an amount in `currency` ("": that of the layout); null
  /// where there is none. Any number of threads may ask; the first one to meet a currency opens it.
  [[nodiscard]] const jwnls_layout* of(std::string_view decimal,
                                       std::string_view currency) const noexcept;

  [[nodiscard]] const Layout& base() const { return base_; }

 private:
  struct Entry;

  [[nodiscard]] const Entry* find(std::string_view currency, int decimals) const noexcept;
  const Entry* add(std::string_view currency, int decimals) const;

  Layout base_;
  bool is_amount_;
  bool rounds_;  // the count of decimals was asked for
  // A list that only grows at its head. There are as many entries as a column has currencies.
  mutable std::atomic<const Entry*> first_ = nullptr;
  mutable std::mutex adding_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TARGET_LAYOUTS_H_
