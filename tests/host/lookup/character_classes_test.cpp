#include "host/lookup/character_classes.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include "host/host.h"

namespace jwnls::host {
namespace {

// ICU knows the same mappings from its own copy of the database. The two may be of different
// releases, so a unit that one of them does not know yet is left out.
TEST(CharacterClasses, EveryUnitIsAsIcuHasIt) {
  Host host(HostConfiguration{});
  NlsContext* context = host.context();
  const std::uint16_t* classes = host.kernel()->character_classes;
  int lower_letters = 0;
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    if (!u_isdefined(static_cast<UChar32>(unit))) continue;
    const UChar32 upper = u_toupper(static_cast<UChar32>(unit));
    if (!u_isdefined(upper)) continue;
    const auto plain = static_cast<char16_t>(unit);
    ASSERT_EQ(context->to_upper(context, plain, 0), upper <= 0xFFFF ? upper : plain)
        << std::hex << static_cast<unsigned>(unit);
    const bool is_lower = u_charType(static_cast<UChar32>(unit)) == U_LOWERCASE_LETTER;
    ASSERT_EQ(classes[unit], is_lower ? 2 : 0) << std::hex << static_cast<unsigned>(unit);
    lower_letters += is_lower ? 1 : 0;
  }
  EXPECT_GT(lower_letters, 1000);
}

}  // namespace
}  // namespace jwnls::host
