// What became of a chunk's rows, to be added up in the order of the input.

#ifndef JWNLS_TOOL_TABLES_CHUNK_OUTCOME_H_
#define JWNLS_TOOL_TABLES_CHUNK_OUTCOME_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

struct ColumnCounts {
  std::uint64_t read = 0;
  std::uint64_t missing = 0;
  std::uint64_t refused = 0;
  std::uint64_t two_ways = 0;  // of those read: could have meant another value
  std::uint64_t deciding = 0;  // of those read: exclude that

  ColumnCounts& operator+=(const ColumnCounts& other) {
    read += other.read;
    missing += other.missing;
    refused += other.refused;
    two_ways += other.two_ways;
    deciding += other.deciding;
    return *this;
  }
};

struct ChunkOutcome {
  std::string_view text;  // to be written
  std::uint64_t rows = 0;
  std::uint64_t ragged = 0;     // of these: of another length than the header
  std::uint64_t malformed = 0;  // texts that are not UTF-8 where JSON has to be
  std::vector<ColumnCounts> columns;
  std::vector<std::string> first_two_ways;  // of each column the first text with two_ways; or empty
  bool stopped = false;                     // nothing behind this is wanted
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_CHUNK_OUTCOME_H_
