// Help, versions, and command lines that are wrong.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/process.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

// Every command, and every kind of those that have some, without "--help".
std::vector<Arguments> all_commands() {
  std::vector<Arguments> all = {{}, {"read", "period"}, {"format", "currency"}};
  for (const char* command : {"format", "read", "convert", "detect", "locales", "zones", "show"}) {
    all.push_back({command});
  }
  for (const char* kind :
       {"number", "integer", "amount", "percent", "date", "time", "datetime", "instant"}) {
    for (const char* command : {"format", "read", "convert"}) all.push_back({command, kind});
  }
  return all;
}

TEST(CommandLine, ShortHelpIsAScreen) {
  for (Arguments arguments : all_commands()) {
    arguments.emplace_back("-h");
    const auto outcome = run_tool({arguments});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
    EXPECT_LE(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 24);
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(cell_width(line), 80) << line;
  }
}

TEST(CommandLine, HelpIsOutputAndHasExamples) {
  for (Arguments arguments : all_commands()) {
    arguments.emplace_back("--help");
    arguments.insert(arguments.begin(), "help");
    const auto helped = run_tool({arguments});
    arguments.erase(arguments.begin());
    EXPECT_EQ(helped.output, run_tool({arguments}).output);
    const auto outcome = run_tool({arguments});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_NE(outcome.output.find("Usage: jwnls"), std::string::npos) << outcome.output;
    const bool shows_how = outcome.output.find("Examples:\n") != std::string::npos ||
                           outcome.output.find("KIND --help") != std::string::npos;
    EXPECT_TRUE(shows_how) << outcome.output;
  }
}

TEST(CommandLine, VersionsAreThoseOfProgramInterfaceAndData) {
  const auto outcome = run_tool({{"--version"}});
  EXPECT_EQ(outcome.exit_code, 0);
  for (const char* part : {"jwnls 0.", "interface 6.1", "CLDR ", "time zones "}) {
    EXPECT_NE(outcome.output.find(part), std::string::npos) << outcome.output;
  }
}

TEST(CommandLine, WrongCommandLinesSayWhatIsWrong) {
  const auto check = [&](const Arguments& arguments, const char* part) {
    const auto outcome = run_tool({arguments});
    EXPECT_EQ(outcome.exit_code, 2) << part;
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors.find(part), std::string::npos) << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
  };
  check({}, "jwnls needs one of format, read, convert, detect, locales, zones, show, help");
  check({"frobnicate\x1B[2J"}, "frobnicate\\x1B[2J");
  check({"format"}, "format needs one of number, integer, amount, percent, date");
  check({"format", "dates"}, "'dates': no such kind; did you mean 'date'?");
  check({"raed", "date"}, "'raed': no such command; did you mean 'read'?");
  check({"read", "r.csv"}, "'r.csv': no such kind; kinds are number integer amount currency");
  check({"read", "-c", "x"}, "no column 'x': the table is empty");
  check({"read", "date", "-l", ""}, "--locale: its value is empty");
  check({"read", "date", "--invalid", "dorp"}, "'dorp' is none of keep empty drop stop;");
  check({"read", "date", "-F", ";"}, "--separator is for tables: say which columns with -c");
  check({"format", "period", "2024-03-15"}, "period");
  check({"format", "date", "--frobnicate", "2024-03-15"}, "--frobnicate");
  check({"format", "date", "--zoen", "UTC", "2024-03-15"}, "--zoen; did you mean '--zone'?");
  check({"format", "date", "-l"}, "--locale");
  check({"format", "time", "-s", "long", "14:30"}, "-s");
  check({"format", "number", "-w", "-1", "1"}, "--width");
  check({"read", "date", "--style", "long", "3/4/2024"}, "--style");
  check({"convert", "date", "--from", "de", "3/4/2024"}, "--to is required");
  check({"show", "de_DE", "fr_FR"}, "fr_FR");
  check({"help", "raed"}, "'raed': no such command; did you mean 'read'?");
  check({"help", "read", "dat"}, "'dat': no such kind; did you mean 'date'?");
  check({"help", "convert", "period"}, "a period can only be read");
  check({"completions", "bsh"}, "'bsh' is none of bash zsh fish; did you mean 'bash'?");
  check({"show", ""}, "the locale's name is empty");
}

// The words are the library's, and so is what it says of them.
TEST(CommandLine, WordsThatAreWrongAreNamed) {
  const auto check = [](Arguments arguments, const char* message) {
    arguments.push_back("1");
    expect(arguments, "", std::string("jwnls: option '") + message + " (see --help)\n", 2);
  };
  check({"format", "date", "-s", "huge"},
        "style=huge': the value is one of medium short long full");
  check({"format", "number", "-d", "two"}, "decimals=two': the value is a number from 0 to 350");
  check({"read", "number", "-O", "stile=long"}, "stile=long': no such word; did you mean 'style'?");
  check({"format", "date", "-s", "shrt"},
        "style=shrt': the value is one of medium short long full; did you mean 'short'?");
  check({"read", "date", "-O", "order=dmy no-group"}, "no-group': no word of the kind date");
  check({"convert", "number", "-f", "C", "-t", "C", "-O", "frob"}, "frob': no such word");
  expect({"read", "instant", "-z", "a b", "1"}, "",
         "jwnls: --zone: 'a b': a value has no blanks (see --help)\n", 2);
}

// Every option of every kind is a word that the library knows: none of them is refused as unknown.
TEST(CommandLine, EveryOptionIsAWordOfItsKind) {
  const auto knows = [](const char* command, const char* kind, const Arguments& options) {
    for (const std::string& option : options) {
      Arguments arguments = {command, kind, "-l", "de_DE"};
      arguments.push_back("--" + option);
      const auto outcome = run_tool({arguments, ""});
      EXPECT_EQ(outcome.exit_code, 0) << kind << ' ' << option << ' ' << outcome.errors;
    }
  };
  const Arguments in = {"groups=none", "signs=any", "missing=module", "proved"};
  const Arguments out = {"no-group", "plus", "digits=own", "exact"};
  for (const char* kind : {"number", "integer", "amount", "percent"}) {
    knows("read", kind, in);
    knows("format", kind, out);
  }
  knows("format", "percent", {"decimals=1", "rounding=half-even"});
  knows("format", "amount", {"symbol=narrow", "accounting", "currency=USD"});
  knows("read", "amount",
        {"unit=required", "fraction=any", "credit=minus", "currency=any", "currency=own"});
  knows("read", "percent", {"percent-sign=optional"});
  const Arguments dates = {"order=mdy",     "years=4",   "century=1900",
                           "names=english", "pattern=3", "loose"};
  for (const char* kind : {"date", "datetime", "instant"}) knows("read", kind, dates);
  knows("read", "instant", {"overlap=second", "zone=Europe/Berlin"});
  knows("read", "period", {"year-cutoff=1900"});
}

}  // namespace
}  // namespace jwnls::tool
