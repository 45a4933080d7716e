"""Text receipts as they reached the printer's port, and printed pages: the amounts on them."""
import re
import subprocess
from dataclasses import dataclass
from decimal import Decimal

AMOUNT = re.compile(rb"-?\d+\.\d\d")
START = b"\x1b@"


@dataclass
class Receipt:
    lines: list  # (total, quantity, price) of each line
    totals: list  # total, discount, net, and after a save paid and change


def read(data):
    """All receipts that were written to a port, in order."""
    return [receipt for part in data.split(START)[1:] if (receipt := read_one(part))]


def read_one(part):
    areas = re.split(rb"-{30,}\r\n", part)
    if len(areas) < 4:
        return None  # not an invoice
    lines = [tuple(Decimal(found.decode()) for found in AMOUNT.findall(row)[:3]) for row in areas[2].splitlines()]
    totals = [Decimal(AMOUNT.search(row).group().decode()) for row in areas[3].splitlines()]
    return Receipt(lines, totals)


def pages(file):
    """The text of a PDF file, from top to bottom."""
    return subprocess.run(["pdftotext", "-layout", file, "-"], capture_output=True, check=True).stdout


def amounts_of(text):
    return [Decimal(found.decode()) for found in AMOUNT.findall(text)]
