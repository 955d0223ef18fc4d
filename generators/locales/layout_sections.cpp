#include <stdexcept>
#include <string>

#include "generators/locales/layout_data.h"

namespace jwnls::generator {

LayoutSections layout_sections(const std::string& locale) {
  static const std::string common = common_currency_section();
  LayoutSections sections = {number_section(locale), common, currency_section(locale),
                             date_name_section(locale), date_pattern_section(locale)};
  std::size_t size = JW_LAYOUT_DATA_HEAD;
  for (const std::string& section : sections) size += section.size();
  if (size > JW_LAYOUT_DATA_CAPACITY) {
    throw std::runtime_error(locale + ": " + std::to_string(size) + " bytes of layout data");
  }
  return sections;
}

}  // namespace jwnls::generator
