#include "tool/territory_adjectives.h"

#include <algorithm>
#include <iterator>

namespace jwnls::tool {
namespace {

struct Row {
  std::string_view territory;
  std::string_view adjectives;
};

// Sorted. Territories whose adjective is the name with "n" behind it, and others like them, are
// here too: "austrian" is in no name.
constexpr Row rows[] = {
    {"AE", "emirati"},
    {"AF", "afghan"},
    {"AL", "albanian"},
    {"AM", "armenian"},
    {"AR", "argentine argentinian"},
    {"AT", "austrian"},
    {"AU", "australian"},
    {"AZ", "azerbaijani azeri"},
    {"BA", "bosnian"},
    {"BD", "bangladeshi"},
    {"BE", "belgian"},
    {"BG", "bulgarian"},
    {"BH", "bahraini"},
    {"BO", "bolivian"},
    {"BR", "brazilian"},
    {"BY", "belarusian"},
    {"CA", "canadian"},
    {"CD", "congolese"},
    {"CH", "swiss"},
    {"CL", "chilean"},
    {"CM", "cameroonian"},
    {"CN", "chinese"},
    {"CO", "colombian"},
    {"CR", "costa-rican"},
    {"CU", "cuban"},
    {"CY", "cypriot"},
    {"CZ", "czech"},
    {"DE", "german"},
    {"DK", "danish"},
    {"DO", "dominican"},
    {"DZ", "algerian"},
    {"EC", "ecuadorian"},
    {"EE", "estonian"},
    {"EG", "egyptian"},
    {"ES", "spanish"},
    {"ET", "ethiopian"},
    {"FI", "finnish"},
    {"FO", "faroese"},
    {"FR", "french"},
    {"GB", "british english scottish welsh"},
    {"GE", "georgian"},
    {"GH", "ghanaian"},
    {"GL", "greenlandic"},
    {"GR", "greek"},
    {"GT", "guatemalan"},
    {"HN", "honduran"},
    {"HR", "croatian"},
    {"HU", "hungarian"},
    {"ID", "indonesian"},
    {"IE", "irish"},
    {"IL", "israeli"},
    {"IN", "indian"},
    {"IQ", "iraqi"},
    {"IR", "iranian persian"},
    {"IS", "icelandic"},
    {"IT", "italian"},
    {"JM", "jamaican"},
    {"JO", "jordanian"},
    {"JP", "japanese"},
    {"KE", "kenyan"},
    {"KG", "kyrgyz"},
    {"KH", "cambodian"},
    {"KP", "north-korean"},
    {"KR", "korean"},
    {"KW", "kuwaiti"},
    {"KZ", "kazakh"},
    {"LA", "laotian"},
    {"LB", "lebanese"},
    {"LI", "liechtensteiner"},
    {"LK", "sri-lankan ceylonese"},
    {"LT", "lithuanian"},
    {"LU", "luxembourgish"},
    {"LV", "latvian"},
    {"LY", "libyan"},
    {"MA", "moroccan"},
    {"MD", "moldovan"},
    {"ME", "montenegrin"},
    {"MK", "macedonian"},
    {"MM", "burmese"},
    {"MN", "mongolian"},
    {"MT", "maltese"},
    {"MX", "mexican"},
    {"MY", "malaysian"},
    {"MZ", "mozambican"},
    {"NG", "nigerian"},
    {"NI", "nicaraguan"},
    {"NL", "dutch"},
    {"NO", "norwegian"},
    {"NP", "nepalese"},
    {"NZ", "new-zealander kiwi"},
    {"OM", "omani"},
    {"PA", "panamanian"},
    {"PE", "peruvian"},
    {"PH", "philippine filipino"},
    {"PK", "pakistani"},
    {"PL", "polish"},
    {"PR", "puerto-rican"},
    {"PT", "portuguese"},
    {"PY", "paraguayan"},
    {"QA", "qatari"},
    {"RO", "romanian"},
    {"RS", "serbian"},
    {"RU", "russian"},
    {"RW", "rwandan"},
    {"SA", "saudi"},
    {"SD", "sudanese"},
    {"SE", "swedish"},
    {"SG", "singaporean"},
    {"SI", "slovenian slovene"},
    {"SK", "slovak"},
    {"SN", "senegalese"},
    {"SO", "somali"},
    {"SV", "salvadoran"},
    {"SY", "syrian"},
    {"TH", "thai"},
    {"TN", "tunisian"},
    {"TR", "turkish"},
    {"TW", "taiwanese"},
    {"TZ", "tanzanian"},
    {"UA", "ukrainian"},
    {"UG", "ugandan"},
    {"US", "american"},
    {"UY", "uruguayan"},
    {"UZ", "uzbek"},
    {"VA", "vatican"},
    {"VE", "venezuelan"},
    {"VN", "vietnamese"},
    {"YE", "yemeni"},
    {"ZA", "south-african"},
    {"ZM", "zambian"},
    {"ZW", "zimbabwean"},
};
static_assert(std::is_sorted(std::begin(rows), std::end(rows),
                             [](const Row& left, const Row& right) {
                               return left.territory < right.territory;
                             }));

}  // namespace

std::string_view territory_adjectives(std::string_view locale) {
  const std::size_t at = locale.rfind('_');
  if (at == std::string_view::npos) return {};
  const std::string_view territory = locale.substr(at + 1);
  const auto* const row = std::lower_bound(
      std::begin(rows), std::end(rows), territory,
      [](const Row& each, std::string_view wanted) { return each.territory < wanted; });
  return row != std::end(rows) && row->territory == territory ? row->adjectives : "";
}

}  // namespace jwnls::tool
