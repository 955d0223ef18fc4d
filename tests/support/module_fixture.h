// The module as a host meets it: loaded by name, its exports looked up, handles made by its factory
// over a fake host.

#ifndef JWNLS_TESTS_SUPPORT_MODULE_FIXTURE_H_
#define JWNLS_TESTS_SUPPORT_MODULE_FIXTURE_H_

#include <gtest/gtest.h>

#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "tests/support/fake_host.h"

namespace jwnls::test {

struct Exports {
  JwExtent* jwextent;
  JwExtver* jwextver;
  JwFactory* jwnlsloc;
  JwVersionRecord* jwvercn1;
};

/// The exports of jwnlsloc.so, which is opened once and stays open.
const Exports& loaded_module();

/// Writes a text entry: the text, and its length unless another one is to be claimed.
void set_text(TextEntry& entry, std::u16string_view text);
void set_text(TextEntry& entry, std::u16string_view text, std::int64_t claimed_length);

/// A test with a host, the loaded module and its factory. When the test is over, nothing may be
/// left of what the module made, and nothing may have been misused.
class ModuleTest : public testing::Test {
 protected:
  ModuleTest();
  void TearDown() override;

  /// Makes a handle in a zone (empty: the operating system's), and keeps the status.
  LocaleHandle* create(std::u16string_view zone = u"UTC", std::uint8_t flags = 0);
  LocaleHandle* create_private(std::u16string_view zone = u"UTC") {
    return create(zone, private_handle);
  }
  void destroy(LocaleHandle* handle);
  /// Gives the context the cache of handles that slot 78 makes; TearDown destroys it.
  void make_cache();

  FakeHost host;
  Factory* factory;
  std::uint32_t status = 0;  // of the latest create()
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_MODULE_FIXTURE_H_
