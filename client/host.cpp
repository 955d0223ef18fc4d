#include "client/host.h"

#include <cstdlib>
#include <system_error>

#include "client/quoting.h"
#include "client/utf8.h"
#include "client/zones.h"
#include "host/host.h"
#include "host/locales/locale_names.h"

namespace jwnls::client {

std::vector<std::filesystem::path> default_extension_path() {
  std::vector<std::filesystem::path> folders;
  if (const char* variable = std::getenv("JWNLS_EXTENSION_PATH")) {
    std::string_view rest = variable;
    while (!rest.empty()) {
      const std::size_t end = rest.find(':');
      if (end != 0) folders.emplace_back(rest.substr(0, end));
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
  }
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (!error) {
    folders.push_back(program.parent_path());
    folders.push_back(program.parent_path().parent_path() / "lib" / "jwnls");
  }
  return folders;
}

Result<Host> Host::open(HostOptions options) {
  host::HostConfiguration configuration;
  configuration.extension_path =
      options.extension_path.empty() ? default_extension_path() : std::move(options.extension_path);
  configuration.options = std::move(options.options);
  configuration.zone_directory = std::move(options.zone_directory);
  if (options.journal) {
    configuration.journal = [sink = std::move(options.journal)](std::uint32_t /*level*/,
                                                                std::u16string_view message) {
      sink(to_utf8(message));
    };
  }
  auto host = std::make_shared<host::Host>(std::move(configuration));
  std::string reason;
  if (host->factory(&reason) == nullptr) return failure(Status::lookup_failed, std::move(reason));
  return Host(std::move(host));
}

Result<LocaleMatch> Host::match(std::string_view name) const {
  const auto wide_name = to_utf16(name);
  if (wide_name) {
    const auto match = host::match_locale_name(*wide_name);
    if (match.status == Status::ok || match.status == Status::resolved_with_warning) {
      return LocaleMatch{std::string(match.canonical), match.status == Status::ok};
    }
  }
  return failure(Status::lookup_failed, "locale " + in_quotes(name) + ": unknown");
}

Result<Locale> Host::locale(std::string_view name, std::string_view zone) const {
  return Locale::open(host_, name, zone, Locale::Sharing::shared);
}

Result<Locale> Host::private_locale(std::string_view name, std::string_view zone) const {
  return Locale::open(host_, name, zone, Locale::Sharing::own);
}

std::vector<LocaleInfo> Host::locales() const {
  std::vector<LocaleInfo> all;
  for (const host::LocaleRow& row : host::available_locales()) {
    all.push_back({std::string(row.name), to_utf8(row.english_name), to_utf8(row.own_name)});
  }
  return all;
}

const std::vector<std::string>& Host::time_zones() const { return host_->zone_names(); }

Result<TimeZone> Host::time_zone(std::string_view name) const {
  return zone_now(*host_->context(), name);
}

}  // namespace jwnls::client
