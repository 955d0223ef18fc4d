// Walks over the rows of a chunk and has them written.

#ifndef JWNLS_TOOL_TABLES_CHUNK_CONVERTER_H_
#define JWNLS_TOOL_TABLES_CHUNK_CONVERTER_H_

#include <cstdint>

#include "tool/tables/csv_rows.h"
#include "tool/tables/field_converter.h"
#include "tool/tables/json_rows.h"

namespace jwnls::tool {

/// Of one thread.
class ChunkConverter {
 public:
  ChunkConverter(const TablePlan& plan, const ByteSource& source)
      : plan_(plan), fields_(plan, source), csv_(plan, fields_), json_(plan, fields_) {}

  /// The reject that is more than `rejects_allowed` stops the run at its row. The outcome and
  /// rejects() are valid until the next call.
  const ChunkOutcome& convert(const Chunk& chunk, std::uint64_t rejects_allowed,
                              std::uint64_t messages_left);
  [[nodiscard]] const ChunkOutcome& outcome() const { return fields_.outcome(); }
  [[nodiscard]] const RejectList& rejects() const { return fields_.rejects(); }
  /// Null where no report is asked for.
  [[nodiscard]] const ReportCollector* report() const { return fields_.report(); }

 private:
  template <typename Rows>
  void walk(const Chunk& chunk, Rows& rows);
  template <typename Rows>
  bool visit(const Row& row, Rows& rows);

  const TablePlan& plan_;
  FieldConverter fields_;
  CsvRows csv_;
  JsonRows json_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_CHUNK_CONVERTER_H_
