# What a build is made of. Tool, tests and examples belong to the project's own builds: a project
# that adds this one with add_subdirectory() gets the library.
option(JWNLS_EMBED "Link the module and the extensions into libjwnls" ON)
option(JWNLS_TOOL "Build the program (needs CLI11 and utf8proc)" ${PROJECT_IS_TOP_LEVEL})
option(JWNLS_TESTS "Build the tests (needs Google Test and the tool)" ${PROJECT_IS_TOP_LEVEL})
option(JWNLS_SQLITE "Build the extension of SQLite (needs sqlite3ext.h)" OFF)
option(JWNLS_INSTALL "Make the install rules" ${PROJECT_IS_TOP_LEVEL})
option(JWNLS_BENCH "Build the benchmarks (needs Google Benchmark and the peers)" OFF)
option(JWNLS_FUZZ "Build the fuzzers (needs Clang)" OFF)
option(JWNLS_WERROR "Treat warnings as errors" OFF)
option(JWNLS_PORTABLE "Take the branches that are written for machines without SSE2" OFF)
option(JWNLS_COVERAGE "Count which lines and branches are taken (gcc)" OFF)
set(JWNLS_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize (address,undefined or thread)")
set(JWNLS_GENERATORS "" CACHE PATH
    "A folder with the generators, built for this machine: to compile for another one")
