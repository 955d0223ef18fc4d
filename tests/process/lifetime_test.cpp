// The library around exit(), fork() and modules that cannot be loaded.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/opened_layout.h"

namespace jwnls::test {
namespace {

std::string date_text(const jwnls_layout* layout) {
  char text[64];
  std::size_t length = 0;
  if (jwnls_write_date(layout, 19797, text, sizeof text, &length) != JWNLS_OK) return "";
  return {text, length};
}

// Formats as long as it lives, and when it is destroyed: which for a static is after main().
struct Formatter {
  ~Formatter() {
    if (layout != nullptr && date_text(layout) != "15. März 2024") _exit(1);
    jwnls_layout* late = nullptr;
    if (jwnls_open("fr_FR", JWNLS_DATETIME, "zone=Europe/Paris", &late, nullptr) != JWNLS_OK) {
      _exit(2);
    }
    jwnls_close(late);
  }
  jwnls_layout* layout = nullptr;
};

[[noreturn]] void leave_while_others_format() {
  static Formatter formatter;  // made before anything of the library, so destroyed after it
  formatter.layout = open_layout("de_DE", JWNLS_DATE, "style=long").release();
  for (int i = 0; i < 3; ++i) {
    std::thread([] {
      for (;;) {
        if (date_text(formatter.layout).empty()) _exit(3);
        jwnls_layout* other = nullptr;
        if (jwnls_open("pl_PL", JWNLS_DATETIME, "zone=UTC+01", &other, nullptr) != 0) _exit(4);
        jwnls_close(other);
      }
    }).detach();
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  std::exit(0);
}

TEST(Exit, StaticsAndDetachedThreadsFormatWhileTheProcessEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EXIT(leave_while_others_format(), testing::ExitedWithCode(0), "");
  }
}

TEST(Fork, AChildOpensAndFormatsWhateverTheOthersOpenedThen) {
#if defined(JWNLS_SANITIZED) && defined(__clang__)
  GTEST_SKIP() << "the sanitizer's allocator may be locked in the child of a process with threads";
#endif
  const auto german = open_layout("de_DE", JWNLS_DATE, "style=long");
  std::vector<std::string> zones;
  jwnls_zones(
      [](void* all, const char* zone) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(zone);
        return 0;
      },
      &zones);
  std::vector<std::string> locales;
  jwnls_locales(
      [](void* all, const jwnls_locale_info* locale) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(locale->name);
        return 0;
      },
      &locales);
  ASSERT_GT(zones.size(), 400U);
  ASSERT_GT(locales.size(), 800U);

  std::atomic<bool> done = false;
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < 3; ++number) {
    threads.emplace_back([&, number] {
      for (std::size_t i = number; !done; i += 3) {
        jwnls_layout* layout = nullptr;
        const std::string zone = "zone=" + zones[i % zones.size()];
        jwnls_open(locales[i % locales.size()].c_str(), JWNLS_DATETIME, zone.c_str(), &layout,
                   nullptr);
        jwnls_close(layout);
        if (i % 64 == number) jwnls_reload_zones(nullptr);
      }
    });
  }
  for (int i = 0; i < 40; ++i) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      alarm(20);  // what waits for ever is a lock that nobody has
      jwnls_layout* layout = nullptr;
      const bool good = date_text(german.get()) == "15. März 2024" &&
                        jwnls_open("sv_SE", JWNLS_DATETIME, "zone=Asia/Kathmandu", &layout,
                                   nullptr) == JWNLS_OK &&
                        jwnls_reload_zones(nullptr) == JWNLS_OK;
      _exit(good ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status)) << "child " << i << ", signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "child " << i;
  }
  done = true;
  for (std::thread& thread : threads) thread.join();
}

jwnls_error error = {};  // of the latest call

int open(const char* locale, const char* options) {
  jwnls_layout* layout = nullptr;
  const int code = jwnls_open(locale, JWNLS_DATETIME, options, &layout, &error);
  jwnls_close(layout);
  return code;
}
bool says(std::string_view part) {
  return std::string_view(error.text).find(part) != std::string_view::npos;
}
void check(bool good, int number) {
  if (good) return;
  (void)std::fprintf(stderr, "%d: %d %s\n", number, error.code, error.text);
  _exit(number);
}

// A module that cannot be loaded is told of once, with nothing in the folder's name obeyed; what
// fails later has a reason of its own.
[[noreturn]] void load_from_bad_folder() {
  namespace fs = std::filesystem;
  const fs::path folder =
      fs::path(testing::TempDir()) / "jwnls_bad\x1B[31m\xC2\x80\xE2\x80\xAEmodules";
  fs::create_directories(folder);
  std::ofstream(folder / "jwnlsloc.so") << "no library";
  check(jwnls_configure("module-path", "/a:b", &error) == JWNLS_UNKNOWN &&
            says("folders are absolute"),
        7);
  setenv("JWNLS_EXTENSION_PATH", folder.c_str(), 1);
  check(open("de_DE", "") == JWNLS_LOAD && says("cannot load"), 8);
  unsetenv("JWNLS_EXTENSION_PATH");
  check(jwnls_configure("module-path", folder.c_str(), &error) == JWNLS_OK, 1);
  check(open("de_DE", "") == JWNLS_LOAD && says("cannot load") &&
            says("jwnls_bad\\x1B[31m\\u0080\\u202Emodules/jwnlsloc.so"),
        2);
  fs::remove_all(folder);
  check(open("de_DE", "zone=Europe/Nowhere") == JWNLS_UNKNOWN &&
            says("time zone 'Europe/Nowhere': unknown") && !says("cannot load"),
        3);
  check(open("xx_YY", "") == JWNLS_UNKNOWN && says("locale 'xx_YY': unknown"), 4);
  check(open("de_DE", "zone=Europe/Berlin") == JWNLS_OK, 5);
  check(jwnls_configure("module-path", "/", &error) == JWNLS_UNKNOWN && says("loaded already"), 6);
  _exit(0);
}

TEST(Loading, FailuresBlameWhatFailedAndTheNextCallTriesAgain) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(load_from_bad_folder(), testing::ExitedWithCode(0), "");
}

// Somebody's database without a word, and one that fails later. A journal function is told why, and
// may name its successor, but opens nothing.
[[noreturn]] void load_strange_database() {
  static int nested = JWNLS_OK;
  static std::string told;
  const auto tell = [](void*, const char* line) {
    told += line;
    nested = open("fr_FR", "");
    jwnls_set_journal(nullptr, nullptr);
  };
  jwnls_set_journal(tell, nullptr);
  check(jwnls_configure("module-path", JWNLS_BUILD_DIR "/strange_modules", &error) == JWNLS_OK, 1);
  check(open("de_DE", "") == JWNLS_LOAD && says("locale 'de_DE': its data cannot be loaded"), 2);
  check(told == "No locale handle: word 10 of jwnlsldb is null" && nested == JWNLS_LOAD, 3);
  check(open("de_DE", "") == JWNLS_LOAD && told.size() < 60, 4);
  setenv("SAMPLE_FILLS", "", 1);
  const jwnls_text number = {"1", 1};
  const jwnls_texts texts = {sizeof texts, 1, &number, nullptr, nullptr, nullptr, nullptr};
  jwnls_detection* detection = nullptr;
  check(jwnls_detect(&texts, "number", nullptr, &detection, &error) == JWNLS_LOAD &&
            says("its data cannot be loaded"),
        5);
  _exit(0);
}

TEST(Loading, AStrangeDatabaseIsRefused) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(load_strange_database(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace jwnls::test
