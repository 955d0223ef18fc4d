// Texts that a locale reads, of every form and with every name: what an unread text is held against
// to tell how far it fits.

#ifndef JWNLS_CLIENT_TEXT_SAMPLES_H_
#define JWNLS_CLIENT_TEXT_SAMPLES_H_

#include <mutex>

#include "client/fitting_part.h"
#include "client/locale.h"

namespace jwnls::client {

void add_date_samples(const Locale& locale, Endings& endings);
void add_time_samples(const Locale& locale, Endings& endings);
void add_datetime_samples(const Locale& locale, Endings& endings);
void add_period_samples(const Locale& locale, Endings& endings);

/// The endings of a locale's samples of a kind, made at the first text that is not read. Any
/// thread.
class SampleEndings {
 public:
  using AddSamples = void(const Locale&, Endings&);

  explicit SampleEndings(AddSamples* add_samples) : add_samples_(add_samples) {}

  const Endings& of(const Locale& locale) {
    std::call_once(made_, [&] { add_samples_(locale, endings_); });
    return endings_;
  }

 private:
  AddSamples* add_samples_;
  std::once_flag made_;
  Endings endings_;
};

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_TEXT_SAMPLES_H_
