#!/usr/bin/env bash
# A release: the page of changes has come to the program's version, what a release leaves, and when it is refused.
. "$(dirname "$0")/expect.sh"

root=$(realpath "$packaging/..")
version=$(sed -n 's/^project(tallvex VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
log=$("$packaging/debian/make-changelog" "$root/docs/changes.md") || fail "docs/changes.md cannot be read"
same "the newest entry" "tallvex ($version) unstable; urgency=medium" "$(head -n 1 <<<"$log")"
same "lines too long for Debian" 0 "$(grep -v '^ --' <<<"$log" | grep -c '.\{81\}')"
entries=$(grep -c '^## ' "$root/docs/changes.md")
same "entries" "$entries" "$(grep -c '^tallvex (' <<<"$log")"
same "entries in Arabic" "$entries" "$(grep -c '^### بالعربية$' "$root/docs/changes.md")"
# A tree of its own, whose check leaves a package and notes how it was called.
mkdir -p "$here/tree/docs" && cd "$here/tree" || exit 1
cp -r "$root/packaging" "$root/CMakeLists.txt" . && cp "$root/docs/changes.md" docs
printf '/release/\n/build*/\n' >.gitignore
cat >check <<END
#!/bin/sh
echo "\$*" >>"$here/called"
[ "\$*" != --package ] || { mkdir build-package && echo a package >build-package/tallvex_${version}_amd64.deb; }
END
chmod +x check
git() { command git -c user.name=tester -c user.email=tester@example.org "$@"; }
{ git init -q && git add -A && git commit -q -m "A tree"; } || fail "no tree"
refused() {  # refused WHAT WORDS
    rm -rf release
    packaging/release >"$here/said" 2>&1 && fail "$1 was released"
    grep -q "$2" "$here/said" || fail "$1: $(cat "$here/said")"
    [ ! -e release ] || fail "$1 left a release"
}

mkdir build-package && echo old >build-package/tallvex_0.1_amd64.deb
packaging/release >"$here/said" 2>&1 || fail "no release: $(cat "$here/said")"
same "what it runs" "|--package" "$(paste -sd '|' "$here/called")"
same "what it leaves" "SHA256SUMS|changes.md|tallvex_$version.buildinfo|tallvex_${version}_amd64.deb" \
    "$(find "release/$version" -type f -printf '%f\n' | LC_ALL=C sort | paste -sd '|')"
(cd "release/$version" && sha256sum --quiet -c SHA256SUMS) || fail "the sums are wrong"
grep -q "^Commit: $(git rev-parse HEAD)$" "release/$version/tallvex_$version.buildinfo" || fail "the commit is not named"

echo >>docs/changes.md
refused "a changed tree" "not committed"
sed -i "s/^## $version/## 0.9/" docs/changes.md && git commit -qam "An older page"
refused "a version without an entry" "begins with version 0.9"
git reset -q --hard HEAD~ && sed -i '2s/.*/echo broken; exit 1/' check && git commit -qam "A check that fails"
refused "a failed check" "broken"
finish
