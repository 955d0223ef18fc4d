// One extension in several kinds:
//   good      makes objects that name the kernel they were made with, and count them
//   old       has interface version 5.9
//   silent    makes no object
//   nameless  does not export a factory under its name
//   database  jwnlsldb without a word; with $SAMPLE_FILLS, one that fills the first record alone,
//   with
//             nothing

#include "tests/host/loading/extensions/sample_extension.h"

#include <cstdint>
#include <cstdlib>

#include "abi/host_tables.h"
#include "abi/status.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

jwnls::Kernel* library_kernel = nullptr;
[[maybe_unused]] int objects_made = 0;

}  // namespace

EXPORTED std::uint32_t jwextver(jwnls::Kernel* kernel, std::int64_t* major, std::int64_t* minor) {
#ifdef SAMPLE_old
  *major = 5;
  *minor = 9;
#else
  *major = 6;
  *minor = 1;
#endif
  library_kernel = kernel;
  return 0;
}

#ifdef SAMPLE_nameless
EXPORTED void* another_name(jwnls::Kernel*, jwnls::ErrorSink*) { return nullptr; }
#else
EXPORTED void* SAMPLE_NAME(jwnls::Kernel*, jwnls::ErrorSink*) {
#if defined(SAMPLE_silent)
  return nullptr;
#elif defined(SAMPLE_database)
  static jwnls::LocaleDatabase database = {};
  if (std::getenv("SAMPLE_FILLS") != nullptr) {
    database.fill = [](void*, const char16_t*, std::int64_t) {
      return jwnls::code(objects_made++ == 0 ? jwnls::Status::ok : jwnls::Status::lookup_failed);
    };
  }
  return &database;
#else
  return new SampleObject{library_kernel, ++objects_made};
#endif
}
#endif
