// Files of a compiled time-zone database: what is not there, and what cannot be read just now.

#ifndef JWNLS_HOST_ZONES_ZONE_FILE_H_
#define JWNLS_HOST_ZONES_ZONE_FILE_H_

#include <cctz/time_zone.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace jwnls::host {

/// The first `most` bytes of a file, or all; nothing when there is no such file. Throws
/// std::system_error for a file that is there and cannot be read, maybe just now: for want of a
/// descriptor or of permission, say. Throws bad_alloc.
[[nodiscard]] std::optional<std::string> read_file(const std::filesystem::path& file,
                                                   std::size_t most = std::string::npos);

/// Whether a file begins as a compiled zone does. Throws as read_file().
[[nodiscard]] bool is_compiled_zone(const std::filesystem::path& file);

/// The zone in a file, as the file is now: the library for time zones remembers every name that it
/// was given, with what it read or with its failure, so a file that was replaced, or that it could
/// not read, is handed to it by another spelling of the path. Nothing when there is no such file or
/// no zone in it. Throws as read_file(). Any thread.
[[nodiscard]] std::optional<cctz::time_zone> load_zone_file(const std::filesystem::path& file);

}  // namespace jwnls::host

#endif  // JWNLS_HOST_ZONES_ZONE_FILE_H_
