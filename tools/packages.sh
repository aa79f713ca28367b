# Sourced by run.sh, test.sh and the tools: installs the Debian packages that are missing, asking for
# rights only then.

build_packages=(g++ cmake ninja-build pkg-config ccache mold qt6-base-dev qt6-svg-dev
    qt6-translations-l10n libsqlite3-dev libmpg123-dev libxxhash-dev libsdl2-dev libzstd-dev
    fonts-dejavu-core)
display_packages=(xvfb xauth openbox xdotool lame)
test_packages=(libgtest-dev libgmock-dev libtag1-dev)
package_packages=(dpkg-dev debhelper fakeroot lintian desktop-file-utils appstream librsvg2-bin zstd)
fuzz_packages=(clang)
tidy_packages=(clang clang-format clang-tidy libbenchmark-dev)

# find_missing PACKAGE...: leaves those that are not installed in the array `missing`.
find_missing() {
    local package
    missing=()
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
            missing+=("$package")
        fi
    done
}

# require_packages PACKAGE...: installs nothing. Says what is missing and ends with 2.
require_packages() {
    local missing
    find_missing "$@"
    if [ ${#missing[@]} -gt 0 ]; then
        echo "Missing packages: ${missing[*]} (\"$0 --install\" installs them)" >&2
        exit 2
    fi
}

install_missing() {
    local missing
    find_missing "$@"
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "Installing: ${missing[*]}"
    local rights=()
    if [ "$(id -u)" -ne 0 ]; then
        rights=(sudo)
    fi
    "${rights[@]}" apt-get update -qq
    "${rights[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
