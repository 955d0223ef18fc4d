# What the package tests share. The first argument is a folder of their own, made anew; then
# follow the build folder and the source folder.
set -euo pipefail
work=$1 build=$2 source=$3
rm -rf "$work"
mkdir -p "$work"
unset JWNLS_EXTENSION_PATH LD_LIBRARY_PATH CMAKE_PREFIX_PATH PKG_CONFIG_PATH

fail() {
  echo "$*" >&2
  exit 1
}

# quietly COMMAND...: its output is shown where it fails
quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "failed: $*"
  }
}

# shows EXAMPLE PROGRAM...: the program's output is the example's
shows() {
  local example=$1
  shift
  (cd / && "$@") | diff "$source/examples/$example.expected" - || fail "wrong output: $*"
}

# use PREFIX LIBDIR: the C and the C++ example are built on what is installed there, and run
use() {
  local prefix=$1 libraries=$1/$2 kind
  export LD_LIBRARY_PATH="$libraries"
  quietly cmake -S "$source/tests/package/consumer" -B "$work/consumer" -DEXAMPLES="$source/examples" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER="$CC" \
    -DCMAKE_CXX_COMPILER="$CXX"
  quietly cmake --build "$work/consumer"
  for kind in jwnls jwnls_static; do
    shows values.c "$work/consumer/c_$kind"
    shows values.cpp "$work/consumer/cpp_$kind"
  done

  export PKG_CONFIG_PATH="$libraries/pkgconfig"
  # One folder of headers, and nothing of how the library was built.
  grep -Eqx -- '-I[^ ]+ ?' <<<"$(pkg-config --cflags jwnls)" || fail "pkg-config: unexpected flags"
  quietly "$CC" -std=c99 -Wall -Wextra -pedantic -Werror "$source/examples/values.c" -o "$work/c" \
    $(pkg-config --cflags --libs jwnls)
  quietly "$CC" "$source/examples/values.c" -o "$work/c_static" \
    $(pkg-config --cflags jwnls) -Wl,-Bstatic -ljwnls -Wl,-Bdynamic -L"$libraries" \
    $(pkg-config --static --libs jwnls | sed 's/-ljwnls//')
  quietly "$CXX" -std=c++20 -Wall -Wextra -pedantic -Werror "$source/examples/values.cpp" \
    -o "$work/cpp" $(pkg-config --cflags --libs jwnls)
  shows values.c "$work/c"
  shows values.c "$work/c_static"
  shows values.cpp "$work/cpp"

  # The host in C, on the installed headers and modules.
  quietly "$CC" -std=c11 -I"$prefix/include/jwnls" "$source/examples/host.c" -o "$work/host" \
    -ldl -lpthread
  shows host.c "$work/host" "$libraries/jwnls"
}
