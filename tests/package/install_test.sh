#!/usr/bin/env bash
# Installs into an empty prefix, moves it, and uses what is there.
. "$(dirname "$0")/check.sh"

libdir=$(sed -n 's/^CMAKE_INSTALL_LIBDIR:[A-Z]*=//p' "$build/CMakeCache.txt")
quietly cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$work/moved"
use "$work/moved" "$libdir"

# The program finds all it needs, wherever it is called from.
"$work/moved/bin/jwnls" --version >/dev/null || fail "the program does not start"
(cd / && "$work/moved/bin/jwnls" format number 1234.5 --locale de_DE) | grep -Fq 1.234,5 ||
  fail "the program writes no number"
# So do those who complete its command lines or read its page.
for page in man/man1/jwnls.1 bash-completion/completions/jwnls zsh/site-functions/_jwnls \
  fish/vendor_completions.d/jwnls.fish; do
  [ -s "$work/moved/share/$page" ] || fail "share/$page is missing"
done
