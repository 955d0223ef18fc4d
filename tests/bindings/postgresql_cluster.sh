# Clusters of PostgreSQL for tests, to be sourced: each in a folder of its own, on a socket there and
# on no port, as another user than root; all are stopped and gone when the script ends.

postgresql_programs=$("${PG_CONFIG:-pg_config}" --bindir)
clusters=()
folders=()

as_postgres() {
  if [ "$(id -u)" -eq 0 ]; then
    (cd / && runuser -u postgres -- "$@")
  else
    "$@"
  fi
}

stop_clusters() {
  for folder in "${clusters[@]}"; do
    as_postgres "$postgresql_programs/pg_ctl" -D "$folder/data" -m immediate -w stop >/dev/null ||
      echo "the cluster in $folder does not stop" >&2
  done
  for folder in "${folders[@]}"; do rm -rf "$folder"; done
}
trap stop_clusters EXIT

# start_cluster [NAME=VALUE...]: settings of the server. Its folder, which is PGHOST for it, comes
# into `cluster`. `server_wrapper` is a command that runs the server, such as valgrind, in that folder.
start_cluster() {
  cluster=$(mktemp -d "${TMPDIR:-/tmp}/jwnls_pg.XXXXXX")
  folders+=("$cluster")
  chmod 755 "$cluster"
  [ "$(id -u)" -ne 0 ] || chown postgres "$cluster"
  as_postgres "$postgresql_programs/initdb" -D "$cluster/data" -A trust -U postgres -E UTF8 \
    --locale=C.UTF-8 --no-sync >/dev/null
  local settings="-c listen_addresses='' -c unix_socket_directories='$cluster' -c fsync=off"
  local setting
  for setting in "$@"; do settings+=" -c $setting"; done
  local program=$postgresql_programs/postgres
  if [ -n "${server_wrapper:-}" ]; then
    printf '#!/bin/sh\ncd %s\nexec %s %s "$@"\n' "$cluster" "$server_wrapper" "$program" >"$cluster/server"
    chmod 755 "$cluster/server"
    program=$cluster/server
  fi
  as_postgres "$postgresql_programs/pg_ctl" -p "$program" -D "$cluster/data" -l "$cluster/log" -w -t 300 \
    -o "$settings" start >/dev/null || {
    cat "$cluster/log" >&2
    return 1
  }
  clusters+=("$cluster")
}
