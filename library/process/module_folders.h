// Where the modules are sought.

#ifndef JWNLS_LIBRARY_PROCESS_MODULE_FOLDERS_H_
#define JWNLS_LIBRARY_PROCESS_MODULE_FOLDERS_H_

#include <filesystem>
#include <string_view>
#include <vector>

namespace jwnls::library {

/// The absolute folders of a list separated by ":"; others are passed over, since what they name
/// depends on where the program was started.
std::vector<std::filesystem::path> absolute_folders(std::string_view list);

/// The folder of the file that this code was loaded from, the folder "jwnls" in it (a library
/// beside its modules), and where modules are installed as seen from an installed program, such as
/// "../lib/jwnls" (a program that the library is part of).
std::vector<std::filesystem::path> folders_beside_library();

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_PROCESS_MODULE_FOLDERS_H_
