// The host that the tests of the API share: the modules of this build, the system's time zones.

#ifndef JWNLS_TESTS_CLIENT_REAL_HOST_H_
#define JWNLS_TESTS_CLIENT_REAL_HOST_H_

#include <gtest/gtest.h>

#include "client/jwnls.h"

namespace jwnls::client {

inline const Host& real_host() {
  static const Host host = [] {
    HostOptions options;
    options.extension_path = {JWNLS_BUILD_DIR};
    auto opened = Host::open(std::move(options));
    if (!opened) {
      ADD_FAILURE() << opened.error().message;
      std::abort();
    }
    return *opened;
  }();
  return host;
}

/// A locale that there is.
inline Locale locale(std::string_view name, std::string_view zone = "UTC") {
  return real_host().locale(name, zone).value();
}

/// A value, or the error's message in its place, for comparisons that print well.
template <typename String>
std::string text_or_error(const Result<String>& result) {
  return result ? std::string(*result) : "error: " + result.error().message;
}

}  // namespace jwnls::client

#endif  // JWNLS_TESTS_CLIENT_REAL_HOST_H_
