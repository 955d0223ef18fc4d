#include "tool/format_command.h"

#include "tool/session.h"

namespace jwnls::tool {

void check_options(const FormatKind& kind, const FormatOptions& options) {
  if (kind.check == nullptr) return;
  const auto usable = kind.check(options);
  if (!usable) throw Failure{ExitCode::usage, usable.error().message + " (see --help)"};
}

client::Result<ValueText> format_value(const FormatKind& kind, const client::Locale& locale,
                                       const FormatOptions& options, std::string_view value) {
  auto text = kind.format(locale, options, value);
  if (!text) {
    return client::failure(text.error().status,
                           client::in_quotes(value) + ": " + text.error().message);
  }
  if (!text->note.empty()) text->note = client::in_quotes(value) + ": note: " + text->note;
  return text;
}

ExitCode run_format(const FormatKind& kind, const FormatOptions& options) {
  check_options(kind, options);
  const client::Host host = open_host();
  const client::Locale locale =
      open_locale(host, options.locale, kind.locale_category, options.zone);
  return write_values(options.values, [&](std::string_view value) {
    return format_value(kind, locale, options, value);
  });
}

}  // namespace jwnls::tool
