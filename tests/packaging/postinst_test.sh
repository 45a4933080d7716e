#!/usr/bin/env bash
# What the package does to a shop when it is upgraded: with whose rights, and that no link leads it elsewhere.
. "$(dirname "$0")/expect.sh"

here=$(realpath "$here")
installed debian/postinst.in PROJECT_VERSION=9.9.9
sed -i -e "s|^shops=.*|shops=$here/shops|" -e "s|^home=.*|home=$here/home|" -e "s|^conf=.*|conf=$here/till.conf|" \
    "$here/postinst"
grep -q '"/var/lib\|/etc/' "$here/postinst" && fail "a place of the system is left"
mkdir "$here/stubs" "$here/shops" "$here/shops/shop" "$here/elsewhere"
for program in adduser getent install udevadm usermod; do
    printf '#!/bin/sh\nexit 0\n' >"$here/stubs/$program"
done
# This test need not be root: it says itself whose the folder is, and notes whose rights are used.
printf '#!/bin/sh\ncat %s/owner\n' "$here" >"$here/stubs/stat"
printf '#!/bin/sh\necho "$2" >>%s/acted\nshift 3\nexec "$@"\n' "$here" >"$here/stubs/runuser"
chmod +x "$here/stubs/"*

echo "SHOP=$here/shops/shop" >"$here/till.conf"
upgrade() {  # upgrade OWNER
    echo "$1" >"$here/owner"
    : >"$here/acted"
    env LC_ALL="${language:-C}" PATH="$here/stubs:$PATH" sh "$here/postinst" configure 1.0.0 \
        >"$here/told" 2>"$here/said" || fail "it failed: $(cat "$here/said")"
}
file=$here/shops/shop/Merlo-Ver.TXT
renewed=$(printf '%-50s' 9.9.9)

printf '%-50s' 1.0.0 >"$file"
chmod 640 "$file"
echo rows >"$here/shops/shop/shop.db" && chmod 664 "$here/shops/shop/shop.db"
upgrade sami
same "a file that everybody could read" 660 "$(/usr/bin/stat -c %a "$here/shops/shop/shop.db")"
same "the version file" "$renewed|640" "$(cat "$file")|$(/usr/bin/stat -c %a "$file")"
grep -q "from version 1.0.0 to 9.9.9" "$here/told" || fail "the upgrade is not mentioned: $(cat "$here/told")"
same "as the folder's owner" sami "$(cat "$here/acted")"
same "nothing else in the folder" 2 "$(find "$here/shops/shop" -type f | wc -l)"

printf '%-50s' 1.0.0 >"$file"
upgrade root
same "never as root" "" "$(cat "$here/acted")"
grep -q "belongs to root" "$here/said" || fail "root's folder is not mentioned: $(cat "$here/said")"

echo precious >"$here/elsewhere/merlo-ver.txt"
ln -sf "$here/elsewhere/merlo-ver.txt" "$file"
upgrade sami
same "a file behind a link" precious "$(cat "$here/elsewhere/merlo-ver.txt")"
[ -L "$file" ] || fail "the link itself was replaced"
mv "$here/shops" "$here/real" && ln -s "$here/real" "$here/shops"
rm "$file" && printf '%-50s' 1.0.0 >"$file"
upgrade sami
same "a folder behind a link" "" "$(cat "$here/acted")"
echo "SHOP=$here/nowhere" >"$here/till.conf"
language=ar_EG.UTF-8
upgrade sami
same "no shop at all" "|" "$(cat "$here/acted")|$(cat "$here/said")"
grep -q "من الإصدار 1.0.0 إلى 9.9.9" "$here/told" || fail "not in Arabic: $(cat "$here/told")"

# The user's home is not the shops' folder.
for script in postinst.in postrm; do
    grep -q '^shops=/var/lib/tallvex$' "$packaging/debian/$script" || fail "$script: another folder of the shops"
done
grep -q '^home=/var/lib/tallvex-session' "$packaging/debian/postinst.in" || fail "another home"
grep -q "/var/lib/tallvex-session" "$packaging/session/inittab" || fail "inittab names another home"
finish
