#include "client/unread_text.h"

#include "client/quoting.h"

namespace jwnls::client {

tl::unexpected<Error> unread(const char* kind, std::string_view text, Status status,
                             const std::string& reason, std::size_t fitting_bytes) {
  return tl::unexpected<Error>(
      Error{status, std::string(kind) + " " + in_quotes(text) + ": " + reason, fitting_bytes});
}

tl::unexpected<Error> unread_behind(const char* kind, std::string_view text,
                                    const std::string& locale_name, Status status,
                                    std::size_t fitting_bytes) {
  const std::string_view fitting = text.substr(0, fitting_bytes);
  const std::string_view rest = text.substr(fitting.size());
  std::string reason;
  if (text.find_first_not_of(' ') == std::string_view::npos) {
    reason = "no value";
  } else if (rest.find_first_not_of(' ') == std::string_view::npos) {
    reason = "ends too early";
  } else if (fitting.find_first_not_of(' ') == std::string_view::npos) {
    reason = std::string("no ") + kind + " begins so in " + locale_name;
  } else {
    reason = in_quotes(fitting) + " fits, " + in_quotes(rest) + " does not";
  }
  return unread(kind, text, status, reason, fitting.size());
}

}  // namespace jwnls::client
