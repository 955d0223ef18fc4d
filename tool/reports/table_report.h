// What a run found in a table, and the three ways to write it down.

#ifndef JWNLS_TOOL_REPORTS_TABLE_REPORT_H_
#define JWNLS_TOOL_REPORTS_TABLE_REPORT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jwnls::tool {

/// Of a column's values, or of its amounts in one currency.
struct ReportedValues {
  std::string currency;  // ISO code; empty: of no currency
  std::uint64_t count = 0;
  std::string least;  // as programs write values
  std::string greatest;
  std::optional<std::string> sum;  // exact; of kinds that are added up
};

/// A text that was not read.
struct ReportedText {
  std::string text;  // its first bytes, where it is long
  bool is_cut = false;
  std::uint64_t count = 0;
  std::uint64_t line = 0;  // of the input, where it stands first
  std::string reason;
};

/// A form in which dates were written.
struct ReportedForm {
  std::string form;  // "d.m.yyyy"; empty: all others
  std::uint64_t count = 0;
};

struct ReportedColumn {
  std::uint64_t number = 0;  // from 1
  std::string name;          // or the number
  std::string kind;
  std::string layout;  // locale, kind and words: "de_DE amount"
  std::uint64_t read = 0;
  std::uint64_t missing = 0;
  std::uint64_t not_read = 0;
  std::uint64_t two_ways = 0;       // of those read: could be meant otherwise
  std::uint64_t deciding = 0;       // of those read: exclude that
  std::vector<ReportedForm> forms;  // of columns of dates
  std::vector<ReportedValues> values;
  std::vector<ReportedText> texts;    // the most frequent first
  std::uint64_t different_texts = 0;  // that were told apart
  std::uint64_t untold = 0;           // not read, and in no count of a text
};

/// How the input's characters and line ends are written.
struct ReportedInput {
  bool byte_order_mark = false;
  std::uint64_t malformed_line = 0;  // the first with bytes that are not UTF-8; 0: none
  std::uint64_t line_feeds = 0;      // line ends outside quotes: LF alone
  std::uint64_t both_ends = 0;       // and CR LF
};

struct TableReport {
  std::string input;
  std::string separator;  // its name
  ReportedInput written;
  bool has_header = true;
  std::uint64_t rows = 0;
  std::uint64_t ragged = 0;  // of another length
  std::string ended;         // empty: at the end of the input; else why before it
  std::vector<ReportedColumn> columns;
};

[[nodiscard]] std::string text_report(const TableReport& report);
[[nodiscard]] std::string html_report(const TableReport& report);
[[nodiscard]] std::string json_report(const TableReport& report);

/// What is said of a column's values that could be meant otherwise; empty where nothing is.
[[nodiscard]] std::string two_ways_remark(const ReportedColumn& column);

/// What is said of texts that are not among those shown; empty where there are none.
[[nodiscard]] std::string other_texts_remark(const ReportedColumn& column);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_TABLE_REPORT_H_
