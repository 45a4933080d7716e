#!/usr/bin/python3
"""Compares two files of a shop: every row of every table of the first is to be in the second, as it is.

  shop_rows.py BEFORE.db AFTER.db     prints what differs, line by line; new tables and columns are no difference
"""
import collections, itertools, pathlib, sqlite3, sys

SCRATCH = {"tmp_acc", "tmp_item"}  # every start makes them anew


def tables(shop):
    for (name,) in shop.execute("select name from sqlite_master where type = 'table' order by name"):
        if not name.startswith("sqlite_") and name not in SCRATCH:
            yield name


def opened(file):
    if not pathlib.Path(file).is_file():
        sys.exit(f"there is no {file}")
    return sqlite3.connect(file)


def rows(shop, table, columns):
    names = ", ".join(f'"{column}"' for column in columns)
    return collections.Counter(shop.execute(f'select {names} from "{table}"').fetchall())


def main():
    before, after = (opened(file) for file in sys.argv[1:])
    there, count = set(tables(after)), 0
    for table in tables(before):
        columns = [row[1] for row in before.execute(f'pragma table_info("{table}")')]
        kept = [row[1] for row in after.execute(f'pragma table_info("{table}")')]
        if table not in there or set(columns) - set(kept):
            print(f"{table}: gone, or columns of it: {sorted(set(columns) - set(kept))}")
            continue
        old, new = rows(before, table, columns), rows(after, table, columns)
        count += old.total()
        lost, added = (sorted(some.elements(), key=repr) for some in (old - new, new - old))
        for was, is_now in itertools.zip_longest(lost, added):
            if was and is_now:
                changes = [f"{name} {x!r} -> {y!r}" for name, x, y in zip(columns, was, is_now) if x != y]
                print(f"{table}: {', '.join(changes)}")
            else:
                print(f"{table}: {'lost' if was else 'new'}: {was or is_now}")
    print(f"{count} rows compared", file=sys.stderr)


main()
