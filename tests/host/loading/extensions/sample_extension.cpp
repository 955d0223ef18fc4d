// One extension in several kinds:
//   good      makes objects that name the kernel they were made with, and count them
//   old       has interface version 5.9
//   silent    makes no object
//   nameless  does not export a factory under its name

#include "tests/host/loading/extensions/sample_extension.h"

#include <cstdint>

#include "abi/host_tables.h"

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
#ifdef SAMPLE_silent
  return nullptr;
#else
  return new SampleObject{library_kernel, ++objects_made};
#endif
}
#endif
