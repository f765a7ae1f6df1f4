#!/bin/sh
# record.sh LIBRARY RECORD: what the library shows to hosts, functions with the types that the public headers give them.
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
exec abidw --exported-interfaces-only --drop-private-types --no-architecture --no-corpus-path --no-comp-dir-path \
  --no-show-locs --no-parameter-names --no-write-default-sizes --no-elf-needed \
  --suppressions "$here/hidden.abignore" --headers-dir "$here/../include/orvenmod" --out-file "$2" "$1"
