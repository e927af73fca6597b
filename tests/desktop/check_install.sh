#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks the tree as a desktop would use it:
# the menu entry, the AppStream metainfo, the file types, the icons, the help book, and the
# installed program answering --version without a display.
set -euo pipefail
build_dir=$1
version=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build_dir" --prefix "$prefix" >/dev/null
share=$prefix/share
id=org.kelmoran.Kelmoran
fail() { echo "FAIL: $*" >&2; exit 1; }

[ -x "$prefix/bin/kelmoran" ] || fail "no program in bin/"
desktop-file-validate "$share/applications/$id.desktop" || fail "desktop entry"
appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml" || fail "metainfo"
xmllint --noout "$share/mime/packages/$id.xml" || fail "MIME XML"
grep -q 'MimeType=.*application/x-kelmoran-voyage' "$share/applications/$id.desktop" ||
    fail "the menu entry does not open voyage plans"
for type in voyage sight; do
    grep -q "type=\"application/x-kelmoran-$type\"" "$share/mime/packages/$id.xml" ||
        fail "no MIME type for $type files"
done
[ -f "$share/icons/hicolor/scalable/apps/$id.svg" ] || fail "no SVG icon"
for size in 16 32 48 64 128 256; do
    png=$share/icons/hicolor/${size}x${size}/apps/$id.png
    [ -f "$png" ] || fail "no ${size}px icon"
    file "$png" | grep -q "$size x $size" || fail "${size}px icon has the wrong size"
done
[ -f "$share/kelmoran/help/Kelmoran Help.html" ] || fail "no help book index"

out=$(env -u DISPLAY -u WAYLAND_DISPLAY "$prefix/bin/kelmoran" --version)
[ "$out" = "Kelmoran $version" ] || fail "--version printed '$out'"
"$prefix/bin/kelmoran" --help | grep -q '^Usage: kelmoran' || fail "--help"
if "$prefix/bin/kelmoran" --bogus >/dev/null 2>&1; then fail "an unknown option was accepted"; fi
echo "installed tree is complete"
