#!/usr/bin/env bash
# The session with the real till on a screen of its own; packaging/test/session says what happens to it. The package's
# test does the same with what was installed.
. "$(dirname "$0")/expect.sh"
export ASAN_OPTIONS=handle_segv=0:detect_leaks=0  # a sanitized till ends as the shipped one does

installed launcher/tallvex.in "TALLVEX_PROGRAMS_PATH=$bin" "TALLVEX_CONF_PATH=$here/till.conf"
installed session/till-session.in "TALLVEX_TILL_PATH=$here/tallvex" "TALLVEX_CONF_PATH=$here/till.conf"
printf 'SHOP=%s\nCASH_POINT=1\n' "$here/shop" >"$here/till.conf"
"$bin/tallvex-admin" new-shop "$here/shop" --demo >"$here/said" || fail "no shop"
cd "$here/shop" || exit 1
"$bin/tallvex-admin" sql "insert into shift (scode, stcode, cash_no, s_date, man_) values (1, 1, 1, '2026/11/21', 1)" \
    >"$here/said" 2>&1 || fail "no shift"
said=$(PYTHONPATH=$packaging/../tests/support python3 -B "$packaging/test/session" "$here/shop" "$here/till-session" 2>&1) ||
    fail "$said"
"$bin/tallvex-admin" check >"$here/said" || true
! grep -E '^WRONG +(unfinished saves|invoices|balances|stock|journal|log):' "$here/said" >&2 || fail "the shop is not whole"
finish
