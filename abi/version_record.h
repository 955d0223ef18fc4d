// The version record: what the build says of itself, 208 bytes for jwvercn1.

#ifndef JWNLS_ABI_VERSION_RECORD_H_
#define JWNLS_ABI_VERSION_RECORD_H_

#include <cstddef>
#include <cstdint>

namespace jwnls {

/// 26 words; texts are zero-terminated and live as long as the module.
struct VersionRecord {
  const char* version;
  const char* stream;
  const char* empty_2;
  std::int64_t build_seconds;  // since 1 January 1970
  const char* component_family;
  const char* component_build;
  const char* interface_family;
  const char* interface_build;
  const char* empty_8;
  const char* version_word;
  const char* separator;
  const char* empty_11;
  const char* hotfix_number;  // padded with blanks to 65 characters, to be filled in place
  const char* empty_13;
  const char* image_description;  // likewise
  const char* platform;
  const char* build_date;
  std::uint64_t zero_17[9];
};
static_assert(sizeof(VersionRecord) == 208 && offsetof(VersionRecord, hotfix_number) == 12 * 8 &&
              offsetof(VersionRecord, build_date) == 16 * 8);

/// Copies the module's record into a buffer of 208 bytes.
void copy_version_record(void* out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_ABI_VERSION_RECORD_H_
