#!/usr/bin/env bash
# Every source file and folder that a page names exists: as it is written, below src/, or below the page's folder.
. "$(dirname "$0")/expect.sh"

root=$packaging/..
count=0
for page in "$root"/*.md "$root"/docs/*.md; do
    # shellcheck disable=SC2016
    for name in $(grep -o '`[a-z_0-9./-]*/[a-z_0-9./-]*`' "$page" | tr -d '`' | sort -u); do
        case "$name" in
            src/* | tests/* | docs/* | data/* | cmake/* | bench/* | packaging/* | *.h | *.cpp | *.play) ;;
            *) continue ;;
        esac
        count=$((count + 1))
        [ -e "$root/$name" ] || [ -e "$root/src/$name" ] || [ -e "$(dirname "$page")/$name" ] ||
            fail "$(basename "$page"): there is no $name"
    done
done
[ "$count" -gt 30 ] || fail "only $count names were found"
finish
