#include "tool/message_colour.h"

#include <algorithm>

namespace jwnls::tool {
namespace {

constexpr std::string_view red = "\x1B[31m";
constexpr std::string_view bold = "\x1B[1m";
constexpr std::string_view plain = "\x1B[0m";

// A part of the message; none: empty.
struct Part {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// The text in quotes that a reason follows.
Part refused_text(std::string_view message) {
  const std::size_t begin = message.find('\'');
  if (begin == std::string_view::npos) return {};
  const std::size_t end =
      std::min(message.find("': ", begin + 1), message.find("' in ", begin + 1));
  return end == std::string_view::npos ? Part{} : Part{begin + 1, end};
}

// Of that text what the reason says not to fit: all of it, unless "'REST' does not" names less.
Part misfit(std::string_view message, const Part& text) {
  const std::size_t end = message.find("' does not", text.end);
  if (end == std::string_view::npos) return text;
  constexpr std::string_view fits = "' fits, '";
  const std::size_t mark = message.rfind(fits, end);
  if (mark == std::string_view::npos || mark < text.end) return text;
  const Part rest{mark + fits.size(), end};
  const std::string_view wanted = message.substr(rest.begin, rest.end - rest.begin);
  const std::size_t at = message.substr(0, text.end).rfind(wanted);
  // A long text is cut, and its rest may stand in the reason alone.
  if (wanted.empty() || at == std::string_view::npos || at < text.begin) return rest;
  return {at, at + wanted.size()};
}

// What stands in quotes behind the words.
Part name_behind(std::string_view message, std::string_view words) {
  const std::size_t at = message.rfind(words);
  if (at == std::string_view::npos) return {};
  const std::size_t begin = at + words.size();
  const std::size_t end = message.find('\'', begin);
  return end == std::string_view::npos ? Part{} : Part{begin, end};
}

// Adds the message up to the part's end, and the part in colour.
void add(std::string& out, std::string_view message, std::size_t& done, const Part& part,
         std::string_view colour) {
  if (part.begin >= part.end || part.begin < done) return;
  out.append(message.substr(done, part.begin - done)).append(colour);
  out.append(message.substr(part.begin, part.end - part.begin)).append(plain);
  done = part.end;
}

}  // namespace

std::string coloured(std::string_view message) {
  std::string out;
  std::size_t done = 0;
  const Part text = refused_text(message);
  if (text.end > 0) {
    const std::size_t names = message.substr(0, text.begin).rfind(": ");
    if (names != std::string_view::npos) add(out, message, done, {0, names + 1}, bold);
    add(out, message, done, misfit(message, text), red);
  }
  for (const std::string_view words : {"there is '", "did you mean '"}) {
    add(out, message, done, name_behind(message, words), bold);
  }
  return out.append(message.substr(done));
}

}  // namespace jwnls::tool
