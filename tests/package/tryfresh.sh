#!/usr/bin/env bash
# tryfresh.sh PACKAGES FOLDER: installs the packages in a fresh Debian made in FOLDER, builds the host of this folder there and
# runs it, and the tools.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
packages="$(realpath "$1")"
fresh="$2"

[ "$(id -u)" -eq 0 ] || fail "a fresh root takes root's rights"
mkdir -p "$fresh"
fresh="$(realpath "$fresh")"
base="$fresh/base.tar"
rm -rf "$fresh/root"
mkdir "$fresh/root"
if [ ! -e "$base" ]; then
  say "a fresh Debian"
  debootstrap --variant=minbase bookworm "$fresh/root" http://deb.debian.org/debian >"$fresh/log" 2>&1 </dev/null ||
    { tail "$fresh/log" >&2; fail "debootstrap"; }
  tar -C "$fresh/root" -cf "$base" .
else
  tar -C "$fresh/root" -xf "$base"
fi

inside() { chroot "$fresh/root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive "$@"; }

say "installing the packages"
mkdir "$fresh/root/packages"
cp "$packages"/*.deb "$fresh/root/packages/"
{
  inside apt-get -qq update
  inside apt-get -qq -o Acquire::Retries=3 install -y --no-install-recommends $(cd "$packages" && printf '/packages/%s ' *.deb) g++ cmake make pkg-config
} >"$fresh/log" 2>&1 </dev/null || { tail -n 30 "$fresh/log" >&2; fail "the packages can't be installed"; }

say "a host of its own"
mkdir "$fresh/root/host"
cp tests/package/host/* tests/package/tryhost.sh "$fresh/root/host/"
cmake -DROOT="$root" -DOUTPUT="$fresh/root/host/readme_snippet.cpp" -P tests/package/snippet.cmake
c++ -std=c++20 -shared -fPIC tests/package/clerk.cpp $(pkg-config --cflags --libs Qt6Widgets) -o "$fresh/root/host/clerk.so"
inside sh /host/tryhost.sh /host
echo 'select 1+1 as two' | inside orvensql 'Provider=SQLite;Data Source=/tmp/new.db;Mode=Create'
inside orvenregister --machine liborvenmod.so.0
inside grep -q '^Orvenmod.clsBasicInfo = .*/liborvenmod.so.0$' /etc/xdg/orvenmod/orvenmod.ini
inside QT_QPA_PLATFORM=offscreen python3 - <<'END'
import orvenmod
with orvenmod.BasicInfo() as items:
    assert items.members(), "the class tells its members"
print("python:", orvenmod.version())
END
inside orvenregister --machine --remove liborvenmod.so.0
rm -rf "$fresh/root"
say "the packages work in a fresh root"
