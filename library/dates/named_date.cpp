#include "library/dates/named_date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "library/dates/ascii_word.h"
#include "library/dates/date_order.h"
#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// What a byte begins; of three bytes only characters that fold to themselves, as those of most
// scripts of South and East Asia do.
enum class Begins : std::uint8_t { other, blank, dot, comma, letter, letter_of_2, letter_of_3 };

constexpr std::array<Begins, 256> beginnings = [] {
  std::array<Begins, 256> table = {};
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char each = static_cast<char>(byte);
    table[byte] = is_blank(each)                                   ? Begins::blank
                  : each == '.'                                    ? Begins::dot
                  : each == ','                                    ? Begins::comma
                  : byte < 0x80 && is_letter(each)                 ? Begins::letter
                  : byte >= 0xC2 && byte < 0xE0                    ? Begins::letter_of_2
                  : byte == 0xE0 || (byte >= 0xE3 && byte <= 0xED) ? Begins::letter_of_3
                                                                   : Begins::other;
  }
  return table;
}();

class NamedDate {
  static constexpr std::ptrdiff_t longest_word = 64;  // bytes

 public:
  NamedDate(const DateLayout& layout, std::string_view text, const Numbers& numbers) noexcept
      : layout_(layout), text_(text), numbers_(numbers) {}

  bool read(DateRead& read) noexcept {
    if (text_.size() < 8) return false;  // for fold_ascii()
    if (take_text()) {
      DateOrder(layout_, numbers_, text_.size(), read).finish_named(found_);
    } else {
      if (!is_unknown_) return false;
      read.refusal = Refusal::unknown_word;
      read.place = at_;
    }
    // What looks like a number may be part of a name.
    if (read.refusal == Refusal::none || !layout_.names->has_numbered()) [[likely]]
      return true;
    read = {};
    return false;
  }

 private:
  bool take_text() noexcept {
    char before = 0;  // '0' for a number, 'a' for a word, '.' and ',' behind them, ' ' for a blank
    for (;;) {
      if (at_ == next_number_) {
        if (piece_ == 2) return before != ',';
        at_ = numbers_.number[piece_++].end;
        next_number_ = piece_ == 2 ? text_.size() : numbers_.number[1].begin;
        before = '0';
        continue;
      }
      const Begins begins = beginnings[static_cast<unsigned char>(text_[at_])];
      if (begins == Begins::blank) {
        ++at_;
        before = before == ',' ? ',' : ' ';
        continue;
      }
      if (begins == Begins::letter) {
        if (!take_word()) return false;
        before = 'a';
        continue;
      }
      switch (begins) {
        case Begins::dot:
          if (before != '0' && before != 'a') return false;
          ++at_;
          before = '.';
          break;
        case Begins::comma:
          if (before != '0' && before != 'a' && before != '.') return false;
          ++at_;
          before = ',';
          break;
        default:
          if (is_no_break_blank(text_.substr(at_))) {
            at_ += 2;
            before = before == ',' ? ',' : ' ';
            break;
          }
          if (const char* const word = text_.data() + at_; !take_long_word(word, word, 0)) {
            return false;
          }
          before = 'a';
      }
    }
  }

  // A run of letters, folded on the way, with the marks between two letters.
  bool take_word() noexcept {
    const char* const begin = text_.data() + at_;
    const char* const end = text_.data() + text_.size();
    std::uint64_t first = 0;
    const std::size_t letters = fold_ascii(begin, end, first);
    const char* at = begin + letters;
    if (letters < 8 && ends_word(at, end)) [[likely]] {
      return letters > 0 && take_name(letters, first, {begin, letters}, true);
    }
    return take_long_word(begin, at, first);
  }

  [[nodiscard]] bool begins_foreign_word(const char* at, const char* end) const noexcept {
    const auto lead = static_cast<unsigned char>(*at);
    if (beginnings[lead] != Begins::letter_of_2 || end - at < 2 || !follows(at[1])) return false;
    const std::uint16_t folded =
        folded_letters[(lead & 0x1FU) << 6 | (static_cast<unsigned char>(at[1]) & 0x3FU)];
    return folded >= 0x80 && folded < 0x800 &&
           !layout_.names->has_beginning(static_cast<char>(0xC0U | folded >> 6));
  }

