// Checks of what the users of a real host do with its pools, locks, tracks and time zones.
//
// The checks stand in the host's function tables, before its own operations: the host knows nothing
// of them, and module and extensions call them without knowing either.

#ifndef JWNLS_TESTS_SUPPORT_OBJECT_CHECKS_H_
#define JWNLS_TESTS_SUPPORT_OBJECT_CHECKS_H_

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "abi/host_tables.h"
#include "tests/support/checked_pool.h"
#include "tests/support/fault_log.h"

namespace jwnls::test {

class CheckedLock;
class CheckedTrack;
class CheckedZones;

class ObjectChecks {
 public:
  /// Where the faults go in the end. null: each one fails the test.
  explicit ObjectChecks(std::vector<std::string>* faults);

  /// The host has ended by then: what it still had to end for its users is a fault.
  ~ObjectChecks();
  ObjectChecks(const ObjectChecks&) = delete;
  ObjectChecks& operator=(const ObjectChecks&) = delete;

  /// Puts the checks into the tables of a host that has loaded nothing yet.
  void watch(Kernel* kernel, NlsContext* context);

  /// Checks the guards of all blocks in use, and gives every fault found so far.
  [[nodiscard]] std::vector<std::string> faults();

 private:
  Lock* make_lock(Kernel* kernel, const std::uint8_t* parameters, Journal* journal,
                  const char* name);
  Pool* make_pool(Kernel* kernel, const void* parameters, ErrorSink* errors, const char* name);
  Track* make_track(Kernel* kernel, const void* parameters, Journal* journal, const char* name);
  CheckedPool* check_pool(Pool* real, const std::string& name);
  static ObjectChecks& of(Kernel* kernel);

  FaultLog faults_;
  std::vector<std::string>* const out_;
  Kernel* kernel_ = nullptr;
  decltype(Kernel::create_lock) create_lock_ = nullptr;
  decltype(Kernel::create_pool) create_pool_ = nullptr;
  decltype(Kernel::create_track) create_track_ = nullptr;
  // The context's own objects, which the host ends itself.
  CheckedPool* context_pool_ = nullptr;
  std::unique_ptr<CheckedLock> context_lock_;
  std::unique_ptr<CheckedZones> zones_;
  mutable std::mutex mutex_;  // guards the lists; nothing leaves them
  std::vector<std::unique_ptr<CheckedPool>> pools_;
  std::vector<std::unique_ptr<CheckedLock>> locks_;
  std::vector<std::unique_ptr<CheckedTrack>> tracks_;
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_OBJECT_CHECKS_H_
