"""The items of the story's shop, and the file that they come from, as dirty as shopkeepers' files are."""
import csv
import io
from datetime import date
from decimal import Decimal as D

from money import ZERO, rounded

GROUPS = ["ألبان وجبن", "بقالة", "مشروبات", "منظفات", "حلويات", "لحوم"]
WORDS = ["جبنة", "شاي", "صابون", "عصير", "بسكوت", "أرز", "زيت", "حلاوة", "عدس", "مربى"]
HEADER = ["code", "name", "group", "barcode", "pack", "pack_barcode", "price11", "price12", "price22", "stock", "expiry"]
ARABIC_DIGITS = str.maketrans("0123456789", "٠١٢٣٤٥٦٧٨٩")
MAIN, SECOND = 1, 2  # stores


def ean(digits):
    """Twelve digits and their check digit."""
    return digits + str(-sum(int(digit) * (3 if at % 2 else 1) for at, digit in enumerate(digits)) % 10)


class Item:
    def __init__(self, code, random):
        self.code, self.weighed = code, random.random() < 0.15
        mark = random.choice(("", "", "O'Neil ", '"ممتاز" '))
        self.name = f"{random.choice(WORDS)} {mark}{code}"
        self.group = random.choice(GROUPS) if random.random() < 0.95 else None
        self.pack = 0 if self.weighed else random.choice((0, 6, 12))
        self.barcodes = {} if self.weighed or random.random() < 0.1 else {1: ean(f"622{code:09}")}
        if self.pack:
            self.barcodes[2] = ean(f"623{code:09}")
        self.prices = {1: D(random.randrange(100, 20000)) / 100}
        if self.pack:
            self.prices[2] = rounded(self.prices[1] * self.pack * D("0.96"))
        first = rounded(self.prices[1] * random.randrange(60, 85) / 100)
        self.costs = [(None, first)]  # each with the moment from which it counts
        quantity = D(random.randrange(5000, 40000)) / 1000 if self.weighed else D(random.randrange(20, 90))
        self.opening = quantity
        self.held = {MAIN: quantity, SECOND: ZERO}
        self.expiry = random.choice((None, date(2027, random.randrange(1, 13), random.randrange(1, 29))))
        self.is_touched = False  # whether anything has moved it since

    @property
    def price(self):
        return self.prices[1]

    @property
    def cost(self):
        return self.costs[-1][1]

    @property
    def quantity(self):
        return sum(self.held.values(), ZERO)

    def cost_at(self, moment):
        return [cost for since, cost in self.costs if since is None or since <= moment][-1]

    def factor(self, unit):
        return self.pack if unit == 2 else 1

    def code_of(self, unit):
        """What is scanned for a unit."""
        return self.barcodes.get(unit, str(self.code))

    def units(self):
        return [1, 2] if self.pack else [1]


def dirty(text, random):
    return random.choice(("", "", " ")) + text + random.choice(("", "", " "))


def written(day, random):
    """A date in one of the three forms that people write."""
    return random.choice((f"{day:%Y/%m/%d}", f"{day.day}/{day.month}/{day.year}", f"{day:%d-%m-%Y}"))


def row_of(item, random):
    number = lambda amount: dirty(random.choice((str(amount), str(amount).translate(ARABIC_DIGITS))), random)
    return [dirty(str(item.code), random), "  " * random.randrange(2) + item.name + " " * random.randrange(2), item.group or "",
            item.barcodes.get(1, ""), item.pack or "", item.barcodes.get(2, ""), number(item.cost), number(item.price),
            number(item.prices[2]) if item.pack else "", number(item.opening),
            written(item.expiry, random) if item.expiry else ""]


def file_of(rows):
    out = io.StringIO()
    csv.writer(out, lineterminator="\r\n").writerows([HEADER, *rows])
    return "\ufeff" + out.getvalue()


def items_files(items, random):
    """The file that is taken, and one that is refused for six of its lines, with how many are wrong."""
    good = [row_of(item, random) for item in items]
    for _ in range(3):
        good.insert(random.randrange(len(good)), [""] * len(HEADER))
    wrong = [row_of(item, random) for item in items[:6]]
    for at, (column, cell) in enumerate([(7, "12,5"), (10, "31/2/2027"), (7, "0"), (0, "'1001"), (1, " ")]):
        wrong[at][column] = cell
        if column:
            wrong[at][0] = str(900000 + at)
        wrong[at][3] = wrong[at][5] = ""
    # The sixth is there twice: its code and its barcodes.
    return file_of(good), file_of(good + wrong)
