#!/usr/bin/env bash
# Installs a build tree into a scratch prefix and checks what a desktop and a
# software centre will read from it.
#   check-install.sh CMAKE BUILD_DIR APP_ID
set -euo pipefail

cmake_command="$1"
build_dir="$2"
app_id="$3"

scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/prefix"
failures=0
fail() { echo "FAIL: $*" >&2; failures=$((failures + 1)); }

"$cmake_command" --install "$build_dir" --prefix "$prefix" >/dev/null

# The installed program works on its own: no build tree, no font path.
passes="$(env -u CINEFITA_FONT_PATH CINEFITA_DATA_DIR="$scratch/dados" TMPDIR="$scratch" \
    "$prefix/bin/cinefita" --self-test | grep -c '^PASS: ')" || true
[ "$passes" = 6 ] || fail "installed --self-test printed $passes PASS lines, not 6"

desktop="$prefix/share/applications/$app_id.desktop"
metainfo="$prefix/share/metainfo/$app_id.metainfo.xml"
desktop-file-validate "$desktop" || fail "desktop-file-validate rejects $desktop"
appstreamcli validate --no-net "$metainfo" >/dev/null || fail "appstreamcli rejects $metainfo"

# Width and height are the big-endian words at bytes 16 and 20 of a PNG.
png_size() {
    [ "$(od -An -tx1 -N8 "$1" | tr -d ' \n')" = 89504e470d0a1a0a ] || { echo "not-png"; return; }
    local words
    words=($(od -An -tu1 -j16 -N8 "$1"))
    echo "$(((words[0] << 24) + (words[1] << 16) + (words[2] << 8) + words[3]))x$(((words[4] << 24) + (words[5] << 16) + (words[6] << 8) + words[7]))"
}

icon_name="$(sed -n 's/^Icon=//p' "$desktop")"
[ "$icon_name" = "$app_id" ] || fail "desktop Icon is '$icon_name', not the application id"
for size in 48 64 128 256; do
    icon="$prefix/share/icons/hicolor/${size}x${size}/apps/$icon_name.png"
    if [ ! -f "$icon" ]; then
        fail "missing $icon"
    elif [ "$(png_size "$icon")" != "${size}x${size}" ]; then
        fail "$icon is $(png_size "$icon"), not ${size}x${size}"
    fi
done

launchable="$(sed -n 's:.*<launchable type="desktop-id">\(.*\)</launchable>.*:\1:p' "$metainfo")"
[ -n "$launchable" ] && [ -f "$prefix/share/applications/$launchable" ] \
    || fail "metainfo launchable '$launchable' names no installed desktop file"
exec_name="$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$desktop")"
[ -x "$prefix/bin/$exec_name" ] || fail "desktop Exec '$exec_name' is not an installed program"

[ "$failures" -eq 0 ] || exit 1
echo "installed tree checked"
