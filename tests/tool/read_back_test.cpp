#include "tool/read_back.h"

#include <gtest/gtest.h>

namespace jwnls::tool {
namespace {

TEST(ReadBack, TellsWhatIsNotReadBack) {
  client::HostOptions options;
  options.extension_path = {JWNLS_BUILD_DIR};
  const client::Host host = client::Host::open(std::move(options)).value();
  // Korean writes the designator before the hour; a Cornish month's name begins another's.
  for (const char* name : {"de_DE", "ar_EG", "hi_IN", "ko_KR", "kw_GB"}) {
    SCOPED_TRACE(name);
    const bool korean = std::string_view(name) == "ko_KR";
    const bool cornish = std::string_view(name) == "kw_GB";
    const auto expect = [](const std::string& text, bool is_read) {
      EXPECT_EQ(text == "yes", is_read) << text;
      EXPECT_EQ(text.starts_with("no: "), !is_read) << text;
    };
    const client::Locale locale = host.locale(name, "UTC").value();
    expect(dates_read_back(locale, client::DateStyle::short_numeric, false), true);
    expect(dates_read_back(locale, client::DateStyle::medium, false), !cornish);
    expect(dates_read_back(locale, client::DateStyle::long_form, true), !cornish);
    expect(times_read_back(locale, false), true);
    expect(times_read_back(locale, true), !korean);
    expect(datetimes_read_back(locale, false), !cornish);
    expect(datetimes_read_back(locale, true), !cornish && !korean);
    expect(numbers_read_back(locale), true);
    expect(integers_read_back(locale), true);
  }
}

}  // namespace
}  // namespace jwnls::tool
