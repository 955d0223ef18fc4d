// Creation and teardown of handles: the calls in their order, every failure, the handle cache.

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <tuple>

#include "tests/support/module_fixture.h"

namespace jwnls::test {
namespace {

using namespace std::string_literals;
using CreationTest = ModuleTest;
using Lines = std::vector<std::string>;

Lines lines_of(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

// The first creation in a new process, with a zone of the caller's.
constexpr std::string_view first_creation = R"(find_node 'App.NLS'
create_node 'App.NLS'
service.create_journal 88 zeros 0 jwnlsLocaleJnl
normalise_zone 'europe/BERLIN' 16 50
take creation 1 1
resolve_locale 'xx' 8
look_up JWNLS Locale track 2000000 0 'xx_YY Europe/Berlin' 38
allocate nls 896 80000000
allocate nls 40248 0
kernel.load_extension 'jwemsg' 0
service.load_extension 'jwnlsldb' 0
fill 'xx_YY' 'xx_YY'
service.create_lock 2 zeros jwnlsLocaleJnl jwnls Locale JWMSG lock
service.create_lock 2 zeros jwnlsLocaleJnl jwnls Locale JWZ lock
service.create_track standard jwnlsLocaleJnl jwnls Locale JWMSG track
set_destructor jwnls Locale JWMSG track 0 the host's
service.create_track standard jwnlsLocaleJnl jwnls Locale JWETZ track
set_destructor jwnls Locale JWETZ track 0 the module's
normalise_zone 'Europe/Berlin' 16 50
look_up jwnls Locale JWETZ track 2000000 0 'Europe/Berlin' 26
take jwnls Locale JWZ lock 1 1
look_up jwnls Locale JWETZ track 2000000 0 'Europe/Berlin' 26
open 'Europe/Berlin' 0
allocate nls 24 80000000
insert jwnls Locale JWETZ track 4000000 0 0 'Europe/Berlin' 26
release_entry jwnls Locale JWETZ track
release jwnls Locale JWZ lock
insert JWNLS Locale track 4000000 0 0 'xx_YY Europe/Berlin' 38
release_entry JWNLS Locale track
release creation
)";

constexpr std::string_view teardown = R"(destroy jwnls Locale JWZ lock
destroy jwnls Locale JWETZ track
close 'Europe/Berlin'
free nls 24
destroy jwnls Locale JWMSG lock
destroy jwnls Locale JWMSG track
destroy jwemsg
free nls 40248
free nls 896
)";

// Takes back what the context keeps for later handles, but for its cache.
void make_context_new(FakeHost& host) {
  host.context.app_node = nullptr;
  host.nodes.clear();
  if (host.context.journal != nullptr) host.journals.back().alive = false;
  host.context.journal = nullptr;
  host.context.locale_database = nullptr;
  host.forget_failures();
  host.calls.clear();
}

TEST_F(CreationTest, CallsTheHostInOrder) {
  make_cache();
  make_context_new(host);
  LocaleHandle* handle = create(u"europe/BERLIN");
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(status, 0u);
  EXPECT_EQ(host.calls, lines_of(first_creation));

  host.calls.clear();
  EXPECT_EQ(create(u"Europe/Berlin"), handle) << "the shared handle";
  EXPECT_EQ(status, 0u);
  EXPECT_EQ(host.calls, (Lines{"normalise_zone 'Europe/Berlin' 16 50", "take creation 1 1",
                               "resolve_locale 'xx' 8",
                               "look_up JWNLS Locale track 2000000 0 'xx_YY Europe/Berlin' 38",
                               "release_entry JWNLS Locale track", "release creation"}));

  host.calls.clear();
  Track* cache = host.context.handle_cache;
  host.context.handle_cache = nullptr;
  cache->destroy(cache);
  Lines expected = lines_of(teardown);
  expected.insert(expected.begin(), "destroy JWNLS Locale track");
  EXPECT_EQ(host.calls, expected);
}

TEST_F(CreationTest, FillsTheHandle) {
  LocaleHandle* handle = create_private();
  ASSERT_NE(handle, nullptr);
  std::uint64_t words[112];
  static_assert(sizeof words == sizeof(LocaleHandle));
  std::memcpy(words, handle, sizeof words);
  EXPECT_EQ(std::memcmp(words, "nevo\0\0\0\0", 8), 0);
  EXPECT_STREQ(handle->type_text, "JWLocale handle");
  EXPECT_EQ(handle->context, &host.context);
  EXPECT_EQ(handle->messages, &host.messages.back());
  EXPECT_EQ(handle->name_length, 5);
  EXPECT_EQ(std::u16string_view(handle->name, 6), std::u16string_view(u"xx_YY\0", 6));
  EXPECT_EQ(text_of(handle->record->locale_name), u"xx_YY");
  EXPECT_EQ(handle->message_lock->destroy, host.locks.back().destroy);
  EXPECT_EQ(handle->zone_lock, &host.locks.back());
  EXPECT_EQ(handle->message_track, host.track("jwnls Locale JWMSG track"));
  EXPECT_EQ(handle->zone_track, host.track("jwnls Locale JWETZ track"));
  EXPECT_EQ(static_cast<void*>(handle->zone), &host.opened_zones.back());
  EXPECT_EQ(handle->no_operation(handle), 0u);
  for (const int same : {40, 41, 42}) EXPECT_EQ(words[same], words[2]) << same;
  for (std::size_t word = 22; word < 112; ++word) {
    const bool is_service = word < 86, is_member = word >= 92 && word < 99 && word != 93;
    if (is_member) continue;
    EXPECT_EQ(words[word] != 0, is_service) << word;
  }
  // Slots that hold one service twice.
  for (const int first : {25, 27, 36, 38, 60, 62, 64, 66})
    EXPECT_EQ(words[first], words[first + 1]);
  for (const int first : {47, 48, 49, 50, 68, 69, 70, 71})
    EXPECT_EQ(words[first], words[first + 4]);
  destroy(handle);
}

// What a failing call does to a creation: `status` null for one that creation gets over.
struct Failure {
  std::string_view call;
  std::optional<Status> status;
};
constexpr auto of_the_host = static_cast<Status>(FakeHost::failure_status);
constexpr auto of_the_resolution = Status::resolved_with_warning;
constexpr Failure failures[] = {
    {"find_node", {}},
    {"create_node", {}},
    {"service.create_journal", {}},
    {"os_zone", {}},
    {"normalise_zone 'europe/BERLIN'", of_the_host},
    {"resolve_locale", of_the_host},
    {"look_up", {}},
    {"allocate nls 896", Status::out_of_memory},
    {"allocate nls 40248", Status::out_of_memory},
    {"kernel.load_extension 'jwemsg'", of_the_resolution},
    {"service.load_extension 'jwnlsldb'", of_the_resolution},
    {"fill", of_the_host},
    {"service.create_lock", Status::ok},  // deliberate: no lock, and no status either
    {"service.create_track standard jwnlsLocaleJnl jwnls Locale JWMSG", Status::ok},
    {"service.create_track standard no journal jwnls Locale JWMSG", Status::ok},
    {"service.create_track", Status::out_of_memory},  // the other track
    {"normalise_zone", Status::lookup_failed},
    {"open", Status::lookup_failed},
    {"allocate nls 24", Status::lookup_failed},
    {"insert jwnls Locale JWETZ track", Status::lookup_failed},
    {"insert JWNLS Locale track", of_the_host},
};

// The status that the calls made to fail amount to: that of the first one that is fatal.
std::optional<Status> expected_status(const Lines& failed) {
  for (const std::string& call : failed) {
    const auto row = std::find_if(std::begin(failures), std::end(failures),
                                  [&](const Failure& each) { return call.starts_with(each.call); });
    if (row == std::end(failures)) {
      ADD_FAILURE() << "no row for " << call;
    } else if (row->status) {
      return row->status;
    }
  }
  return {};
}

// Every call fails in turn, once and from there on for ever, in a new context and in one in use,
// with the caller's zone and with the system's.
TEST_F(CreationTest, SurvivesTheFailureOfEveryCall) {
  make_cache();
  host.resolve_status = code(Status::resolved_with_warning);
  host.os_zone = u"America/New_York";  // what a failing query leads to as well
  auto* cache = static_cast<FakeTrack*>(host.context.handle_cache);
  for (const bool for_ever : {false, true}) {
    for (const bool new_context : {false, true}) {
      for (const std::u16string_view zone : {std::u16string_view(u"europe/BERLIN"), {}}) {
        for (int call = 1;; ++call) {
          if (new_context) make_context_new(host);
          const Lines owned = host.live();
          host.forget_failures();
          host.failing_call = call;
          host.fail_from_there_on = for_ever;
          LocaleHandle* handle = create(zone);
          const Lines failed = host.failed;
          if (failed.empty()) {
            ASSERT_GT(call, 15);
            ASSERT_NE(handle, nullptr);
          }
          const std::optional<Status> expected = expected_status(failed);
          const std::string what =
              (failed.empty() ? "nothing" : failed.front()) + (for_ever ? " and the rest" : "");
          EXPECT_EQ(handle == nullptr, expected.has_value()) << what;
          EXPECT_EQ(status, code(expected.value_or(Status::ok))) << what;
          EXPECT_FALSE(host.creation_lock->held) << what;
          if (handle == nullptr) {
            EXPECT_EQ(host.live(), owned) << what;
            EXPECT_TRUE(cache->entries.empty()) << what;
          }

          host.forget_failures();
          LocaleHandle* next = create(zone);
          ASSERT_NE(next, nullptr) << what;
          EXPECT_EQ(status, 0u) << what;
          EXPECT_TRUE(handle == nullptr || next == handle) << what;
          EXPECT_EQ(cache->entries.size(), 1u) << what;
          for (auto& [key, entry] : cache->entries) {
            EXPECT_EQ(entry.references, 0) << what;
            cache->destructor(&entry);
          }
          cache->entries.clear();
          EXPECT_EQ(host.live(), (Lines{"block of 96", "jwnlsloc pool"})) << what;
          ASSERT_EQ(host.faults, Lines{}) << what;
          if (failed.empty()) break;
        }
      }
    }
  }
}

TEST_F(CreationTest, TakesTheStatusPointerAndTheOptionsAsOptional) {
  const CreationOptions unknown = {private_handle, {}, u"nowhere", 7};
  EXPECT_EQ(factory->create_handle(&host.context, u"xx", 2, nullptr, &unknown), nullptr);
  // Without a zone it is the system's; without a cache nobody but the caller owns the handle.
  const CreationOptions zoneless[] = {
      {private_handle, {}, nullptr, 0}, {0, {}, u"UTC", 0}, {0, {}, u"UTC", -1}};
  for (const CreationOptions* options :
       {&zoneless[0], &zoneless[1], &zoneless[2], static_cast<const CreationOptions*>(nullptr)}) {
    host.calls.clear();
    destroy(factory->create_handle(&host.context, u"xx", 2, nullptr, options));
    EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), "os_zone 8 50"), 1);
    EXPECT_EQ(host.opened_zones.back().name, "'Europe/Berlin'");
  }
}

