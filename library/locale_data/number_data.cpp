#include "library/locale_data/number_data.h"

#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::string_view currency_sign = "\u00A4";
constexpr std::size_t longest_name = 64;  // of what is no number
constexpr unsigned most_group_digits = 9;

// "3" or "3;2"; sizes beyond a digit are no locale's.
GroupSizes sizes_of(std::u16string_view pattern) {
  const auto size_at = [pattern](std::size_t index) {
    const bool is_size = index < pattern.size() && pattern[index] >= u'1' && pattern[index] <= u'9';
    return static_cast<std::uint8_t>(is_size ? pattern[index] - u'0' : 0);
  };
  const std::uint8_t primary = size_at(0);
  if (primary == 0) return {};
  const std::uint8_t secondary = size_at(2);
  return {primary, secondary != 0 ? secondary : primary};
}

std::size_t characters_of(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(first_character(text).bytes);
  return count;
}

// A zero or all ten digits, each of as many bytes as the others: lengths are counted by that.
bool are_digits(std::string_view digits) {
  const std::size_t count = characters_of(digits);
  if (count != 1 && count != 10) return false;
  const std::size_t bytes = first_character(digits).bytes;
  if (count == 1) {
    char nine[4];
    const std::size_t nine_bytes = encode_utf8(first_character(digits).value + 9, nine);
    const Utf8Character last = first_character({nine, nine_bytes});
    return last.valid && last.bytes == bytes;
  }
  for (; !digits.empty(); digits.remove_prefix(bytes)) {
    if (first_character(digits).bytes != bytes) return false;
  }
  return true;
}

bool read_symbol(SectionReader& in, std::string_view& symbol) {
  symbol = in.text(longest_symbol);
  return in.ok();
}

// One character, which scanners can look for.
bool read_character(SectionReader& in, std::string_view& symbol) {
  return read_symbol(in, symbol) && characters_of(symbol) == 1;
}

bool read_pair(SectionReader& in, AffixTexts& affixes) {
  affixes.prefix = in.text(longest_symbol);
  affixes.suffix = in.text(longest_symbol);
  std::size_t signs = 0;
  for (const std::string_view text : {affixes.prefix, affixes.suffix}) {
    for (std::size_t at = text.find(currency_sign); at != text.npos;
         at = text.find(currency_sign, at + 1)) {
      ++signs;
    }
  }
  return in.ok() && signs <= 1;
}

bool read_kind(SectionReader& in, KindData& kind) {
  const unsigned primary = in.byte();
  const unsigned secondary = in.byte();
  if (primary > most_group_digits || secondary > most_group_digits ||
      (primary == 0) != (secondary == 0)) {
    return false;
  }
  kind.sizes = {static_cast<std::uint8_t>(primary), static_cast<std::uint8_t>(secondary)};
  return read_affixes(in, kind.positive, kind.negative);
}

bool read_system(SectionReader& in, NumberSymbols& symbols) {
  symbols.digits = in.text(longest_symbol);
  if (!are_digits(symbols.digits)) return false;
  for (std::string_view* each :
       {&symbols.decimal, &symbols.group, &symbols.money_decimal, &symbols.money_group}) {
    if (!read_character(in, *each)) return false;
  }
  for (std::string_view* each :
       {&symbols.minus, &symbols.plus, &symbols.percent, &symbols.per_mille, &symbols.infinity}) {
    if (!read_symbol(in, *each)) return false;
  }
  symbols.nan = in.text(longest_name);
  for (KindData& kind : symbols.kinds) {
    if (!read_kind(in, kind)) return false;
  }
  return in.ok();
}

// By the fields of the record: the currency's symbol in front, the percent sign behind, one minus
// sign in front of everything.
void read_record(NumberData& data) {
  data.from_record = true;
  data.minimum_grouping = 1;
  NumberSymbols& symbols = data.latin = {};
  symbols.decimal = symbols.money_decimal = data.record_decimal.text();
  const std::string_view group = data.record_group.text();
  if (!group.empty()) symbols.group = symbols.money_group = group;
  for (KindData& kind : symbols.kinds) {
    kind.sizes = data.record_sizes;
    kind.negative.prefix = symbols.minus;
  }
  for (const int kind : {JW_LAYOUT_AMOUNT, JW_LAYOUT_ACCOUNTING}) {
    symbols.kinds[kind].positive.prefix = currency_sign;
    symbols.kinds[kind].negative.prefix = "-\u00A4";
  }
  KindData& percent = symbols.kinds[JW_LAYOUT_PERCENT];
  percent.positive.suffix = symbols.percent;
  percent.negative.suffix = symbols.percent;
  data.own = symbols;
}

}  // namespace

bool read_affixes(SectionReader& in, AffixTexts& positive, AffixTexts& negative) noexcept {
  return read_pair(in, positive) && read_pair(in, negative);
}

bool read_number_section(std::string_view section, NumberData& data) noexcept {
  SectionReader in(section);
  data.minimum_grouping = in.byte();
  const unsigned systems = in.byte();
  if (data.minimum_grouping > most_group_digits || systems < 1 || systems > 2) return false;
  if (!read_system(in, data.latin) || data.latin.digits != "0") return false;
  if (systems == 1) {
    data.own = data.latin;
  } else if (!read_system(in, data.own)) {
    return false;
  }
  return in.at_end();
}

RecordSymbol::RecordSymbol(char16_t unit) noexcept
    : size_(static_cast<std::uint8_t>(to_utf8({&unit, 1}, bytes_, sizeof bytes_))) {}

NumberData::NumberData(const LocaleRecord& record) noexcept
    : record_decimal(record.decimal_symbol != 0 ? record.decimal_symbol : u'.') {
  if (record.grouping_symbol != 0) record_sizes = sizes_of(grouping_of(record));
  if (record_sizes.primary != 0) record_group = RecordSymbol(record.grouping_symbol);
  triangle_minus = text_of(record.locale_name).substr(0, 2) == u"ja";
  if (!read_number_section(LayoutBlock(record).section(JW_LAYOUT_NUMBERS), *this)) {
    read_record(*this);
  }
}

}  // namespace jwnls::library
