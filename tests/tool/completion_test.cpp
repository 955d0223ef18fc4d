// What shells complete, and the manual page.

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/tool/folder.h"
#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

// Holds a table.
class TableFolder : public Folder {
 public:
  TableFolder() {
    std::ofstream(path() + "/t.csv") << "Nr;Netto;Brutto betrag;3\n1;1,5;2;3\n";
    std::ofstream(path() + "/q.csv") << "\"a\"\"b\";/x;c,d;e=f;1-2\n";
  }
};

// A command line whose word behind "|" is completed, and what there is for it.
struct Case {
  std::vector<std::string> words;
  const char* candidates;  // without what they are
};

std::string candidates(const Folder& folder, const std::vector<std::string>& words) {
  std::string command = "cd " + folder.path() + "; \"$jwnls\" --complete ";
  std::string rest;
  for (std::size_t at = 0; at < words.size(); ++at) {
    if (words[at] == "|") {
      command += std::to_string(at + 1);
    } else {
      rest += " '" + words[at] + "'";
    }
  }
  return run_shell(command + " jwnls" + rest + " | cut -f 1 | tr '\n' ' '").output;
}

TEST(Completion, KnowsWhatMayStandWhere) {
  const TableFolder folder;
  const Case cases[] = {
      {{"|", "re"}, "words read "},
      {{"read", "|", "dat"}, "words date datetime "},
      {{"format", "|", "per"}, "words percent "},
      {{"help", "show", "|", ""}, "words "},
      {{"help", "read", "|", "p"}, "words percent period "},
      {{"completions", "|", ""}, "words bash zsh fish "},
      {{"read", "date", "|", "--or"}, "words --order "},
      {{"read", "number", "|", "--or"}, "words "},
      {{"read", "--invalid", "|", "d"}, "words drop "},
      {{"read", "|", "--invalid=d"}, "words --invalid=drop "},
      {{"read", "-l", "|", "de_C"}, "words de_CH "},
      {{"detect", "-l", "|", "en,gsw_"}, "words en,gsw_CH en,gsw_FR en,gsw_LI "},
      {{"format", "date", "-z", "|", "Europe/Berl"}, "words Europe/Berlin "},
      {{"show", "|", "de_C"}, "words de_CH "},
      {{"read", "date", "-O", "|", "ord"}, "open order= "},
      {{"read", "date", "-O", "|", "order=m"}, "words order=mdy "},
      {{"read", "-c", "x", "|", "t"}, "files "},
      {{"read", "--rejects", "|", "t"}, "files "},
      {{"show", "de_DE", "--html", "|", "t"}, "files "},
      // Columns are those of the file on the command line, wherever it stands.
      {{"read", "-c", "|", "", "t.csv"}, "open Nr Netto Brutto betrag \"3\" "},
      {{"read", "t.csv", "-c", "|", "Nr,N"}, "open Nr,Nr Nr,Netto "},
      {{"read", "-n", "-c", "|", "", "t.csv"}, "open 1 2 3 4 "},
      {{"read", "-F", "comma", "-c", "|", "Nr;", "t.csv"}, "open Nr;Netto;Brutto betrag;3 "},
      {{"read", "-c", "|", "N", "none.csv"}, "words "},
      {{"read", "-c", "|", "Nr=am", "t.csv"}, "words Nr=amount "},
      {{"read", "-c", "|", "Nr=amount:gr"}, "open Nr=amount:groups= "},
      {{"read", "-c", "|", "\"a:b\"=amount:groups=a"}, "words \"a:b\"=amount:groups=any "},
      {{"read", "-c", "|", "Nr=date:de_C"}, "words Nr=date:de_CH "},
      {{"read", "-c", "|", "\"Nr\",Ne", "t.csv"}, "open \"Nr\",Netto "},
      {{"read", "-F", ";", "-c", "|", "", "q.csv"},
       "open \"a\"\"b\" \"/x\" \"c,d\" \"e=f\" \"1-2\" "},
      {{"read", "-c", "|", "/a:", "t.csv"}, "words "},
      {{"read", "-c", "|", "", "~/t.csv"}, "words "},
      {{"read", "-c", "|", "Nr:signs"}, "open Nr:signs= "},
      {{"convert", "-c", "|", "Nr=pe"}, "words Nr=percent "},
      {{"convert", "--from", "|", "de_C"}, "words de_CH "},
      {{"convert", "--to=de_DE", "-F", "|", "ta"}, "words tab "},
      {{"detect", "|", "t"}, "files "},
      {{"|", "--v"}, "words --version "},
      {{"help", "|", "sho"}, "words show "},
      {{"help", "nothing", "|", ""}, "words "},
      {{"nothing", "|", ""}, "words "},
      {{"read", "amount", "-O", "|", "currency=a"}, "words currency=any "},
      {{"read", "-F", "|", "p"}, "words pipe "},
      {{"read", "|", "--nothing=x"}, "words "},
      {{"locales", "|", "de_C"}, "words de_CH "},
      {{"zones", "|", "Europe/Berl"}, "words Europe/Berlin "},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(candidates(folder, each.words), each.candidates)
        << testing::PrintToString(each.words);
  }
}

