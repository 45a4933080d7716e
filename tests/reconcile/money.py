"""Amounts as exact decimals, rounded half away from zero, and the way figures are written."""
from decimal import ROUND_HALF_UP, Decimal

ZERO = Decimal(0)


def rounded(amount, places=2):
    return Decimal(amount).quantize(Decimal(1).scaleb(-places), rounding=ROUND_HALF_UP)


def text(amount):
    """An amount as a screen shows it: two decimals, and no minus before zero."""
    shown = rounded(amount)
    return f"{shown if shown else ZERO:.2f}"


def plain(number):
    """A number as a person types it."""
    return f"{number.normalize():f}"
