// Layout data from anybody's database: nothing of it is used that is not what it must be.

#include "library/locale_data/layout_block.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "library/dates/date_layout.h"
#include "library/layouts/layout.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/date_data.h"
#include "library/locale_data/number_data.h"
#include "library/moments/time_layout.h"
#include "library/texts/failure.h"
#include "tests/library/opened_layout.h"
#include "tests/support/seed.h"

namespace {

using namespace jwnls::library;
using jwnls::LocaleRecord;

std::unique_ptr<LocaleRecord> record_of(const char* locale) {
  const auto layout = jwnls::test::open_layout(locale, JWNLS_NUMBER);
  return std::make_unique<LocaleRecord>(*layout->locale->record);
}

// What layouts do with a record: nothing is read outside, nothing is longer than it may be.
void use(const LocaleRecord& record) {
  const NumberData data(record);
  const CurrencyData euro = currency_data(record, "EUR");
  EXPECT_LE(euro.symbol.text.size(), longest_currency_symbol);
  Options options;
  options.plus = 1;
  for (const int kind : {JWNLS_NUMBER, JWNLS_AMOUNT, JWNLS_PERCENT}) {
    const CurrencyData* const unit = kind == JWNLS_AMOUNT ? &euro : nullptr;
    const NumberStyle style = number_style(data, kind, options, unit, nullptr);
    const NumberSyntax syntax = number_syntax(data, kind, options, unit, record, style);
    EXPECT_NE(style.digits[0].byte_count, 0);
    EXPECT_NE(style.decimal.byte_count, 0);
    EXPECT_NE(style.prefix[0].byte_count + style.suffix[0].byte_count, 0);  // the plus at least
    EXPECT_LE(syntax.sizes[0].primary, 9);
  }
}

// A block with one to four changed bytes in each of many rounds, in heads and sections.
TEST(LayoutBlock, DamagedBlocksAreUsedSafely) {
  std::mt19937_64 random(jwnls::test::test_seed(14));
  for (const char* locale : {"de_DE", "fa_IR", "kea_CV", "brx_IN"}) {
    const auto good = record_of(locale);
    const std::size_t size = good->area_9[6] + 256U * good->area_9[7];
    ASSERT_EQ(LayoutBlock(*good).section(JW_LAYOUT_NUMBERS).empty(), false);
    LocaleRecord record = *good;
    for (int i = 0; i < 3'000; ++i) {
      std::memcpy(record.area_9, good->area_9, size);
      const bool in_head = random() % 2 == 0;
      for (std::size_t changes = 1 + random() % 4; changes != 0; --changes) {
        record.area_9[random() % (in_head ? 200 : size)] = static_cast<std::uint8_t>(random());
      }
      const LayoutBlock block(record);
      for (int which = 0; which < jw_layout_sections; ++which) {
        const std::string_view section = block.section(which);
        if (section.empty()) continue;
        const auto* const first = reinterpret_cast<const std::uint8_t*>(section.data());
        ASSERT_GE(first, record.area_9 + JW_LAYOUT_DATA_HEAD);
        ASSERT_LE(first + section.size(), record.area_9 + sizeof record.area_9);
      }
      if (i % 10 == 0) use(record);
    }
  }
}

// A section that ends anywhere, in memory of its own.
TEST(LayoutBlock, CutSectionsAreNone) {
  const auto record = record_of("fa_IR");
  const std::string_view section = LayoutBlock(*record).section(JW_LAYOUT_NUMBERS);
  for (std::size_t length = 0; length < section.size(); ++length) {
    const std::string cut(section.substr(0, length));
    NumberData data;
    EXPECT_FALSE(read_number_section(std::string(cut), data)) << length;
  }
  NumberData data;
  EXPECT_TRUE(read_number_section(section, data));
}

// Another maker's database: the record's fields are what there is.
TEST(LayoutBlock, WithoutABlockTheRecordCounts) {
  const auto record = record_of("de_DE");
  record->area_9[0] = 0;
  const NumberData data(*record);
  EXPECT_TRUE(data.from_record);
  EXPECT_EQ(data.latin.decimal, ",");
  EXPECT_EQ(data.latin.money_group, ".");
  EXPECT_EQ(data.latin.kinds[JW_LAYOUT_AMOUNT].negative.prefix, "-\u00A4");
  EXPECT_EQ(data.latin.kinds[JW_LAYOUT_PERCENT].positive.suffix, "%");
  EXPECT_EQ(currency_data(*record, "EUR").symbol.text, "\u20AC");
  EXPECT_EQ(currency_data(*record, "USD").symbol.text, "USD");
  use(*record);
}

// Somebody's patterns: weekdays and signs, names whose text is cut, full dates that nobody can
// read.
TEST(LayoutBlock, StrangePatternsAreReadTheSlowWay) {
  const auto layout = jwnls::test::open_layout("en_US", JWNLS_DATE, "style=full");
  const auto record = std::make_unique<LocaleRecord>(*layout->locale->record);
  Locale locale = *layout->locale;
  locale.record = record.get();
  EXPECT_TRUE(time_layout_of(*layout->locale).is_quick);
  const auto put = [](auto& entry, std::u16string_view text) {
    entry.length = static_cast<std::int64_t>(text.copy(entry.units, std::size(entry.units)));
  };
  put(record->after_noon, u"P\xD800");  // the service has another
  put(record->datetime_pattern, u"%A %% %H:%M");
  const TimeLayout& times = time_layout_of(locale);
  EXPECT_FALSE(times.is_quick);
  EXPECT_EQ(times.halves[1], "P\uFFFD");

  Options options;
  options.style = style_full;
  EXPECT_NO_THROW((void)make_date_layout(locale, JWNLS_DATE, options));
  const std::string_view full = read_date_pattern_data(*record)->full;
  auto* const bytes =
      record->area_9 + (reinterpret_cast<const std::uint8_t*>(full.data()) - record->area_9);
  bytes[1] = 'Q';
  EXPECT_THROW((void)make_date_layout(locale, JWNLS_DATE, options), Failure);
  const std::string_view names = LayoutBlock(*record).section(JW_LAYOUT_DATE_NAMES);
  std::uint8_t* const first =
      record->area_9 + (reinterpret_cast<const std::uint8_t*>(names.data()) - record->area_9) + 4;
  ASSERT_TRUE(read_date_name_data(*record));
  // A name of nothing, one that begins inside a character, one that ends there.
  for (const auto& [at, byte] : {std::pair(0, 0x00), {1, 0xA9}, {int{*first}, 0xC3}}) {
    const std::uint8_t before = std::exchange(first[at], static_cast<std::uint8_t>(byte));
    EXPECT_FALSE(read_date_name_data(*record)) << at;
    first[at] = before;
  }
}

}  // namespace
