#include "tool/list_commands.h"

#include <utf8proc.h>

#include <cstdlib>

#include "client/jwnls.h"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/terminal_text.h"
#include "tool/zone_text.h"

namespace jwnls::tool {
namespace {

// A form of the text in which two texts that differ in case alone are the same.
std::string folded(const std::string& text) {
  utf8proc_uint8_t* mapped = nullptr;
  const auto length = utf8proc_map(
      reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
      static_cast<utf8proc_ssize_t>(text.size()), &mapped,
      static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | UTF8PROC_COMPOSE | UTF8PROC_STABLE));
  if (length < 0) return text;
  std::string out(reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(length));
  std::free(mapped);  // the library hands out memory of malloc()
  return out;
}

bool contains(const std::string& text, const std::string& folded_part) {
  return folded_part.empty() || folded(text).find(folded_part) != std::string::npos;
}

ExitCode finish(const Table& table, const char* what, const ListOptions& options) {
  Output output;
  table.write(output, terminal_columns());
  output.flush();
  if (!table.empty()) return ExitCode::ok;
  report(std::string("no ") + what + " matches " + client::in_quotes(options.filter));
  return ExitCode::bad_values;
}

}  // namespace

ExitCode run_locales(const ListOptions& options) {
  const client::Host host = open_host();
  const std::string filter = folded(options.filter);
  Table table;
  for (const client::LocaleInfo& locale : host.locales()) {
    const bool listed = contains(locale.name, filter) || contains(locale.english_name, filter) ||
                        contains(locale.own_name, filter);
    if (!listed) continue;
    if (options.names_only) {
      table.add({locale.name});
    } else {
      table.add({locale.name, locale.english_name, locale.own_name});
    }
  }
  return finish(table, "locale", options);
}

ExitCode run_zones(const ListOptions& options) {
  const client::Host host = open_host();
  const std::string filter = folded(options.filter);
  Table table;
  for (const std::string& name : host.time_zones()) {
    if (!contains(name, filter)) continue;
    if (options.names_only) {
      table.add({name});
      continue;
    }
    const auto zone = host.time_zone(name);
    if (zone) {
      table.add({name, zone->abbreviation, offset_text(zone->offset_from_utc)});
    } else {
      table.add({name, "", zone.error().message});
    }
  }
  return finish(table, "time zone", options);
}

}  // namespace jwnls::tool
