// Pages of HTML: each complete in itself, without scripts, in one style.

#ifndef JWNLS_TOOL_REPORTS_HTML_PAGE_H_
#define JWNLS_TOOL_REPORTS_HTML_PAGE_H_

#include <string>
#include <string_view>

namespace jwnls::tool {

/// The text with "&lt;" and the like; what is not UTF-8 and control characters as U+FFFD.
[[nodiscard]] std::string html_text(std::string_view text);

/// The text apart from the direction of what stands around it; `language`, as "ar-EG", may be
/// empty.
[[nodiscard]] std::string html_isolated(std::string_view text, std::string_view language = {});

/// A page around `body`, which is HTML. `title` is text.
[[nodiscard]] std::string html_page(const std::string& title, const std::string& body);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_HTML_PAGE_H_
