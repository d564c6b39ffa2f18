#!/usr/bin/env bash
# Checks what `cmake --install` and `cpack` make of a built tree, as a user's desktop would see it:
# check_install.sh CHECK BUILD_FOLDER SCRATCH_FOLDER, with KELO_APP_ID set, where CHECK is one of
#   prefix      installs into SCRATCH_FOLDER/prefix: the list of files, the icons' sizes
#   validators  the freedesktop validators, and what the entry and the metainfo name is installed
#   programs    the installed programs answer, the manual pages render, the versions agree
#   menu-entry  the menu entry starts the installed Kelo, which refreshes a stale login item
#   package     builds the Debian package: its files, its libraries found, no lintian complaint
set -euo pipefail

check=$1 build=$2 scratch=$3
prefix=$scratch/prefix
app_id=${KELO_APP_ID:?}
entry=$prefix/share/applications/kelo.desktop
metainfo=$prefix/share/metainfo/$app_id.metainfo.xml

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# Every file Kelo installs, relative to the prefix, against the list given.
same_files() {
    diff -u <({
        printf '%s\n' bin/kelo bin/kelo-core share/applications/kelo.desktop \
            share/doc/kelo/changelog.gz share/doc/kelo/copyright \
            share/icons/hicolor/scalable/apps/kelo.svg share/man/man1/kelo-core.1.gz \
            share/man/man1/kelo.1.gz "share/metainfo/$app_id.metainfo.xml"
        for size in 16 22 24 32 48 64 128 256; do
            echo "share/icons/hicolor/${size}x$size/apps/kelo.png"
        done
    } | sort) <(sort <<<"$2") >&2 || fail "$1: other files than expected (- missing, + unexpected)"
}

case "$check" in
prefix)
    rm -rf "$prefix"
    # By the component's name, so that the list of installed files goes to
    # install_manifest_Unspecified.txt, not over build/install_manifest.txt.
    cmake --install "$build" --prefix "$prefix" --component Unspecified >/dev/null
    same_files "the scratch prefix" "$(cd "$prefix" && find . -type f -printf '%P\n')"
    for png in "$prefix"/share/icons/hicolor/*x*/apps/kelo.png; do
        size=$(basename "$(dirname "$(dirname "$png")")")
        file "$png" | grep -q "PNG image data, ${size/x/ x }," || fail "$png is not $size"
    done
    ;;
validators)
    desktop-file-validate "$entry"
    appstreamcli validate --no-net "$metainfo"
    [ -x "$prefix/bin/$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$entry")" ] || fail "no Exec program"
    [ -f "$prefix/share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$entry").svg" ] ||
        fail "Icon: no such icon"
    { grep -q "<id>$app_id<" "$metainfo" && grep -q 'desktop-id">kelo.desktop<' "$metainfo"; } ||
        fail "the metainfo names another id or launches another entry"
    ;;
programs)
    version=$("$prefix/bin/kelo" --version)
    [[ $version =~ ^kelo\ [0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "kelo --version said: $version"
    version=${version#kelo }
    "$prefix/bin/kelo-core" --help | grep -q '^Usage: kelo-core' || fail "kelo-core --help"
    # The newest release named in the metainfo and the changelog is the one installed.
    grep -m1 '<release ' "$metainfo" | grep -q "version=\"$version\"" ||
        fail "the metainfo's newest release is not $version"
    zcat "$prefix/share/doc/kelo/changelog.gz" | head -1 | grep -q "^kelo ($version)" ||
        fail "the changelog's newest entry is not $version"
    for page in kelo kelo-core; do
        warnings=$(MANWIDTH=80 man --warnings -l "$prefix/share/man/man1/$page.1.gz" 2>&1 >/dev/null)
        [ -z "$warnings" ] || fail "$page(1) renders with warnings: $warnings"
    done
    ;;
menu-entry)
    home=$scratch/home
    rm -rf "$home"
    mkdir -p "$home/config/autostart"
    mkdir -m 700 "$home/runtime"
    # Launch at login was switched on while Kelo ran from a build folder that is gone since.
    login_item=$home/config/autostart/kelo.desktop
    printf '[Desktop Entry]\nType=Application\nName=Kelo\nExec=%s\n' "$scratch/gone" >"$login_item"
    env -u DISPLAY -u WAYLAND_DISPLAY -u DBUS_SESSION_BUS_ADDRESS \
        PATH="$prefix/bin:$PATH" HOME="$home" XDG_CONFIG_HOME="$home/config" \
        XDG_DATA_HOME="$home/data" XDG_RUNTIME_DIR="$home/runtime" QT_QPA_PLATFORM=offscreen \
        gio launch "$entry"
    for _ in $(seq 100); do
        grep -qx "Exec=$prefix/bin/kelo" "$login_item" && break
        sleep 0.1
    done
    # The Kelo processes started from the installed program, found by what they run.
    started=$(for process in /proc/[0-9]*; do
        [ "$(readlink "$process/exe" 2>/dev/null)" != "$prefix/bin/kelo" ] || echo "${process:6}"
    done)
    [ -n "$started" ] || fail "the menu entry started no installed kelo"
    xargs kill <<<"$started"
    grep -qx "Exec=$prefix/bin/kelo" "$login_item" ||
        fail "the stale login item was not refreshed: $(cat "$login_item")"
    ;;
package)
    rm -rf "$scratch/package"
    cpack --config "$build/CPackConfig.cmake" -G DEB -B "$scratch/package" >/dev/null
    deb=$(echo "$scratch"/package/kelo_*.deb)
    [ -f "$deb" ] || fail "cpack made no kelo_*.deb"
    same_files "the package" "$(dpkg-deb --contents "$deb" |
        awk '$1 !~ /^d/ { sub(/^\.\/usr\//, "", $6); print $6 }')"
    # The libraries are found in the programs by dpkg-shlibdeps.
    for dependency in libqt6quick6 libicu72 libcanberra0; do
        dpkg-deb --field "$deb" Depends | grep -Eq "(^|, )$dependency( |,|$)" ||
            fail "Depends lacks $dependency"
    done
    status=0
    report=$(lintian --fail-on error,warning "$deb" 2>&1) || status=$?
    grep -v 'running with root privileges' <<<"$report" >&2 || true
    [ $status -eq 0 ] || fail "lintian found errors or warnings"
    ;;
*) fail "unknown check $check" ;;
esac
