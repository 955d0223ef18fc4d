#include "tool/commands/list_commands.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <sstream>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/json_text.h"
#include "tool/nearest_name.h"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/terminal_text.h"
#include "tool/territory_adjectives.h"

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
  // The library hands out memory of malloc().
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(mapped, &std::free);
  return {reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(length)};
}

// Adds the words of a text, but for marks around them: "German (Switzerland)" has two.
void add_words(const std::string& text, std::vector<std::string>& words) {
  constexpr const char* marks = " (),_/";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(marks, at), text.size());
    words.push_back(text.substr(at, end - at));
    at = end + 1;
  }
}

// One of what there is.
struct Item {
  std::string name;
  std::string english_name = {};  // of locales
  std::string own_name = {};

  // All that a filter looks at.
  [[nodiscard]] std::string names() const { return name + " " + english_name + " " + own_name; }
};

// Whether each part stands in the names, or begins an adjective of the territory.
bool matches(const Item& item, const std::vector<std::string>& parts) {
  const std::string names = folded(item.names());
  const std::string adjectives = std::string(1, ' ').append(territory_adjectives(item.name));
  return std::all_of(parts.begin(), parts.end(), [&](const std::string& part) {
    return names.find(part) != std::string::npos ||
           adjectives.find(std::string(1, ' ').append(part)) != std::string::npos;
  });
}

// Those that match the filter as it is or, where none does, each word of it.
std::vector<Item> chosen(const std::vector<Item>& items, const std::string& filter) {
  const std::string whole = folded(filter);
  std::istringstream words(whole);
  std::vector<Item> found;
  for (const auto& parts :
       {std::vector{whole},
        std::vector<std::string>(std::istream_iterator<std::string>(words), {})}) {
    std::copy_if(items.begin(), items.end(), std::back_inserter(found),
                 [&parts](const Item& item) { return matches(item, parts); });
    if (!found.empty()) break;
  }
  return found;
}

// What a filter that nothing matches may have been meant to be.
std::string meant(const std::vector<Item>& items, const std::string& filter) {
  std::vector<std::string> words;
  for (const Item& item : items) add_words(item.names(), words);
  return did_you_mean(filter, words);
}

// Adds an item; false when something of it cannot be told, which then stands in its place.
using AddItem = bool (*)(const Item&, Table&, JsonText*);

bool add_locale(const Item& item, Table& table, JsonText* json) {
  if (json == nullptr) {
    table.add({item.name, item.english_name, item.own_name});
    return true;
  }
  json->member("name", item.name);
  json->member("english_name", item.english_name).member("own_name", item.own_name);
  return true;
}

bool add_zone(const Item& item, Table& table, JsonText* json) {
  try {
    const jwnls_zone_state now = zone_now(item.name);
    const std::string offset = offset_text(now.offset_seconds);
    if (json == nullptr) {
      table.add({item.name, now.abbreviation, offset});
      return true;
    }
    json->member("name", item.name).member("abbreviation", now.abbreviation);
    json->member("offset", offset).key("offset_seconds").raw(std::to_string(now.offset_seconds));
    return true;
  } catch (const Failure& failure) {
    if (json == nullptr) {
      table.add({item.name, "", failure.message});
    } else {
      json->member("name", item.name).member("error", failure.message);
    }
    return false;
  }
}

ExitCode list(const std::vector<Item>& items, const char* what, const ListOptions& options,
              AddItem add) {
  const auto found = chosen(items, options.filter);
  Table table;
  JsonText json;
  json.open('[');
  std::size_t untold = 0;
  for (const Item& item : found) {
    if (options.json) {
      if (!add(item, table, &json.end_line().open('{'))) ++untold;
      json.close();
    } else if (options.names_only) {
      table.add({item.name});
    } else if (!add(item, table, nullptr)) {
      ++untold;
    }
  }
  Output output;
  if (options.json) output.line(json.end_line().close().text());
  table.write(output, terminal_columns());
  output.flush();
  if (untold > 0) {
    report(std::string(what) + "s that cannot be read: " + std::to_string(untold));
    return ExitCode::unavailable;
  }
  if (!found.empty()) return ExitCode::ok;
  report(std::string("no ") + what + " matches " + in_quotes(options.filter) +
         meant(items, options.filter));
  return ExitCode::bad_values;
}

void check(Code code, const char* what) {
  if (code == Code::ok) return;
  throw Failure{ExitCode::unavailable,
                std::string(what) + "s: " + jwnls_code_text(static_cast<int>(code))};
}

}  // namespace

ExitCode run_locales(const ListOptions& options) {
  std::vector<Item> items;
  const Code code = each_locale([&](const jwnls_locale_info& locale) {
    items.push_back({locale.name, locale.english_name, locale.own_name});
  });
  check(code, "locale");
  return list(items, "locale", options, add_locale);
}

ExitCode run_zones(const ListOptions& options) {
  std::vector<Item> items;
  const int code = jwnls_zones(
      [](void* all, const char* name) {
        static_cast<std::vector<Item>*>(all)->push_back({name});
        return 0;
      },
      &items);
  check(static_cast<Code>(code), "time zone");
  // People write "new york".
  for (Item& item : items) {
    item.english_name = item.name;
    std::replace(item.english_name.begin(), item.english_name.end(), '_', ' ');
  }
  return list(items, "time zone", options, add_zone);
}

}  // namespace jwnls::tool
