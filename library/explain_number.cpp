// Why a text is no number of a layout, for people: what fits, what does not, what would.

#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/explain.h"
#include "library/layouts/layout.h"
#include "library/numbers/decimal_value.h"
#include "library/numbers/scan_number.h"
#include "library/texts/message.h"

namespace jwnls::library {
namespace {

// What is wrong, behind the text and the place. Null: the place says it.
constexpr const char* reason_of(Refusal refusal) {
  switch (refusal) {
    case Refusal::not_utf8:
      return "not valid UTF-8";
    case Refusal::no_number:
      return "no number begins so";
    case Refusal::two_signs:
      return "two signs";
    case Refusal::sign_behind:
      return "the sign stands behind; signs=any reads it";
    case Refusal::parenthesis:
      return "a pair of parentheses is a minus sign, in numbers with signs=any";
    case Refusal::unit_missing:
      return "its unit is missing";
    case Refusal::two_units:
      return "two units";
    case Refusal::credit:
      return "CR and DR mean one sign to banks, the other in ledgers; credit=plus or credit=minus "
             "says which CR is";
    case Refusal::three_decimals:
      return "three decimals or a group of another locale? fraction=any reads decimals";
    case Refusal::groups_not_allowed:
      return "groups=none reads no groups";
    case Refusal::group_size:
      return "groups of another size";
    case Refusal::foreign_group:
      return "a group of another locale or decimals?";
    case Refusal::mixed_groups:
      return "two group symbols";
    case Refusal::group_in_fraction:
      return "a group among the decimals";
    case Refusal::group_led_by_zero:
      return "a group that begins with 0; decimals of another locale?";
    case Refusal::decimal_twice:
      return "a second decimal symbol";
    case Refusal::foreign_decimal:
      return "the decimal symbol of another locale";
    case Refusal::fraction_of_integer:
      return "an integer has no decimals; the kind number does";
    case Refusal::mixed_digits:
      return "digits of two scripts";
    case Refusal::exponent:
      return "no exponent";
    default:
      return nullptr;
  }
}

// " groups=any reads 1234" where it does.
void tell_any_groups(const NumberSyntax& syntax, std::string_view text, Message& message) {
  NumberSyntax any = syntax;
  any.groups = groups_any;
  ScannedNumber number;
  scan_number(any, text, number);
  if (number.refusal != Refusal::none) return;
  char canonical[canonical_room];
  const auto length = write_canonical({{number.text, number.digits},
                                       number.exponent - static_cast<int>(number.decimals),
                                       number.negative},
                                      canonical);
  if (length) (message << " groups=any reads ").said({canonical, *length});
}

void tell_sample(const jwnls_layout* layout, Message& message) {
  char sample[100];
  std::size_t length = 0;
  const int code = layout->is(JWNLS_INTEGER)
                       ? jwnls_write_integer(layout, 1234567, sample, sizeof sample, &length)
                       : jwnls_write_number(layout, 1234567.89, sample, sizeof sample, &length);
  if (code == JWNLS_OK) {
    (message << "; " << layout->locale->name << " writes ").quoted({sample, length});
  }
}

// Of a unit what the layout has instead.
void tell_unit(const jwnls_layout* layout, const ScannedNumber& number, Message& message) {
  if (number.refusal == Refusal::unit_not_allowed) {
    message << (layout->is(JWNLS_AMOUNT) ? ": an amount has no percent sign; the kind percent does"
                : layout->is(JWNLS_PERCENT)
                    ? ": a percentage has no currency; the kind amount does"
                    : ": a number has no unit; the kinds amount and percent do");
  } else if (number.refusal == Refusal::other_currency && layout->options.currency == "any") {
    message << ": no currency that " << layout->locale->name << " names so; ISO codes are read";
  } else if (number.refusal == Refusal::other_currency) {
    message << ": another currency than " << layout->currency
            << "? currency=CODE is another, currency=any reads all";
  } else if (number.refusal == Refusal::unit_missing && layout->is(JWNLS_PERCENT)) {
    message << "; percent-sign=optional reads it";
  }
}

void tell_refusal(const jwnls_layout* layout, std::string_view text, const ScannedNumber& number,
                  Message& message) {
  if (number.at > 0 && number.at < text.size()) {
    message.quoted(text.substr(0, number.at), 30) << " fits, ";
    message.quoted(text.substr(number.at), 30) << " does not";
  } else if (number.at == 0) {
    message << "nothing of it fits";
  } else {
    message << "ends too early";
  }
  if (const char* reason = reason_of(number.refusal)) message << ": " << reason;
  tell_unit(layout, number, message);
  if (number.refusal == Refusal::foreign_group)
    tell_any_groups(layout->number.syntax, text, message);
  tell_sample(layout, message);
}

// Whether the value, of a text that is read, has its place in the layout's type.
bool is_in_range(const jwnls_layout* layout, const ScannedNumber& number) {
  const std::string_view digits(number.text, number.digits);
  if (!layout->is(JWNLS_INTEGER)) {
    return double_of({digits, number.exponent - static_cast<int>(number.decimals), number.negative})
        .has_value();
  }
  constexpr std::uint64_t most = std::uint64_t{1} << 63;
  const auto magnitude = integer_of(digits);
  return magnitude && *magnitude < most + (number.negative ? 1 : 0);
}

}  // namespace

int explain_number(const jwnls_layout* layout, std::string_view text, jwnls_error* error) noexcept {
  if (text.size() > longest_text) {
    Message(error, JWNLS_UNREAD) << "a text of " << static_cast<std::int64_t>(text.size())
                                 << " bytes: none is read that has more than 1024";
    return JWNLS_UNREAD;
  }
  ScannedNumber number;
  scan_number(layout->number.syntax, text, number);
  if (number.refusal == Refusal::none && is_in_range(layout, number)) {
    const Message read(error, JWNLS_OK);
    return JWNLS_OK;
  }
  if (number.refusal == Refusal::blank) {
    Message(error, JWNLS_MISSING) << "a missing value";
    return JWNLS_MISSING;
  }
  const bool beyond = number.refusal == Refusal::none;
  Message message(error, beyond ? JWNLS_RANGE : JWNLS_UNREAD);
  message.quoted(text, 60) << " in " << layout->locale->name << ": ";
  if (beyond) {
    message << (layout->is(JWNLS_INTEGER) ? "beyond the integers of 64 bits"
                                          : "too large for a double");
    return JWNLS_RANGE;
  }
  message.at(number.at);
  tell_refusal(layout, text, number, message);
  return JWNLS_UNREAD;
}

}  // namespace jwnls::library
