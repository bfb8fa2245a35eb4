#!/usr/bin/env python3
"""realwindow_test.py TECHSHEET EXAMPLE: the program in a real window, worked by key presses alone.

Starts an X server without a screen and a window manager, opens the example, opens the dialog again and again in the
same place, gives a layer another name on the Layers page, saves, takes the step back, saves under another name, and
compares the two files with the example. Exit status 77 (skipped) where one of the programs for that is missing.
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
PATIENCE = 90  # seconds; a machine may be busy, and a sanitized program is slow
OLD, NEW = "Top", "Component side"


class Screen:
    """An X server of its own with a window manager on it."""

    def __init__(self, folder):
        self.processes = []
        self.log = open(folder / "log.txt", "w+", encoding="utf-8", errors="replace")
        reading, writing = os.pipe()
        self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp"], (writing,))
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start.")
        self.environment = {
            **os.environ,
            "DISPLAY": ":" + number,
            "QT_QPA_PLATFORM": "xcb",
            "TECHSHEET_SETTINGS": str(folder / "settings"),
            "XDG_CONFIG_HOME": str(folder),
        }
        ready = folder / "ready"
        self.start(["openbox", "--startup", f"touch {ready}"])  # windows mapped before it is ready are lost to it
        wait_until(ready.exists, "the window manager is ready")

    def start(self, command, keep=()):
        environment = getattr(self, "environment", None)
        process = subprocess.Popen(command, pass_fds=keep, env=environment, stdout=self.log, stderr=self.log)
        self.processes.append(process)
        return process

    def stop(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()

    def tool(self, *arguments):
        done = subprocess.run(["xdotool", *arguments], env=self.environment, capture_output=True, text=True, check=False)
        return done.stdout.split()

    def wait_for_window(self, title):
        """Waits for the window of that title to have the keyboard."""

        wait_until(lambda: title in self.active_title(), f'the window "{title}" has the keyboard', self.active_title)

    def active_title(self):
        active = self.tool("getactivewindow")
        return " ".join(self.tool("getwindowname", active[0])) if active else ""

    def keys(self, *names):
        self.tool("key", "--delay", "60", *names)

    def type(self, text):
        self.tool("type", "--delay", "40", text)


def wait_until(condition, what, instead=lambda: ""):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise RuntimeError(f"Waited in vain until {what}. {instead()}")
        time.sleep(0.1)


def layer_names(design):
    return [layer["name"] for layer in json.loads(design)["layers"]]


def work(screen, techsheet, example, folder):
    mine, other = folder / "board.tspcb", folder / "undone.tspcb"
    shutil.copyfile(example, mine)
    original = mine.read_bytes()
    program = screen.start([techsheet, str(mine)])
    screen.wait_for_window("board.tspcb")

    places = []
    for _ in range(3):
        if places:
            screen.keys("Escape")
            screen.wait_for_window("board.tspcb")
        screen.keys("alt+s", "l")  # Settings, Layers
        screen.wait_for_window("Technology")
        places.append(screen.tool("getactivewindow", "getwindowgeometry")[2:])
    if places[1] != places[2]:
        raise RuntimeError(f"The dialog opens elsewhere than it was closed: {places}")
    screen.keys("ctrl+Home", "Right", *["Down"] * (layer_names(original).index(OLD)))  # its name
    screen.keys("F2", "ctrl+a")
    screen.type(NEW)
    screen.keys("Return", "shift+Tab", "Return")  # from the table to the tabs, where Return is OK
    screen.wait_for_window("board.tspcb")
    screen.keys("ctrl+s")
    wait_until(lambda: mine.read_bytes() != original, "the design is saved")
    changed = mine.read_bytes()
    if changed != original.replace(f'"{OLD}"'.encode(), f'"{NEW}"'.encode()):
        raise RuntimeError("Something else than the name of the layer was changed.")

    screen.keys("ctrl+z", "ctrl+shift+s")
    screen.wait_for_window("Save")
    screen.keys("ctrl+a")
    screen.type(str(other))
    screen.keys("Return")
    wait_until(other.exists, "the design is saved under another name")
    screen.wait_for_window("undone.tspcb")
    if other.read_bytes() != original:
        raise RuntimeError("Undoing the step does not give the example back.")
    screen.keys("ctrl+q")
    if program.wait(PATIENCE) != 0:
        raise RuntimeError(f"The program ended with status {program.returncode}.")


def main():
    techsheet, example = sys.argv[1:]
    missing = [name for name in ("Xvfb", "openbox", "xdotool") if not shutil.which(name)]
    if missing:
        print(f"Skipped: {', '.join(missing)} is not installed.")
        return SKIPPED
    with tempfile.TemporaryDirectory() as path:
        folder = pathlib.Path(path)
        screen = Screen(folder)
        try:
            work(screen, techsheet, example, folder)
        except (RuntimeError, subprocess.TimeoutExpired) as fault:
            screen.log.flush()
            print(fault, (folder / "log.txt").read_text(encoding="utf-8", errors="replace"), sep="\n")
            return 1
        finally:
            screen.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
