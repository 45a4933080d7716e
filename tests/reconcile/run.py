#!/usr/bin/python3
"""Plays random movements on the real till and compares every figure with books that share no code with it.

  run.py day --seed 3 --play build/bin/tallvex-test-play --admin build/bin/tallvex-admin --folder /tmp/day-3

The play stays in the folder. A failure says which figure was expected, what was seen, after which movement, and the seed.
"""
import argparse
import csv
import re
import subprocess
import sys
from pathlib import Path

import paper
import shop
from money import text
from random_account import RandomAccount
from random_day import RandomDay
from random_month import RandomMonth
from story import SIZES, Story


class Mismatch(Exception):
    pass


def play(program, steps, folder):
    """Plays the steps. Returns the folder of the shop that is left."""
    file = folder / "movements.play"
    file.write_text(steps, encoding="utf-8")
    done = subprocess.run([program, "--keep", folder / "kept", file], capture_output=True, text=True)
    if done.returncode != 0:
        raise Mismatch(explained(done.stderr, steps.splitlines()))
    return folder / "kept" / "shop"


def explained(output, steps):
    """The program's report of a step that failed, after the movement that the step belongs to."""
    found = re.search(r"\.play:(\d+): ", output)
    if not found:
        return output
    movements = [step[2:] for step in steps[: int(found[1])] if step.startswith("# ")]
    return f"after: {movements[-1] if movements else 'the start'}\n{output}"


def admin(program, folder, *words):
    done = subprocess.run([program, *words], cwd=folder, capture_output=True, text=True)
    if done.returncode != 0:
        raise Mismatch(f"tallvex-admin {words[0]}:\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(what, expected, got):
    if expected != got:
        raise Mismatch(f"{what}: expected {expected}, got {got}")


def compare_receipts(invoices, port):
    receipts = paper.read(port.read_bytes())
    expect("receipts", len(invoices), len(receipts))
    for invoice, receipt in zip(invoices, receipts):
        what = f"receipt of the invoice of {invoice.moment:%H:%M:%S}"
        lines = [(text(line.total), text(line.quantity), text(line.price)) for line in invoice.lines]
        if not invoice.spread:
            expect(what + ", lines", lines, [tuple(text(cell) for cell in line) for line in receipt.lines])
        sums = [invoice.total, invoice.discount, invoice.net]
        if invoice.paid is not None:
            sums += [invoice.paid, invoice.paid - invoice.net]
        expect(what + ", totals", [text(amount) for amount in sums],
               [text(amount) for amount in receipt.totals[: len(sums)]])


def compare_reports(reports, folder):
    for file, (rows, figures) in reports.items():
        pages = paper.pages(folder / file)
        expect(f"{file}, the shop's telephone", True, shop.TELEPHONE.encode() in pages)
        amounts = paper.amounts_of(pages)
        expect(f"{file}, rows", list(map(text, rows)), list(map(text, sorted(amounts[: len(rows)]))))
        expect(f"{file}, figures", list(map(text, figures)), list(map(text, amounts[len(rows) :])))


def compare_office(expected, folder):
    """The reports of the office, as they were kept in files: every row, and the order of those by size."""
    for report, rows in expected.items():
        (file,) = folder.glob(f"{report}-*.csv")
        records = list(csv.reader(file.read_text(encoding="utf-8-sig").splitlines()))
        width = len(next(iter(rows.values()))) + 1
        table = [record for record in records if len(record) == width][1:]
        got = {record[0]: record[1:] for record in table}
        expect(f"{report}, how many rows", len(table), len(got))
        for label, figures in rows.items():
            expect(f"{report}, {label}", figures, got.get(label))
        expect(f"{report}, rows", sorted({*rows, "الإجمالي"}), sorted({*got, "الإجمالي"}))


def compare_check(program, folder):
    """The shop is in order. Its printer and its drawer are only files of the play, and nobody backs it up."""
    expected = ("ok ", "note   printer", "note   drawer port", "note   backups")
    (folder / "printer-1.txt").unlink(missing_ok=True)
    admin(program, folder, "sql", "--yes", "update basic set [print] = 'win', cash = ''")
    for line in admin(program, folder, "check", "--days", "100000").splitlines():
        if not line.startswith(expected):
            raise Mismatch(f"tallvex-admin check: {line}")


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("what", choices=["day", "account", "month", "story"])
    words.add_argument("--seed", type=int, required=True)
    words.add_argument("--size", choices=list(SIZES), default="small", help="of a story")
    words.add_argument("--play", type=Path, required=True)
    words.add_argument("--admin", type=Path, required=True)
    words.add_argument("--folder", type=Path, required=True)
    asked = words.parse_args()
    asked.folder.mkdir(parents=True, exist_ok=True)
    if asked.what == "story":
        story = Story(asked.seed, asked.size, asked.folder.resolve())
    else:
        story = {"day": RandomDay, "account": RandomAccount, "month": RandomMonth}[asked.what](asked.seed)
    try:
        kept = play(asked.play.resolve(), story.write(), asked.folder)
        if asked.what in ("month", "story"):
            compare_office(story.expected(), kept / "Receipts")
            if asked.what == "story":
                compare_check(asked.admin.resolve(), kept)
            return
        compare_receipts(story.printed, kept / "ports" / "lpt1")
        compare_reports(story.reports, kept / "Receipts")
        compare_check(asked.admin.resolve(), kept)
    except Mismatch as mismatch:
        sys.exit(f"seed {asked.seed}: {mismatch}")


if __name__ == "__main__":
    main()
