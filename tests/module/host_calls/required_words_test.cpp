// Hosts whose tables lack words: required ones, each in turn, and all the optional ones at once.

#include <algorithm>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "abi/number_flags.h"
#include "tests/support/module_fixture.h"

namespace jwnls::test {
namespace {

using Lines = std::vector<std::string>;

// A word of a host's object, set to null as long as this lives.
class NullWord {
 public:
  NullWord(void* table, std::size_t word) : place_(static_cast<std::byte*>(table) + word * 8) {
    std::memcpy(&value_, place_, sizeof value_);
    const void* null = nullptr;
    std::memcpy(place_, &null, sizeof null);
  }
  ~NullWord() { std::memcpy(place_, &value_, sizeof value_); }
  NullWord(const NullWord&) = delete;
  NullWord& operator=(const NullWord&) = delete;

 private:
  std::byte* place_;
  void* value_ = nullptr;
};

struct MissingWord {
  const char* object;  // the fake's name for it
  const char* title;   // the journal's
  std::size_t word;
  Status status;
  bool finds = false;  // called to find a handle that exists
};
constexpr auto no_extension = Status::resolved_with_warning;  // what the resolution answers here
constexpr auto no_memory = Status::out_of_memory;
constexpr auto no_lock = Status::ok;
constexpr MissingWord missing_words[] = {
    {"context", "the NLS context", 5, no_extension},
    {"context", "the NLS context", 31, Status::lookup_failed},
    {"context", "the NLS context", 39, Status::lookup_failed, true},
    {"context", "the NLS context", 80, Status::lookup_failed, true},
    {"context", "the NLS context", 85, Status::no_os_zone, true},
    {"context", "the NLS context", 142, no_memory},
    {"context", "the NLS context", 1162, no_lock, true},
    {"context", "the NLS context", 1182, Status::lookup_failed},
    {"creation", "the creation lock", 3, no_lock, true},
    {"creation", "the creation lock", 4, no_lock, true},
    {"JWNLS Locale track", "the handle cache", 5, Status::lookup_failed, true},
    {"JWNLS Locale track", "the handle cache", 6, Status::lookup_failed},
    {"JWNLS Locale track", "the handle cache", 18, Status::lookup_failed, true},
    {"nls", "the pool", 3, no_memory},
    {"nls", "the pool", 4, no_memory},
    {"kernel", "the kernel", 9, no_extension},
    {"jwemsg", "jwemsg", 2, no_extension},
    {"service", "the host service", 3, no_lock},
    {"service", "the host service", 8, no_lock},
    {"service", "the host service", 9, no_extension},
    {"locale database", "jwnlsldb", 10, no_extension},
    {"jwnls Locale JWMSG lock", "the message lock", 2, no_lock},
    {"jwnls Locale JWZ lock", "the zone lock", 2, no_lock},
    {"jwnls Locale JWZ lock", "the zone lock", 3, no_lock},
    {"jwnls Locale JWZ lock", "the zone lock", 4, no_lock},
    {"jwnls Locale JWMSG track", "the message track", 2, no_lock},
    {"jwnls Locale JWMSG track", "the message track", 7, no_lock},
    {"jwnls Locale JWETZ track", "the zone track", 2, no_memory},
    {"jwnls Locale JWETZ track", "the zone track", 5, no_memory},
    {"jwnls Locale JWETZ track", "the zone track", 6, no_memory},
    {"jwnls Locale JWETZ track", "the zone track", 7, no_memory},
    {"jwnls Locale JWETZ track", "the zone track", 18, no_memory},
    {"zone service", "the zone service", 48, Status::lookup_failed},
    {"zone service", "the zone service", 51, Status::lookup_failed},
    {"zone service", "the zone service", 59, Status::lookup_failed},
};

class WordsTest : public ModuleTest {
 protected:
  // The object of a name that the host has before a handle is made; null: it makes it then.
  void* object(const std::string& name) {
    const std::map<std::string, void*> objects = {
        {"context", static_cast<NlsContext*>(&host.context)},
        {"creation", static_cast<Lock*>(host.creation_lock)},
        {"JWNLS Locale track", host.context.handle_cache},
        {"nls", static_cast<Pool*>(host.pool)},
        {"kernel", static_cast<Kernel*>(&host.kernel)},
        {"service", static_cast<Kernel*>(&host.service)},
        {"locale database", static_cast<LocaleDatabase*>(&host.database)},
        {"zone service", static_cast<ZoneService*>(&host.zones)},
        {"option store", static_cast<OptionStore*>(&host.store)},
    };
    const auto found = objects.find(name);
    return found != objects.end() ? found->second : nullptr;
  }

