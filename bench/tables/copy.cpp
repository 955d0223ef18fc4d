// The program's own reader, scanner and writer on a table of which no column is asked for:
//   jwnls_copy_table THREADS SEPARATOR FILE      SEPARATOR: "" to have it found

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tool/tables/table_job.h"

int main(int argc, char** argv) {
  using jwnls::tool::TableJob;
  if (argc != 4) {
    std::fprintf(stderr, "usage: jwnls_copy_table THREADS SEPARATOR FILE\n");
    return 2;
  }
  TableJob job;
  job.threads = static_cast<unsigned>(std::atoi(argv[1]));
  if (argv[2][0] != '\0') job.separator = argv[2][0];
  job.input = argv[3];
  job.columns = [](const auto&, const auto&) {
    return std::vector<jwnls::tool::ConvertedColumn>();
  };
  try {
    return static_cast<int>(convert_table(job));
  } catch (const jwnls::tool::Failure& failure) {
    std::fprintf(stderr, "jwnls_copy_table: %s\n", failure.message.c_str());
    return static_cast<int>(failure.code);
  }
}
