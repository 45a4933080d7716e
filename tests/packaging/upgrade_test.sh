#!/usr/bin/env bash
# A shop that version 1.0.0 made (shop-1.0.0/README.md) under this version: nothing of it is lost, and work goes on where
# it ended, at both cash points.
. "$(dirname "$0")/expect.sh"

tests=$(realpath "$packaging/../tests")
tar -xJf "$tests/packaging/shop-1.0.0/shop.tar.xz" -C "$here" || fail "the shop cannot be unpacked"
old=$here/shop-1.0.0
cp -r "$old" "$here/now"
version=$(sed -n 's/^project(tallvex VERSION \([0-9.]*\).*/\1/p' "$packaging/../CMakeLists.txt")
printf '%-50s' "$version" >"$here/now/merlo-ver.txt"  # as the package does
export QT_QPA_PLATFORM=offscreen

# If this file differed from that of 1.0.0, apt would ask everybody who has edited it which one to keep.
same "till.conf as version 1.0.0 brought it" c2705a4bd9e671fb "$(sha256sum "$packaging/launcher/till.conf" | cut -c1-16)"

played() {  # played NAME SHOP: plays the standard input on a copy of the shop, which is left in $here/NAME/shop
    sed "1i shop from $2" >"$here/$1.play"
    "$bin/tallvex-test-play" --keep "$here/$1" "$here/$1.play" >"$here/said" 2>&1 || fail "$1: $(cat "$here/said")"
}
compared() { python3 -B "$tests/packaging/shop_rows.py" "$1" "$2" 2>"$here/said"; }

# The first start of each cash point: the shop as it was is copied, then brought up to date.
played started "$here/now" <<'END'
clock 2026/11/23 08:55:00
start
expect focus user
press Esc
expect end
start as cash point 2
expect focus user
press Esc
expect end
END
same "what the update changed" "basic: cr_v '1.0.0' -> '$version'" "$(compared "$old/shop.db" "$here/started/shop/shop.db")"
[ "$(grep -o '^[0-9]*' "$here/said")" -gt 3000 ] || fail "only $(cat "$here/said")"
copy=$(find "$here/started/shop" -name 'before-update-*-1.0.0.backup')
same "what the copy before it lacks" "" "$(compared "$old/shop.db" "$copy")"
# Whoever goes back restores it with the old version, which refuses functions that it does not know.
functions() {
    python3 - "$1" <<'END'
import re, sqlite3, sys
schema = "".join(sql or "" for (sql,) in sqlite3.connect(sys.argv[1]).execute("select sql from sqlite_master"))
print(*sorted(set(re.findall(r"ts_\w+(?=\()", schema))))
END
}
same "the functions in the copy" "$(functions "$old/shop.db")" "$(functions "$copy")"

# At cash point 1 the manager takes back what is left of a sale, sells an offer and reads an account: 480.50, a sale of
# 22.50 + 102.50, 180.50 paid. At the other one the user added by the old version sells; the drawer held
# 144.00 + 33.00 + 41.50.
played goes_on "$here/started/shop" <<'END'
clock 2026/11/23 09:00:00
start as cash point 1
user نادية المديرة password 333
press Ctrl+R
type 1 into invoice_number
press Enter
expect count lines = 2
click return_of_sale
expect cell 1 كمية of lines = 3.000
press F1
press Enter
expect count lines = 0
press Ctrl+O
press Enter
expect text net = 60.75
press F1
press Enter
expect count lines = 0
expect text last_receipt = آخر بون 10
click menu_account_statement
choose كافتيريا الميدان in statement_customer
type 2026/11/01 into statement_start
click statement_show
expect text statement_closing = 425.00
press Esc
press F12
answer yes
start as cash point 2
user ليلى password 444
scan 1101
press F1
press Enter
expect text last_receipt = آخر بون 11
restart
user نادية المديرة password 333
click menu_cash_count
expect text cash_expected = 260.00
END

# Only what the package or this machine provides is wrong, and a backup of the old version can still be restored.
cd "$here/goes_on/shop" || exit 1
"$bin/tallvex-admin" check >"$here/said" 2>&1
! grep '^WRONG' "$here/said" | grep -v '^WRONG  \(files\|printer\|drawer port\):' >&2 || fail "the shop is not whole"
grep -q '^ok     invoices: 14' "$here/said" || fail "check: $(cat "$here/said")"
"$bin/tallvex-admin" restore shop.backup >"$here/said" 2>&1 || fail "restore: $(cat "$here/said")"
same "what a backup of it lacks" "" "$(compared "$old/shop.backup" shop.db)"
"$bin/tallvex-admin" check >"$here/said" 2>&1
grep -q '^note   settings: the shop was last used by version "1.0.0".*the next start' "$here/said" || fail "$(cat "$here/said")"
grep -q '^WRONG  journal: all [0-9]* rows of till 1 are missing, as after' "$here/said" || fail "check: $(cat "$here/said")"
finish
