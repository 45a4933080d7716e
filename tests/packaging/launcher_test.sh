#!/usr/bin/env bash
# The launcher: which shop, which cash point and which ports the programs get, from till.conf and from elsewhere.
. "$(dirname "$0")/expect.sh"

installed launcher/tallvex.in "TALLVEX_PROGRAMS_PATH=$here/libexec" "TALLVEX_CONF_PATH=$here/till.conf"
ln -s tallvex "$here/tallvex-admin"
ln -s tallvex "$here/tallvex-office"
mkdir "$here/libexec" "$here/shop" "$here/other" "$here/elsewhere" "$here/a shop"
touch "$here/other/DataCon24.STK"
cat >"$here/libexec/tallvex" <<'END'
#!/bin/sh
echo "$PWD|${TALLVEX_HOME-}|$*|${TALLVEX_LPT1-}|${TALLVEX_COM3-}|${QT_SCALE_FACTOR-}|$(umask)"
END
sed 's/TALLVEX_HOME-/TALLVEX_SHOP-/' "$here/libexec/tallvex" >"$here/libexec/tallvex-admin"
cp "$here/libexec/tallvex" "$here/libexec/tallvex-office"
chmod +x "$here/libexec/"*
unset TALLVEX_HOME TALLVEX_LPT1 TALLVEX_COM3 QT_SCALE_FACTOR

conf() { printf '%s\n' "$@" >"$here/till.conf"; }
started() { (cd "$here/$1" && shift && "$@" 2>"$here/said"); }

conf "# a comment" "" "SHOP=$here/shop" "CASH_POINT=4" "LPT1=/dev/till/printer" "  COM3=/dev/till/drawer  " \
    "QT_SCALE_FACTOR=1.25"
settings="/dev/till/printer|/dev/till/drawer|1.25|0007"
same "the shop of the settings" "$here/shop|$here/shop|4|$settings" "$(started elsewhere "$here/tallvex")"
same "a cash point of its own" "$here/shop|$here/shop|7|$settings" "$(started elsewhere "$here/tallvex" 7)"
same "nothing to complain of" "" "$(cat "$here/said")"
same "the office has no cash point" "$here/shop|$here/shop||$settings" "$(started elsewhere "$here/tallvex-office")"
same "started in a shop" "$here/other|$here/other|4|$settings" "$(started other "$here/tallvex")"
same "a home that is given" "$here/elsewhere|$here/home|4|$settings" \
    "$(TALLVEX_HOME=$here/home started elsewhere "$here/tallvex")"
same "a port that is given" "$here/shop|$here/shop|4|/dev/lp9|/dev/till/drawer|1.25|0007" \
    "$(TALLVEX_LPT1=/dev/lp9 started elsewhere "$here/tallvex")"
same "the tool stays where it is and knows the shop" "$here/elsewhere|$here/shop|check --days 3|$settings" \
    "$(started elsewhere "$here/tallvex-admin" check --days 3)"

conf "SHOP=\"$here/a shop\"" "CASH_POINT=1"
same "a folder with a blank" "$here/a shop|$here/a shop|1||||0007" "$(started elsewhere "$here/tallvex")"
conf "SHOP=$here/nowhere"
same "no such folder: the till is to say it" "$here/elsewhere|$here/nowhere|||||0007" \
    "$(started elsewhere "$here/tallvex")"

conf "SHOP=$here/shop" "SHOP $here/other" "PATH=/nowhere" "lpt1=/dev/lp9" "COM3=\$(touch $here/broken)" \
    "LPT1=\`touch $here/broken\`;x'\"" "LAST=1"
got=$(started elsewhere "$here/tallvex")
same "values are texts, never commands" \
    "$here/shop|$here/shop||\`touch $here/broken\`;x'\"|\$(touch $here/broken)||0007" "$got"
[ ! -e "$here/broken" ] || fail "a value was run"
for line in 2 3 4 7; do
    grep -q "line $line:" "$here/said" || fail "line $line was not complained of: $(cat "$here/said")"
done
same "complaints" 4 "$(wc -l <"$here/said")"

printf 'SHOP=%s\r\n\r\nCASH_POINT=8' "$here/shop" >"$here/till.conf"
same "lines of another system, and an unended one" "$here/shop|$here/shop|8||||0007" "$(started elsewhere "$here/tallvex")"
same "which is nothing to complain of" "" "$(cat "$here/said")"

rm "$here/till.conf"
same "without settings" "$here/other|$here/other|||||0007" "$(started other "$here/tallvex")"

# The settings that come with the package are understood to the last line, also those in comments.
sed 's/^#\([A-Z]\)/\1/' "$packaging/launcher/till.conf" >"$here/till.conf"
started elsewhere "$here/tallvex" >/dev/null
same "the package's own settings" "" "$(cat "$here/said")"
finish
