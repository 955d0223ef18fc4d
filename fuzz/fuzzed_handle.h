// A private handle of the linked module over a fake host, for fuzzers to rewrite.

#ifndef JWNLS_FUZZ_FUZZED_HANDLE_H_
#define JWNLS_FUZZ_FUZZED_HANDLE_H_

#include "abi/locale_handle.h"
#include "tests/support/fake_host.h"

extern "C" jwnls::JwExtent jwextent;
extern "C" jwnls::JwFactory jwnlsloc;

namespace jwnls::test {

struct FuzzedHandle {
  FakeHost host;
  LocaleHandle* handle;

  FuzzedHandle() {
    host.recording = false;
    jwextent(&host.kernel);
    Factory* factory = jwnlsloc(&host.kernel, &host.errors);
    const CreationOptions options = {private_handle, {}, nullptr, 0};
    handle = factory->create_handle(&host.context, u"xx", 2, nullptr, &options);
  }
};

}  // namespace jwnls::test

#endif  // JWNLS_FUZZ_FUZZED_HANDLE_H_
