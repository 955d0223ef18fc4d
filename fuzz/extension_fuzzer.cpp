// Fuzzes the loading of extensions: any name, and files and linked modules of every quality.
//
// An object comes from a linked module of just that name, of interface 6.1, whose factory makes
// one; every other name, version, file or factory is refused with a reason that names it. A module
// that was opened once is opened as it was then.

#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "host/loading/extension_loader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

namespace fs = std::filesystem;

std::int64_t major_version, minor_version;
std::array<int, 2> objects;
bool makes_objects;

std::uint32_t version(Kernel* /*kernel*/, std::int64_t* major, std::int64_t* minor) {
  *major = major_version;
  *minor = minor_version;
  return 0;
}
template <int number>
void* make(Kernel* /*kernel*/, ErrorSink* /*errors*/) {
  return makes_objects ? &objects[number] : nullptr;
}

constexpr std::array<std::string_view, 2> linked_names = {"jwone", "jw-Two_2"};

// A folder with files that are no libraries; the input's bytes are the last one's.
const fs::path& folder() {
  static const fs::path made = [] {
    std::string path = fs::temp_directory_path() / "jwnls-extension.XXXXXX";
    require(mkdtemp(path.data()) != nullptr, "no folder");
    static const std::string kept = path;
    std::atexit([] { fs::remove_all(kept); });
    std::ofstream(fs::path(kept) / "jwtext.so") << "no library";
    const std::ofstream empty(fs::path(kept) / "jwempty.so");
    fs::create_directory(fs::path(kept) / "jwfolder.so");
    return fs::path(kept);
  }();
  return made;
}

std::string name_of(Input& input) {
  constexpr std::string_view names[] = {"jwone",    "jw-Two_2", "jwtext",  "jwempty",
                                        "jwfolder", "jwabsent", "jwbytes", "jwnlsloc"};
  const std::uint8_t choice = input.byte();
  std::string name(names[choice % std::size(names)]);
  if (choice >= 0xC0) name.insert(choice % name.size(), 1, static_cast<char>(input.byte()));
  if (choice >= 0xE0) name.append(input.byte() % 70, 'x');
  if (choice >= 0xF8) name.clear();
  return name;
}

bool is_plain(std::string_view name) {
  for (const char each : name) {
    const char lower = static_cast<char>(each | 0x20);
    const bool letter = (each & 0x40) != 0 && lower >= 'a' && lower <= 'z';
    if (!letter && !(each >= '0' && each <= '9') && each != '_' && each != '-') return false;
  }
  return !name.empty() && name.size() <= 64;
}

void check(host::ExtensionLoader& loader, const std::string& name, std::optional<int>& opened) {
  std::u16string wide;
  for (const char each : name) wide += static_cast<unsigned char>(each);
  const host::LoadedObject loaded = loader.load(wide);
  const bool linked = name == linked_names[0] || name == linked_names[1];
  const bool first = name == linked_names[0];
  const bool known = opened == (first ? 0 : 1);
  const bool fits = known || (major_version == 6 && minor_version == 1);
  if (linked && fits) opened = first ? 0 : 1;
  void* const expected = linked && fits && makes_objects ? &objects[first ? 0 : 1] : nullptr;
  require(loaded.object == expected, "an object that there is, or is not");
  require((loaded.object == nullptr) == !loaded.error.empty(), "an error without a reason");
  if (loaded.object != nullptr) return;
  const std::string_view names =
      is_plain(name) ? std::string_view(name) : "the name of an extension";
  require(loaded.error.find(names) != std::string::npos, "an error that does not name it");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls;
  using namespace jwnls::test;
  Input input(data, size);
  static const host::ModulePlaces places = {
      {folder()},
      {{linked_names[0], version, nullptr, make<0>}, {linked_names[1], version, nullptr, make<1>}},
      {"/nonexistent"}};
  host::ExtensionLoader loader(places, nullptr, nullptr);
  std::optional<int> opened;
  // What has the mark of a library is the loader's of the system, which trusts it.
  const bool marked = size >= 4 && data[1] == 'E' && data[2] == 'L' && data[3] == 'F';
  if (input.byte() % 8 == 0 && !marked) {
    std::ofstream(folder() / "jwbytes.so", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  for (int calls = 0; calls < 2; ++calls) {
    const std::uint8_t choices = input.byte();
    major_version = (choices & 3) != 0 ? 6 : input.number<std::int64_t>();
    minor_version = (choices & 12) != 0 ? 1 : input.number<std::int64_t>();
    makes_objects = (choices & 48) != 0;
    check(loader, name_of(input), opened);
  }
  return 0;
}
