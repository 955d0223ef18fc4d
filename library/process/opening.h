// The one lock of the process: everything that opens, and every call of the host, is made under it.
//
// fork() waits for it, so that a child is born with nothing half opened: the locks of host, modules
// and libraries that are taken to open something are only taken by the thread that has this one.
// Reading and writing values need none.

#ifndef JWNLS_LIBRARY_PROCESS_OPENING_H_
#define JWNLS_LIBRARY_PROCESS_OPENING_H_

namespace jwnls::library {

/// The lock, held as long as this object; errno is afterwards what it was.
class Opening {
 public:
  /// Throws a Failure (LOAD) in a thread that holds it already: in a journal function.
  Opening();
  ~Opening();
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;

  /// Whether this thread holds the lock.
  [[nodiscard]] static bool is_here() noexcept;

 private:
  friend void set_journal(void (*write)(void*, const char*), void* context) noexcept;
  static void take() noexcept;
  static void release() noexcept;

  const int errno_;
};

/// The lock of work that opens much, piece by piece: taken before Opening, never under it. fork()
/// waits for it as well.
class Gathering {
 public:
  Gathering();
  ~Gathering();
  Gathering(const Gathering&) = delete;
  Gathering& operator=(const Gathering&) = delete;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_PROCESS_OPENING_H_
