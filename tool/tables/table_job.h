// What the command line asks of a table.

#ifndef JWNLS_TOOL_TABLES_TABLE_JOB_H_
#define JWNLS_TOOL_TABLES_TABLE_JOB_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exit_code.h"
#include "tool/tables/column_values.h"

namespace jwnls::tool {

/// The first row of a table.
struct TableHeader {
  std::vector<std::string> names;  // without quotes; empty where the table has none
  std::size_t fields = 0;          // of the header, else of the first row
  char separator = ',';
  std::optional<char> said_separator = {};  // of a first line "sep=;"
  bool byte_order_mark = false;
  std::uint64_t line_feeds = 0;  // before the first row of values: line ends that are LF alone
  std::uint64_t both_ends = 0;   // and CR LF
};

/// The first rows of a table, for what its values decide. Texts are without quotes.
class TableSample {
 public:
  virtual ~TableSample() = default;
  /// The texts of a column (from 0), as many as there are rows in the sample; a row that is too
  /// short has none: empty.
  [[nodiscard]] virtual std::vector<std::string> texts(std::size_t field) const = 0;
  /// The physical lines on which the rows begin, from 1.
  [[nodiscard]] virtual const std::vector<std::uint64_t>& lines() const = 0;
};

/// A column that is converted.
struct ConvertedColumn {
  std::size_t field = 0;  // from 0
  std::string name;       // of the field in the header, or its number; messages use it
  std::shared_ptr<const ColumnValues> values;
  std::optional<std::string> as;           // adds a column of this name; else in place
  std::optional<std::string> currency_as;  // adds one with the amount's currency
};

enum class Invalid { keep, empty, drop, stop };
enum class Ragged { reject, convert };
enum class Summary { when_refused, always, never };

struct TableJob {
  std::string input = {};   // empty or "-": standard input
  std::string output = {};  // empty: standard output
  bool in_place = false;
  std::string in_place_suffix = {};  // the old file is kept under its name with this behind it

  std::optional<char> separator = {};
  std::vector<std::string> plain_names = {};  // that were asked for: they tell the separator
  bool has_header = true;
  bool quotes = true;
  std::uint64_t skip_lines = 0;

  std::optional<std::string> null_out = {};  // what missing values become
  Invalid invalid = Invalid::keep;
  Ragged ragged = Ragged::reject;
  std::string rejects = {};  // file; empty: messages
  std::string report = {};   // file, "-" for standard error; empty: none
  std::uint64_t max_messages = 10;
  std::optional<std::uint64_t> max_rejects = {};
  Summary summary = Summary::when_refused;
  bool proved = false;  // a column of values that could mean others, none of which decides, fails
  bool json_lines = false;
  std::optional<bool> progress = {};  // none: when there is a terminal to show it on
  unsigned threads = 0;               // 0: as many as there are processors, at most 4
  std::size_t chunk_bytes = 256 * 1024;
  std::size_t sample_bytes = 1024 * 1024;  // of the rows that may decide something

  /// The columns to convert, in the order of the command line, once the header is known. The sample
  /// is read only when it is asked for. Throws Failure.
  std::function<std::vector<ConvertedColumn>(const TableHeader&,
                                             const std::function<const TableSample&()>&)>
      columns = {};
};

/// Converts the table; throws Failure.
ExitCode convert_table(const TableJob& job);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TABLE_JOB_H_
