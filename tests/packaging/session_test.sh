#!/usr/bin/env bash
# The session of a till: what it does when the till ends in order, wants to be started again, or fails.
. "$(dirname "$0")/expect.sh"

installed session/till-session.in "TALLVEX_TILL_PATH=$here/till" "TALLVEX_CONF_PATH=$here/till.conf"
unset DISPLAY
export TALLVEX_SESSION_PATIENCE=10 TALLVEX_SESSION_PAUSE=0

# A till that ends with the next code of the list at every start.
till() {
    printf '%s\n' "$@" >"$here/codes"
    : >"$here/starts"
    cat >"$here/till" <<END
#!/bin/sh
echo "\$TALLVEX_SESSION" >>"$here/starts"
exit "\$(sed -n "\$(wc -l <"$here/starts")p" "$here/codes")"
END
    chmod +x "$here/till"
}
session() {  # session WHAT WANTED-CODE WANTED-STARTS [argument...]
    local what=$1 code=$2 starts=$3
    shift 3
    "$here/till-session" "$@" 2>"$here/said"
    same "$what: code" "$code" "$?"
    same "$what: starts" "$starts" "$(wc -l <"$here/starts")"
}

till 0
session "a till that was closed" 0 1
same "the till knows that it is watched" 1 "$(cat "$here/starts")"
till 139 0
session "a crash" 0 2
grep -q "code 139" "$here/said" || fail "a crash was not told: $(cat "$here/said")"
till 75 75 75 75 75 75 0
session "wanted again, many times" 0 7
till 1 1 1 1 1 0
session "a till that cannot run" 1 5
till 1 1 1 1 1 1 0
TALLVEX_SESSION_PATIENCE=0 session "failures far apart" 0 7

till 0
session "not wanted with the desktop: no settings" 0 0 --autostart
cp "$packaging/launcher/till.conf" "$here/till.conf"
session "not wanted with the desktop: the package's settings" 0 0 --autostart
sed -i 's/^AUTOSTART=no$/AUTOSTART=yes/' "$here/till.conf"
session "wanted with the desktop" 0 1 --autostart

# The end of the session is the end of its till.
printf '#!/bin/sh\necho $$ >%s/pid\nexec sleep 60\n' "$here" >"$here/till"
"$here/till-session" 2>/dev/null &
session=$!
for _ in $(seq 50); do [ -s "$here/pid" ] && break; sleep 0.1; done
kill "$session"
wait "$session"
same "a session that is ended" 143 "$?"
! kill -0 "$(cat "$here/pid")" 2>/dev/null || fail "the till outlived its session"
finish
