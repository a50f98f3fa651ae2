#!/bin/sh
# parallel.sh DIR [SHARDS]: the campaign in DIR with GNU parallel, SHARDS (8) parts on the cores of this machine. With
# --sshlogin HOST,... before -N0 the parts run on other machines that see the same folder.
set -eu
DIR=$1
export TAVREL_SHARDS="${2:-8}"
# The first one runs shard 0 of N, and so on: "auto" reads PARALLEL_SEQ. A shard that ends with status 3 (something
# could not be run) is tried twice more; what is finished by then is not run again.
status=0
seq "$TAVREL_SHARDS" | parallel --env TAVREL_SHARDS --retries 3 -N0 \
  "tavrel campaign run '$DIR' --shard auto --jobs 1; status=\$?; [ \$status -eq 1 ] && exit 0; exit \$status" || status=$?
[ "$status" -eq 0 ] || exit 3
tavrel campaign merge "$DIR"
