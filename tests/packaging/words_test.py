#!/usr/bin/env python3
"""No text of the screens, guides and demo rows has a word that docs/words.ar.md lists as one to avoid.

words_kept.txt has the system's own texts, which stay to the letter. It may hold nothing that is not needed.
"""

import re
import sys
from pathlib import Path

here = Path(__file__).resolve().parent
root = here.parent.parent

LETTER = "\u0621-\u063a\u0641-\u064a"
TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|R"\w*\((.*?)\)\w*"|"((?:[^"\\\n]|\\.)*)"|\'(?:[^\'\\\n]|\\.)+\'', re.S)


def plain(text):
    """The text without Alt marks, escapes, stretched letters, vowel signs and marks of direction."""
    text = re.sub(r"\\[nt]|\\u20\w\w", " ", text)
    text = re.sub("[&\u0640\u064b-\u0652\u200c-\u200f]", "", text)
    return " ".join(text.split())


def literals(source):
    """The string literals of a source file with their lines; adjacent ones are one."""
    found, end = [], None
    for match in TOKEN.finditer(source):
        text = next((group for group in match.groups() if group is not None), None)
        if text is None:
            continue
        if end is not None and not re.sub(r"//[^\n]*", "", source[end:match.start()]).strip():
            found[-1][1] += text
        else:
            found.append([source.count("\n", 0, match.start()) + 1, text])
        end = match.end()
    return found


def texts_of(path):
    """Every text of a file: (line, text)."""
    content = path.read_text(encoding="utf-8")
    if path.suffix in (".h", ".cpp"):
        for line, text in literals(content):
            # In a statement the texts are its own literals.
            inside = re.findall(r"'([^']*)'", text) if re.search(rf"'[^']*[{LETTER}]", text) else [text]
            yield from ((line, one) for one in inside)
    elif path.suffix == ".md":
        # Bold words are quotations of the program's texts.
        content = re.sub(r"\*\*.+?\*\*", lambda bold: re.sub(r"[^\n]", "*", bold.group(0)), content, flags=re.S)
        yield from enumerate(content.splitlines(), 1)
    else:
        yield from enumerate(content.splitlines(), 1)


def words_not_written():
    words = []
    for row in (root / "docs/words.ar.md").read_text(encoding="utf-8").splitlines():
        if row.startswith("|") and not row.startswith("|--") and "لا نكتب" not in row:
            words += [plain(word) for word in row.strip("| ").split("|")[-1].split("،")]
    return words


def searched(words):
    """Any of the words, with "and", "with", "for", "the" before it and the common endings behind it."""
    return re.compile(rf"(?<![{LETTER}])[وف]?(?:[بلك]?(?:ال)?|لل)(?:{'|'.join(sorted(words, key=len, reverse=True))})"
                      rf"(?:ات|ين|ون|ه|ها|ك|نا)?(?![{LETTER}])")


def faults(words, kept, files):
    pattern = searched(words)
    used = set()
    found = []
    for path in files:
        for line, text in texts_of(path):
            text = plain(text)
            match = pattern.search(text)
            if match is None:
                continue
            if text in kept:
                used.add(text)
            else:
                found.append(f"{path.relative_to(root)}:{line}: «{match.group(0)}» in: {text[:80]}")
    return found + [f"words_kept.txt: not needed: {own}" for own in sorted(set(kept) - used)]


def main():
    words = words_not_written()
    kept = [plain(line) for line in (here / "words_kept.txt").read_text(encoding="utf-8").splitlines() if line]
    files = [path for ending in ("*.h", "*.cpp") for path in sorted((root / "src").rglob(ending))]
    files += [path for path in sorted((root / "docs").glob("*.ar.md")) if path.name != "words.ar.md"]
    files += sorted((root / "data").rglob("*.csv"))
    # The search itself: prefixes are seen through, other words are not taken for these.
    pattern = searched(["زبون", "شيفت", "هذا الحق"])
    assert all(pattern.search(text) for text in ("والزبون", "للزبون", "بالشيفت", "زبونه", "ليس له هذا الحق"))
    assert not any(pattern.search(text) for text in ("الزبونة", "مزبون", "هذا الحقل"))
    found = faults(words, kept, files)
    if len(words) < 60 or len(files) < 300:
        found.append(f"only {len(words)} words and {len(files)} files were read")
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
