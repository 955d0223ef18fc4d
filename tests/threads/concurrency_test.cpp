// Many threads over one real host: creation of the same and of different handles, formatting, and
// changes of the time zone. Run under ThreadSanitizer as well.

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "tests/host/hosts.h"
#include "tests/support/module_fixture.h"

namespace jwnls::test {
namespace {

constexpr int thread_count = 6;
constexpr std::u16string_view locales[] = {u"de_DE", u"en_US", u"ja_JP", u"ar_EG", u"fr_CA"};
constexpr std::u16string_view zones[] = {u"Europe/Berlin",    u"Asia/Tokyo",     u"UTC",
                                         u"America/St_Johns", u"Asia/Kathmandu", u"Pacific/Apia"};
constexpr double moment = 2'026'134'429;  // 2024-03-15 13:07:09

class ConcurrencyTest : public testing::Test {
 protected:
  void SetUp() override {
    for (auto& each : hosts) each = std::make_unique<host::CheckedHost>(host::with_modules());
  }

  // Runs `work` in every thread at once, with the thread's number.
  template <typename Work>
  static void run_threads(Work work) {
    std::barrier start(thread_count);
    std::vector<std::jthread> threads;
    threads.reserve(thread_count);
    for (int number = 0; number < thread_count; ++number) {
      threads.emplace_back([&, number] {
        start.arrive_and_wait();
        work(number);
      });
    }
  }

  static std::string format(LocaleHandle* handle, std::uint32_t style) {
    char out[512];
    std::int64_t length = 0;
    const std::uint32_t status =
        handle->services.format_datetime_8bit(handle, moment, style, out, sizeof out, &length);
    return status == 0 ? std::string(out, static_cast<std::size_t>(length)) : "failed";
  }

  std::unique_ptr<host::CheckedHost> hosts[2];  // the threads with odd numbers use the second one
};

TEST_F(ConcurrencyTest, ThreadsShareTheHandlesTheyCreate) {
  std::atomic<int> faults = 0;
  for (int round = 0; round < 3; ++round) {
    std::array<std::map<std::pair<std::size_t, std::size_t>, LocaleHandle*>, thread_count> made;
    // As in a new process: the threads find or make the context's node and journal at once.
    for (auto& each : hosts) {
      each->context()->app_node = nullptr;
      each->context()->journal = nullptr;
    }
    run_threads([&](int number) {
      auto& host = hosts[number % 2];
      for (std::size_t i = 0; i < std::size(locales) * std::size(zones); ++i) {
        const std::size_t nth =
            (i + static_cast<std::size_t>(number / 2)) % (std::size(locales) * std::size(zones));
        const std::size_t locale = nth / std::size(zones), zone = nth % std::size(zones);
        // The first round makes the shared handles, the second finds them, the third makes more.
        const bool own = round == 2;
        std::uint32_t status = 0;
        LocaleHandle* handle = host->create_handle(locales[locale], zones[zone], own, &status);
        if (handle == nullptr || status != 0 || handle->context != host->context() ||
            format(handle, 1) == "failed") {
          ++faults;
          continue;
        }
        const std::string first = format(handle, 0);
        for (int i = 0; i < 20; ++i) faults += format(handle, 0) != first;
        if (own) {
          host->destroy_handle(handle);
        } else {
          made[static_cast<std::size_t>(number)][{locale, zone}] = handle;
        }
      }
    });
    EXPECT_EQ(faults, 0);
    for (std::size_t i = 0; i < thread_count; ++i) {
      EXPECT_EQ(made[i], made[i % 2]);
      EXPECT_EQ(made[i].size(), round == 2 ? 0 : std::size(locales) * std::size(zones));
    }
  }
}

TEST_F(ConcurrencyTest, ThreadsFormatWhileOthersChangeTheZone) {
  auto& host = hosts[0];
  for (int round = 0; round < 20; ++round) {
    LocaleHandle* handle = host->create_handle(u"en_US", u"UTC", true, nullptr);
    ASSERT_NE(handle, nullptr);
    set_text(handle->record->style_0_pattern, u"%z");
    std::set<std::string> texts;  // of every zone, one after the other
    LocaleHandle* other = host->create_handle(u"en_US", u"UTC", true, nullptr);
    set_text(other->record->style_0_pattern, u"%z");
    for (const std::u16string_view zone : zones) {
      EXPECT_EQ(
          other->services.set_time_zone(other, zone.data(), static_cast<std::int64_t>(zone.size())),
          0u);
      texts.insert(format(other, 0));
    }
    host->destroy_handle(other);

    std::atomic<int> faults = 0;
    run_threads([&](int number) {
      for (std::size_t i = 0; i < 60; ++i) {
        // Everyone wants each new zone at once; later on every third thread only formats.
        const std::u16string_view zone = zones[i % std::size(zones)];
        if (i < std::size(zones) || number % 3 != 0) {
          faults += handle->services.set_time_zone(handle, zone.data(),
                                                   static_cast<std::int64_t>(zone.size())) != 0;
        }
        faults += !texts.contains(format(handle, 0));
      }
    });
    EXPECT_EQ(faults, 0);
    host->destroy_handle(handle);
  }
}

}  // namespace
}  // namespace jwnls::test
