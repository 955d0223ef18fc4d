#include "client/text_input.h"

#include <algorithm>
#include <iterator>

#include "client/utf8.h"

namespace jwnls::client {
namespace {

// The zeros of the scripts' digits, up to U+FFFF; 1 to 9 follow each.
constexpr char16_t zeros[] = {
    0x0660, 0x06F0, 0x07C0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0BE6, 0x0C66, 0x0CE6, 0x0D66,
    0x0DE6, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x1090, 0x17E0, 0x1810, 0x1946, 0x19D0, 0x1A80, 0x1A90,
    0x1B50, 0x1BB0, 0x1C40, 0x1C50, 0xA620, 0xA8D0, 0xA900, 0xA9D0, 0xA9F0, 0xAA50, 0xABF0, 0xFF10};

char16_t digit_meaning(char16_t unit) {
  const auto* const next = std::upper_bound(std::begin(zeros), std::end(zeros), unit);
  if (next == std::begin(zeros) || unit - next[-1] > 9) return unit;
  return static_cast<char16_t>(u'0' + (unit - next[-1]));
}

bool is_direction_mark(char16_t unit) {
  return unit == 0x061C || unit == 0x200E || unit == 0x200F || (unit >= 0x202A && unit <= 0x202E) ||
         (unit >= 0x2066 && unit <= 0x2069);
}

bool is_other_blank(char16_t unit) {
  return unit == u'\t' || unit == 0x00A0 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x202F ||
         unit == 0x205F || unit == 0x3000;
}

}  // namespace

std::optional<char16_t> meaning_in_date(char16_t unit) {
  if (is_direction_mark(unit)) return std::nullopt;
  return is_other_blank(unit) ? u' ' : digit_meaning(unit);
}

std::optional<char16_t> meaning_in_number(char16_t unit, char16_t decimal_symbol,
                                          char16_t grouping_symbol) {
  constexpr char16_t no_break_space = 0x00A0;
  constexpr char16_t minus_sign = 0x2212;
  constexpr char16_t arabic_decimal = 0x066B;
  constexpr char16_t arabic_grouping = 0x066C;
  constexpr char16_t right_quote = 0x2019;
  if (is_direction_mark(unit)) return std::nullopt;
  if (unit == grouping_symbol || unit == decimal_symbol) return unit;
  if (unit == minus_sign) return u'-';
  if (unit == arabic_decimal) return decimal_symbol;
  if (unit == arabic_grouping) return grouping_symbol;
  if (unit == u'\'' && grouping_symbol == right_quote) return right_quote;
  if (!is_other_blank(unit)) return digit_meaning(unit);
  const bool fixed_width = unit == 0x2007 || unit == 0x2009 || unit == 0x202F;
  return fixed_width && grouping_symbol == no_break_space ? no_break_space : u' ';
}

std::optional<TextInput> TextInput::of(std::string_view text) {
  auto units = to_utf16(text);
  if (!units) return std::nullopt;
  TextInput input;
  input.units_ = *std::move(units);
  return input;
}

std::size_t TextInput::bytes_of(std::size_t count) const {
  const bool changed = !original_.empty();
  const std::u16string& text = changed ? original_ : units_;
  if (changed) count = count < origin_.size() ? origin_[count] : original_.size();
  count = std::min(count, text.size());
  const bool inside_pair = count > 0 && count < text.size() && (text[count] & 0xFC00) == 0xDC00;
  return to_utf8(std::u16string_view(text).substr(0, inside_pair ? count - 1 : count)).size();
}

}  // namespace jwnls::client
