// The begin of a table: what stands before its first row, that row, and the separator.

#ifndef JWNLS_TOOL_TABLES_TABLE_HEAD_H_
#define JWNLS_TOOL_TABLES_TABLE_HEAD_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "tool/tables/byte_source.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

struct TableHead {
  TableHeader header;
  std::size_t size = 0;        // bytes up to the first row of values
  std::size_t header_end = 0;  // of the header without its line end; where it would be without one
  std::uint64_t first_line = 1;  // of values
};

/// Looks at the source's begin and leaves all of it to be read. Throws Failure: io for line ends
/// that are carriage returns, usage where two separators are possible or the header is not UTF-8.
[[nodiscard]] TableHead find_head(ByteSource& source, const TableJob& job);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TABLE_HEAD_H_
