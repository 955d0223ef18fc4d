// The services that write numbers, called over a record and compared with the models of the tests.

#ifndef JWNLS_FUZZ_NUMBER_CALLS_H_
#define JWNLS_FUZZ_NUMBER_CALLS_H_

#include <algorithm>
#include <cstdint>
#include <memory>
#include <sstream>

#include "fuzz/input.h"
#include "module/format_numbers/integer_services.h"
#include "module/frame/service_table.h"
#include "module/host_calls/kernel_handle.h"
#include "tests/module/format_numbers/integer_model.h"
#include "tests/module/format_numbers/number_call.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"

namespace jwnls::test {

/// A handle over a record that stays the fuzzer's.
class NumberHandle {
 public:
  explicit NumberHandle(LocaleRecord* record) : handle_(std::make_unique<LocaleHandle>()) {
    store_kernel_handle(nullptr);
    handle_->services = services;
    handle_->record = record;
  }

  /// Slot 55 does what the model does, slot 59 the same in UTF-8.
  void check_number(const NumberCall& call) const {
    auto wide =
        run<char16_t>(call.capacity, [&](char16_t* out, std::int64_t room, std::int64_t* length) {
          return services.format_number_with_options(handle_.get(), call.value, call.width,
                                                     call.decimals, call.flags, out, room, length,
                                                     call.options);
        });
    drop_scratch(wide);
    compare(wide, expected_number(*handle_->record, call), call);
    auto narrow = run<char>(call.capacity, [&](char* out, std::int64_t room, auto* length) {
      return services.format_number_8bit(handle_.get(), call.value, call.width, call.decimals,
                                         call.flags, out, room, length, call.options);
    });
    drop_scratch(narrow);
    Outcome<char> wanted = {wide.status, wide.length, encoded(wide.text)};
    if (wide.length != untouched_length && wide.length <= std::ssize(wide.text)) {
      auto field = std::u16string_view(wide.text).substr(0, static_cast<std::size_t>(wide.length));
      const std::string whole = encoded(field);
      while (std::ssize(encoded(field)) > std::max<std::int64_t>(call.capacity, 0)) {
        field.remove_suffix(1);
      }
      wanted.text = encoded(field);
      if (wanted.text.size() < whole.size()) wanted.status = Status::does_not_fit;
      wanted.length = std::ssize(wanted.text);
    }
    compare(narrow, wanted, call);
  }

  /// All integer members, with a value of their type's bits.
  void check_integers(std::uint64_t bits, std::int32_t width, std::int32_t minimum,
                      std::uint32_t flags, std::int64_t capacity) const {
    const auto check = [&]<typename Integer, typename Unit>(FormatInteger<Integer, Unit>* service) {
      const IntegerCall<Integer> call = {static_cast<Integer>(bits), width, minimum, flags,
                                         capacity};
      const auto outcome =
          run<Unit>(capacity, [&](Unit* out, std::int64_t room, std::int64_t* length) {
            return service(handle_.get(), call.value, width, minimum, flags, out, room, length);
          });
      compare(outcome, expected_integer<Integer, Unit>(*handle_->record, call), call);
    };
    check(services.format_int64);
    check(services.format_uint64);
    check(services.format_int32);
    check(services.format_uint32);
    check(services.format_int64_8bit);
    check(services.format_uint64_8bit);
    check(services.format_int32_8bit);
    check(services.format_uint32_8bit);
  }

 private:
  template <typename Unit, typename Service>
  static Outcome<Unit> run(std::int64_t capacity, const Service& service) {
    auto& buffer = guarded_buffer<Unit>();
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
    Unit* out = buffer.reset(room);
    Outcome<Unit> outcome;
    outcome.status = Status{service(out, capacity, &outcome.length)};
    outcome.text = buffer.written();
    // A text may end as the guard does.
    const auto length = static_cast<std::size_t>(std::max<std::int64_t>(outcome.length, 0));
    if (length <= room && length > outcome.text.size()) outcome.text = buffer.text(length);
    require(buffer.untouched(room), "written outside the buffer");
    return outcome;
  }

  template <typename Unit, typename Call>
  static void compare(const Outcome<Unit>& outcome, const Outcome<Unit>& expected,
                      const Call& call) {
    if (outcome == expected) return;
    std::ostringstream message;
    message << call << ": " << outcome << ", not " << expected;
    require(false, message.str().c_str());
  }

  std::unique_ptr<LocaleHandle> handle_;
};

}  // namespace jwnls::test

#endif  // JWNLS_FUZZ_NUMBER_CALLS_H_
