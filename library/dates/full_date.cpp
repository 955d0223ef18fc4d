#include "library/dates/full_date.h"

#include <cstring>

#include "library/locale_data/pattern_parts.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

std::u16string widened(std::string_view text) {
  std::u16string units(text.size(), u'\0');
  units.resize(to_utf16(text, units.data(), units.size()).value_or(0));
  return units;
}

std::string narrowed(std::u16string_view units) {
  std::string text(3 * units.size(), '\0');
  text.resize(to_utf8(units, text.data(), text.size()));
  return text;
}

template <std::size_t Count>
void copy_names(const TextEntry (&entries)[Count], std::array<std::string, Count>& narrow,
                std::array<std::u16string, Count>& wide) {
  for (std::size_t i = 0; i < Count; ++i) {
    wide[i] = text_of(entries[i]);
    narrow[i] = narrowed(wide[i]);
  }
}

template <typename Unit>
class Output {
 public:
  Output(Unit* out, std::size_t room) noexcept : out_(out), room_(room) {}

  void put(const std::basic_string<Unit>& text) noexcept {
    if (size_ <= room_ && text.size() <= room_ - size_) {
      std::memcpy(out_ + size_, text.data(), text.size() * sizeof(Unit));
    }
    size_ += text.size();
  }
  void put_number(std::int32_t value, std::size_t digits) noexcept {
    for (std::size_t i = digits; i-- > 0; value /= 10) {
      if (size_ + i < room_) out_[size_ + i] = static_cast<Unit>('0' + value % 10);
    }
    size_ += digits;
  }
  [[nodiscard]] std::size_t size() const noexcept { return size_; }

 private:
  Unit* out_;
  std::size_t room_;
  std::size_t size_ = 0;
};

}  // namespace

template <typename Unit>
std::size_t FullDateTexts<Unit>::write(std::int32_t day, Unit* out,
                                       std::size_t room) const noexcept {
  const CivilDate date = civil_from_day(day);
  const auto weekday = static_cast<std::size_t>(weekday_from_day(day) - 1);
  const auto month = static_cast<std::size_t>(date.month - 1);
  Output<Unit> output(out, room);
  for (const Part& part : parts) {
    switch (part.directive) {
      case 'A':
        output.put(full_weekdays[weekday]);
        break;
      case 'a':
        output.put(short_weekdays[weekday]);
        break;
      case 'B':
        output.put(full_months[month]);
        break;
      case 'b':
        output.put(short_months[month]);
        break;
      case 'd':
      case 'E':
        output.put_number(date.day, part.directive == 'd' || date.day > 9 ? 2 : 1);
        break;
      case 'm':
      case 'O':
        output.put_number(date.month, part.directive == 'm' || date.month > 9 ? 2 : 1);
        break;
      case 'Y':
        output.put_number(date.year, 4);
        break;
      default:
        output.put(part.literal);
    }
  }
  return output.size();
}

template struct FullDateTexts<char>;
template struct FullDateTexts<char16_t>;

std::unique_ptr<const FullDate> make_full_date(const LocaleRecord& record,
                                               const DatePatternData& data) {
  auto full = std::make_unique<FullDate>();
  auto& [narrow, wide] = *full;
  for (const PatternParts::Part& part : PatternParts(data.full).parts) {
    narrow.parts.push_back({part.directive, part.literal});
    wide.parts.push_back({part.directive, widened(part.literal)});
  }
  copy_names(record.full_months, narrow.full_months, wide.full_months);
  copy_names(record.short_months, narrow.short_months, wide.short_months);
  copy_names(record.full_weekdays, narrow.full_weekdays, wide.full_weekdays);
  copy_names(record.short_weekdays, narrow.short_weekdays, wide.short_weekdays);
  if (!data.weekdays[0].empty()) {
    for (std::size_t i = 0; i < 7; ++i) {
      narrow.full_weekdays[i] = data.weekdays[i];
      wide.full_weekdays[i] = widened(data.weekdays[i]);
    }
  }
  return full;
}

}  // namespace jwnls::library
