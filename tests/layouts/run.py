"""Real key events under Xvfb: the keys of the till do the same under every keyboard layout."""
import argparse, os, pathlib, shutil, subprocess, sys

sys.path.append(str(pathlib.Path(__file__).parents[1] / "support"))
from x_screen import Screen, wait_for

# Wholesale by Ctrl+2, the search by Ctrl+F, its code field by the key of ك, and the item that was found.
FIRST_SALE = "Ctrl+2 Ctrl+f Alt+; 1 1 0 1 Enter F1 Enter"
# Today's receipts by Ctrl+B, left by that of ج; the menu by that of ا, and in it the search by that of ب. Alt
# with a key of no caption types nothing.
SECOND_SALE = "Ctrl+b Alt+[ Alt+h f Esc Alt+b 1 1 0 2 Enter F1 Enter"


class Till:
    def __init__(self, folder, bin, layout):
        self.shop, self.bin = folder / "shop", bin
        self.admin("new-shop", str(self.shop), "--demo", inside=folder)
        self.sql("insert into shift (scode, stcode, cash_no, s_date, man_) values (1, 1, 1, '2026/11/21', 1)")
        self.screen = Screen()
        subprocess.run(["setxkbmap", *layout.split()], check=True)
        environment = {**os.environ, "TALLVEX_HOME": str(self.shop), "XDG_RUNTIME_DIR": str(folder)}
        environment.pop("QT_QPA_PLATFORM", None)
        self.till = subprocess.Popen([bin / "tallvex", "1"], cwd=self.shop, env=environment, stderr=subprocess.DEVNULL)

    def close(self):
        self.till.terminate()
        self.till.wait()
        self.screen.close()

    def admin(self, *arguments, inside=None):
        done = subprocess.run([self.bin / "tallvex-admin", *arguments], cwd=inside or self.shop, check=True,
                              capture_output=True, text=True)
        return done.stdout

    def sql(self, statement):
        return self.admin("sql", "--csv", "--yes", statement).replace("\r", "").split("\n")[1:]

    def log_says(self, text):
        log = self.shop / "Logs/hm_log.qzv"
        return log.exists() and text in log.read_text(errors="replace")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("layout", help="as setxkbmap takes it: ara, or ara,us, or ara digits")
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    given = parser.parse_args()
    shutil.rmtree(given.folder, ignore_errors=True)
    given.folder.mkdir(parents=True, mode=0o700)
    till = Till(given.folder.resolve(), given.bin.resolve(), given.layout)
    try:
        wait_for("the sign-in", lambda: till.log_says("sign-in"))
        till.screen.press("Down Enter 1 1 1 Enter")
        wait_for("the sales window", lambda: till.log_says("signed in"))
        for sale, total in ((FIRST_SALE, "38.75"), (SECOND_SALE, "22.5")):
            till.screen.press(sale)
            saved = till.sql("select ptot from sales order by pnum desc")
            if saved[0] != total:
                sys.exit(f"after {sale}: saved {saved}, expected {total} first")
    finally:
        till.close()


main()
