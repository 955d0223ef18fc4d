#!/usr/bin/env bash
# Makes the Debian packages, looks at what is in them, unpacks them and uses what is there.
. "$(dirname "$0")/check.sh"

quietly cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/packages"
cd "$work/packages"
holds() {  # holds PACKAGE PATTERN...
  local package=$1 files pattern
  shift
  files=$(dpkg-deb -c "$package"_*.deb | awk '{print $6}')
  for pattern in "$@"; do
    grep -Eq "$pattern" <<<"$files" || fail "$package has no $pattern: $files"
  done
  grep -Ev '^\./(usr/.*)?$' <<<"$files" && fail "$package has files outside /usr"
  dpkg-deb -x "$package"_*.deb "$work/root"
}
holds libjwnls1 '/libjwnls\.so\.1$' '/jwnls/jwnlsloc\.so$' '/jwnls/jwnlsldb\.so$' \
  '/jwnls/jwemsg\.so$' '/doc/libjwnls1/NOTICE$'
holds libjwnls-dev '/libjwnls\.so$' '/libjwnls\.a$' 'include/jwnls/jwnls\.h$' \
  'include/jwnls/jwnls\.hpp$' 'include/jwnls/abi/locale_handle\.h$' '/jwnls\.pc$' \
  '/cmake/jwnls/jwnls-config\.cmake$' '/doc/libjwnls-dev/LICENSE$'
holds jwnls 'bin/jwnls$' '/doc/jwnls/NOTICE$' '/man/man1/jwnls\.1$' \
  '/bash-completion/completions/jwnls$' '/zsh/site-functions/_jwnls$' \
  '/fish/vendor_completions\.d/jwnls\.fish$'
depends() { dpkg-deb -f "$1"_*.deb Depends; }
[[ $(depends libjwnls1) == *libc6* && $(depends libjwnls1) == *libcctz* ]] ||
  fail "libjwnls1 depends on: $(depends libjwnls1)"
[[ $(depends libjwnls-dev) == libjwnls1* ]] || fail "libjwnls-dev: $(depends libjwnls-dev)"

libraries=$(dirname "$(cd "$work/root/usr" && find . -name libjwnls.so.1)")
use "$work/root/usr" "${libraries#./}"
"$work/root/usr/bin/jwnls" --version >/dev/null || fail "the program does not start"
