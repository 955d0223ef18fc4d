// The quick way of looking up the words of a date.

#ifndef JWNLS_LIBRARY_DATES_QUICK_LOOK_UP_H_
#define JWNLS_LIBRARY_DATES_QUICK_LOOK_UP_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "library/dates/date_grammar.h"
#include "library/dates/date_layout.h"
#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"

namespace jwnls::library {

// Looks up a run of letters of a text as it is written, folding it on the way. It tells of runs
// that are a name or a word as a whole; all others are for the full way.
class QuickLookUp {
 public:
  explicit QuickLookUp(const DateLayout& layout) noexcept : layout_(layout) {}

  Word operator()(std::string_view rest) noexcept {
    folded_size_ = 0;
    std::memset(folded_, 0, 8);
    std::size_t at = 0;
    bool is_one_word = true;  // in a script that writes blanks between words
    while (at < rest.size() && folded_size_ + 4 <= sizeof folded_) {
      const char each = rest[at];
      if (static_cast<unsigned char>((each | 0x20) - 'a') < 26) {
        folded_[folded_size_++] = static_cast<char>(each | 0x20);
        ++at;
      } else if (is_letter(each)) {
        if (is_no_break_blank(rest.substr(at))) break;
        const std::size_t bytes = fold_letter(rest.substr(at));
        if (bytes == 0) return {};
        is_one_word = is_one_word && bytes == 2;
        at += bytes;
      } else if (at > 0 && end_of_run(rest.substr(0, at + 2), at) > at) {
        folded_[folded_size_++] = each;
        is_one_word = false;
        ++at;
      } else {
        break;
      }
    }
    if (at == 0 || folded_size_ + 4 > sizeof folded_) return {};
    const std::string_view folded(folded_, folded_size_);
    std::uint64_t key = 0;
    std::memcpy(&key, folded_, 8);
    const NameMeaning* const meaning = layout_.names->find(key, folded);
    // The full way knows names of several words, and names that a part of a run is.
    if (meaning != nullptr) return meaning->begins_longer ? Word{} : Word{at, folded, meaning};
    // Whether an ordinal may stand here is asked later.
    return is_one_word || layout_.is_ordinal(folded) ? Word{at, folded, nullptr} : Word{};
  }

  [[nodiscard]] static bool knows(std::string_view gap) noexcept {
    for (const char each : gap) {
      if (is_letter(each)) return false;
    }
    return true;
  }

 private:
  // Folds a character of two or three bytes and gives its bytes; 0: the full way has to.
  std::size_t fold_letter(std::string_view rest) noexcept {
    const auto lead = static_cast<unsigned char>(rest[0]);
    const auto follows = [rest](std::size_t i) {
      return i < rest.size() && (static_cast<unsigned char>(rest[i]) & 0xC0) == 0x80;
    };
    if (lead >= 0xC2 && lead < 0xE0 && follows(1)) {
      const std::uint16_t folded =
          folded_letters[(lead & 0x1FU) << 6 | (static_cast<unsigned char>(rest[1]) & 0x3FU)];
      if (folded == 0) return 2;
      if (folded < 0x80) {
        if (!is_letter(static_cast<char>(folded)) && folded != '\'') return 0;
        folded_[folded_size_++] = static_cast<char>(folded);
        return 2;
      }
      if (folded >= 0x800) return 0;
      folded_[folded_size_++] = static_cast<char>(0xC0U | folded >> 6);
      folded_[folded_size_++] = static_cast<char>(0x80U | (folded & 0x3FU));
      return 2;
    }
    // Of three bytes: the scripts of South Asia, and those of East Asia, whose letters have no
    // cases. What folds to something else among them is not found, which leaves it to the full way.
    const bool kept = lead == 0xE0 || (lead >= 0xE3 && lead <= 0xED);
    if (!kept || !follows(1) || !follows(2)) return 0;
    std::memcpy(folded_ + folded_size_, rest.data(), 3);
    folded_size_ += 3;
    return 3;
  }

  const DateLayout& layout_;
  char folded_[64];
  std::size_t folded_size_ = 0;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_QUICK_LOOK_UP_H_
