// Whether a locale reads what it writes: tried over a leap year, and numbers of every size.

#ifndef JWNLS_TOOL_READ_BACK_H_
#define JWNLS_TOOL_READ_BACK_H_

#include <string>

#include "client/jwnls.h"

namespace jwnls::tool {

/// "yes", or the first text of a kind that is not read back to its value: "no: '2024 Met 1' for
/// 2024-09-01 is not read". Strictly it is read by the pattern that wrote it.
[[nodiscard]] std::string dates_read_back(const client::Locale& locale, client::DateStyle style,
                                          bool strict);
[[nodiscard]] std::string times_read_back(const client::Locale& locale, bool strict);
[[nodiscard]] std::string datetimes_read_back(const client::Locale& locale, bool strict);
[[nodiscard]] std::string numbers_read_back(const client::Locale& locale);
[[nodiscard]] std::string integers_read_back(const client::Locale& locale);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_READ_BACK_H_
