#!/usr/bin/env bash
# Builds the Debian package and the portable archive, and checks both:
#   tools/package.sh [--quick]
# Both lie in build/package afterwards. --quick uses compiler cache and linker of this machine and is
# not for a release.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

profiles=
case "${1:-}" in
'') ;;
--quick) profiles=quick ;;
*)
    echo "Usage: tools/package.sh [--quick]" >&2
    exit 2
    ;;
esac
install_missing "${build_packages[@]}" "${package_packages[@]}"

version=$(sed -n 's/^project(MelovaneDB VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
if [ "$(dpkg-parsechangelog -S Version)" != "$version" ]; then
    echo "debian/changelog speaks of another version than $version" >&2
    exit 1
fi

# Always the same folder, so that a compiler cache knows the sources again.
out=$PWD/build/package
tree=$out/melovane
rm -rf "$tree"
mkdir -p "$tree"
git ls-files -z | tar --null --files-from=- -c | tar -x -C "$tree"
rm -f "$out"/melovane_* "$out"/melovane-*
(
    cd "$tree"
    # The file of symbols is a hundred times the package; a release that wants it builds by hand.
    DEB_BUILD_OPTIONS="noautodbgsym parallel=$(nproc)" DEB_BUILD_PROFILES=$profiles \
        dpkg-buildpackage -us -uc -b
)
package=$(ls "$out"/melovane_"$version"_*.deb)

echo "== lintian"
lintian --allow-root --fail-on error,warning "$out"/melovane_"$version"_*.changes
unpacked=$out/unpacked
rm -rf "$unpacked"
dpkg-deb -x "$package" "$unpacked"
echo "== desktop-file-validate"
desktop-file-validate "$unpacked"/usr/share/applications/*.desktop
echo "== appstreamcli"
# It ends with 0 where it only has remarks, but says so.
appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.xml | tee "$out/appstream.txt"
grep -q 'Validation was successful' "$out/appstream.txt"

# The program folder works from any place, a stick for example, and keeps its data beside itself.
name=melovane-$version-$(dpkg --print-architecture)
mv "$unpacked/usr/lib/melovane" "$unpacked/$name"
cp README.md debian/copyright "$unpacked/$name/"
tar --zstd --owner=0 --group=0 -C "$unpacked" -cf "$out/$name.tar.zst" "$name"
rm -rf "$unpacked"
echo
echo "Package: $package"
echo "Portable: $out/$name.tar.zst"
