// Makes the tables that scripts/bench-tables measures with, the same ones on every machine:
//   jwnls_generate_table TABLE ROWS > FILE     TABLE: invoice numbers unread polish
//   jwnls_generate_table nasty FOLDER          small files, one for each rule of reading
//
//   invoice  82 bytes a row, 8 columns; of the rows 30 % have a quoted text, of which some with a
//            doubled quote, and 2 % a quoted line end
//   numbers  an integer and three numbers, no quotes
//   unread   the same, with numbers as en_US has them, of which de_DE reads none
//   polish   a number, a long date, an amount of days; one field of four is quoted

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr std::uint64_t invoice_seed = 20240315;
constexpr std::uint64_t numbers_seed = 20240316;  // of unread, too
constexpr std::uint64_t polish_seed = 20240317;

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  /// Below a bound; not by std::uniform_int_distribution, whose values are each library's own.
  std::uint64_t below(std::uint64_t bound) { return (engine_() >> 11) % bound; }
  bool percent(unsigned share) { return below(100) < share; }
  template <typename Value, std::size_t size>
  const Value& one_of(const Value (&values)[size]) {
    return values[below(size)];
  }

 private:
  std::mt19937_64 engine_;
};

// "1.234,56", of any magnitude below 10^digits.
void append_number(std::string& out, Random& random, unsigned digits, std::string_view group,
                   char decimal = ',') {
  std::uint64_t limit = 10;
  for (auto count = 1 + random.below(digits); count > 1; --count) limit *= 10;
  const std::uint64_t cents = random.below(limit * 100);
  if (random.percent(5) && cents != 0) out += '-';
  const std::string integer = std::to_string(cents / 100);
  for (std::size_t i = 0; i < integer.size(); ++i) {
    if (i > 0 && (integer.size() - i) % 3 == 0) out += group;
    out += integer[i];
  }
  out += decimal;
  out += static_cast<char>('0' + cents % 100 / 10);
  out += static_cast<char>('0' + cents % 10);
}

void append_two(std::string& out, std::uint64_t value) {
  out += static_cast<char>('0' + value / 10);
  out += static_cast<char>('0' + value % 10);
}

void append_german_date(std::string& out, Random& random) {
  append_two(out, 1 + random.below(28));
  out += '.';
  append_two(out, 1 + random.below(12));
  out += '.';
  out += std::to_string(1990 + random.below(45));
}

constexpr const char* names[] = {"Müller Söhne GmbH", "Bäcker Ex",  "Schmidt Elektro",
                                 "Opt Handels AG",    "Lang KG",    "Vogel Verwaltung",
                                 "Weiß & Co",         "Krause OHG", "Stadtwerke Süd"};
constexpr const char* quoted_names[] = {"\"Meier; Kunz GbR\"", "\"Schmidt \"\"Elektro\"\"\"",
                                        "\"Groß; Handel\"", "\"Lehmann GmbH\""};
constexpr const char* notes[] = {"", "Lieferung Berlin", "Teilzahlung", "offen, gemahnt",
                                 "Skonto 2 %"};

void append_invoice_row(std::string& out, Random& random, std::uint64_t row) {
  out += std::to_string(1'000'000 + row);
  out += ';';
  out += random.percent(28) ? random.one_of(quoted_names) : random.one_of(names);
  for (int i = 0; i < 2; ++i) {
    out += ';';
    append_german_date(out, random);
  }
  for (int i = 0; i < 3; ++i) {
    out += ';';
    append_number(out, random, 7, ".");
  }
  out += ';';
  out += random.percent(2) ? "\"zwei\nZeilen\"" : random.one_of(notes);
  out += '\n';
}

