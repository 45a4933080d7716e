"""What a cashier does at a till, written as the steps of a play (docs/plays.md)."""
from money import plain, text

USER, PASSWORD, WORKER = "admin", "1", "بائع"


class Till:
    def __init__(self):
        self.steps = []
        self.drawer = None  # of the till that is running

    def step(self, *steps):
        self.steps += steps

    def note(self, what):
        self.step("", "# " + what)

    def clock(self, moment):
        self.step(f"clock {moment:%Y/%m/%d %H:%M:%S}")

    def sit_down(self, drawer):
        """Leaves the till of the other drawer and starts that of this one."""
        if self.drawer == drawer:
            return
        if self.drawer is not None:
            self.step("press F12", "answer yes", "expect end")
        self.step(f"start as cash point {drawer}", f"user {USER} password {PASSWORD}", "expect focus entry")
        self.drawer = drawer

    # An invoice -------------------------------------------------------------------------------------------

    def scan(self, code, again=None):
        """Scans a code. `again` answers the question about an item that the invoice has already."""
        self.step(f"scan {code}")
        if again is not None:
            self.step("expect question تم ادخال هذا الصنف من قبل هل تريد زيادة الكمية", f"answer {again}")

    def quantity_of_last(self, quantity):
        self.step("press +", f"type {plain(quantity)} into quick_quantity", "press Enter", "expect focus entry")

    def edit(self, item, heading, value):
        """Types a value into the cell of an item's line."""
        to_the_left = {"كمية": 4, "سعر": 5, "خصم ق": 6, "خصم %": 7}[heading]
        self.step(f"choose {item} in lines", *["press Left"] * to_the_left, "press Enter",
                  f"type {plain(value)} into cell_edit", "press Enter", "expect hidden cell_edit")

    def discount(self, field, value):
        self.step(f"type {plain(value)} into {field}", "press Enter", "expect focus entry")

    def choose_account(self, name):
        self.step("press F5", "expect shown account_customer", f"type {name} into account_customer", "press Enter",
                  "expect focus entry")

    def choose_card(self, reference):
        self.step("press F6", "expect focus bank", "type منى عادل into card_holder",
                  f"type {reference} into card_reference", "press Enter", "expect focus entry")

    def choose_receiver(self, name):
        self.step("press F7", "expect shown tips_receiver", f"type {name} into tips_receiver", "press Enter",
                  "expect focus entry")

    def expect_sums(self, invoice):
        self.step(f"expect text total = {text(invoice.total)}", f"expect text discount_value = {text(invoice.discount)}",
                  f"expect text net = {text(invoice.net)}")

    def save(self, invoice):
        """Saves; at a till that asks for the money, with what the customer gave."""
        self.step("press F1")
        if invoice.payment in ("cash", "tips"):
            self.step("expect shown Form34")
            if invoice.paid is not None:
                self.step(f"type {plain(invoice.paid)} into paid", f"expect text change = {text(invoice.paid - invoice.net)}")
            self.step("press Enter")
        self.step("expect count lines = 0")

    def recall(self, number, on_account):
        if on_account:
            self.step("press F5", "expect shown account_customer")
        self.step("press Ctrl+R", f"type {number} into invoice_number", "press Enter", "expect shown return_of_sale",
                  "click return_of_sale", "expect hidden return_of_sale")

    # Cash -------------------------------------------------------------------------------------------------

    def expense(self, amount):
        self.step("press Shift+F9", "expect focus expense_main", "choose تشغيل in expense_main",
                  "choose شاي in expense_sub", f"type {plain(amount)} into expense_value", "press Tab",
                  "click expense_save", "expect question تسجيل مصروف أخر", "answer no", "expect hidden Form41ca")

    def voucher(self, key, kind, party, amount, cheque):
        screen = {"Shift+F11": "Form38", "Shift+F12": "Form23"}[key]
        self.step(f"press {key}", f"expect shown {screen}", f"click voucher_party_kind_{2 if kind == 'customer' else 1}",
                  f"choose {party} in voucher_party", f"type {plain(amount)} into voucher_amount")
        if cheque:
            self.step("click voucher_method_0", "choose بنك السنابل in voucher_bank",
                      "type 2026/12/31 into voucher_cheque_date", "type صاحب الشيك into voucher_cheque_owner")
        self.step("click voucher_save", "expect shown voucher_choose", "expect focus voucher_print"
                  if screen == "Form38" else "expect shown voucher_said", "press Esc", f"expect hidden {screen}")

    def direct_receipt(self, party, owed, amount):
        self.step("click menu_direct_receipt", f"choose {party} in direct_customer",
                  f"expect text direct_balance = {text(owed)}", f"type {plain(amount)} into direct_amount",
                  f"expect text direct_after = {text(owed - amount)}", "press Enter", "expect question ...",
                  "answer no", "expect hidden direct_receipt")

    def look_at_cash(self, position, expected=None, counted=None):
        """The panel shows the cash of now, and a count of the day as it was, with what has moved since."""
        self.step("click menu_cash_count", f"expect text cash_position = {text(position)}")
        if counted is None:
            self.step(f"expect text cash_expected = {text(position)}")
        else:
            self.step(f"expect text cash_expected = {text(expected)}", f"expect text cash_counted = {text(counted)}",
                      f"expect text cash_difference = {text(counted - expected)}",
                      f"expect text cash_moved_since = {text(position - counted)}")
        self.step("press Esc", "expect hidden cash_count")

    def count(self, expected, counted):
        self.step("click menu_cash_count", f"type {plain(counted)} into cash_counted", "press Tab",
                  f"expect text cash_expected = {text(expected)}",
                  f"expect text cash_difference = {text(counted - expected)}", "click cash_confirm",
                  f"expect text cash_position = {text(counted)}", "press Esc", "expect hidden cash_count")
