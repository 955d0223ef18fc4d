#include "client/fitting_part.h"

#include <algorithm>

namespace jwnls::client {
namespace {

// No date, time or period is longer; what goes on past this is not looked at.
constexpr std::size_t longest_part = 200;

// Beginnings may miss all endings although longer ones meet one: a field of two digits whose first
// the examples do not have.
constexpr int most_misses = 3;

// Units after which the same endings are worth a try: any digit, any mark; letters by themselves,
// as what goes on with them is a name's rest.
char16_t sort_of(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return u'0';
  if (unit >= u'A' && unit <= u'Z') return static_cast<char16_t>(unit + (u'a' - u'A'));
  return unit < 0x80 && (unit < u'a' || unit > u'z') ? u' ' : unit;
}

}  // namespace

void Endings::add(std::u16string_view text) {
  for (std::size_t at = 1; at <= text.size(); ++at) {
    all_.emplace(sort_of(text[at - 1]), text.substr(at));
  }
}

std::size_t fitting_part(std::u16string_view text, const Endings& endings,
                         const std::function<bool(std::u16string_view)>& reads) {
  std::size_t fitting = std::min(text.find_first_not_of(u' '), text.size());
  int misses = 0;
  std::u16string attempt;
  const std::size_t end = std::min(text.size(), fitting + longest_part);
  for (std::size_t length = fitting + 1; length <= end && misses < most_misses; ++length) {
    const std::u16string_view part = text.substr(0, length);
    const char16_t sort = sort_of(part.back());
    bool fits = reads(part);
    for (auto ending = endings.all().lower_bound({sort, {}});
         !fits && ending != endings.all().end() && ending->first == sort; ++ending) {
      fits = reads(attempt.assign(part).append(ending->second));
    }
    if (fits) fitting = length;
    misses = fits ? 0 : misses + 1;
  }
  return fitting;
}

}  // namespace jwnls::client
