"""A screen of its own, under Xvfb, and real key events on it.

A key is named for what it types on a US keyboard; the X server makes of it what the layout in use says.
"""
import ctypes, os, subprocess, time

CODES = {"Enter": 36, "Esc": 9, "Down": 116, "Ctrl": 37, "Alt": 64, "F1": 67, "F11": 95, "F12": 96}
for first, keys in ((10, "1234567890"), (24, "qwertyuiop["), (38, "asdfghjkl;"), (52, "zxcvbnm")):
    CODES.update({key: first + place for place, key in enumerate(keys)})


class Screen:
    """Programs that are started while it lives are shown on it."""

    def __init__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-noreset", "-screen", "0", "1366x768x24"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.environ["DISPLAY"] = ":" + os.read(read, 9).decode().strip()
        self.x, self.test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
        self.test.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
        self.display = self.x.XOpenDisplay(None)

    def press(self, keys):
        for key in keys.split():
            codes = [CODES[part] for part in key.split("+")]
            for code, down in [(code, 1) for code in codes] + [(code, 0) for code in reversed(codes)]:
                self.test.XTestFakeKeyEvent(self.display, code, down, 0)
            self.x.XSync(self.display, 0)
            time.sleep(0.3)

    def close(self):
        self.server.terminate()
        self.server.wait()


def wait_for(what, is_there, seconds=10):
    """Waits for something to come, and for the program to be ready for keys."""
    for _ in range(seconds * 10):
        if is_there():
            return time.sleep(0.5)
        time.sleep(0.1)
    raise SystemExit(f"{what} did not come")
