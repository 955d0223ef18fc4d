// One call of the floating formatter, as its steps hand it on.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_

#include "abi/locale_record.h"
#include "module/format_numbers/number_request.h"
#include "module/placement/delivery.h"

namespace jwnls {

template <typename Unit>
struct NumberCall {
  const LocaleRecord& record;
  NumberRequest request;
  double magnitude;  // of the value, without its sign
  bool negative;
  Output<Unit> output;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_CALL_H_
