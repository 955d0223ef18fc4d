#include "tool/commands/list_commands.h"

#include <utf8proc.h>

#include <cstdlib>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/terminal_text.h"

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

ExitCode finish(Code code, const Table& table, const char* what, const ListOptions& options) {
  if (code != Code::ok) {
    throw Failure{ExitCode::unavailable,
                  std::string(what) + "s: " + jwnls_code_text(static_cast<int>(code))};
  }
  Output output;
  table.write(output, terminal_columns());
  output.flush();
  if (!table.empty()) return ExitCode::ok;
  report(std::string("no ") + what + " matches " + in_quotes(options.filter));
  return ExitCode::bad_values;
}

}  // namespace

ExitCode run_locales(const ListOptions& options) {
  const std::string filter = folded(options.filter);
  Table table;
  const Code code = each_locale([&](const jwnls_locale_info& locale) {
    const bool listed = contains(locale.name, filter) || contains(locale.english_name, filter) ||
                        contains(locale.own_name, filter);
    if (!listed) return;
    if (options.names_only) {
      table.add({locale.name});
    } else {
      table.add({locale.name, locale.english_name, locale.own_name});
    }
  });
  return finish(code, table, "locale", options);
}

ExitCode run_zones(const ListOptions& options) {
  const std::string filter = folded(options.filter);
  std::vector<std::string> names;
  const int code = jwnls_zones(
      [](void* all, const char* name) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(name);
        return 0;
      },
      &names);
  Table table;
  for (const std::string& name : names) {
    if (!contains(name, filter)) continue;
    if (options.names_only) {
      table.add({name});
      continue;
    }
    try {
      const jwnls_zone_state now = zone_now(name);
      table.add({name, now.abbreviation, offset_text(now.offset_seconds)});
    } catch (const Failure& failure) {
      table.add({name, "", failure.message});
    }
  }
  return finish(static_cast<Code>(code), table, "time zone", options);
}

}  // namespace jwnls::tool
