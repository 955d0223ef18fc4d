// What people call something of a territory: "swiss". The names of locales say "Switzerland".

#ifndef JWNLS_TOOL_TERRITORY_ADJECTIVES_H_
#define JWNLS_TOOL_TERRITORY_ADJECTIVES_H_

#include <string_view>

namespace jwnls::tool {

/// The adjectives of the territory ("CH") of a locale's name ("de_CH", "zh_Hant_TW"), in small
/// letters and with blanks between them. Empty where there is none here, or no territory.
[[nodiscard]] std::string_view territory_adjectives(std::string_view locale);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TERRITORY_ADJECTIVES_H_
