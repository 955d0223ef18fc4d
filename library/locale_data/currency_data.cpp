#include "library/locale_data/currency_data.h"

#include <algorithm>

#include "library/locale_data/layout_block.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t code_length = 3;

// Calls visit(row) for the currencies of a section, up to what is none, and while it gives true.
template <typename Visit>
void each_currency(std::string_view section, Visit visit) {
  SectionReader in(section);
  for (unsigned count = in.word(); count != 0; --count) {
    CurrencyRow row;
    row.code = in.bytes(code_length);
    row.flags = in.byte();
    row.symbol = in.text(longest_currency_symbol);
    row.narrow = in.text(longest_currency_symbol);
    if ((row.flags & 1U << 4) != 0) {
      row.decimal = in.text(longest_symbol);
      row.group = in.text(longest_symbol);
      if (!read_affixes(in, row.positive, row.negative)) return;
    }
    if (!in.ok() || !visit(row)) return;
  }
}

CurrencyData data_of(const CurrencyRow& row) {
  const auto flag = [&row](unsigned bit) { return (row.flags >> bit & 1U) != 0; };
  CurrencyData data;
  data.code = row.code;
  data.symbol = {std::string(row.symbol), flag(0), flag(1)};
  data.narrow = {std::string(row.narrow), flag(2), flag(3)};
  data.decimals = row.decimals();
  data.decimal = row.decimal;
  data.group = row.group;
  data.positive = Affixes(row.positive);
  data.negative = Affixes(row.negative);
  return data;
}

// The row of a code, the last of several; null: none.
bool find_currency(std::string_view section, std::string_view code, CurrencyRow& found) {
  bool is_there = false;
  each_currency(section, [&](const CurrencyRow& row) {
    if (row.code == code) {
      found = row;
      is_there = true;
    }
    return true;
  });
  return is_there;
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
  if (block.section(JW_LAYOUT_CURRENCIES).empty()) take_record_symbol(record, found);
  CurrencyRow row;
  for (const int section : {JW_LAYOUT_CURRENCIES, JW_LAYOUT_COMMON_CURRENCIES}) {
    if (find_currency(block.section(section), code, row)) return data_of(row);
  }
  return found;
}

std::vector<CurrencyRow> all_currencies(const LocaleRecord& record) {
  const LayoutBlock block(record);
  std::vector<CurrencyRow> all;
  each_currency(block.section(JW_LAYOUT_CURRENCIES), [&all](const CurrencyRow& each) {
    all.push_back(each);
    return true;
  });
  const std::size_t own = all.size();
  each_currency(block.section(JW_LAYOUT_COMMON_CURRENCIES), [&](const CurrencyRow& each) {
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(own);
    const auto is_same = [&](const CurrencyRow& known) { return known.code == each.code; };
    if (std::none_of(all.begin(), end, is_same)) all.push_back(each);
    return true;
  });
  return all;
}

bool has_another_with_symbol(const LocaleRecord& record, std::string_view code,
                             std::string_view symbol) noexcept {
  const LayoutBlock block(record);
  const std::string_view own = block.section(JW_LAYOUT_CURRENCIES);
  bool is_there = false;
  const auto look = [&](const CurrencyRow& each) {
    is_there = each.code != code && each.symbol == symbol;
    return !is_there;
  };
  each_currency(own, look);
  if (is_there) return true;
  each_currency(block.section(JW_LAYOUT_COMMON_CURRENCIES), [&](const CurrencyRow& each) {
    CurrencyRow instead;  // of the locale's own section
    if (look(each)) return true;
    is_there = !find_currency(own, each.code, instead);
    return !is_there;
  });
  return is_there;
}

std::string own_currency(const LocaleRecord& record) {
  std::string code;
  for (const char16_t unit : text_of(record.currency_code)) {
    if (unit >= u'A' && unit <= u'Z') code += static_cast<char>(unit);
  }
  return code.size() == code_length ? code : "XXX";
}

}  // namespace jwnls::library