  // Through a pointer of the object's own type.
  template <typename Table>
  static void destroy_as(void* table) {
    static_cast<Table*>(table)->destroy(static_cast<Table*>(table));
  }
  static void destroy_made(const std::string& name, void* table) {
    if (name.ends_with(" lock")) return destroy_as<Lock>(table);
    if (name.ends_with(" track")) return destroy_as<Track>(table);
    destroy_as<MessageExtension>(table);
  }

  // Creates a handle while `word` is null, also in an object that the host makes for it; such an
  // object is then destroyed here if the module could not do it.
  LocaleHandle* create_without(const std::string& name, std::size_t word) {
    if (void* table = object(name)) {
      const NullWord null(table, word);
      return create();
    }
    std::vector<std::pair<void*, std::unique_ptr<NullWord>>> made;
    host.when_made = [&](const std::string& each, void* table) {
      if (each == name) made.emplace_back(table, std::make_unique<NullWord>(table, word));
    };
    LocaleHandle* handle = create();
    host.when_made = nullptr;
    EXPECT_EQ(made.size(), 1u);
    for (auto& [table, null] : made) {
      null.reset();
      const Lines live = host.live();
      const bool lives = std::find(live.begin(), live.end(), name) != live.end();
      EXPECT_EQ(lives, word == 2) << "only what cannot be destroyed";
      if (lives) destroy_made(name, table);
    }
    return handle;
  }

