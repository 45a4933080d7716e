#!/usr/bin/env bash
# What desktops, login screens and udev read: well formed, Arabic beside English, and the same names everywhere.
. "$(dirname "$0")/expect.sh"

installed session/xsession.desktop.in TALLVEX_PROGRAMS_PATH=/usr/libexec/tallvex
installed session/autostart.desktop.in TALLVEX_PROGRAMS_PATH=/usr/libexec/tallvex
cp "$packaging/desktop/tallvex.desktop" "$packaging/desktop/tallvex-office.desktop" "$here"
for entry in tallvex tallvex-office xsession autostart; do
    said=$(desktop-file-validate "$here/$entry.desktop" 2>&1) || fail "$entry: $said"
    grep -q '^Name\[ar\]=.*[ابتن]' "$here/$entry.desktop" || fail "$entry: no Arabic name"
    grep -q '^Comment\[ar\]=.*[ابتن]' "$here/$entry.desktop" || fail "$entry: no Arabic comment"
done
for program in "tallvex ui" "tallvex-office office"; do
    read -r name folder <<<"$program"
    same "the icon's name" "$(sed -n 's/^Icon=//p' "$here/$name.desktop")" tallvex
    grep -q "set_up(application, \"$name\")" "$packaging/../src/$folder/main.cpp" || fail "$name: the window has another name"
done

# The devices of the settings are those that the rules name; every jump has its label.
rules=$packaging/udev/70-tallvex.rules
for device in $(sed -n 's|^#\{0,1\}[A-Z0-9]*=/dev/||p' "$packaging/launcher/till.conf" | sort -u); do
    grep -v "^#" "$rules" | grep -q "SYMLINK+=\"$device\"" || fail "no rule makes /dev/$device"
done
for label in $(grep -v '^#' "$rules" | sed -n 's/.*GOTO="\([a-z_]*\)".*/\1/p' | sort -u); do
    grep -q "^LABEL=\"$label\"" "$rules" || fail "no label $label"
done

finish
