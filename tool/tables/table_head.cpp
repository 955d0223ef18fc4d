#include "tool/tables/table_head.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

#include "tool/tables/chunk_reader.h"
#include "tool/tables/field_scanner.h"
#include "tool/tables/field_text.h"

namespace jwnls::tool {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
// A first row that does not end here for a separator, because a quote is open, ends for another.
constexpr std::size_t patience_bytes = 1024 * 1024;

struct Separator {
  char character;
  std::string_view name;
};
constexpr Separator candidates[] = {
    {',', "a comma"}, {';', "a semicolon"}, {'\t', "a tab"}, {'|', "a vertical bar"}};
// Of a table with a single column: nothing that its texts hold.
constexpr char no_separator = '\t';

bool is_tab_separated(std::string_view path) {
  constexpr std::string_view extension = ".tsv";
  if (path.size() < extension.size()) return false;
  return std::equal(extension.begin(), extension.end(), path.end() - extension.size(),
                    [](char left, char right) {
                      return left == std::tolower(static_cast<unsigned char>(right));
                    });
}

class HeadFinder {
 public:
  HeadFinder(ByteSource& source, const TableJob& job) : source_(source), job_(job) {}

  TableHead find() {
    refuse_wide_text();
    const bool is_marked = text().starts_with(byte_order_mark);
    if (is_marked) at_ = byte_order_mark.size();
    for (std::uint64_t line = 0; line < job_.skip_lines && skip_line(); ++line) continue;
    std::optional<char> separator = job_.separator;
    const std::optional<char> said = separator_line();
    if (!separator && is_tab_separated(job_.input)) separator = '\t';
    if (!separator) separator = said;
    while (line_is_blank() && skip_line()) continue;
    refuse_carriage_returns();
    TableHead head = head_of(separator);
    head.header.said_separator = said;
    head.header.byte_order_mark = is_marked;
    count_line_ends(head);
    return head;
  }

 private:
  struct Reading {
    Separator separator;
    std::size_t found;  // of the names that were asked for
  };

  std::string_view text() const { return source_.ahead(); }
  std::string_view rest() const { return text().substr(at_); }

  bool more() {
    at_end_ = at_end_ || !source_.look_ahead();
    return !at_end_;
  }

  // Spreadsheets write "Unicode text" with two bytes a character.
  void refuse_wide_text() {
    while (text().size() < byte_order_mark.size() && more()) continue;
    if (text().starts_with("\xFF\xFE") || text().starts_with("\xFE\xFF")) refuse_coding("UTF-16");
  }

  [[noreturn]] void refuse_coding(const std::string& coding) const {
    const bool is_file = !source_.is_standard_input();
    const std::string from =
        "iconv -f " + coding + " -t UTF-8 " + (is_file ? source_.name() + " " : "");
    throw Failure{ExitCode::usage, source_.name() + ": the header is not UTF-8: say " + from +
                                       "| jwnls ..., if it is " + coding};
  }

  // The end of the line, behind its line feed; none when there is none.
  std::optional<std::size_t> line_end() {
    while (true) {
      const std::size_t end = rest().find('\n');
      if (end != std::string_view::npos) return at_ + end + 1;
      if (rest().size() > ChunkReader::longest_row || !more()) return std::nullopt;
    }
  }

  bool skip_line() {
    const auto end = line_end();
    if (end) ++line_;
    at_ = end.value_or(text().size());
    return end.has_value();
  }

  // Blank, and a line: an end of input is none.
  bool line_is_blank() {
    const auto end = line_end();
    if (!end) return false;
    const std::string_view line = text().substr(at_, *end - at_);
    return line == "\n" || line == "\r\n";
  }

  // Spreadsheets take a first line "sep=;" as what separates, not as values.
  std::optional<char> separator_line() {
    constexpr std::string_view word = "sep=";
    const auto end = line_end();
    if (!end) return std::nullopt;
    const std::string_view line = text().substr(at_, *end - at_);
    if (!line.starts_with(word) && !line.starts_with("SEP=")) return std::nullopt;
    const std::string_view value = line.substr(word.size());
    if (value.empty()) return std::nullopt;
    const char separator = value.front();
    if (value.substr(1) != "\n" && value.substr(1) != "\r\n") return std::nullopt;
    if (separator == '"' || separator == '\r' || static_cast<unsigned char>(separator) >= 0x80) {
      return std::nullopt;
    }
    skip_line();
    return separator;
  }

  void refuse_carriage_returns() {
    if (line_ > 1 || line_end() || rest().find('\r') == std::string_view::npos) return;
    throw Failure{ExitCode::io,
                  source_.place(1) + "line ends are CR: convert them with tr '\\r' '\\n'"};
  }

