#include "tool/tables/column_values.h"

namespace jwnls::tool {

void ColumnValues::convert_all(const TextBatch& texts, ValueBatch& values) const {
  values.read = values.two_ways = values.deciding = 0;
  FieldValue value;
  std::int32_t end = 0;
  for (std::size_t i = 0; i < texts.count(); ++i) {
    const auto used = static_cast<std::size_t>(end);
    values.make_room(used, used + room);
    convert_into(texts.text(i), values.bytes.data() + used, value);
    switch (value.outcome) {
      case FieldOutcome::read:
        values.codes[i] = JWNLS_OK;
        values.read += 1;
        if ((value.facts & JWNLS_TWO_WAYS) != 0 && values.two_ways++ == 0) {
          values.first_two_ways = i;
        }
        values.deciding += (value.facts & JWNLS_DECIDES) != 0 ? 1 : 0;
        end += static_cast<std::int32_t>(value.length);
        break;
      case FieldOutcome::missing:
        values.codes[i] = JWNLS_MISSING;
        break;
      default:
        values.codes[i] = JWNLS_UNREAD;
    }
    values.offsets[i + 1] = end;
  }
}

}  // namespace jwnls::tool
