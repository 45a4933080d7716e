"""The books of a shop: every movement, and the figures that follow from them."""
from collections import namedtuple
from datetime import datetime, timedelta
from decimal import Decimal

from invoices import CARD, TIPS
from money import ZERO, rounded

MAIN_DRAWER = 1

# A payment has the sign -1, a receipt +1. A cheque or a notice has no drawer.
Voucher = namedtuple("Voucher", "moment drawer party code sign kind amount")
# To the bank -1, from it +1; only rows that touch the drawer.
Bank = namedtuple("Bank", "moment drawer sign amount")
Transfer = namedtuple("Transfer", "moment source target amount")
Personal = namedtuple("Personal", "moment drawer sign amount")
Expense = namedtuple("Expense", "moment drawer amount")
Count = namedtuple("Count", "moment amount")

CASH_VOUCHER, CHEQUE, DISCOUNT_NOTICE, ADDITION_NOTICE = 1, 0, 2, 3

# Which sums round each row before they add it. The others add the rows as they are and round the sum.
STORE_WIDE = {"transfers"}
AT_SHIFT_START = STORE_WIDE | {"sales", "card", "tips", "coupons", "uncollected", "returns", "discounts",
                               "discounts of returns", "bank"}


def term(amounts, name, by_row):
    if name in by_row:
        return sum((rounded(amount) for amount in amounts), ZERO)
    return rounded(sum(amounts, ZERO))


def paid(row):
    """What a voucher takes off the balance of who pays. An addition notice adds to it."""
    return row.sign * (-row.amount if row.kind == ADDITION_NOTICE else row.amount)


