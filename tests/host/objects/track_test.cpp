#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "abi/status.h"
#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

Track* make_track(Host& host) {
  Kernel* kernel = host.kernel();
  return kernel->create_track(kernel, &track_parameters, nullptr, "test track");
}

TrackEntry* insert(Track* track, void* value, const std::string& key, std::uint32_t* status) {
  return track->insert(track, track_insert, 0, value, 0, key.data(),
                       static_cast<std::int64_t>(key.size()), status);
}

TrackEntry* look_up(Track* track, const std::string& key) {
  return track->look_up(track, track_look_up, 0, key.data(), static_cast<std::int64_t>(key.size()));
}

TEST(Track, FindsEveryKeyByItsBytesAndRefusesASecondOne) {
  Host host(HostConfiguration{});
  Track* track = make_track(host);
  EXPECT_EQ(look_up(track, "none yet"), nullptr);

  std::vector<std::string> keys = {"", std::string(1, '\0'), std::string(2, '\0')};
  for (const char* text : {"a", "b", "ab", "ba", "de_DE Europe/Berlin", "de_DE Europe/Bern"}) {
    keys.emplace_back(text);
  }
  // Keys that differ in one byte only, at every place of every length up to 70.
  for (std::size_t length = 3; length < 70; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      keys.emplace_back(length, 'x');
      keys.back()[at] = 'y';
    }
  }
  std::vector<int> values(keys.size());
  for (const bool is_new : {true, false}) {
    for (std::size_t at = 0; at < keys.size(); ++at) {
      std::uint32_t status = is_new ? 1 : 0;
      TrackEntry* entry =
          is_new ? insert(track, &values[at], keys[at], &status) : look_up(track, keys[at]);
      ASSERT_NE(entry, nullptr) << keys[at];
      EXPECT_EQ(entry->value, &values[at]);
      EXPECT_EQ(status, 0U);
      track->release_entry(track, entry);
    }
  }
  EXPECT_EQ(look_up(track, std::string(70, 'x')), nullptr);

  std::uint32_t status = 0;
  EXPECT_EQ(insert(track, nullptr, "ab", &status), nullptr);
  EXPECT_EQ(status, code(Status::lookup_failed));
  EXPECT_EQ(track->look_up(track, track_look_up, 0, nullptr, 0), nullptr);
  EXPECT_EQ(track->look_up(track, track_look_up, 0, "ab", -2), nullptr);
  EXPECT_EQ(insert(track, nullptr, "ab", nullptr), nullptr);
  for (const auto& [key, bytes] :
       {std::pair(static_cast<const char*>(nullptr), 0), std::pair("new", -1)}) {
    EXPECT_EQ(track->insert(track, track_insert, 0, nullptr, 0, key, bytes, &status), nullptr);
    EXPECT_EQ(status, code(Status::lookup_failed));
  }
  track->destroy(track);
}

TEST(Track, DestroysEachElementOnceUnlessItIsTheHostsOwnRelease) {
  Host host(HostConfiguration{});
  int destroyed[20] = {};
  for (const bool own_release : {false, true}) {
    Track* track = make_track(host);
    track->set_destructor(
        track, 0, own_release ? host_release : [](TrackEntry* entry) {
          ++*static_cast<int*>(entry->value);
          return std::uint32_t{0};
        });
    std::uint32_t status = 0;
    for (int& count : destroyed) {
      insert(track, &count, std::to_string(&count - destroyed), &status);
    }
    track->destroy(track);
    for (const int count : destroyed) EXPECT_EQ(count, 1);
  }
}

TEST(Track, ThreadsLookUpWhileOthersInsert) {
  CheckedHost host(with_modules());
  Track* track = make_track(host);
  constexpr int key_count = 500;
  std::vector<int> values(key_count);
  std::atomic<int> inserted = 0;
  // Every thread tries to insert every key: each key gets in once, and is found from then on.
  in_threads([&](int number) {
    for (int at = 0; at < key_count; ++at) {
      const int which = (at + number * key_count / thread_count) % key_count;
      const std::string key = "key " + std::to_string(which);
      std::uint32_t status = 0;
      TrackEntry* entry = insert(track, &values[static_cast<std::size_t>(which)], key, &status);
      if (entry != nullptr) {
        ++inserted;
        track->release_entry(track, entry);
      }
      TrackEntry* found = look_up(track, key);
      ASSERT_NE(found, nullptr);
      EXPECT_EQ(found->value, &values[static_cast<std::size_t>(which)]);
      track->release_entry(track, found);
    }
  });
  EXPECT_EQ(inserted, key_count);
  track->destroy(track);
}

}  // namespace
}  // namespace jwnls::host
