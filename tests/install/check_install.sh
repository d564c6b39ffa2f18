#!/usr/bin/env bash
# Checks what `cmake --install` and `cpack` make of a built tree, as a user's desktop would see it.
# Usage: check_install.sh CHECK BUILD_FOLDER SCRATCH_FOLDER, with KELO_APP_ID set.
#   prefix      installs into SCRATCH_FOLDER/prefix and checks the list of files
#   validators  the freedesktop validators on the installed desktop entry and metainfo
#   programs    the installed programs answer, the manual pages render, the versions agree
#   menu-entry  the menu entry starts the installed Kelo, which refreshes a stale login item
#   package     builds the Debian package and inspects it with dpkg-deb and lintian
set -euo pipefail

check=$1
build=$2
scratch=$3
prefix=$scratch/prefix
app_id=${KELO_APP_ID:?}

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# Every file Kelo installs, relative to the prefix.
expected_files() {
    local size
    printf '%s\n' bin/kelo bin/kelo-core share/applications/kelo.desktop \
        share/doc/kelo/changelog.gz share/doc/kelo/copyright \
        share/icons/hicolor/scalable/apps/kelo.svg \
        share/man/man1/kelo-core.1.gz share/man/man1/kelo.1.gz \
        "share/metainfo/$app_id.metainfo.xml"
    for size in 16 22 24 32 48 64 128 256; do
        echo "share/icons/hicolor/${size}x$size/apps/kelo.png"
    done
}

same_files() {
    local what=$1 actual=$2
    if ! diff -u <(expected_files | sort) <(sort <<<"$actual") >&2; then
        fail "$what holds other files than expected (- missing, + unexpected)"
    fi
}

install_prefix() {
    rm -rf "$prefix"
    # By the component's name, so that the list of installed files goes to
    # install_manifest_Unspecified.txt, not over build/install_manifest.txt.
    cmake --install "$build" --prefix "$prefix" --component Unspecified >/dev/null
    same_files "the scratch prefix" "$(cd "$prefix" && find . -type f -printf '%P\n')"
    local png size
    for png in "$prefix"/share/icons/hicolor/*x*/apps/kelo.png; do
        size=$(basename "$(dirname "$(dirname "$png")")")
        file "$png" | grep -q "PNG image data, ${size/x/ x }," || fail "$png is not $size"
    done
}

validators() {
    local entry=$prefix/share/applications/kelo.desktop
    local metainfo=$prefix/share/metainfo/$app_id.metainfo.xml
    desktop-file-validate "$entry"
    appstreamcli validate --no-net "$metainfo"
    grep -qx 'Categories=Utility;Office;' "$entry" || fail "Categories"
    grep -qx 'X-GNOME-UsesNotifications=true' "$entry" || fail "X-GNOME-UsesNotifications"
    grep -q '^Terminal' "$entry" && fail "the entry names a terminal"
    local key
    for key in Name Comment Exec Icon; do
        grep -q "^$key=." "$entry" || fail "no $key"
    done
    # What the entry and the metainfo name must be what is installed.
    local program icon
    program=$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$entry")
    [ -x "$prefix/bin/$program" ] || fail "Exec names $program, which is not installed"
    icon=$(sed -n 's/^Icon=//p' "$entry")
    [ -f "$prefix/share/icons/hicolor/scalable/apps/$icon.svg" ] || fail "no icon $icon"
    grep -q '<launchable type="desktop-id">kelo.desktop</launchable>' "$metainfo" ||
        fail "the metainfo launches another entry"
    grep -q "<id>$app_id</id>" "$metainfo" || fail "the metainfo's id is not $app_id"
}

