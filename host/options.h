// Options by name, and the store of option nodes.

#ifndef JWNLS_HOST_OPTIONS_H_
#define JWNLS_HOST_OPTIONS_H_

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>
#include <string_view>

#include "abi/host_tables.h"
#include "abi/status.h"

namespace jwnls::host {

/// Options that the embedder sets, and behind them the environment's variables of the same names,
/// but not in programs with raised privileges. Any thread. The environment is looked at anew each
/// time.
class Options {
 public:
  explicit Options(std::map<std::string, std::string> values);

  void set(std::string_view name, std::string_view value);
  [[nodiscard]] std::optional<std::string> text(const std::string& name) const;

  /// Reads an option as a signed 64-bit integer in decimal; blanks around it do not matter.
  /// ok; lookup_failed: no such option; invalid_number, integer_overflow: the option's text is no
  /// such number. `value` is written only with ok.
  [[nodiscard]] Status read(std::u16string_view name, std::int64_t& value) const noexcept;

 private:
  mutable std::shared_mutex mutex_;
  std::map<std::string, std::string, std::less<>> values_;
};

/// Named nodes. The host hangs nothing on them; they are there for their users to find.
class HostOptionStore final : public OptionStore {
 public:
  HostOptionStore();

 private:
  struct Node {
    std::u16string name;
  };

  void* find(std::u16string_view name) const noexcept;
  void* find_or_create(std::u16string_view name) noexcept;

  mutable std::mutex mutex_;
  std::map<std::u16string, Node, std::less<>> nodes_;  // whose elements never move
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OPTIONS_H_
