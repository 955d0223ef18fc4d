// Reads and writes values of one locale through the C++ interface.
//
//   values_cpp [LOCALE]      the locale is de_DE where none is named
#include <chrono>
#include <exception>
#include <iostream>
#include <jwnls/jwnls.hpp>
#include <string>

int main(int argument_count, char** arguments) try {
  const std::string locale = argument_count > 1 ? arguments[1] : "de_DE";
  const jwnls::Layout numbers(locale, jwnls::Kind::number, "decimals=2");
  const jwnls::Layout dates(locale, jwnls::Kind::date, "style=long");
  const jwnls::Layout instants(locale, jwnls::Kind::instant, "zone=Europe/Berlin");

  std::cout << numbers.write(1234567.891).value() << '\n';
  std::cout << dates.write(jwnls::Days(19797)).value() << '\n';
  const jwnls::Instant noon(std::chrono::seconds(1719835200));  // 2024-07-01T12:00:00Z
  std::cout << instants.write(noon).value() << '\n';

  std::cout << dates.read_date("15. März 2024").value().value.count() << " days from 1970\n";
  if (const auto date = dates.read_date("30.2.2024"); !date) std::cout << date.message() << '\n';

  std::cout << numbers.read_number("12.34").value().value << '\n';  // throws: no group, no decimal
  return 0;
} catch (const jwnls::Error& error) {
  std::cout << error.what() << '\n';
  return error.code() == jwnls::Code::unread ? 0 : 1;
}
