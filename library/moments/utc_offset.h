// How far from UTC a text says that its time is: "Z", "+02:00".

#ifndef JWNLS_LIBRARY_MOMENTS_UTC_OFFSET_H_
#define JWNLS_LIBRARY_MOMENTS_UTC_OFFSET_H_

#include <cstdint>
#include <string_view>

namespace jwnls::library {

/// Cuts an offset from the end of a trimmed text whose time is its last part, and gives it in
/// seconds east of UTC. False where there is none: then the text stays as it is.
[[nodiscard]] bool cut_offset(std::string_view& text, std::int32_t& offset_seconds) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_UTC_OFFSET_H_
