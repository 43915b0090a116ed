"""Acting on windows with real X events, and looking at them.

Places within a window are in pixels from the upper left corner of its inside."""

import re
import subprocess
import time

from failure import Failure
from surroundings import wait_until

# What the window manager puts around a window.
FRAME, TITLE_BAR = 1, 20


class Screen:
    def __init__(self, environment, pictures, host):
        self.pictures = pictures
        self._environment, self._host = environment, host

    def expect(self, title, seconds=30, busy=False):
        """Waits for the window and, unless its look changes all the time, until it is drawn. It is the current one."""
        self._look = None
        wait_until(seconds, lambda: self.find(title) or self._host.ended())
        if not self._window:
            self._fail(f'the window "{title}" did not open')
        if not busy and not wait_until(10, self._settled):
            self._fail(f'the window "{title}" is never drawn to its end')
        if not self._measure():
            self._fail(f'the window "{title}" has gone')
        if not busy:
            self._xdotool("windowfocus", "--sync", self._window)

    def expect_gone(self, title, seconds=30):
        if not wait_until(seconds, lambda: not self.find(title)):
            self._fail(f'the window "{title}" does not close')

    def find(self, title):
        """Whether there is a visible window with exactly this title."""
        found = self._xdotool("search", "--onlyvisible", "--name", f"^{title}$").split()
        self._window = found[-1].decode() if found else None
        return self._window

    # An event that comes right after another may be taken for part of it (a double click, a drag), hence the pauses.

    def click(self, x, y):
        self._xdotool("mousemove", self._left + x, self._top + y, "sleep", 0.1, "mousedown", 1, "sleep", 0.1)
        self._xdotool("mouseup", 1, "sleep", 0.2)

    def choose(self, picture, *places):
        """Clicks at the places, of which each but the last opens a menu, and takes a picture before the last."""
        for x, y in places[:-1]:
            before = self._screen()
            self.click(x, y)
            if not wait_until(30, lambda: self._screen() != before):
                self._fail("no menu opens")
        x, y = places[-1]
        self._xdotool("mousemove", self._left + x, self._top + y, "sleep", 0.2)
        self.expect_picture(picture)
        self.click(x, y)

    def type(self, text):
        # Not as an argument, which everybody on the machine can read: it may be a password.
        self._xdotool("type", "--delay", 30, "--file", "-", text=text)
        time.sleep(0.2)

    def press(self, *keys):
        self._xdotool(*(word for key in keys for word in ("key", key, "sleep", 0.2)))

    def picture(self, name):
        """Saves the current window as it is on the screen, frame and all. Returns whether it was still there."""
        if not self._measure():
            return False
        size = f"{self._width + 2 * FRAME}x{self.height + TITLE_BAR + FRAME}"
        crop = f"{size}+{self._left - FRAME}+{self._top - TITLE_BAR}"
        self.run("convert", "x:root", "-crop", crop, "+repage", "-strip", self.pictures / f"{name}.png")
        return True

    def expect_picture(self, name):
        if not self.picture(name):
            self._fail(f"there is no window to take the picture {name} of")

    def run(self, *command, text=""):
        """Runs a program on this display, and returns what it says."""
        return subprocess.run([str(word) for word in command], input=text.encode(), env=self._environment,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout

    def _xdotool(self, *words, text=""):
        return self.run("xdotool", *words, text=text)

    def _measure(self):
        """Finds out where the inside of the current window is on the screen. Returns whether the window is there."""
        facts = self.run("xwininfo", "-id", self._window).decode(errors="replace")
        numbers = re.findall(r"(?:Absolute upper-left [XY]|\n  Width|\n  Height): *(-?\d+)", facts)
        if numbers:
            self._left, self._top, self._width, self.height = map(int, numbers)
        return numbers

    def _screen(self):
        return self.run("import", "-window", "root", "-silent", "rgba:-")

    def _settled(self):
        """Whether the window looks the same as a moment ago: only then is it drawn, and takes events."""
        before, self._look = self._look, self.run("import", "-window", self._window, "-silent", "rgba:-")
        return self._look and self._look == before

    def _fail(self, sentence):
        if self._host.ended():
            raise Failure(f"{sentence}: the host has ended\n{self._host.last_words()}")
        picture = self.pictures / "failure.png"
        self.run("import", "-window", "root", picture)
        raise Failure(f"{sentence}; the screen is in {picture}, the host's log in {self._host.log}")
