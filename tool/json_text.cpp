#include "tool/json_text.h"

#include <utf8proc.h>

#include <cstdio>

namespace jwnls::tool {
namespace {

bool stands_as_it_is(unsigned char byte) {
  return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
}

void append_escaped(std::string& out, char byte) {
  switch (byte) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  char code[8];
  (void)std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(byte));
  out += code;
}

}  // namespace

bool append_json_string(std::string& out, std::string_view text) {
  bool is_wellformed = true;
  out += '"';
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && stands_as_it_is(static_cast<unsigned char>(text[plain]))) ++plain;
    out.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    utf8proc_int32_t character = 0;
    const auto bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                        static_cast<utf8proc_ssize_t>(text.size()), &character);
    const std::size_t size = bytes > 0 ? static_cast<std::size_t>(bytes) : 1;
    if (bytes > 0 && character < 0x80) {
      append_escaped(out, text.front());
    } else {
      out.append(bytes > 0 ? text.substr(0, size) : "\uFFFD");
      is_wellformed = is_wellformed && bytes > 0;
    }
    text.remove_prefix(size);
  }
  out += '"';
  return is_wellformed;
}

void JsonText::begin_value() {
  if (!has_key_ && !is_first_) text_ += ',';
  if (ends_line_) text_ += '\n';
  is_first_ = has_key_ = ends_line_ = false;
}

JsonText& JsonText::open(char bracket) {
  begin_value();
  text_ += bracket;
  closing_ += bracket == '{' ? '}' : ']';
  is_first_ = true;
  return *this;
}

JsonText& JsonText::close() {
  if (ends_line_) text_ += '\n';
  text_ += closing_.back();
  closing_.pop_back();
  is_first_ = ends_line_ = false;
  return *this;
}

JsonText& JsonText::key(std::string_view name) {
  begin_value();
  (void)append_json_string(text_, name);
  text_ += ':';
  has_key_ = true;
  return *this;
}

JsonText& JsonText::string(std::string_view text) {
  begin_value();
  (void)append_json_string(text_, text);
  return *this;
}

JsonText& JsonText::raw(std::string_view value) {
  begin_value();
  text_ += value;
  return *this;
}

JsonText& JsonText::end_line() {
  ends_line_ = true;
  return *this;
}

}  // namespace jwnls::tool
