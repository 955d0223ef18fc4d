#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/seed.h"
#include "tests/tool/tables/table_runs.h"

namespace jwnls::tool {
namespace {

using Columns = std::vector<Asked>;

struct Case {
  const char* what;
  Columns columns;
  TableJob job;
  std::string text;
  std::string output;
  std::string errors = {};
  int exit_code = 0;
  std::string rejects = {};
};

void expect_cases(const std::vector<Case>& cases) {
  const OwnFolder folder;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    EXPECT_EQ(run_table(each.text, each.columns, each.job),
              (TableOutcome{each.exit_code, each.output, each.errors, each.rejects, {}}));
  }
}

TEST(ConvertTable, ChangesWhatIsAskedForAndNothingElse) {
  const Columns b = {{"b"}};
  expect_cases({
      {"in place, other bytes stay",
       b,
       {},
       "a;b;c\n\"x; y\";1.234,50;\"z\"\n",
       "a;b;c\n\"x; y\";1234.50;\"z\"\n"},
      {"quotes go where none are needed", b, {}, "a,b\n1,\"1.234,50\"\n", "a,b\n1,1234.50\n"},
      {"and come where they are", b, {}, "a,b\n1,#\n", "a,b\n1,\"a,b;c\"\"\"\"d\n\"\n"},
      {"line ends and marks stay",
       b,
       {},
       "\xEF\xBB\xBF"
       "a;b\r\n1;2,5\r\n\r\n3;\"4,5\"\r\n",
       "\xEF\xBB\xBF"
       "a;b\r\n1;2.5\r\n\r\n3;4.5\r\n"},
      {"a mark is no part of the name",
       {{"a"}},
       {},
       "\xEF\xBB\xBF"
       "a;b\n1,5;2",
       "\xEF\xBB\xBF"
       "a;b\n1.5;2"},
      {"missing values stay as they are, words do not",
       b,
       {},
       "a;b\n1;\n2;\"\"\n3;  \n4;-\n",
       "a;b\n1;\n2;\"\"\n3;  \n4;\n"},
      {"or become a word",
       b,
       {.null_out = "\\N"},
       "a;b\n1;\n2;\"\"\n4;-\n",
       "a;b\n1;\\N\n2;\\N\n4;\\N\n"},
      {"new columns",
       {{"b", Asked::number, "net", "cur"}, {"a", Asked::number, "a 2"}},
       {},
       "a;b;c\r\n1,5;2,5$;x\r\n1;;\r\n",
       "a;b;c;net;a 2;cur\r\n1,5;2,5$;x;2.5;1.5;USD\r\n1;;;;1;\r\n"},
      {"currency of a column in place",
       {{"b", Asked::number, {}, "c;r"}},
       {},
       "a;b\n1;2$",
       "a;b;\"c;r\"\n1;2;USD"},
      {"no header",
       {{"2"}},
       {.separator = ';', .has_header = false},
       "1;1,5\n2;2,5\n",
       "1;1.5\n2;2.5\n"},
      {"skipped lines and sep=",
       b,
       {.skip_lines = 1},
       "\"title\nsep=,\n\na,b\n1,\"2,5\"\n",
       "\"title\nsep=,\n\na,b\n1,2.5\n"},
      {"no quotes", b, {.separator = ';', .quotes = false}, "a;b\n\"1;2,5\n", "a;b\n\"1;2.5\n"},
      {"one column", {{"a"}}, {}, "a\n1.234,5\n", "a\n1234.5\n"},
      {"the whole row is one field of 3 MB",
       b,
       {},
       "a;b\n" + std::string(3'000'000, 'x') + ";1,5\n",
       "a;b\n" + std::string(3'000'000, 'x') + ";1.5\n"},
      {"JSON",
       {{"b"}, {"d", Asked::date}},
       {.json_lines = true},
       "a;b;d\n\"x\"\"\n\t\";1,5;15.03.2024\n\n\x01\xFF;;\n1;y;\n",
       "{\"a\":\"x\\\"\\n\\t\",\"b\":1.5,\"d\":\"2024-03-15\"}\n{\"a\":\"\\u0001\uFFFD\",\"b\":"
       "null,\"d\":null}\n{\"a\":\"1\",\"b\":\"y\",\"d\":null}\n",
       "jwnls: r.csv:6: b: number 'y': no number\njwnls: note: 1 text is not UTF-8; what is not "
       "became U+FFFD\njwnls: rows: 3; values: 2 read, 3 missing, 1 not read\n",
       1},
  });
}

TEST(ConvertTable, SaysWhatItRefusesAndDoesWithItWhatIsAsked) {
  const Columns b = {{"b"}};
  const std::string text = "a;b;c\n1;1,5;\"x\ny\"\n2;u;\n3;\"v\"\"\"w;\n4;2,5;z\n";
  const std::string summary = "jwnls: rows: 4; values: 2 read, 0 missing, 2 not read\n";
  const std::string first = "jwnls: r.csv:4: b: number 'u': no number\n";
  const std::string said =
      first + "jwnls: r.csv:5: b: number '\"v\"\"\"w': text stands behind the closing quote\n";
  const std::string ragged = "a;b\n1;1,5\n2\n\n3;4;5\n4;4,5\n";
  expect_cases({
      {"keep",
       b,
       {},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n2;u;\n3;\"v\"\"\"w;\n4;2.5;z\n",
       said + summary,
       1},
      {"empty",
       b,
       {.invalid = Invalid::empty},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n2;;\n3;;\n4;2.5;z\n",
       said + summary,
       1},
      {"drop",
       b,
       {.invalid = Invalid::drop},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n4;2.5;z\n",
       said + summary,
       1},
      {"stop",
       b,
       {.invalid = Invalid::stop},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n",
       first + "jwnls: rows: 2; values: 1 read, 0 missing, 1 not read\n",
       1},
      {"at most so many",
       b,
       {.max_rejects = 1},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n2;u;\n",
       said + "jwnls: stopped: more than 1 rejects\njwnls: rows: 3; values: 1 read, 0 missing, 2 "
              "not read\n",
       1},
      {"messages end",
       b,
       {.max_messages = 1},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n2;u;\n3;\"v\"\"\"w;\n4;2.5;z\n",
       first + "jwnls: 1 more like these\n" + summary,
       1},
      {"quiet",
       b,
       {.summary = Summary::never},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n2;u;\n3;\"v\"\"\"w;\n4;2.5;z\n",
       "",
       1},
      {"a file",
       b,
       {.invalid = Invalid::drop, .rejects = "rejects.csv"},
       text,
       "a;b;c\n1;1.5;\"x\ny\"\n4;2.5;z\n",
       "jwnls: rows: 4; values: 2 read, 0 missing, 2 not read (rejects.csv)\n",
       1,
       "row,line,column,name,byte,text,reason\n2,4,2,b,20,u,no "
       "number\n3,5,2,b,25,\"\"\"v\"\"\"\"\"\"w\",text stands behind the closing quote\n"},
      {"other lengths",
       b,
       {},
       ragged,
       "a;b\n1;1.5\n2\n\n3;4;5\n4;4.5\n",
       "jwnls: r.csv:3: 1 field, the header has 2\njwnls: r.csv:5: 3 fields, the header has "
       "2\njwnls: rows: 4, of another length: 2; values: 2 read, 0 missing, 0 not read\n",
       1},
      {"other lengths, converted",
       b,
       {.ragged = Ragged::convert},
       "a;b\n2\n\n3;4,0;5\n",
       "a;b\n2\n\n3;4.0;5\n"},
      {"other lengths, dropped",
       b,
       {.invalid = Invalid::drop, .rejects = "rejects.csv"},
       ragged,
       "a;b\n1;1.5\n\n4;4.5\n",
       "jwnls: rows: 4, of another length: 2; values: 2 read, 0 missing, 0 not read "
       "(rejects.csv)\n",
       1,
       "row,line,column,name,byte,text,reason\n2,3,,,10,2,\"1 field, the header has "
       "2\"\n3,5,,,13,3;4;5,\"3 fields, the header has 2\"\n"},
      {"other lengths as JSON",
       b,
       {.summary = Summary::never, .json_lines = true},
       "a;b\n2\n3;4,0;5\n",
       "{\"a\":\"2\"}\n{\"a\":\"3\",\"b\":\"4,0\",\"3\":\"5\"}\n",
       "",
       1},
      {"what would need quotes",
       b,
       {.separator = ';', .quotes = false, .summary = Summary::always},
       "a;b\n1;#\n",
       "a;b\n1;#\n",
       "jwnls: r.csv:2: b: number '#': what it becomes holds the separator, and quotes are not "
       "used\njwnls: rows: 1; values: 0 read, 0 missing, 1 not read\n",
       1},
      {"nothing decides",
       {{"d", Asked::date}},
       {.separator = ';', .proved = true},
       "d\n01.02.2024\n03.04.2024\n",
       "d\n2024-02-01\n2024-04-03\n",
       "jwnls: not proved: d: 2 values could be meant otherwise and none decides; the first is "
       "'01.02.2024'\n",
       5},
      {"one decides",
       {{"d", Asked::date}},
       {.separator = ';', .proved = true},
       "d\n01.02.2024\n13.04.2024\n",
       "d\n2024-02-01\n2024-04-13\n"},
  });
}

TEST(ConvertTable, EndsWhereTheInputIsBroken) {
  const Columns b = {{"b"}};
  const std::string many(17 * 1024 * 1024, 'x');
  expect_cases({
      {"a quote stays open",
       b,
       {},
       "a;b\n1;1,5\n\"x\"\"\n\";\"2,5\n3;3,5\n",
       "a;b\n1;1.5\n",
       "jwnls: r.csv:4: a quote is opened here and not closed\n",
       4},
      {"in the header",
       b,
       {},
       "a;b;\"c\n1;1,5\n",
       "",
       "jwnls: r.csv:1: a quote is opened here and not closed\n",
       4},
      {"a row is too long",
       b,
       {},
       "a;b\n1;1,5\n2;" + many + "\n3;3,5\n",
       "a;b\n1;1.5\n",
       "jwnls: r.csv:3: the row is longer than 16 MiB\n",
       4},
      {"a header is too long",
       b,
       {},
       many,
       "",
       "jwnls: r.csv:1: the row is longer than 16 MiB\n",
       4},
      {"line ends are CR",
       b,
       {},
       "a;b\r1;1,5\r",
       "",
       "jwnls: r.csv:1: line ends are CR: convert them with tr '\\r' '\\n'\n",
       4},
      {"another coding",
       b,
       {},
       "a;b;f\xE4llig\n",
       "",
       "jwnls: r.csv: the header is not UTF-8: say iconv -f WINDOWS-1252 -t UTF-8 r.csv | jwnls "
       "..., if it is WINDOWS-1252\n",
       2},
      {"two bytes a character",
       b,
       {},
       std::string("\xFF\xFE"
                   "a\0;\0",
                   6),
       "",
       "jwnls: r.csv: the header is not UTF-8: say iconv -f UTF-16 -t UTF-8 r.csv | jwnls ..., if "
       "it is UTF-16\n",
       2},
      {"an unknown column", b, {}, "x;y\n1;2\n", "", "jwnls: no column 'b'\n", 2},
      {"two separators",
       {{"2"}},
       {.has_header = false},
       "1,2;3,4\n",
       "",
       "jwnls: the separator may be a comma or a semicolon: say -F\n",
       2},
      {"an empty input", b, {}, "", "", "jwnls: no column 'b'\n", 2},
      {"a header alone", b, {}, "a;b", "a;b"},
  });
}

// Every row here is one that readers of tables differ about.
TEST(ConvertTable, HandsNastyTextsThrough) {
  const OwnFolder folder;
  const std::string texts[] = {"5\" pipe;2\n",
                               "\"x\"y;2\n",
                               " \"x;y\";2\n",
                               "1;2\r\n3;4\n5;6\r\n",
                               "\"a\r\nb\";c\r\n",
                               "a\rb;c\n",
                               "1;2",
                               "1;2\r\n3",
                               "1\n1;2;3\n",
                               "\n\n1;2\n\n",
                               "\"\";\n;\"\"\n",
                               std::string("a\0b;c\n", 6),
                               "f\xE4llig;\xFF\n",
                               "\"a;b\n",
                               ";;;\n",
                               "\"\"\"\";\"\"\n",
                               "\"a\"\"b\"c\";d\n",
                               "\"a\nb\nc\";\"d\n\"\n",
                               "\r\n1;2\r\n",
                               "x;\r\n",
                               "\r;\r\n"};
  for (const std::string& text : texts) {
    const std::string table = "a;b\n" + text;
    const bool is_open = text == "\"a;b\n";
    for (const Columns& columns : {Columns{}, Columns{{"b"}}}) {
      const TableOutcome outcome = run_table(table, columns, {.separator = ';'});
      EXPECT_EQ(outcome.output, is_open ? "a;b\n" : table);
      EXPECT_EQ(outcome.exit_code == 4, is_open) << text;
    }
  }
}

// What decides is the first MiB: blank lines and rows of another length have no say, and what is
// looked at is converted like the rest.
TEST(ConvertTable, ShowsItsFirstRowsBeforeAnyIsWritten) {
  const OwnFolder folder;
  const std::string few = "a;b\r\n\"x\n\"\"y\";1\r\n\r\n7\n;2";
  const std::string row = "some;1,5\n";
  std::string many = "a;b\n";
  while (many.size() < 3'000'000) many += row;
  const struct {
    const std::string& text;
    std::vector<std::string> first;
    std::vector<std::uint64_t> lines;
    std::size_t rows;
  } cases[] = {{few, {"x\n\"y", ""}, {2, 6}, 2}, {many, {"some", "some"}, {2, 3}, 1024 * 1024 / 9}};
  for (const auto& each : cases) {
    write_file("r.csv", each.text);
    TableJob job{.input = "r.csv", .separator = ';', .summary = Summary::never};
    job.columns = [&](const TableHeader&, const auto& sample) -> std::vector<ConvertedColumn> {
      EXPECT_EQ(sample().texts(0).size(), each.rows);
      EXPECT_EQ(sample().lines().size(), each.rows);
      for (std::size_t index = 0; index < each.first.size(); ++index) {
        EXPECT_EQ(sample().texts(0)[index], each.first[index]);
        EXPECT_EQ(sample().lines()[index], each.lines[index]);
      }
      EXPECT_EQ(sample().texts(7).back(), "");
      return {};
    };
    EXPECT_EQ(run_job(job).output, each.text);
  }
}

// What the threads have in turn, and where chunks end, is not to be seen.
TEST(ConvertTable, IsTheSameForAllThreadsAndChunks) {
  const OwnFolder folder;
  std::mt19937_64 random(jwnls::test::test_seed(20240315));
  constexpr const char* fields[] = {"1,5",      "x", "",   "\"2.000,5\"", "\"a;b\"", "\"q\"\"r\"",
                                    "\"l\nm\"", "#", "7$", "5\" y",       "\"z\"w",  "-"};
  constexpr const char* ends[] = {"\n", "\n", "\n", "\r\n", "\n\n"};
  for (int round = 0; round < 300; ++round) {
    std::string text = "a;b;c\n";
    const std::size_t rows = random() % 60;
    for (std::size_t row = 0; row < rows; ++row) {
      const std::size_t count = random() % 20 == 0 ? random() % 5 : 3;
      for (std::size_t field = 0; field < count; ++field) {
        text.append(field > 0 ? ";" : "").append(fields[random() % std::size(fields)]);
      }
      text.append(ends[random() % std::size(ends)]);
    }
    if (random() % 10 == 0) text.append("1;\"open");
    TableJob job;
    job.separator = ';';
    job.invalid = static_cast<Invalid>(random() % 4);
    job.ragged = static_cast<Ragged>(random() % 2);
    job.max_messages = random() % 8;
    job.json_lines = random() % 4 == 0;
    if (random() % 3 == 0) job.rejects = "rejects.csv";
    if (random() % 2 == 0) job.report = random() % 2 == 0 ? "report.json" : "report.html";
    if (random() % 3 == 0) job.max_rejects = random() % 10;
    if (random() % 2 == 0) job.null_out = "NULL";
    Columns columns = {{"b"}};
    if (random() % 2 == 0) columns.push_back({"c", Asked::number, "new", "currency"});
    job.threads = 1;
    const TableOutcome expected = run_table(text, columns, job);
    job.chunk_bytes = random() % 2 == 0 ? 64 : 1 + random() % 300;
    ASSERT_EQ(run_table(text, columns, job), expected) << text;
    job.threads = 3;
    ASSERT_EQ(run_table(text, columns, job), expected) << text;
    // A report wants each value by itself.
    job.report = job.report.empty() ? "report.json" : "";
    TableOutcome other = run_table(text, columns, job);
    other.report = expected.report;
    ASSERT_EQ(other, expected) << text;
  }
}

}  // namespace
}  // namespace jwnls::tool
