/* The server's numeric from and to decimals as text, without its arithmetic: in the form in which
   numerics are stored, which no version may change. */

#ifndef JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_
#define JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_

#include "postgres.h"

/* "-1234.50", terminated, keeping its decimals. So many bytes behind it may be read, and do not
   matter. */
enum { decimal_margin = 9 };
Datum numeric_of_decimal(const char* text, size_t length);

/* The decimal that a numeric is, maybe with zeros in front; what does not fit the room is in memory
   of the context. Null of NaN and the infinities. */
enum { decimal_room = 128 };
const char* decimal_of_numeric(Datum numeric, char room[decimal_room], size_t* length);

#endif /* JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_ */
