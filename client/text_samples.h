// Texts that a locale reads, of every form and with every name: what an unread text is held against
// to tell how far it fits.

#ifndef JWNLS_CLIENT_TEXT_SAMPLES_H_
#define JWNLS_CLIENT_TEXT_SAMPLES_H_

#include "client/fitting_part.h"
#include "client/locale.h"

namespace jwnls::client {

void add_date_samples(const Locale& locale, Endings& endings);
void add_time_samples(const Locale& locale, Endings& endings);
void add_datetime_samples(const Locale& locale, Endings& endings);
void add_period_samples(const Locale& locale, Endings& endings);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_TEXT_SAMPLES_H_
