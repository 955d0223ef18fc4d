// A host for tests: the exact function tables, with every call recorded and any call made to fail.
//
// It keeps account of what it hands out. Objects outlive their destruction here, so a second
// destruction, a use after it, an entry that is never released or a lock that is taken twice
// becomes a line in `faults`, and what was never given back one in `live()`. Words that the
// module has no business with abort when they are called. One thread at a time.

#ifndef JWNLS_TESTS_SUPPORT_FAKE_HOST_H_
#define JWNLS_TESTS_SUPPORT_FAKE_HOST_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_tables.h"
#include "abi/locale_record.h"

namespace jwnls::test {

class FakeHost;

/// One object of the host: the table that the module sees, and the account behind it.
template <typename Table>
struct Fake : Table {
  FakeHost* host = nullptr;
  std::string name;
  bool alive = true;
};

struct FakePool : Fake<Pool> {
  std::map<void*, std::uint64_t> blocks;  // sizes in bytes
};
struct FakeLock : Fake<Lock> {
  bool held = false;
};
struct FakeEntry : TrackEntry {
  int references = 0;
};
struct FakeTrack : Fake<Track> {
  std::map<std::string, FakeEntry> entries;  // by the key's bytes
  EntryDestructor destructor = nullptr;
};
struct FakeZone {  // the module's opaque Zone
  std::string name;
  bool alive = true;
};

class FakeHost {
 public:
  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  // ---- What the module is given. The context starts as a new process finds it: no option node, no
  // journal, no handle cache, no locale database.
  Fake<Kernel> kernel;   // what jwextver and jwnlsloc get
  Fake<Kernel> service;  // the context's host service object
  Fake<NlsContext> context;
  Fake<OptionStore> store;
  Fake<ZoneService> zones;
  Fake<LocaleDatabase> database;
  Fake<ErrorSink> errors;
  FakePool* pool;           // the context's
  FakeLock* creation_lock;  // the context's

  // ---- What its operations answer.
  std::u16string canonical_locale = u"xx_YY";
  std::uint32_t resolve_status = 0;
  std::uint32_t fill_status = 0;
  std::function<void(LocaleRecord&)> fill_record;  // after every byte from 128 on became zero
  std::vector<std::u16string> known_zones = {u"Europe/Berlin", u"America/New_York", u"UTC"};
  std::u16string os_zone = u"Europe/Berlin";
  std::int64_t os_zone_length = -1;  // reported in place of the name's own when not -1
  std::uint32_t os_zone_status = 0;
  std::u16string abbreviation = u"CET";
  std::int64_t abbreviation_length = 3;  // as reported; at most 50 units are written
  std::int64_t offset_seconds = 3600;
  std::uint32_t zone_info_status = 0;
  std::map<char16_t, char16_t> upper_case;                 // beside ASCII's
  std::map<std::u16string, std::int64_t> integer_options;  // what read_option finds
  std::function<void(FakeLock&)> when_taken;               // what another thread did meanwhile
  // Sees each object that the kernel makes or loads, with its name, before the module does.
  std::function<void(const std::string& name, void* table)> when_made;

  // ---- Calls that fail. Only calls that can fail are counted, from 1.
  static constexpr std::uint32_t failure_status = 0x803F0BAD;
  int failing_call = 0;             // 0: none
  bool fail_from_there_on = false;  //
  int fallible_calls = 0;           // counted so far
  std::vector<std::string> failed;  // what was made to fail, as in `calls`

  // ---- What happened.
  bool recording = true;
  std::vector<std::string> calls;         // each with its arguments
  std::vector<std::string> faults;        // what no correct module does
  std::vector<std::string> live() const;  // what is still owned by the module's objects, sorted

  FakeTrack* track(std::string_view name);  // the newest live one
  void forget_failures();

  // For the operations.
  void note(const std::string& call);
  void fault(const std::string& what) { faults.push_back(what); }
  bool fails(const std::string& call);  // notes the call

  std::deque<FakePool> pools;
  std::deque<FakeLock> locks;
  std::deque<FakeTrack> tracks;
  std::deque<Fake<Journal>> journals;
  std::deque<Fake<MessageExtension>> messages;
  std::deque<FakeZone> opened_zones;
  std::deque<std::u16string> nodes;
  std::vector<std::uint64_t> resolved;  // the words of a ResolvedLocale
  std::vector<std::string> reports;     // what the error sink and the journals were told
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_FAKE_HOST_H_
