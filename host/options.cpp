#include "host/options.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <new>

#include "host/objects/memory_refusals.h"

namespace jwnls::host {
namespace {

std::string_view without_blanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// integer = {blank} ["+" | "-"] digit {digit} {blank}     of 64 bits
Status parse_integer(std::string_view text, std::int64_t& value) {
  text = without_blanks(text);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return Status::invalid_number;
  }
  std::int64_t parsed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (error == std::errc::result_out_of_range) return Status::integer_overflow;
  if (error != std::errc() || end != text.data() + text.size()) return Status::invalid_number;
  value = parsed;
  return Status::ok;
}

}  // namespace

Options::Options(std::map<std::string, std::string> values)
    : values_(std::make_move_iterator(values.begin()), std::make_move_iterator(values.end())) {}

void Options::set(std::string_view name, std::string_view value) {
  const std::unique_lock guard(mutex_);
  values_.insert_or_assign(std::string(name), std::string(value));
}

std::optional<std::string> Options::text(const std::string& name) const {
  {
    const std::shared_lock guard(mutex_);
    const auto found = values_.find(name);
    if (found != values_.end()) return found->second;
  }
  const char* variable = secure_getenv(name.c_str());
  if (variable == nullptr) return std::nullopt;
  return variable;
}

Status Options::read(std::u16string_view name, std::int64_t& value) const noexcept {
  // Names of options are ASCII, as names of environment variables are.
  const auto is_plain = [](char16_t unit) { return unit > u' ' && unit < 0x7F && unit != u'='; };
  if (name.empty() || !std::all_of(name.begin(), name.end(), is_plain)) {
    return Status::lookup_failed;
  }
  try {
    std::string plain(name.size(), '\0');
    std::transform(name.begin(), name.end(), plain.begin(),
                   [](char16_t unit) { return static_cast<char>(unit); });
    const std::optional<std::string> found = text(plain);
    return found ? parse_integer(*found, value) : Status::lookup_failed;
  } catch (const std::bad_alloc&) {
    ++memory_refusals;
    return Status::out_of_memory;
  }
}

HostOptionStore::HostOptionStore() : OptionStore{} {
  create_node = [](OptionStore* store, const char16_t* name, std::int64_t length) -> void* {
    if (name == nullptr || length < 1) return nullptr;
    return static_cast<HostOptionStore&>(*store).find_or_create(
        {name, static_cast<std::size_t>(length)});
  };
  find_node = [](OptionStore* store, const char16_t* name) -> void* {
    return name != nullptr ? static_cast<HostOptionStore&>(*store).find(name) : nullptr;
  };
}

void* HostOptionStore::find(std::u16string_view name) const noexcept {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(name);
  return found != nodes_.end() ? const_cast<Node*>(&found->second) : nullptr;
}

void* HostOptionStore::find_or_create(std::u16string_view name) noexcept {
  const std::lock_guard guard(mutex_);
  try {
    const std::u16string key(name);
    return &nodes_.try_emplace(key, Node{key}).first->second;
  } catch (const std::bad_alloc&) {
    ++memory_refusals;
    return nullptr;
  }
}

}  // namespace jwnls::host
