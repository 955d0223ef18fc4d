#include "library/dates/named_date.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "library/dates/date_order.h"
#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// What a byte begins; of three bytes only characters that fold to themselves, as those of most
// scripts of South and East Asia do.
enum class Begins : std::uint8_t {
  other,
  digit,
  letter,
  letter_of_2,
  letter_of_3,
  blank,
  dot,
  comma
};

constexpr std::array<Begins, 256> beginnings = [] {
  std::array<Begins, 256> table = {};
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char each = static_cast<char>(byte);
    table[byte] = is_digit(each)                                   ? Begins::digit
                  : is_blank(each)                                 ? Begins::blank
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
 public:
  NamedDate(const DateLayout& layout, std::string_view text) noexcept
      : layout_(layout), text_(text) {}

  bool read(DateRead& read) noexcept {
    if (text_.size() < 8) return false;
    char before = 0;  // '0' for a number, 'a' for a word, '.' and ',' behind them, ' ' for a blank
    while (at_ < text_.size()) {
      switch (beginning()) {
        case Begins::digit:
          if (!take_number()) return false;
          before = '0';
          break;
        case Begins::blank:
          ++at_;
          before = before == ',' ? ',' : ' ';
          break;
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
          if (!take_word()) return false;
          before = 'a';
      }
    }
    if (before == ',' || numbers_.count != 2 || found_.count == 0) return false;
    DateOrder(layout_, numbers_, text_.size(), read).finish_named(found_);
    if (read.refusal == Refusal::none) return true;
    read = {};
    return false;
  }

 private:
  [[nodiscard]] Begins beginning() const noexcept {
    return beginnings[static_cast<unsigned char>(text_[at_])];
  }

  bool take_number() noexcept {
    // Two numbers and no word yet: nearly always the third is the next.
    if (numbers_.count == 2 || (numbers_.count == 1 && !has_words_)) return false;
    Numbers::Number& number = numbers_.number[numbers_.count++];
    number = {0, at_, at_};
    do {
      number.value = number.value * 10 + (text_[at_++] - '0');
    } while (at_ < text_.size() && is_digit(text_[at_]) && at_ - number.begin < 5);
    number.end = at_;
    return number.digits() < 5;
  }

  // A run of letters, folded on the way, with the marks between two letters.
  bool take_word() noexcept {
    const char* const begin = text_.data() + at_;
    const char* const end = text_.data() + text_.size();
    const char* at = begin;
    std::size_t size = 0;
    std::memset(folded_, 0, 8);
    while (at < end) {
      if (size + 8 > sizeof folded_) return false;
      const Begins begins = beginnings[static_cast<unsigned char>(*at)];
      if (begins == Begins::letter) {
        const std::size_t letters = fold_ascii(at, end, folded_ + size);
        size += letters;
        at += letters;
      } else if (begins == Begins::letter_of_2) {
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
      } else if (begins == Begins::letter_of_3) {
        if (end - at < 3 || !follows(at[1]) || !follows(at[2])) return false;
        std::memcpy(folded_ + size, at, 3);
        size += 3;
        at += 3;
      } else if (at > begin && (*at == '\'' || ((*at == '.' || *at == '-') && end - at > 1 &&
                                                is_letter(at[-1]) && is_letter(at[1])))) {
        folded_[size++] = *at++;
      } else {
        break;
      }
    }
    if (size == 0) return false;
    const auto place = at_;
    at_ += static_cast<std::size_t>(at - begin);
    std::uint64_t key;
    std::memcpy(&key, folded_, 8);
    const NameMeaning* const meaning = layout_.names->find(key, {folded_, size});
    // Names of several words are for the full way.
    if (meaning == nullptr || meaning->begins_longer || meaning->two_months) return false;
    has_words_ = true;
    if (!meaning->is_name()) return meaning->word;
    if (found_.count == 2) return false;
    found_.name[found_.count++] = {meaning, numbers_.count, place};
    return true;
  }

  static bool follows(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
  }

  // Folds up to eight ASCII letters at once, of a text that has eight bytes at least, and gives how
  // many there are. Eight bytes are written, zeros behind the letters.
  [[nodiscard]] std::size_t fold_ascii(const char* at, const char* end, char* out) const noexcept {
    std::uint64_t bytes;
    if (end - at >= 8) {
      std::memcpy(&bytes, at, 8);
    } else {
      std::memcpy(&bytes, end - 8, 8);
      bytes >>= 8 * (8 - (end - at));
    }
    constexpr std::uint64_t each = 0x0101010101010101;
    const std::uint64_t lower = bytes | 0x20 * each;
    const std::uint64_t seven = lower & 0x7F * each;
    const std::uint64_t letters =
        (seven + (0x80 - 'a') * each) & ~(seven + (0x7F - 'z') * each) & ~bytes & 0x80 * each;
    const std::uint64_t others = letters ^ 0x80 * each;
    const int count = others == 0 ? 8 : std::countr_zero(others) / 8;
    const std::uint64_t folded = count == 8 ? lower : lower & ((std::uint64_t{1} << 8 * count) - 1);
    std::memcpy(out, &folded, 8);
    return static_cast<std::size_t>(count);
  }

  const DateLayout& layout_;
  const std::string_view text_;
  std::size_t at_ = 0;
  Numbers numbers_;
  FoundNames found_;
  bool has_words_ = false;
  char folded_[64];
};

}  // namespace

bool read_named_date(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  NamedDate date(layout, text);
  return date.read(read);
}

}  // namespace jwnls::library
