#!/usr/bin/env bash
# Installs what the build needs (Debian 12 packages, only those missing), configures and builds.
#   ./setup.sh            build into ./build
#   ./setup.sh run        build, make empty data files beside qstk3 when absent, start qstk3
#   ./setup.sh test       build and run every test suite offscreen
#   ./setup.sh bench ...  build and run the benchmarks (arguments go to qstk3-bench)
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
build="${QS_BUILD_DIR:-$here/build}"
mode="${1:-build}"
[ $# -gt 0 ] && shift

# fonts-liberation2: the documents name Arial and Times New Roman; these fonts have their metrics.
packages=(build-essential cmake pkg-config qt6-base-dev qt6-base-dev-tools libsqlite3-dev
          libgl-dev xvfb xauth poppler-utils fonts-liberation2)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "setup: installing ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

werror=OFF
[ "${CI:-}" = "true" ] && werror=ON
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQS_WARNINGS_AS_ERRORS=$werror >/dev/null
cmake --build "$build" -j"$(nproc)"

case "$mode" in
build) ;;
run)
    if [ ! -f "$build/dbqst.dqx" ]; then
        "$build/qstk3-newdata" "$build"
    fi
    if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
        exec xvfb-run -a "$build/qstk3" "$@"
    fi
    exec "$build/qstk3" "$@"
    ;;
test)
    cd "$build"
    QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)" "$@"
    ;;
bench)
    exec "$build/qstk3-bench" "$@"
    ;;
*)
    echo "usage: ./setup.sh [build|run|test|bench]" >&2
    exit 2
    ;;
esac