class Books:
    def __init__(self, openings):
        self.openings = openings  # cash of each drawer
        self.invoices = []
        self.vouchers = []
        self.bank = []
        self.transfers = []
        self.personal = []
        self.expenses = []
        self.counts = {}  # of a day and a drawer: the surplus or, negative, the shortage

    # Cash -------------------------------------------------------------------------------------------------

    def terms(self, drawer, within):
        """The sums that move the cash of a drawer, each with its name and sign."""
        cash = [one for one in self.invoices if one.in_drawer and one.drawer == drawer and within(one.moment)]
        sales = [one for one in cash if not one.is_return]
        returns = [one for one in cash if one.is_return]
        # The discount of a tips sale is what the receiver gets. A card brings no cash, nor does an order that
        # is not collected.
        netted = [one for one in sales if one.payment not in (CARD, TIPS) and not one.uncollected]
        here = lambda rows: [row for row in rows if row.drawer == drawer and within(row.moment)]
        vouchers = [row for row in here(self.vouchers) if row.kind == CASH_VOUCHER]
        signed = lambda rows, sign: [row.amount for row in rows if row.sign == sign]
        moved = [row for row in self.transfers if within(row.moment)]
        return [
            ("sales", 1, [one.total for one in sales]),
            ("card", -1, [one.total for one in sales if one.payment == CARD]),
            ("tips", -1, [one.discount for one in sales if one.payment == TIPS]),
            ("coupons", -1, [one.coupon for one in sales]),
            ("uncollected", -1, [one.total for one in sales if one.uncollected]),
            ("returns", -1, [one.total for one in returns]),
            ("discounts", -1, [one.discount for one in netted]),
            ("discounts of returns", 1, [one.discount for one in returns]),
            ("receipts", 1, signed(vouchers, 1)),
            ("payments", -1, signed(vouchers, -1)),
            ("to bank", -1, signed(here(self.bank), -1)),
            ("from bank", 1, signed(here(self.bank), 1)),
            ("transfers out", -1, [row.amount for row in moved if row.source == drawer]),
            ("transfers in", 1, [row.amount for row in moved if row.target == drawer]),
            ("withdrawals", -1, signed(here(self.personal), -1)),
            ("deposits", 1, signed(here(self.personal), 1)),
            ("expenses", -1, [row.amount for row in here(self.expenses)]),
            ("counts", 1, [count.amount for (_, where), count in self.counts.items()
                           if where == drawer and within(count.moment)]),
        ]

    def position(self, drawer, within, by_row=STORE_WIDE):
        families = {"to bank": "bank", "from bank": "bank", "transfers out": "transfers", "transfers in": "transfers"}
        return self.openings[drawer] + sum(
            (sign * term(amounts, families.get(name, name), by_row)
             for name, sign, amounts in self.terms(drawer, within)), ZERO)

    def position_before(self, drawer, moment):
        return self.position(drawer, lambda when: when < moment)

    def card_sales(self, drawer, start, end):
        """The card sales of a shift: after its start, at or before its end."""
        return rounded(sum((one.total for one in self.invoices if one.drawer == drawer and one.payment == CARD
                            and not one.is_return and start < one.moment <= end), ZERO))

    def beside(self, drawer, start, end):
        """What the report of a shift says of money that is not in the drawer: uncollected orders, discounts."""
        sums = {name: rounded(sum(amounts, ZERO))
                for name, _, amounts in self.terms(drawer, lambda when: start < when <= end)}
        return sums["uncollected"], sums["discounts"] - sums["discounts of returns"]

    def statement(self, drawer, day):
        """The figures of the day's statement, by the names of the screen."""
        morning = datetime(day.year, day.month, day.day)
        evening = morning + timedelta(days=1) - timedelta(seconds=1)
        today = lambda when: morning < when <= evening
        sums = {name: rounded(sum(amounts, ZERO)) for name, _, amounts in self.terms(drawer, today)}
        account = [one for one in self.invoices if not one.in_drawer and one.drawer == drawer and today(one.moment)]
        counted = sums["counts"]
        figures = {
            "account_sales": rounded(sum((one.total for one in account if not one.is_return), ZERO)),
            "account_returns": rounded(sum((one.total for one in account if one.is_return), ZERO)),
            "cash_sales": sums["sales"],
            "card_sales": sums["card"],
            "tips": sums["tips"],
            "coupons": sums["coupons"],
            "uncollected": sums["uncollected"],
            "cash_returns": sums["returns"],
            "surplus": max(counted, ZERO),
            "discounts": sums["discounts"],
            "returned_discounts": sums["discounts of returns"],
            "receipts": sums["receipts"],
            "transfers_in": sums["transfers in"],
            "from_bank": sums["from bank"],
            "deposits": sums["deposits"],
            "payments": sums["payments"],
            "transfers_out": sums["transfers out"],
            "to_bank": sums["to bank"],
            "expenses": sums["expenses"],
            "withdrawals": sums["withdrawals"],
            "shortage": max(-counted, ZERO),
        }
        add_up(figures)
        figures["previous_balance"] = self.position(drawer, lambda when: when <= morning)
        figures["current_balance"] = figures["previous_balance"] + figures["net"]
        return figures

    def summary(self, drawer, day):
        """The figures of the day's summary, by their numbers on the screen."""
        today = [one for one in self.invoices if one.drawer == drawer and one.moment.date() == day]
        total = lambda rows: rounded(sum((one.total for one in rows), ZERO))
        discount = lambda rows: rounded(sum((one.discount for one in rows), ZERO))
        cash = [one for one in today if one.in_drawer and not one.is_return]
        at_the_till = [one for one in cash if one.payment != CARD and not one.coupon and not one.uncollected]
        back = [one for one in today if one.in_drawer and one.is_return]
        tips = [one for one in cash if one.payment == TIPS]
        on_account = [one for one in today if not one.in_drawer]
        counted = sum((count.amount for (when, where), count in self.counts.items() if (when, where) == (day, drawer)),
                      ZERO)
        figures = {
            0: len(today),
            2: total(one for one in on_account if not one.is_return),
            3: total(one for one in cash if one.payment == CARD),
            4: total(at_the_till),
            5: total(one for one in on_account if one.is_return),
            6: total(back),
            7: discount(tips),
            8: max(counted, ZERO),
            9: max(-counted, ZERO),
            11: discount(one for one in at_the_till if one not in tips),
            12: discount(back),
        }
        figures[1] = figures[2] + figures[3] + figures[4]
        figures[10] = sum(figures[at] for at in (4, 8, 12)) - sum(figures[at] for at in (6, 7, 9, 11))
        return figures

    # Balances and stock -----------------------------------------------------------------------------------

    def owed_by(self, customer, opening):
        """What an account customer owes."""
        balance = opening
        for one in self.invoices:
            if one.customer == customer:
                balance += -one.net if one.is_return else one.net
        return balance - self.paid_by("customer", customer)

    def owed_to(self, vendor, opening):
        return opening + self.paid_by("vendor", vendor)

    def paid_by(self, party, code):
        return sum((paid(row) for row in self.vouchers if (row.party, row.code) == (party, code)), ZERO)

    def account_of(self, customer):
        """The movements of a customer's account by date: (date, credit, debit)."""
        rows = []
        for one in self.invoices:
            if one.customer != customer:
                continue
            for amount, lowers in ((one.total, one.is_return), (one.discount, not one.is_return)):
                if amount:
                    rows.append((one.moment.date(), amount, ZERO) if lowers else (one.moment.date(), ZERO, amount))
        for row in self.vouchers:
            if (row.party, row.code) == ("customer", customer):
                lowers = paid(row) > 0
                rows.append((row.moment.date(), row.amount if lowers else ZERO, ZERO if lowers else row.amount))
        return sorted(rows, key=lambda row: row[0])

    def pieces_moved(self, item):
        moved = Decimal(0)
        for one in self.invoices:
            for line in one.lines:
                if line.item == item:
                    moved += line.pieces if one.is_return else -line.pieces
        return moved


def add_up(figures):
    """The totals of a statement from its figures."""
    of = lambda *names: sum((figures[name] for name in names), ZERO)
    figures["net_cash"] = (of("cash_sales", "surplus", "returned_discounts") -
                           of("card_sales", "tips", "coupons", "uncollected", "cash_returns", "discounts"))
    figures["total_deposits"] = of("net_cash", "receipts", "transfers_in", "from_bank", "deposits")
    figures["total_outgoings"] = of("payments", "transfers_out", "to_bank", "expenses", "withdrawals", "shortage")
    figures["net"] = figures["total_deposits"] - figures["total_outgoings"]
