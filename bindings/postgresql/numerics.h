/* The server's numeric from and to decimals as text, without its arithmetic: in the form in which
   numerics are stored, which no version may change. */

#ifndef JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_
#define JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_

#include "postgres.h"

/* "-1234.50", terminated, keeping its decimals. Writes over it, and over as many bytes on both
   sides: its writer leaves that room. */
enum { decimal_margin = 4 };
Datum numeric_of_decimal(char* decimal, size_t length);

/* The decimal that a numeric is; what does not fit the room is in memory of the context. Null of
   NaN and the infinities. */
enum { decimal_room = 128 };
const char* decimal_of_numeric(Datum numeric, char room[decimal_room], size_t* length);

#endif /* JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_ */
