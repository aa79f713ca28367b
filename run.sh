#!/usr/bin/env bash
# Installs what is missing, builds the console and starts it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
. tools/packages.sh
install_missing "${build_packages[@]}"

cmake --preset release >/dev/null
cmake --build --preset release
