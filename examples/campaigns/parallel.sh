#!/bin/sh
# parallel.sh DIR [SHARDS]: the campaign in DIR with GNU parallel, SHARDS (8) parts on the cores of this machine. With
# --sshlogin HOST,... before -N0 the parts run on other machines that see the same folder.
set -eu
export DIR="$1" TAVREL_SHARDS="${2:-8}"
jobs=$(mktemp)
trap 'rm -f "$jobs"' EXIT
# The first one runs shard 0 of N, and so on: "auto" reads PARALLEL_SEQ. A shard that ends with status 3 (something
# could not be run) is tried twice more; what is finished by then is not run again. Status 1, a failed verdict, is a
# result.
seq "$TAVREL_SHARDS" | parallel --env DIR --env TAVREL_SHARDS --joblog "$jobs" -N0 '
  for try in 1 2 3; do
    status=0
    tavrel campaign run "$DIR" --shard auto --jobs 1 || status=$?
    [ $status -eq 3 ] || break
  done
  [ $status -eq 1 ] || exit $status' || true
worst=$(awk 'NR > 1 && $7 > worst { worst = $7 } END { print worst + 0 }' "$jobs")
[ "$worst" -eq 0 ] || exit "$worst"
tavrel campaign merge "$DIR"
