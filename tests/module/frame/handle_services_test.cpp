// The handle's own services: slots 43, 45, 46, 78 and 79, and the time zones behind a handle.

#include <algorithm>
#include <climits>

#include "tests/support/module_fixture.h"

namespace jwnls::test {
namespace {

class HandleTest : public ModuleTest {
 protected:
  void SetUp() override { handle = create_private(u"Europe/Berlin"); }
  void TearDown() override {
    destroy(handle);
    ModuleTest::TearDown();
  }
  std::uint32_t set_zone(std::u16string_view name) {
    return handle->services.set_time_zone(handle, name.data(),
                                          static_cast<std::int64_t>(name.size()));
  }

  LocaleHandle* handle;
};

TEST_F(HandleTest, ComparesTexts) {
  const auto compare = [&](std::u16string_view a, std::u16string_view b, std::uint32_t mode) {
    const auto length = [](std::u16string_view text) {
      return static_cast<std::int64_t>(text.size());
    };
    return handle->services.compare_texts(handle, a.data(), length(a), b.data(), length(b), mode);
  };
  const auto check = [&](std::u16string_view a, std::u16string_view b, int plain, int padded) {
    EXPECT_EQ(compare(a, b, 0), plain);
    EXPECT_EQ(compare(b, a, 2), -plain);
    EXPECT_EQ(compare(a, b, 1), padded);
    EXPECT_EQ(compare(b, a, 1), -padded);
  };
  check(u"", u"", 0, 0);
  check(u"AB", u"AC", -1, -1);
  check(u"AB", u"AB  ", -1, 0);
  check(u"AB", u"AB\t", -1, 1);
  check(u"AB", u"AB \t", -1, 1);
  check(u"AB", u"AB  !", -1, -1);
  check(u"", u"\t", -1, 1);
  check(u"\uFFFF", u"a", 1, 1);
  check(u"Z\xD800", u"Z\uE000", -1, -1);
  const auto raw = handle->services.compare_texts;
  EXPECT_EQ(raw(handle, nullptr, 5, u"x", 1, 0), -1) << "a null text is empty";
  EXPECT_EQ(raw(handle, u"x", 1, nullptr, 5, 1), 1);
  EXPECT_EQ(raw(handle, u"x", INT64_MIN, u"y", -1, 0), 0) << "and so is one of negative length";
}

TEST_F(HandleTest, PointsIntoTheRecord) {
  constexpr std::ptrdiff_t offsets[] = {0, 8960, 128, 8176, 7912, 224, 8824, 9088, 9096, 9624};
  for (std::uint32_t selector = 0; selector < 10; ++selector) {
    void* area = nullptr;
    EXPECT_EQ(handle->services.record_area(handle, selector, &area), 0u);
    EXPECT_EQ(static_cast<char*>(area) - reinterpret_cast<char*>(handle->record),
              offsets[selector]);
  }
  for (const std::uint32_t selector : {10u, 11u, 0x80000000u, UINT_MAX}) {
    void* area = handle;
    EXPECT_EQ(handle->services.record_area(handle, selector, &area),
              code(Status::unknown_selector));
    EXPECT_EQ(area, handle);
  }
}

TEST_F(HandleTest, CopiesItsName) {
  char16_t name[64];
  std::fill(std::begin(name), std::end(name), u'#');
  std::int64_t length = 0;
  const auto copy = handle->services.copy_locale_name;
  EXPECT_EQ(copy(handle, nullptr, &length), code(Status::null_argument));
  EXPECT_EQ(copy(handle, name, nullptr), code(Status::null_argument));
  EXPECT_EQ(name[0], u'#');
  EXPECT_EQ(copy(handle, name, &length), 0u);
  EXPECT_EQ(std::u16string_view(name, 6), u"xx_YY#") << "not terminated";
  EXPECT_EQ(length, 5);
}

TEST_F(HandleTest, MakesACacheThatDestroysHandles) {
  host.calls.clear();
  Track* cache = handle->services.create_handle_cache(handle);
  EXPECT_EQ(host.calls, (std::vector<std::string>{
                            "service.create_track standard jwnlsLocaleJnl JWNLS Locale track",
                            "set_destructor JWNLS Locale track 0 the module's"}));
  EXPECT_EQ(cache, host.track("JWNLS Locale track"));
  cache->destroy(cache);
  host.failing_call = host.fallible_calls + 1;
  EXPECT_EQ(handle->services.create_handle_cache(handle), nullptr);
}

TEST_F(HandleTest, OpensEachZoneOnceAndKeepsIt) {
  Zone* berlin = handle->zone;
  EXPECT_EQ(set_zone(u"utc"), 0u);
  Zone* utc = handle->zone;
  EXPECT_NE(utc, berlin);
  EXPECT_EQ(set_zone(u"EUROPE/berlin"), 0u);
  EXPECT_EQ(handle->zone, berlin);
  EXPECT_EQ(set_zone(u"UTC"), 0u);
  EXPECT_EQ(handle->zone, utc);
  EXPECT_EQ(host.opened_zones.size(), 2u);
  EXPECT_TRUE(host.opened_zones[0].alive);

  EXPECT_EQ(handle->services.set_time_zone(handle, nullptr, 3), 0u);
  EXPECT_EQ(handle->services.set_time_zone(handle, u"nowhere", 0), 0u);
  EXPECT_EQ(handle->services.set_time_zone(handle, u"UTC", -3), code(Status::lookup_failed));
  EXPECT_EQ(set_zone(u"nowhere"), code(Status::lookup_failed));
  EXPECT_EQ(handle->zone, utc);
}

TEST_F(HandleTest, KeepsItsZoneWhenAnyCallFails) {
  for (const bool for_ever : {false, true}) {
    for (int call = 1; call <= 7; ++call) {
      destroy(handle);
      handle = create_private(u"Europe/Berlin");
      Zone* before = handle->zone;
      const std::vector<std::string> owned = host.live();
      host.forget_failures();
      host.failing_call = call;
      host.fail_from_there_on = for_ever;
      const std::uint32_t result = set_zone(u"UTC");
      const std::string what = host.failed.empty() ? "nothing" : host.failed[0];
      ASSERT_EQ(host.failed.empty(), call == 7) << "six calls can fail";
      host.forget_failures();
      // A look-up that misses is no failure by itself.
      const bool opened = call == 7 || (what.starts_with("look_up") && !for_ever);
      EXPECT_EQ(result, opened ? 0u : code(Status::lookup_failed)) << what;
      EXPECT_EQ(handle->zone == before, !opened) << what;
      if (!opened) {
        EXPECT_EQ(host.live(), owned) << what;
      }
      EXPECT_EQ(set_zone(u"UTC"), 0u) << what;
    }
  }
}

// Between a look-up that misses and the lock, another thread opens the same zone.
TEST_F(HandleTest, LooksAgainUnderTheLock) {
  host.when_taken = [&](FakeLock& lock) {
    host.when_taken = nullptr;
    lock.held = false;
    EXPECT_EQ(set_zone(u"UTC"), 0u);
    lock.held = true;
  };
  EXPECT_EQ(set_zone(u"UTC"), 0u);
  EXPECT_EQ(host.opened_zones.size(), 2u);
  EXPECT_EQ(static_cast<void*>(handle->zone), &host.opened_zones.back());
}

}  // namespace
}  // namespace jwnls::test