programs() {
    local version page
    version=$("$prefix/bin/kelo" --version)
    [[ $version =~ ^kelo\ [0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "kelo --version said: $version"
    version=${version#kelo }
    "$prefix/bin/kelo-core" --help | grep -q '^Usage: kelo-core' || fail "kelo-core --help"
    # The newest release named in the metainfo and the changelog is the one installed.
    grep -m1 '<release ' "$prefix/share/metainfo/$app_id.metainfo.xml" |
        grep -q "version=\"$version\"" || fail "the metainfo's newest release is not $version"
    zcat "$prefix/share/doc/kelo/changelog.gz" | head -1 | grep -q "^kelo ($version)" ||
        fail "the changelog's newest entry is not $version"
    for page in kelo kelo-core; do
        local text warnings
        warnings=$(MANWIDTH=80 man --warnings -l "$prefix/share/man/man1/$page.1.gz" 2>&1 >/dev/null)
        [ -z "$warnings" ] || fail "$page(1) renders with warnings: $warnings"
        text=$(MANWIDTH=80 man -l "$prefix/share/man/man1/$page.1.gz" 2>/dev/null)
        for section in NAME SYNOPSIS DESCRIPTION ENVIRONMENT FILES 'EXIT STATUS' EXAMPLES; do
            grep -qx "$section" <<<"$text" || fail "$page(1) has no $section"
        done
    done
}

# The Kelo processes started from the installed program, found by what they run.
installed_kelos() {
    local process
    for process in /proc/[0-9]*; do
        if [ "$(readlink "$process/exe" 2>/dev/null)" = "$prefix/bin/kelo" ]; then
            echo "${process#/proc/}"
        fi
    done
}

menu_entry() {
    local home=$scratch/home
    rm -rf "$home"
    mkdir -p "$home/config/autostart" "$home/runtime"
    chmod 700 "$home/runtime"
    # Launch at login was switched on while Kelo ran from a build folder that is gone since.
    printf '[Desktop Entry]\nType=Application\nName=Kelo\nExec=%s\n' \
        "$scratch/gone/shell/kelo" >"$home/config/autostart/kelo.desktop"
    env -u DISPLAY -u WAYLAND_DISPLAY -u DBUS_SESSION_BUS_ADDRESS \
        PATH="$prefix/bin:$PATH" HOME="$home" XDG_CONFIG_HOME="$home/config" \
        XDG_DATA_HOME="$home/data" XDG_RUNTIME_DIR="$home/runtime" QT_QPA_PLATFORM=offscreen \
        gio launch "$prefix/share/applications/kelo.desktop"
    local tries=0 started=""
    while [ $tries -lt 100 ] && ! grep -qx "Exec=$prefix/bin/kelo" \
        "$home/config/autostart/kelo.desktop"; do
        sleep 0.1
        tries=$((tries + 1))
    done
    started=$(installed_kelos)
    [ -z "$started" ] || kill $started
    [ -n "$started" ] || fail "the menu entry started no installed kelo"
    grep -qx "Exec=$prefix/bin/kelo" "$home/config/autostart/kelo.desktop" ||
        fail "the stale login item was not refreshed: $(cat "$home/config/autostart/kelo.desktop")"
}

package() {
    local out=$scratch/package deb
    rm -rf "$out"
    cpack --config "$build/CPackConfig.cmake" -G DEB -B "$out" >/dev/null
    deb=$(echo "$out"/kelo_*.deb)
    [ -f "$deb" ] || fail "cpack made no kelo_*.deb"
    same_files "the package" "$(dpkg-deb --contents "$deb" |
        awk '$1 !~ /^d/ { sub(/^\.\/usr\//, "", $6); print $6 }')"
    local depends dependency
    depends=$(dpkg-deb --field "$deb" Depends)
    # Found by dpkg-shlibdeps in the binaries, and named by hand for what loads at run time.
    for dependency in libqt6quick6 libicu72 libcanberra0 qml6-module-qtquick \
        qml6-module-qtquick-shapes qml6-module-qtquick-layouts qml6-module-qtqml-workerscript \
        qml6-module-qt-labs-qmlmodels \
        libqt6svg6; do
        grep -Eq "(^|, )$dependency( |,|$)" <<<"$depends" || fail "Depends lacks $dependency"
    done
    [ "$(dpkg-deb --field "$deb" Section)" = utils ] || fail "Section"
    [ -n "$(dpkg-deb --field "$deb" Maintainer)" ] || fail "no Maintainer"
    local report status=0
    report=$(lintian --fail-on error,warning "$deb" 2>&1) || status=$?
    grep -v 'running with root privileges' <<<"$report" >&2 || true
    [ $status -eq 0 ] || fail "lintian found errors or warnings"
}

case "$check" in
prefix) install_prefix ;;
validators) validators ;;
programs) programs ;;
menu-entry) menu_entry ;;
package) package ;;
*) fail "unknown check $check" ;;
esac
