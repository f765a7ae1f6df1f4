# Shared by the commands of this folder; sourced, not run.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$root"

say() { printf '== %s\n' "$*" >&2; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# Where a compiler cache or a fast linker is installed it is used; nothing needs them.
tools=()
if command -v ccache >/dev/null 2>&1; then
  tools+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
  # Without these it keeps nothing that was compiled with precompiled headers.
  export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:+$CCACHE_SLOPPINESS,}pch_defines,time_macros,include_file_mtime,include_file_ctime"
fi
if command -v mold >/dev/null 2>&1; then
  tools+=(-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold)
fi

# Two heavy compilers on a small machine fight for memory: a job for each 1.5 GB, at most one a core.
jobs() {
  local cores memory
  cores="$(nproc)"
  memory="$(awk '/MemAvailable/ {print int($2 / 1500000)}' /proc/meminfo 2>/dev/null || echo "$cores")"
  [ "$memory" -ge 1 ] || memory=1
  echo $((cores < memory ? cores : memory))
}

# configure NAME ARGUMENTS...: a build folder build/NAME.
configure() {
  local name="$1"
  shift
  mkdir -p "build/$name"
  if ! cmake -S . -B "build/$name" -G Ninja "${tools[@]}" "$@" >"build/$name/configure.log" 2>&1; then
    cat "build/$name/configure.log" >&2
    return 1
  fi
}

# build NAME TARGETS...: quiet unless it fails.
build() {
  local name="$1"
  shift
  if ! cmake --build "build/$name" --parallel "$(jobs)" --target "${@:-all}" -- -k 0 >"build/$name/build.log" 2>&1; then
    grep -v '^\[[0-9]*/[0-9]*\] \(Building\|Linking\)' "build/$name/build.log" | tail -n 100 >&2
    return 1
  fi
}
