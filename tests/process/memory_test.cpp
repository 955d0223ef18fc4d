// Every allocation fails in turn, once and for ever: a call succeeds or says so, and the next one
// works.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

#include "include/jwnls/jwnls.h"
#include "tests/process/allocations.h"

namespace jwnls::test {
namespace {

int open(const char* locale, int kind, const char* options, jwnls_error* error) {
  jwnls_layout* layout = nullptr;
  const int code = jwnls_open(locale, kind, options, &layout, error);
  jwnls_close(layout);
  return code;
}

struct Call {
  const char* name;
  std::function<int(jwnls_error*)> run;
};

int explain(jwnls_error* error) {
  jwnls_layout* layout = nullptr;
  int code = jwnls_open("pl_PL", JWNLS_DATE, "style=long", &layout, error);
  if (code == JWNLS_OK && jwnls_explain(layout, "29 29 29", 8, error) == JWNLS_OK) code = -1;
  jwnls_close(layout);
  return code;
}

// Of two columns in one: half of the texts are not read.
int read_and_write_columns(jwnls_error* error) {
  jwnls_layout* layout = nullptr;
  const int code = jwnls_open("hi_IN", JWNLS_AMOUNT, "digits=own currency=any", &layout, error);
  if (code != JWNLS_OK) return code;
  const double values[] = {1234567.5, -0.25};
  char bytes[200];
  std::int64_t offsets[3];
  jwnls_column column = {};
  column.size = sizeof column;
  column.bytes = bytes;
  column.room = sizeof bytes;
  column.large_offsets = offsets;
  const std::size_t written = jwnls_write_numbers(layout, values, 2, &column);
  const jwnls_texts texts = {sizeof texts, 2, nullptr, bytes, nullptr, offsets, nullptr};
  double read[2] = {};
  const std::size_t unread = jwnls_read_numbers(layout, &texts, read, nullptr, nullptr);
  jwnls_close(layout);
  return written == 2 && unread == 0 && read[0] == values[0] ? JWNLS_OK : -1;
}

//   locales  null: every one
int detect(const char* kinds, const char* locales, jwnls_error* error) {
  const jwnls_text column[] = {{"15. M\u00E4rz 2024", 14}, {"1.234,50", 8}, {"14:30", 5}};
  const jwnls_texts texts = {sizeof texts, 3, column, nullptr, nullptr, nullptr, nullptr};
  jwnls_detection* detection = nullptr;
  const int code = jwnls_detect(&texts, kinds, locales, &detection, error);
  jwnls_detection_close(detection);
  return code;
}

int visit_zone(void*, const char*) { return 0; }
int visit_locale(void*, const jwnls_locale_info*) { return 0; }

const Call calls[] = {
    {"number", [](auto* error) { return open("de_DE", JWNLS_NUMBER, "decimals=2", error); }},
    {"integer", [](auto* error) { return open("hi_IN", JWNLS_INTEGER, "digits=own", error); }},
    {"date", [](auto* error) { return open("pl_PL", JWNLS_DATE, "style=long", error); }},
    {"amount", [](auto* error) { return open("kea_CV", JWNLS_AMOUNT, "currency=any", error); }},
    {"accounting", [](auto* error) { return open("en_US", JWNLS_AMOUNT, "accounting", error); }},
    {"percent", [](auto* error) { return open("ar_EG", JWNLS_PERCENT, "digits=own", error); }},
    {"full date",
     [](auto* error) { return open("hu_HU", JWNLS_DATE, "style=full names=english", error); }},
    {"instant",
     [](auto* error) { return open("vi_VN", JWNLS_INSTANT, "zone=America/Lima", error); }},
    {"period", [](auto* error) { return open("fi_FI", JWNLS_PERIOD, "", error); }},
    {"columns", read_and_write_columns},
    {"detect", [](auto* error) { return detect(nullptr, "de_DE, yo, sr_Latn", error); }},
    {"detect in every locale", [](auto* error) { return detect("number,time", nullptr, error); }},
    {"time", [](auto* error) { return open("en_US", JWNLS_TIME, "", error); }},
    {"datetime",
     [](auto* error) { return open("ja_JP", JWNLS_DATETIME, "zone=Asia/Tokyo", error); }},
    {"rule",
     [](auto* error) {
       return open("fr_FR", JWNLS_DATETIME, "zone=CET-1CEST,M3.5.0,M10.5.0/3", error);
     }},
    {"zone",
     [](auto* error) {
       jwnls_zone_state state = {};
       state.size = sizeof state;
       return jwnls_zone_at("America/St_Johns", 0, &state, error);
     }},
    {"explain", explain},
    {"reload", [](auto* error) { return jwnls_reload_zones(error); }},
    {"zones", [](auto*) { return jwnls_zones(visit_zone, nullptr); }},
    {"locales", [](auto*) { return jwnls_locales(visit_locale, nullptr); }},
    {"configure",
     [](auto* error) { return jwnls_configure("zone-folder", "/usr/share/zoneinfo", error); }},
};

// What may be kept of calls that failed: names that the library for zones remembers.
constexpr long few_blocks = 8;

// Runs a call with each allocation failing, until one is reached that is not asked for any more.
std::string fault_of(const Call& call, bool for_ever) {
  long live = -1;  // blocks, after the first time
  for (long number = 0;; number += number < 128 ? 1 : 1 + number / 32) {
    jwnls_error error = {};
    fail_allocation(number, for_ever);
    const int code = call.run(&error);
    const long asked = allow_allocations();
    const auto fault = [&](const char* what, int wrong) {
      return std::string(call.name) + ": allocation " + std::to_string(number) +
             (for_ever ? " for ever: " : ": ") + what + std::to_string(wrong) + " " + error.text;
    };
    if (code != JWNLS_OK && code != JWNLS_MEMORY) return fault("gives ", code);
    if (code == JWNLS_OK && number >= asked) return {};
    if (asked <= number) return fault("allocations asked for, without success: ", code);
    const int next = call.run(&error);
    if (next != JWNLS_OK) return fault("the next call gives ", next);
    if (live >= 0 && live_blocks() > live + few_blocks) {
      return fault("blocks lost: ", static_cast<int>(live_blocks() - live));
    }
    if (live < 0) live = live_blocks();
  }
}

struct FirstCall {
  Call call;
  long step;               // of the number of the allocation that fails, in its parts
  const char* known = "";  // a locale that the process knows already
};
const FirstCall first_calls[] = {
    {{"open",
      [](auto* error) { return open("de_DE", JWNLS_DATETIME, "zone=Europe/Berlin", error); }},
     8},
    // Some 20,000 allocations for the data of all locales.
    {{"detect", [](auto* error) { return detect("number", nullptr, error); }}, 1},
    {{"another locale", [](auto* error) { return open("fr_FR", JWNLS_TIME, "", error); }},
     8,
     "de_DE"},
};

// The first call of a process, in a process for each allocation: only one of them loads modules, or
// looks at all locales.
TEST(Memory, TheFirstCallOfAProcessSucceedsOrSaysSo) {
  // What each process has in the end.
  void* const shared =
      mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(shared, MAP_FAILED);
  long* const live = static_cast<long*>(shared);
  const auto run = [live](const Call& call, long number, bool for_ever) {
    const pid_t child = fork();
    if (child != 0) {
      int status = 0;
      waitpid(child, &status, 0);
      return status;
    }
    jwnls_error error = {};
    fail_allocation(number, for_ever);
    const int code = call.run(&error);
    const long asked = allow_allocations();
    const bool good = code == JWNLS_OK || code == JWNLS_MEMORY;
    if (!good) (void)std::fprintf(stderr, "%d %s\n", code, error.text);
    if (!good || call.run(&error) != JWNLS_OK) _exit(1);
    *live = live_blocks();
    _exit(number >= asked ? 2 : 0);
  };
  for (const auto& [call, step, known] : first_calls) {
    if (*known != '\0') {
      ASSERT_EQ(open(known, JWNLS_TIME, "", nullptr), JWNLS_OK);
    }
    run(call, 1'000'000, false);
    const long usual = *live;
    for (const bool for_ever : {false, true}) {
      SCOPED_TRACE(std::string(call.name) + (for_ever ? ", for ever" : ", once"));
      for (long number = 0;; number += number < 8 * step ? 1 : 1 + number / step) {
        const int status = run(call, number, for_ever);
        ASSERT_TRUE(WIFEXITED(status)) << "allocation " << number << " signal " << WTERMSIG(status);
        ASSERT_NE(WEXITSTATUS(status), 1) << "allocation " << number;
        ASSERT_LE(*live, usual + few_blocks) << "allocation " << number;
        if (WEXITSTATUS(status) == 2) break;
      }
    }
  }
}

TEST(Memory, EveryCallSucceedsOrSaysSo) {
  for (const Call& call : calls) {
    for (const bool for_ever : {false, true}) {
      EXPECT_EQ(fault_of(call, for_ever), "");
    }
  }
}

}  // namespace
}  // namespace jwnls::test
