#include "library/locale_data/currency_data.h"

#include <algorithm>

#include "library/locale_data/layout_block.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t code_length = 3;

// Calls visit(code, data) for the currencies of a section, up to what is none.
template <typename Visit>
void each_currency(std::string_view section, Visit visit) {
  SectionReader in(section);
  for (unsigned count = in.word(); count != 0; --count) {
    CurrencyData data;
    data.code = in.bytes(code_length);
    const unsigned flags = in.byte();
    const auto flag = [flags](unsigned bit) { return (flags >> bit & 1U) != 0; };
    data.symbol = {std::string(in.text(longest_currency_symbol)), flag(0), flag(1)};
    data.narrow = {std::string(in.text(longest_currency_symbol)), flag(2), flag(3)};
    data.decimals = static_cast<int>(flags >> 5);
    if (flag(4)) {
      data.decimal = in.text(longest_symbol);
      data.group = in.text(longest_symbol);
      if (!read_affixes(in, data.positive, data.negative)) return;
    }
    if (!in.ok()) return;
    visit(data);
  }
}

// By the record's own symbol, where it is this currency's. The no-break space behind a symbol that
// ends in a letter is the blank that stands beside digits.
void take_record_symbol(const LocaleRecord& record, CurrencyData& data) {
  char text[longest_currency_symbol];
  const std::size_t length = to_utf8(currency_symbol_of(record), text, sizeof text);
  if (length == 0 || length > sizeof text || data.code != own_currency(record)) return;
  data.symbol = {std::string(text, length), false, false};
  data.narrow = data.symbol;
  if (record.currency_decimals >= 0 && record.currency_decimals <= 4) {
    data.decimals = static_cast<int>(record.currency_decimals);
  }
}

}  // namespace

CurrencyData currency_data(const LocaleRecord& record, std::string_view code) {
  const LayoutBlock block(record);
  CurrencyData found;
  found.code = code;
  found.symbol.text = found.narrow.text = found.code;
  const auto take = [&](const CurrencyData& each) {
    if (each.code == code) found = each;
  };
  if (block.section(JW_LAYOUT_CURRENCIES).empty()) take_record_symbol(record, found);
  each_currency(block.section(JW_LAYOUT_COMMON_CURRENCIES), take);
  each_currency(block.section(JW_LAYOUT_CURRENCIES), take);
  return found;
}

std::vector<CurrencyData> all_currencies(const LocaleRecord& record) {
  const LayoutBlock block(record);
  std::vector<CurrencyData> all;
  each_currency(block.section(JW_LAYOUT_CURRENCIES),
                [&all](const CurrencyData& each) { all.push_back(each); });
  const std::size_t own = all.size();
  each_currency(block.section(JW_LAYOUT_COMMON_CURRENCIES), [&](const CurrencyData& each) {
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(own);
    if (std::none_of(all.begin(), end, [&](const CurrencyData& a) { return a.code == each.code; }))
      all.push_back(each);
  });
  return all;
}

std::string own_currency(const LocaleRecord& record) {
  std::string code;
  for (const char16_t unit : text_of(record.currency_code)) {
    if (unit >= u'A' && unit <= u'Z') code += static_cast<char>(unit);
  }
  return code.size() == code_length ? code : "XXX";
}

}  // namespace jwnls::library
