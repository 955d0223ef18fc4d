// The locale that a command works with, and what it says when there is none.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(Session, TakesTheLocaleOfTheEnvironment) {
  const auto check = [&](const std::vector<std::string>& environment, const char* output,
                         const char* errors = "", int exit_code = 0) {
    expect({"format", "date", "-s", "short", "2024-03-15"}, output, errors, exit_code, environment);
  };
  check({}, "03/15/2024\n");
  check({"LANG=de_DE.UTF-8"}, "15.03.2024\n");
  check({"LANG=de_DE", "LC_TIME=sv_SE.UTF-8", "LC_ALL="}, "2024-03-15\n");
  check({"LANG=de_DE", "LC_TIME=sv_SE", "LC_ALL=C.UTF-8"}, "03/15/2024\n");
  check({"LANG=de_US"}, "15.03.2024\n",
        "jwnls: note: locale 'de_US' (from LANG) is not known as such; using de\n");
  check({"LC_TIME=tlh_AA"}, "", "jwnls: locale 'tlh_AA': unknown (from LC_TIME)\n", 3);
}

TEST(Session, NamesWhatIsUnknownOrMissing) {
  expect({"format", "date", "-l", "xx_YY", "2024-03-15"}, "", "jwnls: locale 'xx_YY': unknown\n",
         3);
  expect({"format", "date", "-l", "grman", "2024-03-15"}, "",
         "jwnls: locale 'grman': unknown; did you mean 'German'?\n", 3);
  expect({"read", "instant", "-l", "C", "-z", "Berln", "1"}, "",
         "jwnls: time zone 'Berln': unknown; did you mean 'Europe/Berlin'?\n", 3);
  expect({"show", "de_DE", "-z", "Mars/Phobos"}, "", "jwnls: time zone 'Mars/Phobos': unknown\n",
         3);
  // It needs no file beside it, or says which.
  const auto alone = run_shell(
      "folder=$(mktemp -d); cp \"$jwnls\" \"$folder\"; \"$folder\"/jwnls format number -l de_DE "
      "1.5;"
      "code=$?; rm -r \"$folder\"; exit $code");
#ifdef JWNLS_EMBED
  EXPECT_EQ(alone.exit_code, 0);
  EXPECT_EQ(alone.output, "1,5\n") << alone.errors;
#else
  EXPECT_EQ(alone.exit_code, 3);
  EXPECT_TRUE(alone.errors.starts_with("jwnls: cannot find jwnlsloc.so in ")) << alone.errors;
#endif
}

}  // namespace
}  // namespace jwnls::tool
