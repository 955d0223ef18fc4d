#include "client/conventions.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "client/utf8.h"

namespace jwnls::client {
namespace {

std::string text(const TextEntry& entry) { return to_utf8(text_of(entry)); }

template <std::size_t count>
std::array<std::string, count> texts(const TextEntry (&entries)[count]) {
  std::array<std::string, count> all;
  for (std::size_t i = 0; i < count; ++i) all[i] = text(entries[i]);
  return all;
}

std::string symbol(char16_t unit) {
  return unit == 0 ? std::string() : to_utf8(std::u16string_view(&unit, 1));
}

}  // namespace

int currency_decimals(const LocaleRecord& record) noexcept {
  constexpr std::int64_t usual = 2;
  constexpr std::int64_t most = 4;
  const std::int64_t decimals = record.currency_decimals;
  return static_cast<int>(decimals >= 0 && decimals <= most ? decimals : usual);
}

Conventions conventions_of(const LocaleRecord& record) {
  return {
      .full_weekdays = texts(record.full_weekdays),
      .short_weekdays = texts(record.short_weekdays),
      .full_months = texts(record.full_months),
      .short_months = texts(record.short_months),
      .full_quarters = texts(record.full_quarters),
      .short_quarters = texts(record.short_quarters),
      .before_noon = text(record.before_noon),
      .after_noon = text(record.after_noon),
      .date_patterns = texts(record.date_patterns),
      .time_pattern = text(record.time_pattern),
      .datetime_pattern = text(record.datetime_pattern),
      .time_only_pattern = text(record.style_0_pattern),
      .decimal_symbol = symbol(record.decimal_symbol),
      .grouping_symbol = symbol(record.grouping_symbol),
      .grouping = to_utf8(grouping_of(record)),
      .currency_symbol = to_utf8(currency_symbol_of(record)),
      .currency_code = text(record.currency_code),
      .currency_decimals = currency_decimals(record),
  };
}

}  // namespace jwnls::client
