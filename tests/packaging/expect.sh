# For the tests in this folder: `packaging` and `bin` are the folders of the arguments, `here` is an empty folder.
set -u
packaging=$1
bin=$2
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
failures=0

fail() {
    echo "FAILED: $*" >&2
    failures=$((failures + 1))
}

same() {  # same WHAT WANTED GOT
    [ "$2" = "$3" ] || fail "$1: wanted \"$2\", got \"$3\""
}

finish() {
    [ "$failures" -eq 0 ] || exit 1
    echo "passed"
}

# The script FILE.in as it would be installed, with these words in its places: installed FILE NAME=VALUE...
installed() {
    local file=$1 place script
    shift
    script=$here/$(basename "$file" .in)
    cp "$packaging/$file" "$script"
    for place in "$@"; do
        sed -i "s|@${place%%=*}@|${place#*=}|g" "$script"
    done
    ! grep -n '@[A-Z_]*@' "$script" >&2 || fail "$file: places without a word"
    chmod +x "$script"
}
