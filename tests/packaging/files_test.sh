#!/usr/bin/env bash
# Files with a shop's data are for their owner and group, whatever the umask of who makes them.
. "$(dirname "$0")/expect.sh"

for mask in 000 022 077; do
    umask $mask
    mkdir "$here/$mask" && cd "$here/$mask" || exit 1
    {
        "$bin/tallvex-admin" new-shop . --ask-password <<<1 &&
            "$bin/tallvex-admin" backup copy.backup &&
            "$bin/tallvex-admin" sql "insert into makers (code) values (7)" &&
            mv shop.db lost.db && "$bin/tallvex-admin" restore copy.backup &&
            "$bin/tallvex-admin" copy-shop other
    } >said 2>&1 || fail "umask $mask: $(cat said)"
    for file in shop.db copy.backup before-sql-*.backup other/shop.db; do
        same "umask $mask: $file" 660 "$(stat -c %a "$file")"
    done
    same "umask $mask: a folder" 770 "$(stat -c %a other)"
done
finish