TEST_F(CreationTest, AcceptsTheTwoWarnings) {
  constexpr std::uint32_t resolved = code(Status::resolved_with_warning);
  constexpr std::uint32_t filled = code(Status::filled_with_warning);
  for (const auto& [resolve, fill, expected] :
       {std::tuple(resolved, filled, 0u), {filled, 0u, filled}, {0u, resolved, resolved}}) {
    host.resolve_status = resolve;
    host.fill_status = fill;
    LocaleHandle* handle = create_private();
    EXPECT_EQ(handle != nullptr, expected == 0);
    EXPECT_EQ(status, expected);
    if (handle != nullptr) destroy(handle);
  }
}

TEST_F(CreationTest, FallsBackFromABadSystemZoneWithAWarning) {
  const std::string warning =
      "journal 3 'Invalid OS TIMEZONE value is detected. Use default TIMEZONE value instead' 0";
  for (const Status answer : {Status::no_os_zone, Status::lookup_failed, Status::not_possible}) {
    make_context_new(host);
    for (const bool with_store : {true, false}) {
      host.context.app_node = nullptr;  // without it the journal is not used, even if there is one
      host.reports.clear();
      host.service.option_store = with_store ? &host.store : nullptr;
      host.os_zone_status = code(answer);
      LocaleHandle* handle = create({}, private_handle);
      ASSERT_NE(handle, nullptr);
      const bool bad = answer != Status::not_possible;  // other statuses are not looked at
      EXPECT_EQ(host.opened_zones.back().name, bad ? "'America/New_York'" : "'Europe/Berlin'");
      EXPECT_EQ(host.reports, bad && with_store ? Lines{warning} : Lines{});
      destroy(handle);
    }
  }
  host.os_zone_status = 0;
  host.os_zone = std::u16string(50, u'z');
  for (const auto& [reported, used] : {std::pair(std::int64_t{51}, 50), {INT64_MAX, 50}, {-2, 0}}) {
    host.os_zone_length = reported;
    host.known_zones = {std::u16string(static_cast<std::size_t>(used), u'z')};
    LocaleHandle* handle = create({}, private_handle);
    ASSERT_NE(handle, nullptr) << reported;
    EXPECT_EQ(host.opened_zones.back().name.size(), static_cast<std::size_t>(used) + 2);
    destroy(handle);
  }
}

