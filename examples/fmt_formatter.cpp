// Values of a locale inside {fmt}'s own formats.
#include <fmt/format.h>

#include <jwnls/jwnls.hpp>  // behind {fmt}, whose formatter it then defines

int main() try {
  const jwnls::Layout numbers("pl_PL", jwnls::Kind::number, "decimals=2");
  const jwnls::Layout dates("pl_PL", jwnls::Kind::date, "style=long");
  fmt::print("|{:>14}|\n|{:<14}|\n", numbers.shown(1234567.891), numbers.shown(-0.5));
  fmt::print("{}: {}\n", dates.shown(jwnls::Days(19797)), numbers.shown(42));
  return 0;
} catch (const jwnls::Error& error) {
  fmt::print("{}\n", error.what());
  return 1;
}
