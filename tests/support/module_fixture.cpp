#include "tests/support/module_fixture.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace jwnls::test {
namespace {

template <typename Function>
Function* find(void* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library, name));
}

}  // namespace

const Exports& loaded_module() {
  static const Exports exports = [] {
    void* library = dlopen(JWNLS_BUILD_DIR "/jwnlsloc.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
      std::fprintf(stderr, "%s\n", dlerror());
      std::abort();
    }
    return Exports{find<JwExtent>(library, "jwextent"), find<JwExtver>(library, "jwextver"),
                   find<JwFactory>(library, "jwnlsloc"),
                   find<JwVersionRecord>(library, "jwvercn1")};
  }();
  return exports;
}

void set_text(TextEntry& entry, std::u16string_view text) {
  set_text(entry, text, static_cast<std::int64_t>(text.size()));
}

void set_text(TextEntry& entry, std::u16string_view text, std::int64_t claimed_length) {
  entry.length = claimed_length;
  std::copy(text.begin(), text.end(), entry.units);
}

ModuleTest::ModuleTest() {
  loaded_module().jwextent(&host.kernel);
  factory = loaded_module().jwnlsloc(&host.kernel, &host.errors);
  host.calls.clear();
}

void ModuleTest::TearDown() {
  if (Track* cache = host.context.handle_cache) {
    host.context.handle_cache = nullptr;
    cache->destroy(cache);
  }
  EXPECT_EQ(factory->destroy(factory), 0u);
  EXPECT_EQ(host.live(), std::vector<std::string>{});
  EXPECT_EQ(host.faults, std::vector<std::string>{});
}

LocaleHandle* ModuleTest::create(std::u16string_view zone, std::uint8_t flags) {
  const CreationOptions options = {
      flags, {}, zone.empty() ? nullptr : zone.data(), static_cast<std::int64_t>(zone.size())};
  status = 0xEEEEEEEE;
  return factory->create_handle(&host.context, u"xx", 2, &status, &options);
}

void ModuleTest::destroy(LocaleHandle* handle) {
  TrackEntry record = {{}, handle};
  EXPECT_EQ(factory->destroy_handle(&record), 0u);
}

void ModuleTest::make_cache() {
  LocaleHandle* handle = create_private();
  host.context.handle_cache = handle->services.create_handle_cache(handle);
  destroy(handle);
  host.calls.clear();
}

}  // namespace jwnls::test
