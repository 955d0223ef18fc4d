#include "tool/commands/manual_page.h"

#include <string_view>

#include "jwnls/jwnls.h"
#include "tool/commands/command_rows.h"
#include "tool/options_table.h"

namespace jwnls::tool {
namespace {

// The day of the texts' last change: that of the build would make each one another.
constexpr const char* page_date = "2026-11-22";

struct Item {
  const char* name;
  const char* text;
};
constexpr Item environment[] = {
    {"LC_ALL, LC_TIME, LC_NUMERIC, LC_MONETARY, LANG",
     "The locale where none is said: the first that is set and not empty of LC_ALL, the one of the "
     "kind and LANG."},
    {"TZ", "The system's time zone; default: /etc/localtime, else UTC."},
    {"NO_COLOR", "Set and not empty: messages have no colour."},
    {"JWNLS_EXTENSION_PATH",
     "Folders in which modules are searched first, absolute and separated by colons."},
};
constexpr Item exits[] = {
    {"0", "Done."},
    {"1",
     "One or more values are bad, or rows of another length; the others are done. A list's filter "
     "matches nothing."},
    {"2", "A wrong command line, also a column that is not there, or two possible separators."},
    {"3", "An unknown locale or time zone, or a module that cannot be loaded."},
    {"4", "Input that cannot be read, output that cannot be written, a quote that is not closed."},
    {"5",
     "With --proved: values could be meant otherwise and none decides. Of detect and of columns "
     "with several locales: no single reading."},
};

// Hyphens and backslashes as they are typed, and no line that roff takes for a request.
std::string roff(std::string_view text) {
  std::string out;
  bool begins_line = true;
  for (const char each : text) {
    if (begins_line && (each == '.' || each == '\'')) out += "\\&";
    begins_line = each == '\n';
    if (each == '-') {
      out += "\\-";
    } else if (each == '\\') {
      out += "\\e";
    } else {
      out += each;
    }
  }
  return out;
}

std::string bold(std::string_view text) { return std::string("\\fB") + roff(text) + "\\fP"; }
std::string italic(std::string_view text) { return std::string("\\fI") + roff(text) + "\\fP"; }

class Page {
 public:
  void add(const std::string& line) { text_.append(line).append("\n"); }
  void section(const char* title) {
    add(std::string(".SH ") + title);
    begins_section_ = true;
  }
  void item(const std::string& name, const std::string& text) {
    add(".TP");
    add(name);
    add(text);
    begins_section_ = false;
  }
  // Lines as they are.
  void lines(std::string_view text) {
    if (!begins_section_) add(".PP");
    begins_section_ = false;
    add(".nf");
    add(".RS");
    add(roff(text));
    add(".RE");
    add(".fi");
  }

  void head() {
    add(std::string(".TH JWNLS 1 ") + page_date + " \"jwnls " + jwnls_version() +
        "\" \"User Commands\"");
    section("NAME");
    add("jwnls \\- write and read dates, times, numbers and amounts the way a locale does");
    section("SYNOPSIS");
    bool is_first = true;
    for (const CommandRow& row : command_rows()) {
      if (!is_first) add(".br");
      is_first = false;
      add(bold(std::string("jwnls ") + row.name) + " " + italic(row.operands));
      if ((row.command & value_commands) == 0) continue;
      add(".br");
      add(bold(std::string("jwnls ") + row.name) + " " + bold("-c") + " " +
          italic("COLUMNS[=KIND][:WORD]... [OPTION...] [FILE]"));
    }
    section("DESCRIPTION");
    add(program_description);
    add("Values are arguments or, without any, lines of standard input. What cannot be read or "
        "written is named on standard error, and the rest goes on.");
    add(".PP");
    add(roff(program_locales));
  }

  void commands() {
    section("COMMANDS");
    for (const CommandRow& row : command_rows()) {
      item(bold(row.name), roff(row.summary) + ".");
    }
    section("KINDS");
    for (const KindRow& kind : kinds()) {
      const std::string alias = kind.alias == nullptr ? "" : ", " + bold(kind.alias);
      const std::string values =
          kind.values_help == nullptr ? "read only: " + roff(kind.plural) : roff(kind.values_help);
      item(bold(kind.name) + alias, values + ".");
    }
  }

  void options() {
    section("OPTIONS");
    for (const OptionGroup group : {OptionGroup::general, OptionGroup::reading,
                                    OptionGroup::writing, OptionGroup::lines, OptionGroup::table}) {
      add(std::string(".SS \"") + title_of(group) + "\"");
      for (const OptionRow& row : option_rows()) {
        if (row.group == group) option(row);
      }
    }
    add(".SS Help");
    item(bold("-h"), "What most need, on a screen.");
    item(bold("--help"), "All there is.");
    item(bold("--version"), "The versions of program, module interface, locale and zone data.");
  }

  void columns() {
    section("COLUMNS");
    lines(columns_text);
    for (const ColumnWordRow& row : column_word_rows()) {
      item(bold(std::string(row.name) + "=") + italic(row.value), roff(row.help) + ".");
    }
  }

  void end() {
    section("ENVIRONMENT");
    for (const Item& each : environment) item(bold(each.name), roff(each.text));
    section("EXIT STATUS");
    for (const Item& each : exits) item(bold(each.name), roff(each.text));
    section("EXAMPLES");
    lines(program_examples);
    for (const CommandRow& row : command_rows()) lines(row.examples);
    section("SEE ALSO");
    add(".BR date (1),\n.BR numfmt (1),\n.BR locale (1),\n.BR iconv (1)");
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  // "-s, --style STYLE" and what it is of: "format, convert; date, datetime".
  void option(const OptionRow& row) {
    std::string name = row.short_name == 0 ? "" : bold(std::string{'-', row.short_name}) + ", ";
    name += bold(std::string("--") + row.name);
    if (row.takes == Takes::maybe_one) name.append("[=").append(italic(row.value)).append("]");
    if (row.takes == Takes::one || row.takes == Takes::several)
      name.append(" ").append(italic(row.value));
    std::string of;
    for (const CommandRow& command : command_rows()) {
      if ((row.commands & command.command) != 0) of.append(of.empty() ? "" : ", ") += command.name;
    }
    std::string kinds_of;
    for (const KindRow& kind : kinds()) {
      const bool has = (row.kinds & kind_bits({kind.kind})) != 0;
      if (has && row.kinds != all_kinds)
        kinds_of.append(kinds_of.empty() ? "; " : ", ") += kind.name;
    }
    item(name, roff(row.help) + ".\n(" + of + kinds_of + ")");
  }

  std::string text_;
  bool begins_section_ = false;  // a paragraph begins there by itself
};

}  // namespace

std::string manual_page() {
  Page page;
  page.head();
  page.commands();
  page.options();
  page.columns();
  page.end();
  return page.text();
}

}  // namespace jwnls::tool
