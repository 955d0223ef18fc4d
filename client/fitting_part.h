// How much of a text that is not read fits, found by trying: the services say yes or no.

#ifndef JWNLS_CLIENT_FITTING_PART_H_
#define JWNLS_CLIENT_FITTING_PART_H_

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace jwnls::client {

/// Ends of texts that are read: what may complete a text that breaks off.
class Endings {
 public:
  /// Adds every end of `text`, a text that is read as a whole.
  void add(std::u16string_view text);

  /// Ends with the unit that stands before them, in which a digit is every digit, and a letter in
  /// one case.
  [[nodiscard]] const std::set<std::pair<char16_t, std::u16string>>& all() const { return all_; }

 private:
  std::set<std::pair<char16_t, std::u16string>> all_;
};

/// The units of the longest beginning of `text` that can be completed to a text for which `reads`
/// is true, as far as the endings go.
[[nodiscard]] std::size_t fitting_part(std::u16string_view text, const Endings& endings,
                                       const std::function<bool(std::u16string_view)>& reads);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_FITTING_PART_H_
