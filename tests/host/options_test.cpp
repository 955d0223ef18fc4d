#include "host/options.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "host/host.h"

namespace jwnls::host {
namespace {

constexpr std::u16string_view option = u"JW_NAME_YEARCUTOFF";

Status read(Host& host, std::u16string_view name, std::int64_t& value) {
  Kernel* kernel = host.kernel();
  std::int64_t size = sizeof value;
  const std::uint32_t status = kernel->read_option(
      kernel, name.data(), static_cast<std::int64_t>(name.size()), integer_option, &value, &size);
  EXPECT_EQ(size, 8);
  return static_cast<Status>(status);
}

TEST(Options, IntegersAreReadWholeOrNotAtAll) {
  constexpr std::int64_t untouched = -777;
  const auto expect = [](const char* text, Status status, std::int64_t expected) {
    Host host(HostConfiguration{});
    host.set_option("JW_NAME_YEARCUTOFF", text);
    std::int64_t value = untouched;
    EXPECT_EQ(read(host, option, value), status) << text;
    EXPECT_EQ(value, expected) << text;
  };
  expect("1980", Status::ok, 1980);
  expect("  -5\t", Status::ok, -5);
  expect("+17", Status::ok, 17);
  expect("9223372036854775807", Status::ok, INT64_MAX);
  expect("-9223372036854775808", Status::ok, INT64_MIN);
  expect("9223372036854775808", Status::integer_overflow, untouched);
  for (const char* text : {"1980x", "19 80", "+-5", "0x10", "1e3", "", " "}) {
    expect(text, Status::invalid_number, untouched);
  }
}

TEST(Options, TheEmbeddersValueHidesTheEnvironments) {
  Host host(HostConfiguration{});
  std::int64_t value = 1950;
  unsetenv("JW_NAME_YEARCUTOFF");
  EXPECT_EQ(read(host, option, value), Status::lookup_failed);
  EXPECT_EQ(value, 1950);
  setenv("JW_NAME_YEARCUTOFF", "1970", 1);
  EXPECT_EQ(read(host, option, value), Status::ok);
  EXPECT_EQ(value, 1970);
  host.set_option("JW_NAME_YEARCUTOFF", "1990");
  EXPECT_EQ(read(host, option, value), Status::ok);
  EXPECT_EQ(value, 1990);
  unsetenv("JW_NAME_YEARCUTOFF");
}

TEST(Options, WhatCannotBeReadIsRefused) {
  Host host(HostConfiguration{});
  host.set_option("A", "1");
  std::int64_t value = 0;
  const auto refuses = [&](const char16_t* name, std::int64_t length, std::uint32_t type,
                           std::int64_t* out, std::int64_t size, Status status) {
    EXPECT_EQ(host.kernel()->read_option(host.kernel(), name, length, type, out, &size),
              code(status));
  };
  refuses(u"A", 1, 2, &value, 8, Status::not_possible);
  refuses(u"A", 1, 3, &value, 4, Status::does_not_fit);
  refuses(nullptr, 1, 3, &value, 8, Status::null_argument);
  refuses(u"A", 1, 3, nullptr, 8, Status::null_argument);
  refuses(u"A", -1, 3, &value, 8, Status::lookup_failed);
  for (const char16_t* name : {u"A=1", u"A 1", u"A\x7F\x31"}) {
    refuses(name, 3, 3, &value, 8, Status::lookup_failed);
  }
  Kernel* kernel = host.kernel();
  EXPECT_EQ(kernel->read_option(kernel, u"A", 1, 3, &value, nullptr), code(Status::null_argument));
  EXPECT_EQ(kernel->load_extension(kernel, nullptr, 1, 0), nullptr);
  EXPECT_EQ(kernel->load_extension(kernel, u"A", 0, 0), nullptr);
  EXPECT_EQ(value, 0);
}

TEST(OptionStore, FindsTheNodesThatWereCreated) {
  Host host(HostConfiguration{});
  OptionStore* store = host.kernel()->option_store;
  EXPECT_EQ(store->find_node(store, u"App.NLS"), nullptr);
  void* node = store->create_node(store, u"App.NLS and more", 7);
  EXPECT_NE(node, nullptr);
  EXPECT_EQ(store->find_node(store, u"App.NLS"), node);
  EXPECT_EQ(store->create_node(store, u"App.NLS", 7), node);
  EXPECT_EQ(store->find_node(store, u"App.NLS and more"), nullptr);
  EXPECT_EQ(store->create_node(store, u"", 0), nullptr);
  EXPECT_EQ(store->create_node(store, nullptr, 7), nullptr);
  EXPECT_EQ(store->find_node(store, nullptr), nullptr);
}

}  // namespace
}  // namespace jwnls::host
