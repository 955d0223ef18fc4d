// `jwnls read` and `jwnls convert`.

#include <gtest/gtest.h>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(Read, WritesValuesAsProgramsDo) {
  expect({"read", "date", "-l", "de_DE", "15. März 2024", "15.3.24"}, "2024-03-15\n2024-03-15\n");
  expect({"read", "date", "-l", "en_US", "--raw", "1/2/1960", "12/31/1959"}, "1\n-1\n");
  expect({"read", "date", "-l", "en_US", "--pattern", "3", "--strict", "March 15, 2024"},
         "2024-03-15\n");
  expect({"read", "date", "-l", "fr_FR", "--as", "ja_JP", "-s", "long", "15 mars 2024"},
         "2024年3月15日\n");
  expect({"read", "time", "-l", "en_US", "2:30 PM", "00:05:09"}, "14:30:00\n00:05:09\n");
  expect({"read", "time", "-l", "da_DK", "--raw", "14.30.05"}, "52205\n");
  expect({"read", "datetime", "-l", "de_DE", "15.03.2024, 14:30:05"}, "2024-03-15T14:30:05\n");
  expect({"read", "datetime", "-l", "de_DE", "-r", "01.01.1960 00:01"}, "60\n");
  expect({"read", "period", "-l", "en_US", "--year-cutoff", "1900", "Jan-49", "W1, 2025"},
         "1949-01-01\n2024-12-30\n");
  expect({"convert", "date", "--from", "en_US", "--to", "de_DE", "-s", "long", "Mar 15, 2024"},
         "15. März 2024\n");
  expect({"convert", "time", "-f", "de_DE", "-t", "en_US", "14:30"}, "2:30:00 PM\n");
  expect({"convert", "datetime", "-f", "ko_KR", "-t", "fr_FR", "2024. 3. 15. 오후 2:30"},
         "15 mars 2024, 14:30:00\n");
  expect({"read", "number", "-l", "de_DE", "1.234.567,89", "1e22", ".a", "", "-0"},
         "1234567.89\n1e+22\n.A\n.\n-0\n");
  expect({"read", "number", "-l", "fr_FR", "--blank-groups", "1 234,5", "-,5"}, "1234.5\n-0.5\n");
  expect({"read", "number", "-l", "en_US", "--as", "hi_IN", "-d", "2", "1,234,567.891"},
         "12,34,567.89\n");
  expect({"read", "integer", "-l", "de_DE", "-1.234", "._"}, "-1234\n._\n");
  expect({"read", "integer", "--unsigned", "18446744073709551615"}, "18446744073709551615\n");
  expect({"read", "integer", "--hex", "0xFF", "ffff"}, "255\n65535\n");
  expect({"read", "integer", "-l", "en_US", "--fraction", "1,234.00"}, "1234\n");
  expect({"convert", "number", "-f", "de_DE", "-t", "en_US", "-d", "1", "-w", "9", "1.234,25"},
         "  1,234.3\n");
  expect({"convert", "integer", "-f", "C", "-t", "C", "--radix", "16", "--prefix", "255"},
         "0xff\n");
}

TEST(Read, SaysWhereAndWhyAndGoesOn) {
  expect({"convert", "date", "--from", "de_DE", "--to", "en_US"}, "Mar 15, 2024\nApr 1, 2024\n",
         "jwnls: line 2: date '15. Mrz 2024': '15. M' fits, 'rz 2024' does not\n"
         "jwnls: line 3: date '': no value\n"
         "jwnls: line 4: date '30.2.2024': no such date in the calendar\n"
         "jwnls: line 5: date '1. Mai': ends too early\n",
         1, {}, "15.3.2024\n15. Mrz 2024\r\n\n30.2.2024\n1. Mai\n1.4.2024");
  expect({"read", "integer", "-l", "fr_FR", "--fraction", "1,5", "x", "1 234"}, "1\n",
         "jwnls: integer '1,5': note: read without its fraction\n"
         "jwnls: integer 'x': no integer begins so in fr_FR\n"
         "jwnls: integer '1 234': '1' fits, ' 234' does not (with --blank-groups it is read)\n",
         1);
  expect({"convert", "date", "-f", "de", "-t", "xx_YY", "1.4.2024"}, "",
         "jwnls: locale 'xx_YY': unknown\n", 3);
}

TEST(Read, TakesLargeInput) {
  const auto outcome = run_shell(
      "seq 0 299999 | \"$jwnls\" format date -l de_DE -s long --raw |"
      "\"$jwnls\" convert date --from de_DE --to sv_SE -s long |"
      "\"$jwnls\" read date -l sv_SE --raw | cksum; seq 0 299999 | cksum");
  const auto half = outcome.output.size() / 2;
  EXPECT_EQ(outcome.output.substr(0, half), outcome.output.substr(half)) << outcome.errors;
  EXPECT_GT(half, 8u);
}

}  // namespace
}  // namespace jwnls::tool
