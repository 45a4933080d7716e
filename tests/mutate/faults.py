"""Faults to put into the sources: where each operator can act, and a seeded choice among all places."""
import random
import re
from dataclasses import asdict, dataclass
from pathlib import Path

FOLDERS = ("sales", "cash", "accounts", "stock", "printing")


@dataclass(frozen=True)
class Fault:
    operator: str
    file: str
    line: int  # from 1
    before: str
    after: str

    def __str__(self):
        return f"{self.file}:{self.line}: {self.operator}\n    - {self.before.strip()}\n    + {self.after.strip()}"

    def record(self):
        return asdict(self)


# Operators on code: a pattern and what it becomes. Binary operators stand between blanks, templates do not.
SWAPS = {
    "comparison": [(r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "),
                   (r" != ", " == ")],
    "arithmetic": [(r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "), (r" \+= ", " -= "),
                   (r" -= ", " += ")],
    "logic": [(r" && ", " || "), (r" \|\| ", " && ")],
    "negation": [(r"(?<=[( ])!(?=[a-z_(])", "")],
    "result": [(r"\breturn true;", "return false;"), (r"\breturn false;", "return true;")],
    "constant": [(r"(?<![\w.\"])0(?![\w.\"])", "1"), (r"(?<![\w.\"])1(?![\w.\"])", "2"),
                 (r"(?<![\w.\"])2(?![\w.\"])", "3"), (r"(?<![\w.\"])100\b", "99")],
    "arguments": [(r"(?<=\w\()([a-z_][\w.]*(?:\(\))?), ([a-z_][\w.]*(?:\(\))?)(?=\))", r"\2, \1")],
}
STATEMENT = re.compile(r"^\s+(?!return\b|using\b|throw\b|delete\b|break\b|continue\b|else\b|case\b|public\b|private\b)"
                       r"(?:[\w:>\[\].-]+\(.*\)|(?:\+\+|--)?[\w.>\[\]-]+(?: [+*/-]?= .*)?);\s*$")
CONDITION = re.compile(r"^(\s+(?:\} else )?if \()(?!constexpr)(?:[^;]*)(\) (?:\{|return .*;|continue;|break;|\w.*;))\s*$")

# In the texts of statements: a column becomes another of its kind, a condition another.
COLUMNS = [("ptot", "pdis"), ("quan", "quan1"), ("quan1", "quan"), ("price", "disc"), ("cacc", "copen"),
           ("vcode", "ctype"), ("ctype", "stype"), ("stype", "ctype"), ("stcode", "ptype"), ("ptype", "stcode"),
           ("cash_nf", "cash_nt"), ("cash_nt", "cash_nf"), ("cfr", "cto"), ("cto", "cfr"), ("disboun", "pdis"),
           ("pnum", "serial"), ("ccode", "icode"), ("icode", "stcode"), ("edate", "date"), ("s_date", "e_date"),
           ("type1", "type"), ("price11", "price12"), ("NUM2", "NUM3"), ("pay_id", "chkno"), ("ztype", "ptype"),
           ("time_", "date"), ("copen", "salary1"), ("vacc", "vopen"), ("aml", "type1")]
CONDITIONS = [(r"<'", "<='"), (r"<='", "<'"), (r">'", ">='"), (r">='", ">'"), (r" = 0\b", " = 1"), (r" = 1\b", " = 2"),
              (r" = 2\b", " = 3"), (r" = -1\b", " = 0"), (r" <> ", " = "), (r"\band\b", "or"), (r"\bor\b", "and"),
              (r"\bdesc\b", ""), (r"\bmax\(", "min("), (r"\+ 1\b", "+ 2")]
TEXT = re.compile(r'"(?:[^"\\]|\\.)*"')
SQL = re.compile(r"\b(select|from|where|update|insert|and|order by|set|stcode|vcode|ctype|sum|max)\b", re.IGNORECASE)


def code_of(line):
    """The line with its comment and the contents of its texts blanked."""
    blank = TEXT.sub(lambda found: '"' + "\x00" * (len(found[0]) - 2) + '"', line)
    return blank.split("//")[0].ljust(len(line), "\x00") if "//" in blank else blank


def changed(line, start, end, text):
    return line[:start] + text + line[end:]


def faults_of_line(line):
    """Every (operator, changed line) of a line of code."""
    code = code_of(line)
    if code.lstrip().startswith(("#", "template", "using ", "//", "static_assert")):
        return
    joins_texts = '"' in code
    for operator, swaps in SWAPS.items():
        for pattern, text in swaps:
            if operator == "arithmetic" and joins_texts and "+" in pattern:
                continue
            for found in re.finditer(pattern, code):
                yield operator, changed(line, found.start(), found.end(), found.expand(text))
    if STATEMENT.match(code) and code.count("(") == code.count(")"):
        yield "statement dropped", line[: len(line) - len(line.lstrip())] + ";"
    if found := CONDITION.match(code):
        condition = line[found.end(1) : found.start(2)]
        if condition.count("(") == condition.count(")"):
            for value in ("true", "false"):
                yield "condition dropped", changed(line, found.end(1), found.start(2), value)
    for text in TEXT.finditer(line):
        if not SQL.search(text[0]) or re.search("[\u0600-\u06ff]", text[0]):
            continue
        for pattern, replacement in [(rf"\b{old}\b", new) for old, new in COLUMNS] + CONDITIONS:
            operator = "column" if pattern.startswith(r"\b") and pattern[2].isalpha() else "statement text"
            for found in re.finditer(pattern, text[0]):
                at = text.start() + found.start()
                yield operator, changed(line, at, at + len(found[0]), replacement)


def all_faults(root):
    for folder in FOLDERS:
        for file in sorted(Path(root, "src", folder).rglob("*.cpp")):
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                for operator, after in faults_of_line(line):
                    yield Fault(operator, str(file.relative_to(root)), number, line, after)


def in_turn(root, seed):
    """All faults in the order of the seed: an operator is drawn first, so that the common ones do not crowd out the
    others, then a file, so that the long ones do not, then a place in it."""
    draw = random.Random(seed)
    left = {}
    for fault in all_faults(root):
        left.setdefault(fault.operator, {}).setdefault(fault.file, []).append(fault)
    while left:
        operator = draw.choice(sorted(left))
        file = draw.choice(sorted(left[operator]))
        faults = left[operator][file]
        yield faults.pop(draw.randrange(len(faults)))
        if not faults:
            del left[operator][file]
        if not left[operator]:
            del left[operator]
