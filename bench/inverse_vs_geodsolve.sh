#!/usr/bin/env bash
# Times `norvane-cli inverse` on a million random point pairs against GeographicLib's
# `GeodSolve -i` (Debian geographiclib-tools) on the same input, and prints both times and their
# ratio, plus the sphere and rhumb-line methods and the largest distance difference seen.
#
#   bench/inverse_vs_geodsolve.sh [NORVANE_CLI] [LINES]
#
# NORVANE_CLI defaults to build/bench/norvane-cli (configure with -DCMAKE_BUILD_TYPE=Release
# -DNORVANE_BUILD_BENCH=ON). Times are wall clock and CPU (user + system) of one run each; on a
# shared machine the CPU time is the steadier figure.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
cli=${1:-$root/build/bench/norvane-cli}
lines=${2:-1000000}
[ -x "$cli" ] || { echo "norvane-cli not found at $cli (build it first, see the header)" >&2; exit 2; }
command -v GeodSolve >/dev/null || { echo "GeodSolve not found: apt-get install geographiclib-tools" >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Random pairs, uniform on the sphere, fixed seed, 9 decimals (about 0.1 mm).
awk -v n="$lines" 'BEGIN {
  srand(20240501); pi = atan2(0, -1)
  for (i = 0; i < n; i++) {
    u = 2 * rand() - 1; v = 2 * rand() - 1
    lat1 = atan2(u, sqrt(1 - u * u)) * 180 / pi
    lat2 = atan2(v, sqrt(1 - v * v)) * 180 / pi
    printf "%.9f %.9f %.9f %.9f\n", lat1, 360 * rand() - 180, lat2, 360 * rand() - 180
  }
}' > "$work/in"

# Runs "$@" < in > out; sets wall and cpu (seconds).
timed() {
  local out=$1; shift
  local t0 t1
  TIMEFORMAT='%U %S'
  t0=$(date +%s.%N)
  { time "$@" < "$work/in" > "$work/$out" 2>/dev/null; } 2> "$work/cpu" || true
  t1=$(date +%s.%N)
  wall=$(awk -v a="$t0" -v b="$t1" 'BEGIN { printf "%.3f", b - a }')
  cpu=$(awk '{ printf "%.3f", $1 + $2 }' "$work/cpu")
}

printf '%s lines of "LAT1 LON1 LAT2 LON2"\n' "$lines"
printf '%-34s %9s %9s %14s\n' "command" "wall (s)" "cpu (s)" "lines/s (cpu)"
report() { printf '%-34s %9s %9s %14.0f\n' "$1" "$2" "$3" "$(awk -v n="$lines" -v c="$3" 'BEGIN { print (c > 0 ? n / c : 0) }')"; }

timed geod GeodSolve -i;                   g_wall=$wall; g_cpu=$cpu; report "GeodSolve -i" "$wall" "$cpu"
timed geodp GeodSolve -i -p 9;             report "GeodSolve -i -p 9" "$wall" "$cpu"
timed wgs "$cli" inverse;                  n_wall=$wall; n_cpu=$cpu; report "norvane-cli inverse (wgs84)" "$wall" "$cpu"
timed sph "$cli" inverse --method sphere;  report "norvane-cli inverse --method sphere" "$wall" "$cpu"
timed rl "$cli" inverse --method rhumb;    report "norvane-cli inverse --method rhumb" "$wall" "$cpu"

awk -v a="$n_wall" -v b="$g_wall" -v c="$n_cpu" -v d="$g_cpu" \
  'BEGIN { printf "ratio norvane-cli wgs84 / GeodSolve -i: wall %.2f, cpu %.2f\n", a / b, c / d }'

# Agreement on the same lines (GeodSolve prints azi1 azi2 s12 in metres; ND = no convergence).
paste -d' ' "$work/wgs" "$work/geodp" | awk '
  $1 == "ND" { nd++; next }
  { d = $1 * 1852 - $6; if (d < 0) d = -d; if (d > m) m = d }
  END { printf "largest |distance difference| %.3f mm; %d lines without convergence (ND)\n", m * 1000, nd }'
