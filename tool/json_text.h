// Texts and values as JSON has them.

#ifndef JWNLS_TOOL_JSON_TEXT_H_
#define JWNLS_TOOL_JSON_TEXT_H_

#include <string>
#include <string_view>

namespace jwnls::tool {

/// Adds the text as JSON has strings, in quotes; what is not UTF-8 becomes U+FFFD. False when there
/// was such.
bool append_json_string(std::string& out, std::string_view text);

/// Puts objects and arrays together: the commas between members, and what closes them, come by
/// themselves. A member of an object is key() and then its value.
class JsonText {
 public:
  JsonText& open(char bracket);  // '{' or '['
  JsonText& close();
  JsonText& key(std::string_view name);
  JsonText& string(std::string_view text);
  JsonText& raw(std::string_view value);  // a number, true, false, null
  /// Ends the line, for people: the next member begins on another one.
  JsonText& end_line();

  /// key() and string().
  JsonText& member(std::string_view name, std::string_view text) { return key(name).string(text); }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void begin_value();

  std::string text_;
  std::string closing_;  // of what is open, the innermost last
  bool is_first_ = true;
  bool has_key_ = false;
  bool ends_line_ = false;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_JSON_TEXT_H_