  std::optional<RowFields> row_of(char separator, bool patient) {
    while (true) {
      auto row = first_row(rest(), separator, job_.quotes, at_end_);
      if (row || at_end_ || (rest().size() > patience_bytes && !patient)) return row;
      if (rest().size() > ChunkReader::longest_row) return std::nullopt;
      (void)more();
    }
  }

  std::size_t names_found(const RowFields& row) const {
    return static_cast<std::size_t>(std::count_if(
        job_.plain_names.begin(), job_.plain_names.end(), [&](const std::string& name) {
          return std::any_of(row.fields.begin(), row.fields.end(), [&](std::string_view field) {
            return shown_text(field, job_.quotes) == name;
          });
        }));
  }

  // The one under which all names are there; without names the only one that splits the row.
  char find_separator() {
    std::vector<Reading> proved;
    std::optional<Reading> best;
    std::optional<char> endless;  // splits a row in which a quote stays open
    for (const Separator& candidate : candidates) {
      const auto row = row_of(candidate.character, false);
      if (!row && at_end_ && rest().find(candidate.character) != std::string_view::npos) {
        endless = candidate.character;
      }
      if (!row || row->fields.size() < 2) continue;
      const Reading reading{candidate, names_found(*row)};
      if (!best || reading.found > best->found) best = reading;
      if (!job_.has_header || reading.found == job_.plain_names.size()) proved.push_back(reading);
    }
    if (proved.size() > 1) refuse_two(proved);
    if (!proved.empty()) return proved.front().separator.character;
    const auto single = row_of(no_separator, true);
    // Where not all names are there, the reading with the most of them tells best what is amiss.
    const std::size_t found = single ? names_found(*single) : 0;
    if (endless && (found == 0 || found < job_.plain_names.size())) return *endless;
    return best && found <= best->found ? best->separator.character : no_separator;
  }

  [[noreturn]] static void refuse_two(const std::vector<Reading>& proved) {
    std::string names;
    for (std::size_t index = 0; index < proved.size(); ++index) {
      if (index > 0) names.append(index + 1 == proved.size() ? " or " : ", ");
      names.append(proved[index].separator.name);
    }
    throw Failure{ExitCode::usage, "the separator may be " + names + ": say -F"};
  }

  [[noreturn]] void refuse_endless(char separator) const {
    FieldScanner scanner(separator, job_.quotes);
    FieldMarks marks;
    scanner.scan(rest().data(), 0, rest().size(), marks);
    const std::size_t quote = at_end_ ? scanner.open_quote(rest().data(), rest().size()) : 0;
    const auto lines =
        std::count(rest().begin(), rest().begin() + static_cast<std::ptrdiff_t>(quote), '\n');
    throw Failure{ExitCode::io, source_.place(line_ + static_cast<std::uint64_t>(lines)) +
                                    (at_end_ ? open_quote_message : long_row_message)};
  }

  TableHead head_of(std::optional<char> separator) {
    TableHead head;
    head.header.separator = separator ? *separator : find_separator();
    const auto found = row_of(head.header.separator, true);
    if (!found && !rest().empty()) refuse_endless(head.header.separator);
    const RowFields row = found && !rest().empty() ? *found : RowFields{};
    head.header.fields = row.fields.size();
    head.size = head.header_end = at_;
    head.first_line = line_;
    if (!job_.has_header || row.size == 0) return head;
    const std::string_view bytes = rest().substr(0, row.size);
    if (!is_utf8(bytes)) refuse_coding("WINDOWS-1252");
    for (const std::string_view field : row.fields) {
      head.header.names.push_back(shown_text(field, job_.quotes));
    }
    head.size = at_ + row.size;
    head.header_end = static_cast<std::size_t>(row.fields.back().data() + row.fields.back().size() -
                                               text().data());
    head.first_line += static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    return head;
  }

  void count_line_ends(TableHead& head) const {
    const std::string_view before = text().substr(0, head.size);
    for (std::size_t at = before.find('\n'); at != std::string_view::npos;
         at = before.find('\n', at + 1)) {
      const bool is_both = at > 0 && before[at - 1] == '\r';
      ++(is_both ? head.header.both_ends : head.header.line_feeds);
    }
  }

  ByteSource& source_;
  const TableJob& job_;
  std::size_t at_ = 0;
  std::uint64_t line_ = 1;
  bool at_end_ = false;
};

}  // namespace

TableHead find_head(ByteSource& source, const TableJob& job) {
  return HeadFinder(source, job).find();
}

}  // namespace jwnls::tool
