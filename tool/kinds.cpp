#include "tool/kinds.h"

namespace jwnls::tool {
namespace {

constexpr const char* decimals_help = "Numbers as programs write them: 1234.5, -5, 1.5e3";

constexpr KindRow rows[] = {
    {.kind = Kind::number,
     .name = "number",
     .alias = nullptr,
     .plural = "numbers",
     .locale_category = "LC_NUMERIC",
     .values_help = decimals_help,
     .format_examples = "  jwnls format number -l de_DE 1234567.891\n"
                        "  jwnls format number -l fr_FR -d 2 --plus -5 1234.5\n"
                        "  seq 0 0.25 10 | jwnls format number -l hi_IN -d 2 -w 8",
     .read_examples = "  jwnls read number -l de_DE 1.234.567,89\n"
                      "  jwnls read number -l fr_FR --groups any '12 34,5'\n"
                      "  jwnls read number -l de_DE -c Netto,Brutto orders.csv",
     .convert_examples = "  jwnls convert number --from en_US --to hi_IN 1,234,567.891"},
    {.kind = Kind::integer,
     .name = "integer",
     .alias = nullptr,
     .plural = "integers",
     .locale_category = "LC_NUMERIC",
     .values_help = "Integers: 1234, -5",
     .format_examples = "  jwnls format integer -l en_IN 1234567 -5",
     .read_examples = "  jwnls read integer -l de_CH 1’234’567",
     .convert_examples = "  jwnls convert integer --from en_US --to de_DE 1,234,567"},
    {.kind = Kind::amount,
     .name = "amount",
     .alias = "currency",
     .plural = "amounts of money",
     .locale_category = "LC_MONETARY",
     .values_help = decimals_help,
     .format_examples = "  jwnls format amount -l de_DE 1234.5\n"
                        "  jwnls format amount -l en_US --currency EUR --accounting -99.9",
     .read_examples = "  jwnls read amount -l de_DE '1.234,50 €'\n"
                      "  jwnls read amount -l en_US --currency any '$5.00' '€7'",
     .convert_examples = "  jwnls convert amount --from de_DE --to en_US '1.234,50 €'"},
    {.kind = Kind::percent,
     .name = "percent",
     .alias = nullptr,
     .plural = "percentages",
     .locale_category = "LC_NUMERIC",
     .values_help = "Fractions: 0.125 is 12.5%",
     .format_examples = "  jwnls format percent -l fr_FR -d 1 0.125",
     .read_examples = "  jwnls read percent -l de_DE '12,5 %'",
     .convert_examples = "  jwnls convert percent --from de_DE --to tr_TR '12,5 %'"},
    {.kind = Kind::date,
     .name = "date",
     .alias = nullptr,
     .plural = "dates",
     .locale_category = "LC_TIME",
     .values_help = "Dates as YYYY-MM-DD or YYYYMMDD, datetimes, instants",
     .format_examples = "  jwnls format date -l de_DE -s long 2024-03-15\n"
                        "  jwnls format date -l ja_JP 2024-03-15 1999-12-31\n"
                        "  jwnls format date -l es_MX -s short -c ordered,paid orders.csv",
     .read_examples = "  jwnls read date -l de_DE '15. März 2024' 15.3.24\n"
                      "  jwnls read date -l en_US --order dmy 15/03/2024\n"
                      "  jwnls read date -l de_DE --proved -c Datum,Valuta orders.csv",
     .convert_examples = "  jwnls convert date --from en_US --to de_DE 'Mar 15, 2024' 3/15/2024\n"
                         "  jwnls convert date --from fr_FR --to ja_JP -s long < dates.txt"},
    {.kind = Kind::time,
     .name = "time",
     .alias = nullptr,
     .plural = "times of day",
     .locale_category = "LC_TIME",
     .values_help = "Times as HH:MM or HH:MM:SS, datetimes, instants",
     .format_examples = "  jwnls format time -l en_US 14:30 00:05:09\n"
                        "  jwnls format time -l ko_KR -z Asia/Seoul 2024-03-15T14:30:00Z",
     .read_examples = "  jwnls read time -l en_US '2:30 PM' 14:30:05",
     .convert_examples = "  jwnls convert time --from de_DE --to en_US 14:30 0:05"},
    {.kind = Kind::datetime,
     .name = "datetime",
     .alias = nullptr,
     .plural = "datetimes, as a clock on the wall shows them",
     .locale_category = "LC_TIME",
     .values_help = "Datetimes as YYYY-MM-DDTHH:MM:SS, dates (their midnight), instants",
     .format_examples = "  jwnls format datetime -l de_DE 2024-03-15T14:30:05\n"
                        "  jwnls format datetime -l hi_IN -z Asia/Kolkata now",
     .read_examples = "  jwnls read datetime -l de_DE '15.03.2024, 14:30:05'\n"
                      "  jwnls read datetime -l en_US -z Europe/Berlin '3/15/2024 14:30 +0000'",
     .convert_examples =
         "  jwnls convert datetime --from en_US --to fr_FR 'Mar 15, 2024, 2:30 PM'"},
    {.kind = Kind::instant,
     .name = "instant",
     .alias = nullptr,
     .plural = "instants: datetimes with their place on the time line",
     .locale_category = "LC_TIME",
     .values_help = "Instants: YYYY-MM-DDTHH:MM:SSZ, or with +HH:MM for the Z, @SECONDS, now",
     .format_examples = "  jwnls format instant -l en_GB -z Europe/London 2024-07-01T12:00:00Z\n"
                        "  date -Iseconds | jwnls format instant -l pt_BR -z America/Sao_Paulo",
     .read_examples = "  jwnls read instant -l de_DE -z Europe/Berlin '1.7.2024 14:00'\n"
                      "  jwnls read instant -l en_US '7/1/2024 12:00 +02:00'",
     .convert_examples = "  jwnls convert instant --from en_US --to de_DE -z Asia/Tokyo "
                         "'7/1/2024 12:00Z'"},
    {.kind = Kind::period,
     .name = "period",
     .alias = nullptr,
     .plural = "months, weeks and quarters: their first day",
     .locale_category = "LC_TIME",
     .values_help = nullptr,
     .format_examples = nullptr,
     .read_examples = "  jwnls read period -l de_DE März-2024 'Q2, 2024' 'W9, 2024'",
     .convert_examples = nullptr},
};

}  // namespace

std::span<const KindRow> kinds() { return rows; }

}  // namespace jwnls::tool
