// What the fake host's operations share: the record of a call, and the account behind a table.

#ifndef JWNLS_TESTS_SUPPORT_FAKE_OBJECTS_H_
#define JWNLS_TESTS_SUPPORT_FAKE_OBJECTS_H_

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "tests/support/fake_host.h"

namespace jwnls::test {

// Each adds a live object with its operations to the host.
FakePool& make_pool(FakeHost* host, const std::string& name);
FakeLock& make_lock(FakeHost* host, const std::string& name);
FakeTrack& make_track(FakeHost* host, const std::string& name);

[[noreturn]] inline void unlisted_word() {
  std::fputs("the module called a word that is not its to call\n", stderr);
  std::abort();
}

inline std::string narrow(std::u16string_view text) {
  std::string result = "'";
  for (const char16_t unit : text) {
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, unit < 0x80 ? "%c" : "\\u%04X", unit);
    result += escaped;
  }
  return result + "'";
}
inline std::string narrow(const char16_t* text, std::int64_t length) {
  return text == nullptr ? "null" : narrow({text, static_cast<std::size_t>(length)});
}
// A track's key: UTF-16 in bytes.
inline std::string narrow_key(const void* key, std::int64_t bytes) {
  std::u16string text(static_cast<std::size_t>(bytes) / 2, u'\0');
  std::memcpy(text.data(), key, text.size() * 2);
  return narrow(text);
}

// The parts of a call's record, joined with blanks.
template <typename... Parts>
std::string line(const Parts&... parts) {
  std::ostringstream out;
  ((out << parts << ' '), ...);
  std::string result = out.str();
  result.pop_back();
  return result;
}
inline std::string hex(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(value));
  return text;
}
inline std::string zeros(const void* block, std::size_t bytes) {
  const auto* first = static_cast<const unsigned char*>(block);
  const bool all = std::all_of(first, first + bytes, [](unsigned char byte) { return byte == 0; });
  return std::to_string(bytes) + (all ? " zeros" : " bytes");
}

template <typename Table>
auto& fake(Table* table) {
  auto& object = *static_cast<Fake<Table>*>(table);
  if (!object.alive) object.host->fault("use of destroyed " + object.name);
  return object;
}
inline FakePool& fake(Pool* pool) { return static_cast<FakePool&>(fake<Pool>(pool)); }
inline FakeLock& fake(Lock* lock) { return static_cast<FakeLock&>(fake<Lock>(lock)); }
inline FakeTrack& fake(Track* track) { return static_cast<FakeTrack&>(fake<Track>(track)); }

// Gives an object words that abort when they are called. Data words are set afterwards.
template <typename Table>
void set_up(Fake<Table>& object, FakeHost* host, const std::string& name) {
  void (*const word)() = unlisted_word;
  for (std::size_t at = 0; at < sizeof(Table); at += sizeof word) {
    std::memcpy(reinterpret_cast<std::byte*>(static_cast<Table*>(&object)) + at, &word,
                sizeof word);
  }
  object.host = host;
  object.name = name;
}

template <typename Table, typename Object>
Object& make(std::deque<Object>& objects, FakeHost* host, const std::string& name) {
  Object& object = objects.emplace_back();
  set_up<Table>(object, host, name);
  return object;
}

// Marks an object destroyed. Destroying it again is a use of a destroyed object.
template <typename Table>
auto& end(Table* table) {
  auto& object = fake(table);
  object.host->note(line("destroy", object.name));
  object.alive = false;
  return object;
}

inline std::string label(Journal* journal) {
  return journal == nullptr ? "no journal" : fake(journal).name;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_FAKE_OBJECTS_H_
