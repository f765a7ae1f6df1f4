#!/bin/sh
# tryhost.sh FOLDER: builds the host in FOLDER by CMake and by pkg-config, and has FOLDER/clerk.so pick an item in each. The
# component is found as the surroundings tell.
set -eu
cd "$1"
cmake -S . -B bycmake -DCMAKE_BUILD_TYPE=Debug >log 2>&1 || { cat log >&2; exit 1; }
cmake --build bycmake >log 2>&1 || { cat log >&2; exit 1; }
c++ -std=c++20 main.cpp readme_snippet.cpp $(pkg-config --cflags --libs orvenmod) -o bypkgconfig
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME="$PWD/settings" LC_ALL=C.UTF-8
for host in bycmake/ahost ./bypkgconfig; do
  rm -f suite.db*
  said="$(LD_PRELOAD="$PWD/clerk.so" timeout 60 "$host" "$PWD/suite.db")" || { echo "$host failed: $said" >&2; exit 1; }
  case "$said" in
    *"picked 7"*) echo "$host: $said" | tr '\n' ' '; echo ;;
    *) echo "$host said $said" >&2; exit 1 ;;
  esac
done
