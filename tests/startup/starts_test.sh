#!/usr/bin/env bash
# Starting the real programs: what the till takes as its cash point, where shops are found, and what a second start
# with the same cash point does.
. "$(dirname "$0")/../packaging/expect.sh"
export QT_QPA_PLATFORM=offscreen
unset TALLVEX_HOME TALLVEX_SHOP TALLVEX_SESSION TALLVEX_END_AT DISPLAY WAYLAND_DISPLAY
first=
trap '[ -z "$first" ] || kill -9 "$first" 2>/dev/null; rm -rf "$here"' EXIT

shop=$here/shop
log=$shop/Logs/hm_log.qzv
"$bin/tallvex-admin" new-shop "$shop" --demo >/dev/null || fail "no shop"
# The till's exit code, from any folder; it ends at sign-in.
started() { (cd "${folder:-/}" && TALLVEX_END_AT=sign-in timeout 20 "$bin/tallvex" "$@" 2>"$here/said"; echo $?); }

export TALLVEX_HOME=$shop
for wrong in x9 12 -1 --what "1 2" "-platform offscreen"; do
    same "argument $wrong" 2 "$(started $wrong)"  # unquoted: several words
    grep -q "Usage: tallvex" "$here/said" || fail "$wrong: $(cat "$here/said")"
done
same "on a desktop it waits in a box" 124 "$(cd / && DISPLAY=:0 timeout 2 "$bin/tallvex" x9 2>/dev/null; echo $?)"
[ ! -e "$log" ] || fail "something was started"
same "the program folder named" 0 "$(started 1)"
same "named from its parent" 0 "$(folder=$here TALLVEX_HOME=shop started 1)"
same "the tool with it" 1 "$(cd / && "$bin/tallvex-admin" sql --csv "select st_d from basic" | sed -n 2p | tr -d '\r')"
same "the tool with till.conf's" 1 \
    "$(cd / && env -u TALLVEX_HOME TALLVEX_SHOP="$shop" "$bin/tallvex-admin" sql --csv "select st_d from basic" |
        sed -n 2p | tr -d '\r')"

(cd / && exec "$bin/tallvex" 1) &
first=$!
for _ in $(seq 200); do
    [ "$(grep -c 'sign-in  ----' "$log")" -lt 3 ] || break
    sleep 0.05
done
same "a second start" 0 "$(started 1)"
grep -q "brought to the front by a second start" "$log" || fail "the first was not brought to the front"
same "sign-ins" 3 "$(grep -c 'sign-in  ----' "$log")"
same "another cash point" 0 "$(started 2)"
same "sign-ins" 4 "$(grep -c 'sign-in  ----' "$log")"
kill -9 "$first"
wait "$first" 2>/dev/null
same "after a crash" 0 "$(started 1)"
same "sign-ins" 5 "$(grep -c 'sign-in  ----' "$log")"
finish
