// Runs queries in DuckDB:  duckdb_query LIBRARY QUERY...
// The library is loaded by its path, and its interface is declared here, so that building needs
// neither.

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>

namespace {

// duckdb_result of duckdb.h; filled and released by the library alone.
struct Result {
  std::uint64_t column_count, row_count, rows_changed;
  void *columns, *error, *internal;
};

int (*open_database)(const char*, void**);
int (*connect)(void*, void**);
int (*query)(void*, const char*, Result*);
const char* (*result_error)(Result*);
void (*destroy_result)(Result*);
void (*disconnect)(void**);
void (*close_database)(void**);

template <typename Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  void* const library = argc > 1 ? ::dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
  if (library == nullptr || !find(library, "duckdb_open", open_database) ||
      !find(library, "duckdb_connect", connect) || !find(library, "duckdb_query", query) ||
      !find(library, "duckdb_result_error", result_error) ||
      !find(library, "duckdb_destroy_result", destroy_result) ||
      !find(library, "duckdb_disconnect", disconnect) ||
      !find(library, "duckdb_close", close_database)) {
    const char* const cause = ::dlerror();
    std::fprintf(stderr, "duckdb_query: %s\n", cause != nullptr ? cause : "no library");
    return 2;
  }
  void* database = nullptr;
  void* connection = nullptr;
  int code = 0;
  if (open_database(nullptr, &database) != 0 || connect(database, &connection) != 0) {
    std::fprintf(stderr, "duckdb_query: no database\n");
    return 1;
  }
  for (int i = 2; i < argc && code == 0; ++i) {
    Result result = {};
    if (query(connection, argv[i], &result) != 0) {
      std::fprintf(stderr, "duckdb_query: %s\n", result_error(&result));
      code = 1;
    }
    destroy_result(&result);
  }
  disconnect(&connection);
  close_database(&database);
  return code;
}
