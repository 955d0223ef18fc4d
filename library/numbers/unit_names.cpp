#include "library/numbers/unit_names.h"

#include <algorithm>

#include "library/numbers/characters.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr bool is_within(char32_t c, char32_t first, char32_t last) {
  return c >= first && c <= last;
}

// Capital letters become small ones; Latin, Greek, Cyrillic and Armenian, as symbols have no
// others.
char32_t small_letter(char32_t c) {
  if (is_within(c, U'A', U'Z') || (is_within(c, 0xC0, 0xDE) && c != 0xD7)) return c + 32;
  if (c == 0x130) return U'i';
  if (c == 0x178) return 0xFF;
  if (is_within(c, 0x139, 0x148) || is_within(c, 0x179, 0x17E)) return c + c % 2;
  if (is_within(c, 0x100, 0x177) || is_within(c, 0x460, 0x52F) || is_within(c, 0x1E00, 0x1EFF)) {
    return c | 1U;
  }
  if (is_within(c, 0x391, 0x3A9) || is_within(c, 0x410, 0x42F)) return c + 32;
  if (is_within(c, 0x400, 0x40F)) return c + 80;
  return is_within(c, 0x531, 0x556) ? c + 48 : c;
}

char32_t folded(char32_t c) {
  switch (c) {
    case 0xFFE5:
      return 0xA5;
    case 0xFFE1:
      return 0xA3;
    case 0xFFE6:
      return 0x20A9;
    case 0xFF04:
      return U'$';
    default:
      return is_blank(c) ? U' ' : small_letter(c);
  }
}

bool is_letter(char32_t c) {
  if (c < 0x80) return is_within(c, U'a', U'z') || is_within(c, U'A', U'Z');
  return c >= 0xC0 && digit_of(c).zero == 0 && !is_blank(c) && !is_mark(c) &&
         separator_of(c) == Separator::none && sign_of(c, true) == '\0' &&
         !is_within(c, 0x2010, 0x2BFF) && !is_within(c, 0x3000, 0x303F) && c < 0xFE00;
}

UnitName name_of(std::string_view spelling, std::string_view code, int decimals) {
  UnitName name;
  for (; !spelling.empty(); spelling.remove_prefix(first_character(spelling).bytes)) {
    const char32_t c = first_character(spelling).value;
    if (!is_mark(c)) name.text += folded(c);
  }
  name.dotted = name.text.size() > 1 && name.text.back() == U'.';
  if (name.dotted) name.text.pop_back();
  const auto is_folded = [](char32_t c) { return folded(c) == c; };
  if (std::all_of(name.text.begin(), name.text.end(), is_folded)) {
    char bytes[4];
    for (const char32_t c : name.text) name.bytes.append(bytes, encode_utf8(c, bytes));
  }
  name.code = code;
  name.decimals = decimals;
  return name;
}

char32_t character_at(std::string_view text, std::size_t at) {
  return at < text.size() ? first_character(text.substr(at)).value : 0;
}

// How many bytes the name takes at the beginning of a text; 0: it does not stand there.
std::size_t bytes_of(const UnitName& name, std::string_view text, char32_t decimal) {
  std::size_t at = 0;
  const bool stands_there = !name.bytes.empty() && text.starts_with(name.bytes);
  if (stands_there) at = name.bytes.size();
  for (const char32_t wanted :
       stands_there ? std::u32string_view() : std::u32string_view(name.text)) {
    Utf8Character next = {0, 0, true};
    do {
      at += next.bytes;
      if (at >= text.size()) return 0;
      next = first_character(text.substr(at));
    } while (is_mark(next.value));
    if (folded(next.value) != wanted) return 0;
    at += next.bytes;
  }
  const bool ends_in_letter = is_letter(name.text.back());
  if (character_at(text, at) == U'.' && (name.dotted || ends_in_letter)) {
    // "Rs.50": of the unit, or of the number?
    const bool before_digit = digit_of(character_at(text, at + 1)).zero != 0;
    if (!before_digit || name.dotted || decimal != U'.') return at + 1;
    return 0;
  }
  return ends_in_letter && is_letter(character_at(text, at)) ? 0 : at;
}

}  // namespace

std::vector<UnitName> unit_names(const CurrencyData& own, const Options& options,
                                 const LocaleRecord& record) {
  std::vector<UnitName> names;
  const auto add = [&names](std::string_view spelling, std::string_view code, int decimals) {
    UnitName name = name_of(spelling, code, decimals);
    if (!name.text.empty()) names.push_back(std::move(name));
  };
  add(own.code, own.code, own.decimals);
  add(own.symbol.text, own.code, own.decimals);
  // "$" may be the narrow symbol of the layout's currency, and the symbol of another.
  if (options.symbol == symbol_narrow ||
      !has_another_with_symbol(record, own.code, own.narrow.text)) {
    add(own.narrow.text, own.code, own.decimals);
  }
  if (options.currency == "any") {
    for (const CurrencyRow& each : all_currencies(record)) {
      if (each.code == own.code) continue;
      add(each.code, each.code, each.decimals());
      add(each.symbol, each.code, each.decimals());
    }
  }
  std::stable_sort(names.begin(), names.end(), [](const UnitName& a, const UnitName& b) {
    return a.text.size() > b.text.size();
  });
  return names;
}

namespace {

// Adds the first bytes of all that folded() makes a character of: by scripts, and so some more.
void add_leads(char32_t small, ByteSet& set) noexcept {
  char bytes[4];
  encode_utf8(small, bytes);
  set.add(bytes[0]);
  if (small == U' ') set.add_all("\t\xC2\xE2\xE3");
  if (small == U'$' || small == 0xA3 || small == 0xA5 || small == 0x20A9) set.add('\xEF');
  if (is_within(small, U'a', U'z')) set.add(static_cast<char>(small - 32));
  if (small == U'i' || is_within(small, 0xC0, 0x1FFF)) {
    set.add_range(0xC3, 0xD6);
    set.add('\xE1');
  }
}

}  // namespace

UnitBytes unit_bytes(const std::vector<UnitName>& names) noexcept {
  UnitBytes bytes;
  for (const UnitName& name : names) {
    for (const char32_t each : name.text) add_leads(each, bytes.all);
    add_leads(name.text.front(), bytes.begins);
  }
  return bytes;
}

const UnitName* match_unit(const std::vector<UnitName>& names, std::string_view text,
                           char32_t decimal, std::size_t& bytes) noexcept {
  for (const UnitName& name : names) {
    bytes = bytes_of(name, text, decimal);
    if (bytes != 0) return &name;
  }
  return nullptr;
}

}  // namespace jwnls::library
