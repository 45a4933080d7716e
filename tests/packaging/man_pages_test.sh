#!/usr/bin/env bash
# The manual pages: well written, and with every command and option that the programs' own help names, and no other.
. "$(dirname "$0")/expect.sh"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

for page in "$packaging"/man/*; do
    said=$(mandoc -T lint -W warning "$page") || fail "$page: $said"
done

# The words of a page as it is read, one a line.
words_of() { mandoc -T ascii "$1" | sed 's/.\x08//g' | grep -oE '[[:alnum:]_-]+' | sort -u; }
options_in() { grep -oE '(^|[^[:alnum:]-])--[a-z][a-z0-9-]+' | grep -oE -- '--.*' | sort -u; }
commands_in() { sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p'; }

# The help of a program and of all its commands.
all_help() {
    local help command
    help=$("$@" --help) || fail "$*: no help"
    printf '%s\n' "$help"
    for command in $(commands_in <<<"$help"); do
        echo "command $command"
        all_help "$@" "$command"
    done
}

for program in tallvex tallvex-office tallvex-admin tallvex-play; do
    page=$packaging/man/$program.1
    help=$(all_help "$bin/$program")
    words=$(words_of "$page")
    told=$(options_in <<<"$help")
    [ -n "$told" ] || fail "$program: its help names no option"
    while read -r option; do
        grep -qx -- "$option" <<<"$words" || fail "$program.1 does not tell of $option"
    done <<<"$told"
    for command in $(sed -n 's/^command //p' <<<"$help"); do
        grep -qx -- "$command" <<<"$words" || fail "$program.1 does not tell of the command $command"
    done
    for option in $(grep -x -- '--[a-z][a-z0-9-]*' <<<"$words"); do
        grep -qx -- "$option" <<<"$told" || fail "$program.1 describes $option, which does not exist"
    done
done

# Every setting that comes with the package is explained.
for name in $(sed -n 's/^#\{0,1\}\([A-Z_]*\)[0-9]*=.*/\1/p' "$packaging/launcher/till.conf" | sort -u); do
    mandoc -T ascii "$packaging/man/till.conf.5" | sed 's/.\x08//g' | grep -q "$name" ||
        fail "till.conf.5 does not tell of $name"
done
finish
