// Patterns and names for records out of a fuzzer's input.

#ifndef JWNLS_FUZZ_PATTERN_INPUT_H_
#define JWNLS_FUZZ_PATTERN_INPUT_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"
#include "fuzz/input.h"

namespace jwnls::test {

class PatternInput : public Input {
 public:
  using Input::Input;

  /// Mostly units that mean something in a pattern.
  char16_t unit() {
    constexpr std::u16string_view likely =
        u"%%%%%%%%%%%%AaBbCcDdEeFfHhIiKkLlMmNnOoPpSsUuWwYyZzGgJjQqRrTtVvXx??##    ,.:/-x09%%";
    const std::uint8_t choice = byte();
    return choice < 0xF0 ? likely[choice % likely.size()] : number<char16_t>();
  }

  /// An entry of such units, its length right or not.
  void entry(TextEntry& text, std::uint8_t longest) {
    const std::uint8_t units = static_cast<std::uint8_t>(byte() % (longest + 1));
    for (std::uint8_t i = 0; i < units; ++i) text.units[i] = unit();
    text.length = length(units);
  }
};

}  // namespace jwnls::test

#endif  // JWNLS_FUZZ_PATTERN_INPUT_H_
