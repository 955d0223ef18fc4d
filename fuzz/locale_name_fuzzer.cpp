// Fuzzes the names of locales: any text, pieces of names in any order, names that are changed.
//
// A match is a locale that there is, whose own name matches itself exactly; a name of it in another
// writing ("DE-de.utf8") is the same locale; the C interface gives the same answer.

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "host/locales/locale_names.h"
#include "include/jwnls/jwnls.h"
#include "tests/support/encoded.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

using host::available_locales;
using host::LocaleMatch;
using host::match_locale_name;

std::u16string name_of(Input& input) {
  constexpr std::string_view pieces[] = {
      "_",      "-",        "@",       ".UTF-8", "de",    "DE",
      "zh",     "Hant",     "TW",      "sr",     "Latn",  "RS",
      "latin",  "-u-co-",   "phonebk", "C",      "POSIX", "calendar=buddhist",
      "german", "valencia", "001",     "en",     "US",    "euro",
      " ",      "(",        ")"};
  std::u16string name;
  while (!input.used_up() && name.size() < 90) {
    const std::uint8_t choice = input.byte();
    if (choice < 0x80) {
      for (const char each : pieces[choice % std::size(pieces)]) {
        name += static_cast<char16_t>(each);
      }
    } else if (choice < 0xE0) {
      const auto& row =
          available_locales()[input.number<std::uint16_t>() % available_locales().size()];
      if (choice % 3 == 0) {
        name.append(row.name.begin(), row.name.end());
      } else {
        name += choice % 3 == 1 ? row.english_name : row.own_name;
      }
    } else if (!name.empty() && choice < 0xF0) {
      name[input.byte() % name.size()] ^= 0x20;
    } else {
      name += choice < 0xF8 ? static_cast<char16_t>(input.byte()) : input.number<char16_t>();
    }
  }
  return name;
}

void check_match(std::u16string_view name) {
  // Right before a sanitizer's red zone.
  const std::u16string copy(name);
  const LocaleMatch match = match_locale_name(copy);
  const bool found = match.status == Status::ok || match.status == Status::resolved_with_warning;
  require(found || match.status == Status::lookup_failed, "an undocumented status");
  require(found != match.canonical.empty(), "a locale that does not go with the status");
  const std::size_t first = std::min(name.find_first_not_of(u' '), name.size());
  require(name.find_last_not_of(u' ') - first < 80 || !found, "a name that is too long");
  if (found) {
    const auto rows = available_locales();
    const auto row = std::lower_bound(
        rows.begin(), rows.end(), match.canonical,
        [](const host::LocaleRow& each, std::string_view key) { return each.name < key; });
    require(row != rows.end() && (*row).name == match.canonical, "a locale that there is not");
    // Another writing of the canonical name.
    std::u16string again(match.canonical.begin(), match.canonical.end());
    for (std::size_t i = 0; i < again.size(); ++i) {
      if (again[i] == u'_') again[i] = u'-';
      if (again[i] >= u'A' && i % 2 == 0) again[i] ^= 0x20;
    }
    const LocaleMatch same = match_locale_name(again);
    require(same.status == Status::ok && same.canonical == match.canonical,
            "a locale whose name is another's");
  }
  // UTF-8 has no half pairs, and C's names end at a zero.
  const auto odd = [](char16_t unit) { return unit == 0 || (unit >= 0xD800 && unit < 0xE000); };
  constexpr std::size_t longest_in_c = 96;  // with the blanks around it
  if (name.size() > longest_in_c || std::any_of(name.begin(), name.end(), odd)) return;
  char canonical[64];
  int exact = 7;
  const int code = jwnls_match_locale(encoded(name).c_str(), canonical, &exact);
  if (name.empty()) return;
  require((code == JWNLS_OK) == found, "another answer in C");
  if (!found) return;
  require(match.canonical == canonical && exact == (match.status == Status::ok ? 1 : 0),
          "another locale in C");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  check_match(name_of(input));
  std::u16string any(size / 2, u'\0');
  std::memcpy(any.data(), data, any.size() * 2);
  check_match(any);
  return 0;
}