void append_number_row(std::string& out, Random& random, std::uint64_t row, bool german) {
  out += std::to_string(10'000 + row);
  for (int i = 0; i < 3; ++i) {
    out += ';';
    append_number(out, random, 9, german ? "." : ",", german ? ',' : '.');
  }
  out += '\n';
}

constexpr const char* months[] = {"stycznia", "lutego",       "marca",     "kwietnia",
                                  "maja",     "czerwca",      "lipca",     "sierpnia",
                                  "września", "października", "listopada", "grudnia"};

void append_polish_row(std::string& out, Random& random, std::uint64_t row) {
  out += std::to_string(10'000 + row);
  out += ";\"Faktura nr ";
  out += std::to_string(random.below(100'000));
  out += "\";";
  append_number(out, random, 7, "\u00A0");
  out += ';';
  out += std::to_string(1 + random.below(28));
  out += ' ';
  out += random.one_of(months);
  out += ' ';
  out += std::to_string(1990 + random.below(45));
  out += '\n';
}

template <typename AppendRow>
int write_rows(const char* header, std::uint64_t seed, std::uint64_t rows, AppendRow append_row) {
  constexpr std::size_t piece = 1 << 20;
  std::string out = header;
  Random random(seed);
  for (std::uint64_t row = 0; row <= rows; ++row) {
    if (row < rows) append_row(out, random, row);
    if (out.size() < piece && row < rows) continue;
    if (std::fwrite(out.data(), 1, out.size(), stdout) != out.size()) return 1;
    out.clear();
  }
  return std::fflush(stdout) == 0 ? 0 : 1;
}

// ---- One file for each rule; the number in front is the exit code that copying has

struct NastyFile {
  const char* name;
  std::string_view text;
};

// With the NULs that a text holds.
template <std::size_t size>
constexpr std::string_view all_of(const char (&text)[size]) {
  return {text, size - 1};
}

constexpr NastyFile nasty_files[] = {
    {"0-bare-quote", "a;b\n5\" pipe;2\n6;\"7\"\n"},
    {"0-text-behind-closing-quote", "a;b\n\"x\"y;2\n\"\"\"x\";3\n"},
    {"1-blank-before-quote", "a;b\n \"x;y\";2\n3;4\n"},
    {"4-unclosed-quote", "a;b\n1;2\n\"x;3\n4;5\n"},
    {"0-crlf", "a;b\r\n1;2\r\n3;4\r\n"},
    {"0-mixed-line-ends", "a;b\r\n1;2\n3;4\r\n"},
    {"0-crlf-in-quotes", "a;b\r\n\"1\r\n2\";3\r\n"},
    {"4-cr-alone", "a;b\r1;2\r3;4\r"},
    {"0-cr-in-text", "a;b\n1\rx;2\n"},
    {"0-byte-order-mark",
     "\xEF\xBB\xBF"
     "a;b\n1;2\n"},
    {"0-no-last-line-end", "a;b\n1;2\n3;4"},
    {"1-shorter-and-longer-rows", "a;b\n1\n1;2;3\n4;5\n"},
    {"0-blank-lines", "a;b\n\n1;2\n\r\n3;4\n\n"},
    {"0-empty-in-quotes", "a;b\n\"\";\n;\"\"\n"},
    {"0-nul", all_of("a;b\n1\0;2\n\0\0;3\n")},
    {"0-latin-1", "a;b\nM\xFCller;2\n"},
    {"0-sep-line", "sep=;\na;b\n1;2\n"},
    {"0-separator-in-every-quote", "a;b\n\";\n;\";\"\"\"\"\n"},
};

bool write_file(const std::string& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  return file.good();
}

int write_nasty(const std::string& folder) {
  constexpr std::size_t mebibyte = 1024 * 1024;
  const auto quoted_row = [](std::size_t bytes) {
    return "a;b\n1;2\n\"" + std::string(bytes, 'x') + "\n;\";3\n";
  };
  bool good = write_file(folder + "/0-field-of-3-mebibytes", quoted_row(3 * mebibyte)) &&
              write_file(folder + "/0-row-of-15-mebibytes", quoted_row(15 * mebibyte)) &&
              write_file(folder + "/4-row-of-17-mebibytes", quoted_row(17 * mebibyte));
  for (const NastyFile& file : nasty_files) {
    good = good && write_file(folder + "/" + file.name, file.text);
  }
  return good ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view table = argc == 3 ? argv[1] : "";
  const std::uint64_t rows = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : 0;
  constexpr const char* number_header = "id;a;b;c\n";
  if (table == "nasty") return write_nasty(argv[2]);
  if (table == "invoice") {
    return write_rows("Nr;Kunde;Datum;Termin;Netto;Steuer;Brutto;Notiz\n", invoice_seed, rows,
                      append_invoice_row);
  }
  if (table == "numbers" || table == "unread") {
    return write_rows(number_header, numbers_seed, rows,
                      [german = table == "numbers"](auto&... arguments) {
                        append_number_row(arguments..., german);
                      });
  }
  if (table == "polish") {
    return write_rows("Numer;Opis;Kwota;Data\n", polish_seed, rows, append_polish_row);
  }
  std::fprintf(stderr,
               "usage: jwnls_generate_table invoice|numbers|unread|polish ROWS\n"
               "       jwnls_generate_table nasty FOLDER\n");
  return 2;
}
