"""An invoice as the shop's rules make it: what a line, a discount, a net come to."""
from dataclasses import dataclass, field
from datetime import datetime
from decimal import Decimal

from money import ZERO, rounded

CASH, ACCOUNT, CARD, TIPS = "cash", "account", "card", "tips"
SERVICE = "17"


@dataclass
class Line:
    item: str
    quantity: Decimal
    price: Decimal
    factor: int = 1  # base units in the line's unit
    discount: Decimal = ZERO  # as the formula gives it
    refund: Decimal = None  # of a return: what was paid for the goods

    @property
    def worth(self):
        return self.quantity * self.price - self.discount if self.refund is None else self.refund

    @property
    def total(self):
        return rounded(self.worth)

    @property
    def pieces(self):
        return self.quantity * self.factor


@dataclass
class Invoice:
    lines: list
    discount: Decimal = ZERO
    payment: str = CASH
    is_return: bool = False
    customer: int = -1  # an account customer's number
    drawer: int = 1
    moment: datetime = None
    number: int = 0
    paid: Decimal = None
    coupon: Decimal = ZERO  # paid out of the drawer, on sales of another program
    uncollected: bool = False  # a telephone order of another program
    left: list = field(default_factory=list)  # of each line, what has not come back
    exact: bool = False  # of another program, which does not round
    spread: Decimal = ZERO  # of a returned tips sale: the discount that its lines share

    @property
    def total(self):
        return sum((line.worth if self.exact else line.total for line in self.lines), ZERO) - self.spread

    @property
    def net(self):
        return self.total - self.discount

    @property
    def in_drawer(self):
        """Whether the invoice moves the cash of a drawer."""
        return self.customer == -1

    @property
    def has_service(self):
        """Whether it holds something that never comes back."""
        return any(line.item == SERVICE for line in self.lines)


def refund_of(sold, discount, before, quantity):
    """What a part of a discounted line is worth when it comes back: all parts together are worth what was paid."""
    paid_each = sold.price - discount / sold.quantity
    return rounded((before + quantity) * paid_each) - rounded(before * paid_each)
