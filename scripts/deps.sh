#!/usr/bin/env bash
# Debian packages that build, test and run Norvane. Sourced by scripts/run and scripts/test.
NORVANE_BUILD_PACKAGES=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev
  libcli11-dev libsodium-dev libcsv-dev libmuparser-dev
  fonts-dejavu-core
)
NORVANE_TEST_PACKAGES=(
  libgtest-dev libgmock-dev
  libgeographiclib-dev geographiclib-tools
  libcpp-httplib-dev
  xvfb xauth python3-ephem
  python3-pymetar libgeo-metar-perl
  appstream desktop-file-utils clang-format
  openssl
  clang libclang-rt-14-dev
)
# Benchmarks under bench/ (bench/run; cmake -DNORVANE_BUILD_BENCH=ON): GeographicLib is the
# reference of the geodesy figures, Xvfb gives the start-up figures on a real X display.
NORVANE_BENCH_PACKAGES=(
  libbenchmark-dev libgeographiclib-dev geographiclib-tools
  xvfb xauth
)

# The web build (scripts/web): emscripten, CLI11's headers and dpkg-source for muParser's Debian
# source package; Chromium and its driver run the page's tests (tests/web).
NORVANE_WEB_PACKAGES=(
  cmake ninja-build emscripten libcli11-dev dpkg-dev python3
)
NORVANE_WEB_TEST_PACKAGES=(
  chromium chromium-driver python3-selenium libgtest-dev
)

# Installs whatever of the given packages is missing (as root), or prints the line to run.
norvane_install() {
  local missing=()
  for p in "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -eq 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq || { echo "apt-get update failed" >&2; return 1; }
    apt-get install -y -qq --no-install-recommends "${missing[@]}" || return 1
  else
    echo "Missing Debian packages. Install them with:" >&2
    echo "  sudo apt-get install ${missing[*]}" >&2
    return 1
  fi
}