TEST_F(CreationTest, NeedsAKernelHandle) {
  loaded_module().jwextent(nullptr);
  EXPECT_EQ(create_private(), nullptr);
  EXPECT_EQ(status, 0u);
  EXPECT_EQ(host.live(), (Lines{"block of 96", "jwnlsloc pool"}));
}

TEST_F(CreationTest, BoundsTheCanonicalName) {
  for (const auto length : std::initializer_list<std::size_t>{0, 1, 60, 61}) {
    host.canonical_locale = std::u16string(length, u'n');
    LocaleHandle* handle = create_private();
    EXPECT_EQ(handle != nullptr, length == 1 || length == 60) << length;
    if (handle == nullptr) {
      EXPECT_EQ(status, code(Status::lookup_failed));
      continue;
    }
    EXPECT_EQ(std::u16string_view(handle->name, length + 1), host.canonical_locale + u'\0');
    EXPECT_EQ(text_of(handle->record->locale_name), host.canonical_locale);
    destroy(handle);
  }
}

TEST_F(CreationTest, SharesAHandlePerLocaleAndZone) {
  make_cache();
  LocaleHandle* berlin = create(u"Europe/Berlin");
  LocaleHandle* utc = create(u"UTC");
  EXPECT_EQ(create({}), berlin) << "the system's zone is Europe/Berlin";
  EXPECT_EQ(create(u"utc"), utc);
  EXPECT_NE(berlin, utc);
  LocaleHandle* own = create_private(u"UTC");
  EXPECT_NE(own, utc);
  EXPECT_EQ(create(u"UTC"), utc) << "a private handle is not registered";
  host.canonical_locale = u"zz";
  EXPECT_NE(create(u"UTC"), utc);
  EXPECT_EQ(static_cast<FakeTrack*>(host.context.handle_cache)->entries.size(), 3u);
  destroy(own);
}

// Of any length, up to a locale and a zone that fill the key's 110 units.
TEST_F(CreationTest, NamesTheCacheEntryByLocaleBlankAndZone) {
  make_cache();
  auto& entries = static_cast<FakeTrack*>(host.context.handle_cache)->entries;
  for (const std::u16string& zone : {u"Z"s, u"UTC"s, u"Europe/Berlin"s, std::u16string(50, u'z')}) {
    host.known_zones = {zone};
    for (std::size_t units = 1; units <= 60; ++units) {
      host.canonical_locale.assign(units, u'l').back() = u'e';
      ASSERT_NE(create(zone), nullptr);
      const std::u16string key = (host.canonical_locale + u' ' + zone).substr(0, 110);
      const std::string bytes(reinterpret_cast<const char*>(key.data()), key.size() * 2);
      EXPECT_TRUE(entries.contains(bytes)) << units << " units";
    }
  }
}

}  // namespace
}  // namespace jwnls::test
