// Small helpers over ICU's C interface: failures as exceptions, texts as strings.

#ifndef JWNLS_GENERATORS_LOCALES_ICU_H_
#define JWNLS_GENERATORS_LOCALES_ICU_H_

#include <unicode/utypes.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>

namespace jwnls::generator {

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

#endif  // JWNLS_GENERATORS_LOCALES_ICU_H_
