#include "tool/commands/table_command.h"

#include "tool/layout_words.h"
#include "tool/nearest_name.h"
#include "tool/tables/column_selection.h"
#include "tool/tables/explain_table.h"
#include "tool/tables/open_columns.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

[[noreturn]] void refuse(const std::string& problem) { throw Failure{ExitCode::usage, problem}; }

Summary summary_of(const GivenOptions& options) {
  if (options.has("quiet")) return Summary::never;
  return options.has("summary") ? Summary::always : Summary::when_refused;
}

void add_outcome(const GivenOptions& options, TableJob& job) {
  constexpr std::uint64_t any = 1'000'000'000'000;
  constexpr std::uint64_t most_threads = 256;
  job.output = options.value("output").value_or("");
  job.in_place = options.has("in-place");
  job.in_place_suffix = options.value("in-place").value_or("");
  if (job.in_place && !job.output.empty()) refuse("--in-place and --output exclude each other");
  job.null_out = options.value("null-out");
  if (const auto invalid = options.value("invalid")) job.invalid = invalid_of_name(*invalid);
  if (options.value("ragged") == "convert") job.ragged = Ragged::convert;
  job.rejects = options.value("rejects").value_or("");
  job.report = options.value("report").value_or("");
  job.max_messages = options.number("max-messages", 0, any).value_or(job.max_messages);
  job.max_rejects = options.number("max-rejects", 0, any);
  job.summary = summary_of(options);
  job.proved = options.has("proved") || gives(options.values("option"), "proved");
  if (options.has("progress") != options.has("no-progress")) job.progress = options.has("progress");
  job.threads =
      static_cast<unsigned>(options.number("threads", 1, most_threads).value_or(job.threads));
}

std::vector<ConvertedColumn> converted(const std::vector<OpenedColumn>& columns) {
  std::vector<ConvertedColumn> all;
  all.reserve(columns.size());
  for (const OpenedColumn& column : columns) {
    const ColumnSpec& spec = *column.selected.spec;
    all.push_back(
        {column.selected.field, column.selected.name, column.values, spec.as, spec.currency_as});
  }
  return all;
}

}  // namespace

char separator_of(const std::string& text) {
  struct Named {
    const char* name;
    char character;
  };
  constexpr Named named[] = {
      {"tab", '\t'}, {"comma", ','}, {"semicolon", ';'}, {"pipe", '|'}, {"\\t", '\t'}};
  for (const Named& each : named) {
    if (text == each.name) return each.character;
  }
  const bool serves = text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80 &&
                      std::string_view("\"\r\n").find(text[0]) == std::string_view::npos;
  if (!serves) {
    refuse("--separator: " + in_quotes(text) +
           " is not one character of ASCII, nor tab, comma, semicolon or pipe" +
           did_you_mean(text, {"tab", "comma", "semicolon", "pipe"}));
  }
  return text[0];
}

Invalid invalid_of_name(const std::string& name) {
  if (name == "empty") return Invalid::empty;
  if (name == "drop") return Invalid::drop;
  return name == "stop" ? Invalid::stop : Invalid::keep;
}

TableJob job_of(const GivenOptions& options) {
  constexpr std::uint64_t most_lines = 1'000'000;
  if (options.operands().size() > 1) {
    refuse("one file at a time, not " + in_quotes(options.operands()[1]) + " too (see --help)");
  }
  TableJob job;
  if (!options.operands().empty()) job.input = options.operands().front();
  if (const auto separator = options.value("separator")) job.separator = separator_of(*separator);
  job.has_header = !options.has("no-header");
  job.quotes = !options.has("no-quotes");
  job.skip_lines = options.number("skip", 0, most_lines).value_or(0);
  job.json_lines = options.has("jsonl");
  return job;
}

ExitCode run_table(Command command, const KindRow* kind, const GivenOptions& options) {
  for (const char* of_lines : {"width", "left"}) {
    if (options.has(of_lines)) refuse(std::string("--") + of_lines + " is for lines, not tables");
  }
  std::vector<ColumnSpec> specs;
  for (const std::string& text : options.values("columns")) specs.push_back(read_column_spec(text));
  TableJob job = job_of(options);
  add_outcome(options, job);
  for (const ColumnSpec& spec : specs) job.proved = job.proved || gives(spec.words, "proved");
  job.plain_names = plain_names(specs);
  const ColumnRequest request{command, kind, &options};
  job.columns = [&](const TableHeader& header, const std::function<const TableSample&()>& sample) {
    const auto columns = open_columns(request, select_columns(specs, header), sample);
    if (options.has("explain")) explain_table(job, header, columns, sample());
    return converted(columns);
  };
  return convert_table(job);
}

}  // namespace jwnls::tool