// The shell parts words at "=" and ":", and wants what is behind them.
TEST(Completion, WorksInBash) {
  const TableFolder folder;
  const auto complete = [&](const std::string& line, const std::string& words, int index) {
    return run_shell(
               "cd " + folder.path() +
               "; exec bash -c 'eval \"$($jwnls completions bash)\"; COMP_WORDS=(\"$jwnls\" " +
               words + "); COMP_CWORD=" + std::to_string(index) + "; COMP_LINE=\"$jwnls " + line +
               "\"; _jwnls; printf \"%s \" \"${COMPREPLY[@]}\"'")
        .output;
  };
  EXPECT_EQ(complete("read dat", "read dat", 2), "date datetime ");
  EXPECT_EQ(complete("read -c Netto=am t.csv", "read -c Netto = am t.csv", 5), "amount ");
  EXPECT_EQ(complete("read -c Netto= t.csv", "read -c Netto = t.csv", 4).substr(0, 15),
            "number integer ");
  EXPECT_EQ(complete("read -c Nr=date:de_C", "read -c Nr = date : de_C", 7), "de_CH ");
  EXPECT_EQ(complete("read -c Br t.csv", "read -c Br t.csv", 3), "Brutto\\ betrag ");
  EXPECT_EQ(complete("read --rejects t", "read --rejects t", 3), "t.csv ");
}

TEST(Completion, WorksInFish) {
  if (run_shell("command -v fish").exit_code != 0) GTEST_SKIP() << "no fish";
  const TableFolder folder;
  const auto outcome = run_shell(
      "cd " + folder.path() +
      "; export HOME=$PWD; PATH=$PATH:${jwnls%/*}; exec fish -c '$jwnls completions fish | source;"
      "complete -C \"jwnls read t.csv -c Ne\"; complete -C \"jwnls show de_C\"'");
  EXPECT_EQ(outcome.output, "Netto\tcolumn 2\nde_CH\tGerman (Switzerland)\n") << outcome.errors;
}

TEST(Completion, IsAScriptOfZsh) {
  if (run_shell("command -v zsh").exit_code != 0) GTEST_SKIP() << "no zsh";
  const auto outcome = run_shell("\"$jwnls\" completions zsh | zsh -n");
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.errors, "");
}

TEST(ManualPage, IsCleanAndHasEveryOption) {
  const auto page = run_tool({{"--manual"}}).output;
  for (const char* part :
       {".TH JWNLS 1 ", "\\fB\\-l\\fP, \\fB\\-\\-locale\\fP \\fINAME\\fP\n", "\\fBperiod\\fP\n",
        "\\fBcurrency\\-as=\\fP", "the rest goes on.\n.PP\nLocales "}) {
    EXPECT_NE(page.find(part), std::string::npos) << part;
  }
  if (run_shell("command -v mandoc").exit_code != 0) GTEST_SKIP() << "no mandoc";
  const auto lint = run_shell("\"$jwnls\" --manual | mandoc -Tlint -Wwarning");
  EXPECT_EQ(lint.exit_code, 0) << lint.output;
}

}  // namespace
}  // namespace jwnls::tool