  // Of which the first letters, up to `at`, are folded.
  bool take_long_word(const char* begin, const char* at, std::uint64_t first) noexcept {
    const char* const end = text_.data() + text_.size();
    const char* const limit = std::min<std::ptrdiff_t>(end - begin, longest_word) + begin;
    auto size = static_cast<std::size_t>(at - begin);
    bool is_one_word = true;  // in a script that writes blanks between words
    std::memcpy(folded_, &first, 8);
    // Letters of a script that none of the locale's names is written in.
    if (size == 0 && begins_foreign_word(begin, end)) {
      is_unknown_ = true;
      return false;
    }
    const auto begins = [&at] { return beginnings[static_cast<unsigned char>(*at)]; };
    while (at < limit) {
      if (begins() == Begins::letter) {
        std::uint64_t folded = 0;
        const std::size_t letters = fold_ascii(at, end, folded);
        std::memcpy(folded_ + size, &folded, 8);
        size += letters;
        at += letters;
        continue;
      }
      while (at < limit && begins() == Begins::letter_of_2) {
        if (end - at < 2 || !follows(at[1])) return false;
        const std::uint16_t folded =
            folded_letters[(static_cast<unsigned char>(at[0]) & 0x1FU) << 6 |
                           (static_cast<unsigned char>(at[1]) & 0x3FU)];
        if (folded >= 0x80 && folded < 0x800) {
          folded_[size++] = static_cast<char>(0xC0U | folded >> 6);
          folded_[size++] = static_cast<char>(0x80U | (folded & 0x3FU));
        } else if (folded >= 'a' && folded <= 'z') {
          folded_[size++] = static_cast<char>(folded);
        } else {
          return false;
        }
        at += 2;
      }
      while (at < limit && begins() == Begins::letter_of_3) {
        if (end - at < 3 || !follows(at[1]) || !follows(at[2])) return false;
        std::memcpy(folded_ + size, at, 3);
        size += 3;
        at += 3;
        is_one_word = false;
      }
      if (at >= limit || begins() >= Begins::letter) continue;
      if (at == begin || (*at != '\'' && ((*at != '.' && *at != '-') || end - at == 1 ||
                                          !is_letter(at[-1]) || !is_letter(at[1])))) {
        break;
      }
      folded_[size++] = *at++;
      is_one_word = false;
    }
    if (at >= limit && limit < end) return false;
    if (size == 0) return false;
    std::uint64_t key = 0;
    std::memcpy(&key, folded_, 8);
    const bool is_whole = is_one_word && (at == end || static_cast<unsigned char>(*at) < 0x80);
    return take_name(static_cast<std::size_t>(at - begin), key, {folded_, size}, is_whole);
  }

  // Of `size` bytes in the text. `key` is the first eight bytes of its folded form, of which no
  // more are looked at where it has them all.
  bool take_name(std::size_t size, std::uint64_t key, std::string_view folded,
                 bool is_whole) noexcept {
    const NameMeaning* const meaning = layout_.names->find(key, folded);
    if (meaning == nullptr) {
      is_unknown_ = is_whole && !layout_.is_ordinal(key, folded.size());
      return false;
    }
    // Names of several words are for the full way.
    if (meaning->begins_longer || meaning->two_months) return false;
    const std::size_t place = at_;
    at_ += size;
    if (!meaning->is_name()) return meaning->word;
    if (found_.count == 2) return false;
    found_.name[found_.count++] = {meaning, piece_, place};
    return true;
  }

  static bool follows(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
  }

  const DateLayout& layout_;
  const std::string_view text_;
  const Numbers& numbers_;
  FoundNames found_;
  std::size_t at_ = 0;
  std::size_t piece_ = 0;  // how many numbers stand before
  std::size_t next_number_ = numbers_.number[0].begin;
  bool is_unknown_ = false;  // the word at `at_` is none of the locale's
  char folded_[longest_word + 8];
};

}  // namespace

bool read_named_date(const DateLayout& layout, std::string_view text, const Numbers& numbers,
                     DateRead& read) noexcept {
  NamedDate date(layout, text, numbers);
  return date.read(read);
}

}  // namespace jwnls::library
