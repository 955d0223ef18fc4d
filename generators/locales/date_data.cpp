// Names of months and weekdays, date patterns: the sections "date names" and "date patterns".

#include "generators/locales/layout_data.h"

namespace jwnls::generator {

std::string date_name_section(const std::string& /*locale*/) { return {}; }

std::string date_pattern_section(const std::string& /*locale*/) { return {}; }

}  // namespace jwnls::generator