  void SetUp() override {
    host.resolve_status = code(Status::resolved_with_warning);
    make_cache();
  }
};

TEST_F(WordsTest, FailsWithTheStatusOfTheStepAndSaysSo) {
  for (const MissingWord& row : missing_words) {
    SCOPED_TRACE(std::string(row.object) + ", word " + std::to_string(row.word));
    for (const bool database_loaded : {false, true}) {
      if (!database_loaded) host.context.locale_database = nullptr;
      const Lines owned = host.live();
      host.reports.clear();
      EXPECT_EQ(create_without(row.object, row.word), nullptr);
      EXPECT_EQ(status, code(row.status));
      EXPECT_EQ(host.reports, Lines{"journal 3 'No locale handle: word " +
                                    std::to_string(row.word) + " of " + row.title + " is null' 0"});
      EXPECT_EQ(host.live(), owned);
      EXPECT_FALSE(host.creation_lock->held);
      ASSERT_EQ(host.faults, Lines{});
      LocaleHandle* next = create_private();
      ASSERT_NE(next, nullptr) << "the host is none the worse";
      destroy(next);
    }
  }
}

// Words that only the making of a handle calls are not looked at where there is one.
TEST_F(WordsTest, FindsAHandleWithTheWordsOfFinding) {
  LocaleHandle* handle = create();
  for (const MissingWord& row : missing_words) {
    void* table = object(row.object);
    if (table == nullptr) continue;
    SCOPED_TRACE(std::string(row.object) + ", word " + std::to_string(row.word));
    const NullWord null(table, row.word);
    EXPECT_EQ(create(), row.finds ? nullptr : handle);
    EXPECT_EQ(status, code(row.finds ? row.status : Status::ok));
  }
  const NullWord look_up(object("JWNLS Locale track"), 5);
  LocaleHandle* own = create_private();
  ASSERT_NE(own, nullptr) << "a private handle has no need of the cache";
  destroy(own);
}

TEST_F(WordsTest, WritesNoTextWhereNoJournalCanBeWritten) {
  const NullWord locale(object("context"), 39);
  const NullWord write(host.context.journal, 5);
  host.reports.clear();
  EXPECT_EQ(create(), nullptr);
  const NullWord journal(object("context"), 1168);
  const NullWord create_journal(object("service"), 5);
  EXPECT_EQ(create(), nullptr);
  EXPECT_EQ(status, code(Status::lookup_failed));
  EXPECT_EQ(host.reports, Lines{});
}

TEST_F(WordsTest, MakesNoFactoryAndNoCacheWithout) {
  const Lines owned = host.live();
  const Lines report = {"error 4 803fc002"};
  const auto create_factory = [&](Kernel* kernel, ErrorSink* sink) {
    host.reports.clear();
    EXPECT_EQ(loaded_module().jwnlsloc(kernel, sink), nullptr);
    EXPECT_EQ(host.reports, sink == &host.errors && sink->report != nullptr ? report : Lines{});
  };
  for (ErrorSink* sink :
       {static_cast<ErrorSink*>(&host.errors), static_cast<ErrorSink*>(nullptr)}) {
    create_factory(nullptr, sink);
    const NullWord create_pool(object("kernel"), 6);
    create_factory(&host.kernel, sink);
    const NullWord sink_report(static_cast<ErrorSink*>(&host.errors), 7);
    create_factory(&host.kernel, sink);
  }
  for (const std::size_t word : {2u, 3u}) {
    host.when_made = [&](const std::string&, void* pool) {
      std::memset(static_cast<std::byte*>(pool) + word * 8, 0, 8);
    };
    create_factory(&host.kernel, &host.errors);
    if (word == 2) host.pools.back().alive = false;  // nobody can destroy it
    EXPECT_EQ(host.live(), owned) << word;
  }
  host.when_made = nullptr;
  LocaleHandle* handle = create();
  host.when_made = [](const std::string&, void* track) {
    static_cast<Track*>(track)->set_destructor = nullptr;
  };
  const Lines before = host.live();
  EXPECT_EQ(handle->services.create_handle_cache(handle), nullptr);
  EXPECT_EQ(host.live(), before);
}

// Kernel and service without journals, options, character classes, formatting and option store; a
// context without journal, node, cache and database.
TEST_F(WordsTest, RunsWithoutTheOptionalWords) {
  Track* cache = host.context.handle_cache;
  host.context.handle_cache = nullptr;
  cache->destroy(cache);
  std::deque<NullWord> nulls;
  for (const std::size_t word : {5u, 14u, 27u, 29u, 31u}) {
    nulls.emplace_back(object("kernel"), word);
    nulls.emplace_back(object("service"), word);
  }
  host.kernel.formatter_state = 0;  // asks for a formatter that it does not have
  host.journals.back().alive = false;
  host.context.journal = nullptr;
  host.context.app_node = nullptr;
  host.context.locale_database = nullptr;
  host.fill_record = [](LocaleRecord& record) {
    record.decimal_symbol = u',';
    set_text(record.datetime_pattern, u"%Y-%m-%d %z");
  };
  LocaleHandle* handle = create(u"Europe/Berlin");
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(host.context.journal, nullptr);

  const ServiceTable& slots = handle->services;
  char16_t text[64];
  std::int64_t length = 0;
  EXPECT_EQ(slots.format_datetime(handle, 86400, 1, text, 64, &length), 0u);
  EXPECT_EQ(std::u16string(text, static_cast<std::size_t>(length)), u"1960-01-02 +0100");
  EXPECT_EQ(slots.format_number(handle, 2.5, 0, 2, number_flags::fixed, text, 64, &length), 0u);
  EXPECT_EQ(std::u16string(text, static_cast<std::size_t>(length)), u"2,50");
  double value = 0;
  std::int64_t consumed = 0;
  EXPECT_EQ(slots.read_number(handle, u"2,50", 4, &value, &consumed), 0u);
  EXPECT_EQ(value, 2.5);
  std::uint64_t read = 0;
  EXPECT_EQ(slots.read_period(handle, u"Month1, 50", 10, 0, &value, &read), 0u);
  EXPECT_EQ(value, -3652) << "1950: the first year of the window when no option is read";
  EXPECT_EQ(slots.set_time_zone(handle, u"UTC", 3), 0u);
  destroy(handle);

  nulls.clear();  // an option store that neither finds nor makes a node
  host.nodes.clear();
  const NullWord create_node(object("option store"), 18);
  handle = create();
  ASSERT_NE(handle, nullptr);
  destroy(handle);
  const NullWord find_node(object("option store"), 22);
  handle = create();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(host.context.app_node, nullptr);
  destroy(handle);
}

}  // namespace
}  // namespace jwnls::test
