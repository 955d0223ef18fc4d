#include "tool/reports/html_page.h"

#include <utf8proc.h>

namespace jwnls::tool {
namespace {

// Colours have a contrast of 4.5 and more with what they stand on, in both schemes. Rows of narrow
// screens: tables of class "stacks" become a block a row, whose cells tell what they are.
constexpr const char* stylesheet = R"css(
:root { color-scheme: light dark;
  --page: #f6f7f9; --card: #fff; --text: #1b1f24; --quiet: #57606a; --line: #d8dee4;
  --mark: #eef1f4; --read: #1a7f5a; --missing: #b0b8c1; --refused: #c4342b; --link: #0b57b0; }
@media (prefers-color-scheme: dark) { :root {
  --page: #0f1318; --card: #181d24; --text: #e6e9ed; --quiet: #9aa5b1; --line: #303842;
  --mark: #242b34; --read: #3fb68b; --missing: #56616d; --refused: #ff7b72; --link: #79b8ff; } }
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 60rem; padding: 1rem; background: var(--page);
  color: var(--text); font: 16px/1.5 system-ui, "Segoe UI", Roboto, "Noto Sans", sans-serif;
  -webkit-text-size-adjust: 100%; }
h1 { font-size: 1.5rem; line-height: 1.25; margin: .5rem 0 .25rem; overflow-wrap: anywhere; }
h2 { font-size: 1.125rem; line-height: 1.3; margin: 0; overflow-wrap: anywhere; }
p { margin: .25rem 0; }
a { color: var(--link); }
.quiet { color: var(--quiet); }
.ended { color: var(--refused); font-weight: 600; }
.undecided { border-inline-start: .1875rem solid var(--refused); padding-inline-start: .5rem; }
section { background: var(--card); border: 1px solid var(--line); border-radius: .75rem;
  padding: 1rem; margin: 1rem 0; }
table { border-collapse: collapse; width: 100%; margin-top: .5rem; }
caption { text-align: start; color: var(--quiet); font-size: .875rem; padding: .25rem 0; }
th, td { padding: .375rem .75rem .375rem 0; text-align: start; vertical-align: top;
  border-top: 1px solid var(--line); overflow-wrap: break-word; }
thead th { color: var(--quiet); font-size: .8125rem; font-weight: 600; border-top: 0;
  overflow-wrap: normal; }
tbody th { font-weight: 400; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
th:last-child, td:last-child { padding-right: 0; }
.number .value { white-space: normal; }
.value { overflow-wrap: anywhere; font-variant-numeric: tabular-nums; unicode-bidi: isolate; }
tbody th[scope=rowgroup] { color: var(--quiet); font-size: .8125rem; font-weight: 600;
  padding-top: .75rem; }
.text { overflow-wrap: anywhere; background: var(--mark); border-radius: .25rem; padding: .0625rem .3125rem;
  white-space: pre-wrap; -webkit-box-decoration-break: clone; box-decoration-break: clone; }
.texts .number { width: 1%; padding-inline-start: 1rem; }
.why { width: 40%; }
.facts > span { display: inline-block; margin-right: 1.25rem; overflow-wrap: anywhere; }
.short { white-space: nowrap; }
.written { font-size: 1.0625rem; }
.written bdi { display: inline-block; }
.refused { color: var(--refused); }
.read { color: var(--read); }
.bar { display: flex; height: .625rem; margin: .625rem 0 .375rem; border-radius: .3125rem;
  overflow: hidden; background: var(--mark); gap: 1px; }
.bar span { min-width: 3px; }
.bar .is-read, .key.is-read::before { background: var(--read); }
.bar .is-missing, .key.is-missing::before { background: var(--missing); }
.bar .is-refused, .key.is-refused::before { background: var(--refused); }
.key { margin-right: 1rem; white-space: nowrap; }
.key::before { content: ""; display: inline-block; width: .625rem; height: .625rem;
  border-radius: .125rem; margin-right: .375rem; }
footer { color: var(--quiet); font-size: .8125rem; margin: 1.5rem 0 .5rem; }
@media (max-width: 36rem) {
  body { padding: .75rem; }
  section { padding: .75rem; margin: .75rem 0; }
  .stacks thead { position: absolute; width: 1px; height: 1px; overflow: hidden;
    clip-path: inset(50%); }
  .stacks tr { display: block; padding: .375rem 0; border-top: 1px solid var(--line); }
  .why, .texts .number { width: auto; padding-inline-start: 0; }
  .stacks th, .stacks td { display: block; padding: 0; border: 0; text-align: start; }
  .stacks td[data-is]::before { content: attr(data-is) " "; color: var(--quiet);
    font-size: .875rem; }
  .stacks td.number { display: inline-block; margin-right: 1rem; white-space: normal; }
  .stacks td:empty { display: none; }
}
@media print { body { background: none; } section { break-inside: avoid; } }
)css";

void append_character(std::string& out, utf8proc_int32_t character, std::string_view bytes) {
  switch (character) {
    case '&':
      out += "&amp;";
      return;
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '"':
      out += "&quot;";
      return;
    case '\'':
      out += "&#39;";
      return;
    default:
      break;
  }
  const bool is_control = (character < 0x20 && character != '\n' && character != '\t') ||
                          (character >= 0x7F && character < 0xA0);
  out.append(is_control ? "\uFFFD" : bytes);
}

}  // namespace

std::string html_text(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const auto bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                        static_cast<utf8proc_ssize_t>(text.size()), &character);
    const std::size_t size = bytes > 0 ? static_cast<std::size_t>(bytes) : 1;
    append_character(out, bytes > 0 ? character : 0, text.substr(0, size));
    text.remove_prefix(size);
  }
  return out;
}

std::string html_isolated(std::string_view text, std::string_view language) {
  std::string out = "<bdi";
  if (!language.empty()) out.append(" lang=\"").append(html_text(language)).append("\"");
  return out.append(">").append(html_text(text)).append("</bdi>");
}

std::string html_page(const std::string& title, const std::string& body) {
  std::string page = "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
  page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
  page.append("<title>").append(html_text(title)).append("</title>\n<style>");
  page.append(stylesheet).append("</style>\n</head>\n<body>\n").append(body);
  return page.append("</body>\n</html>\n");
}

}  // namespace jwnls::tool
