// In builds that count coverage: a process that ends without exit handlers is counted too. The
// linker turns calls of _exit() into this one (--wrap).

void __gcov_dump(void);
// NOLINTBEGIN(bugprone-reserved-identifier)
_Noreturn void __real__exit(int code);
_Noreturn void __wrap__exit(int code);
_Noreturn void __wrap__exit(int code) {
  __gcov_dump();
  __real__exit(code);
}
// NOLINTEND(bugprone-reserved-identifier)
