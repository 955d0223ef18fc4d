// What the copies of a Locale share, and what its parts say of failures.

#ifndef JWNLS_CLIENT_LOCALE_STATE_H_
#define JWNLS_CLIENT_LOCALE_STATE_H_

#include <memory>
#include <mutex>
#include <string>

#include "abi/locale_handle.h"
#include "client/locale.h"
#include "client/text_samples.h"
#include "host/host.h"

namespace jwnls::client {

struct Locale::State {
  State(std::shared_ptr<host::Host> the_host, LocaleHandle* the_handle, Sharing the_sharing,
        std::u16string the_zone)
      : host(std::move(the_host)),
        handle(the_handle),
        sharing(the_sharing),
        zone(std::move(the_zone)) {}
  ~State() {
    if (sharing == Sharing::own) host->destroy_handle(handle);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  const std::shared_ptr<host::Host> host;
  LocaleHandle* const handle;  // the host's cache owns it when shared
  const Sharing sharing;

  // By which the reading members tell how far a text fits.
  SampleEndings date_endings{add_date_samples};
  SampleEndings time_endings{add_time_samples};
  SampleEndings datetime_endings{add_datetime_samples};
  SampleEndings period_endings{add_period_samples};

  std::mutex zone_mutex;  // set_time_zone() changes the name together with the handle's zone
  std::u16string zone;    // normalised name
};

/// The English text of a status, from the handle's message extension: "value out of range". Without
/// a handle or a text for it: the number.
std::string status_text(LocaleHandle* handle, Status status);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_LOCALE_STATE_H_
