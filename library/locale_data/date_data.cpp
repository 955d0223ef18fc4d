#include "library/locale_data/date_data.h"

#include <cstddef>
#include <cstdint>

#include "abi/layout_data.h"
#include "library/locale_data/layout_block.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t longest_text = 255;

NameMeaning meaning_of(std::size_t bits) noexcept {
  NameMeaning meaning;
  meaning.month = static_cast<std::uint8_t>(bits & 0xF);
  meaning.weekday = static_cast<std::uint8_t>(bits >> 4 & 0xF);
  meaning.word = (bits >> 8 & 1) != 0;
  meaning.two_months = (bits >> 9 & 1) != 0;
  meaning.false_friend = (bits >> 10 & 1) != 0;
  meaning.is_beginning = (bits >> 11 & 1) != 0;
  return meaning;
}

}  // namespace

void DateNameData::add(std::string_view text, const NameMeaning& meaning) {
  names.push_back(
      {static_cast<std::uint16_t>(texts.size()), static_cast<std::uint8_t>(text.size()), meaning});
  texts += text;
}

std::optional<DateNameData> read_date_name_data(const LocaleRecord& record) {
  const std::string_view all = LayoutBlock(record).section(JW_LAYOUT_DATE_NAMES);
  SectionReader section(all);
  DateNameData data;
  data.texts.resize(all.size());
  std::size_t bytes = 0;
  std::size_t names = section.word();
  if (section.ok()) data.names.reserve(names);
  for (; names > 0 && section.ok(); --names) {
    const NameMeaning meaning = meaning_of(section.word());
    const std::string_view text = section.bytes(section.byte());
    if (text.empty() || text.size() > NameList::longest || continues_character(text.front()) ||
        meaning.month > 12 || meaning.weekday > NameMeaning::some_weekday) {
      return std::nullopt;
    }
    text.copy(data.texts.data() + bytes, text.size());
    data.names.push_back(
        {static_cast<std::uint16_t>(bytes), static_cast<std::uint8_t>(text.size()), meaning});
    bytes += text.size();
  }
  data.texts.resize(bytes);
  // Where none begins inside a character, each is one if all together are.
  if (!is_utf8(data.texts)) return std::nullopt;
  for (names = section.byte(); names > 0 && section.ok(); --names) {
    const int month = static_cast<int>(section.byte());
    data.exact.push_back({section.text(longest_text), month});
    if (month < 1 || month > 12) return std::nullopt;
  }
  if (!section.ok()) return std::nullopt;
  return data;
}

std::optional<DatePatternData> read_date_pattern_data(const LocaleRecord& record) noexcept {
  SectionReader section(LayoutBlock(record).section(JW_LAYOUT_DATE_PATTERNS));
  DatePatternData data;
  data.short_year_first = (section.byte() & 1) != 0;
  data.full = section.text(longest_text);
  for (DateJoint& joint : data.joints) {
    joint.time_first = (section.byte() & 1) != 0;
    joint.before = section.text(longest_text);
    joint.between = section.text(longest_text);
    joint.behind = section.text(longest_text);
  }
  if (section.byte() == data.weekdays.size()) {
    for (std::string_view& weekday : data.weekdays) weekday = section.text(longest_text);
  }
  if (!section.ok()) return std::nullopt;
  return data;
}

}  // namespace jwnls::library
