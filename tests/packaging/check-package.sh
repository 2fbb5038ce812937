#!/usr/bin/env bash
# Builds the Debian package of a build tree into a scratch folder and runs
# Debian's own checker on it: an error or a warning fails.
#   check-package.sh CPACK BUILD_DIR
set -euo pipefail

cpack_command="$1"
build_dir="$2"

command -v lintian >/dev/null || { echo "FAIL: lintian is not installed (scripts/install-deps installs it)" >&2; exit 1; }
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

"$cpack_command" -G DEB --config "$build_dir/CPackConfig.cmake" -B "$scratch" >"$scratch/cpack.log" 2>&1 \
    || { cat "$scratch/cpack.log" >&2; echo "FAIL: cpack could not build the package" >&2; exit 1; }
deb="$(ls "$scratch"/*.deb)"

# Errors and warnings are shown and fail; information tags (hardening hints) are not shown.
status=0
lintian --fail-on error,warning "$deb" >"$scratch/lintian.log" 2>&1 || status=$?
grep -v 'running with root privileges' "$scratch/lintian.log" || true
[ "$status" -eq 0 ] || { echo "FAIL: lintian rejects $(basename "$deb") (status $status)" >&2; exit 1; }
echo "lintian accepts $(basename "$deb")"
