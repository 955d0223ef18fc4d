// The version record: what a build says of itself, 208 bytes for `jwvercn1`.
//
// The caller owns the record that it had filled. The texts in it are zero-terminated, belong to the
// module or extension, and live as long as it stays loaded. Any thread.

#ifndef JWNLS_ABI_VERSION_RECORD_H_
#define JWNLS_ABI_VERSION_RECORD_H_

#include "abi/language.h"

typedef struct jw_version_record {
  const char* version;
  const char* stream;
  const char* empty_2;
  int64_t build_seconds;  // since 1 January 1970
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
  uint64_t zero_17[9];
} jw_version_record;

JW_SIZE_IS(jw_version_record, 208);
JW_AT_WORD(jw_version_record, build_seconds, 3);
JW_AT_WORD(jw_version_record, hotfix_number, 12);
JW_AT_WORD(jw_version_record, image_description, 14);
JW_AT_WORD(jw_version_record, build_date, 16);

#ifdef __cplusplus
namespace jwnls {
using VersionRecord = ::jw_version_record;
}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_VERSION_RECORD_H_
