#include "module/frame/version_record.h"

#include <array>
#include <cstring>
#include <string_view>

namespace jwnls {
namespace {

// A text padded with blanks to 65 characters, so that a tool can fill it in place.
constexpr auto padded(std::string_view text) {
  std::array<char, 66> result{};
  for (std::size_t i = 0; i < 65; ++i) result[i] = i < text.size() ? text[i] : ' ';
  return result;
}

constexpr auto hotfix_number = padded("QRX_VERSION_HOTFIX_NUMBER=");
constexpr auto image_description = padded("VERCON_IMAGE_DESCRIPTION=");

constexpr VersionRecord version_record = {
    .version = JWNLS_MODULE_VERSION,
    .stream = "main",
    .empty_2 = "",
    .build_seconds = JWNLS_BUILD_SECONDS,
    .component_family = "jwnls",
    .component_build = JWNLS_COMPONENT " " JWNLS_MODULE_VERSION,
    .interface_family = "jwext",
    .interface_build = "jwext 6.1",
    .empty_8 = "",
    .version_word = "version",
    .separator = "::",
    .empty_11 = "",
    .hotfix_number = hotfix_number.data(),
    .empty_13 = "",
    .image_description = image_description.data(),
    .platform = JWNLS_PLATFORM,
    .build_date = JWNLS_BUILD_DATE,
    .zero_17 = {},
};

}  // namespace

void copy_version_record(void* out) noexcept {
  std::memcpy(out, &version_record, sizeof version_record);
}

}  // namespace jwnls
