// What an application includes:
//
//   #include "client/jwnls.h"
//
//   const auto host = jwnls::client::Host::open().value();
//   const auto locale = host.locale("de_DE", "Europe/Berlin").value();
//   std::cout << locale.format_date(std::chrono::year{2024} / 3 / 15).value();  // 15.03.2024
//   std::cout << locale.format_number(1234.5, {.decimals = 2}).value();         // 1.234,50
//
// Every call that can fail gives a Result: the value, or an error with a message that names what
// failed and why. Nothing here throws but Result::value() of a failed call, and std::bad_alloc.

#ifndef JWNLS_CLIENT_JWNLS_H_
#define JWNLS_CLIENT_JWNLS_H_

#include "client/conventions.h"
#include "client/date_scale.h"
#include "client/host.h"
#include "client/locale.h"
#include "client/missing_value.h"
#include "client/number_format.h"
#include "client/quoting.h"
#include "client/reading_options.h"
#include "client/result.h"
#include "client/utf8.h"

#endif  // JWNLS_CLIENT_JWNLS_H_
