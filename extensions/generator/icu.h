// Small helpers over ICU's C interface: owned objects, and texts of any length.

#ifndef JWNLS_EXTENSIONS_GENERATOR_ICU_H_
#define JWNLS_EXTENSIONS_GENERATOR_ICU_H_

#include <unicode/ures.h>
#include <unicode/utypes.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace jwnls::generator {

template <auto close>
struct Closer {
  template <typename Object>
  void operator()(Object* object) const {
    close(object);
  }
};

/// An ICU object that is closed when it goes.
template <typename Object, auto close>
using Owned = std::unique_ptr<Object, Closer<close>>;

using Resource = Owned<UResourceBundle, ures_close>;

inline void check(UErrorCode error, const char* what) {
  if (U_FAILURE(error)) throw std::runtime_error(std::string(what) + ": " + u_errorName(error));
}

/// The text that `call(buffer, capacity, &error)` writes.
template <typename Unit, typename Call>
std::basic_string<Unit> icu_text(const char* what, Call call) {
  std::basic_string<Unit> text(256, Unit{});
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = call(text.data(), static_cast<std::int32_t>(text.size()), &error);
  check(error, what);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

inline std::u16string widened(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

inline std::string narrowed(const std::u16string& ascii) {
  std::string text;
  std::ranges::transform(ascii, std::back_inserter(text),
                         [](char16_t unit) { return static_cast<char>(unit); });
  return text;
}

}  // namespace jwnls::generator

#endif  // JWNLS_EXTENSIONS_GENERATOR_ICU_H_
