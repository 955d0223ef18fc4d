// Why a text is no time of day, for people.

#ifndef JWNLS_LIBRARY_MOMENTS_TIME_REASON_H_
#define JWNLS_LIBRARY_MOMENTS_TIME_REASON_H_

#include <cstddef>
#include <string_view>

#include "library/moments/time_layout.h"
#include "library/texts/message.h"

namespace jwnls::library {

/// Says it of a trimmed text, not empty, of at most 1,024 bytes: "hour 25 is none", "'14:30' fits,
/// ' foo' does not". Gives the bytes that fit. It tries beginnings and ends of the text, each as
/// reading does.
[[nodiscard]] std::size_t tell_time(const TimeLayout& layout, std::string_view text,
                                    Message& message) noexcept;

/// Whether it is a time of day.
[[nodiscard]] bool is_time(const TimeLayout& layout, std::string_view text) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_TIME_REASON_H_
