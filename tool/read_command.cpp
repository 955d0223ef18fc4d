#include "tool/read_command.h"

#include <algorithm>
#include <map>

#include "tool/session.h"

namespace jwnls::tool {
namespace {

// Values are wall-clock times: no zone plays a part.
constexpr const char* any_zone = "UTC";

std::map<std::string, std::string> host_options(const ReadOptions& options) {
  if (!options.year_cutoff) return {};
  return {{"JW_NAME_YEARCUTOFF", std::to_string(*options.year_cutoff)}};
}

}  // namespace

const FormatKind& written_kind(const ReadKind& kind) {
  for (const auto kinds : {date_kinds(), number_kinds()}) {
    const auto row = std::find_if(kinds.begin(), kinds.end(), [&](const FormatKind& format) {
      return std::string_view(format.name) == kind.written_as;
    });
    if (row != kinds.end()) return *row;
  }
  throw Failure{ExitCode::unavailable, std::string("no kind ") + kind.written_as};
}

ExitCode run_read(const ReadKind& kind, const ReadOptions& options) {
  const FormatKind& written = written_kind(kind);
  check_options(written, options.format);
  if (kind.check != nullptr) {
    const auto usable = kind.check(options);
    if (!usable) throw Failure{ExitCode::usage, usable.error().message + " (see --help)"};
  }
  const client::Host host = open_host(host_options(options));
  const char* const category = written.locale_category;
  const client::Locale source = open_locale(host, options.locale, category, any_zone);
  if (options.target.empty()) {
    return write_values(options.values,
                        [&](std::string_view text) { return kind.read(source, options, text); });
  }
  const client::Locale target = open_locale(host, options.target, category, any_zone);
  return write_values(options.values, [&](std::string_view text) -> client::Result<ValueText> {
    auto value = kind.read(source, options, text);
    if (!value) return value;
    auto written_text = format_value(written, target, options.format, value->text);
    if (!written_text) return written_text;
    // A note on what was read tells more than one on how it is shown.
    if (!value->note.empty()) written_text->note = value->note;
    return written_text;
  });
}

}  // namespace jwnls::tool
