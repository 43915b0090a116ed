"""Acting on windows with real X events, and looking at them.

Places within a window are in pixels from the upper left corner of its inside."""

import re
import subprocess

from ending import Failure
from surroundings import wait_until

# What the window manager puts around a window.
FRAME, TITLE_BAR = 1, 20


class Screen:
    def __init__(self, environment, pictures, host):
        self.pictures = pictures
        self._environment, self._host = environment, host

    def expect(self, title, seconds=30, busy=False):
        """Waits for the window and, unless its look changes all the time, until it is drawn. It is the current one."""
        wait_until(seconds, lambda: self.find(title) or self._host.ended())
        if not self._window:
            self._fail(f'the window "{title}" did not open')
        if not busy:
            self.expect_still(f'the window "{title}"', self._window)
        if not self._measure():
            self._fail(f'the window "{title}" has gone')
        if not busy:
            # By the window manager, which would else give it the keyboard in its own time, and close a menu by that.
            self._xdotool("windowactivate", "--sync", self._window)

    def expect_gone(self, title, seconds=30):
        if not wait_until(seconds, lambda: not self.find(title)):
            self._fail(f'the window "{title}" does not close')

    def find(self, title):
        """Whether there is a window with exactly this title."""
        self._window = next((window for window, name in self._windows().items() if name == title), None)
        return self._window

    # Events are taken in the order in which they come. One is for what lies on the screen at that time: only a window or
    # a menu that opens or closes is waited for.

    def click(self, x, y):
        self._point(x, y)
        self._xdotool("click", 1)

    def open_menu(self, act):
        """Does what opens a menu, and waits for that."""
        before = self._windows().keys()
        act()
        self._menu = None
        if not wait_until(30, lambda: self._appeared(before)):
            self._fail("no menu opens")

    def close_menu(self, act):
        """Does what closes the menu that was opened last, and waits for that: it lies over what is clicked on next."""
        act()
        if not wait_until(30, lambda: self._menu not in self._windows()):
            self._fail("the menu does not close")

    def choose(self, picture, *places):
        """Opens the menu by a click at the first place and those within it by pointing at theirs, takes a picture, and
        clicks at the last one."""
        self.open_menu(lambda: self.click(*places[0]))
        # An open menu looks for the pointer now and then. A click right after a leap it would take for one beside it.
        for place in places[1:-1]:
            self.open_menu(lambda: self._point(*place))
        self._point(*places[-1])
        self.expect_still("the menu")
        self.expect_picture(picture)
        self.close_menu(lambda: self.click(*places[-1]))

    def type(self, text):
        # Not as an argument, which everybody on the machine can read: it may be a password.
        self._xdotool("type", "--delay", 30, "--file", "-", text=text)

    def press(self, *keys):
        self._xdotool("key", *keys)

    def expect_still(self, what, window="root"):
        """Waits until that is drawn: until it looks the same as a moment ago."""
        self._look = None
        if not wait_until(10, lambda: self._settled(window)):
            self._fail(f"{what} is never drawn to its end")

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
        numbers = re.findall(r"(?:Absolute upper-left [XY]|\n  Width|\n  Height): *(-?\d+)", self._facts(self._window))
        if numbers:
            self._left, self._top, self._width, self.height = map(int, numbers)
        return numbers

    def _point(self, x, y):
        self._xdotool("mousemove", self._left + x, self._top + y)

    def _windows(self):
        """The titles by window, menus included, as the window manager lists them. A search of one's own through all
        windows ends when one goes away below its hands."""
        lines = (line.split(None, 3) for line in self.run("wmctrl", "-l").decode().splitlines())
        return {window: "".join(title) for window, _, _, *title in lines}

    def _appeared(self, before):
        """It is listed before it is shown, and until then a click goes to what lies below it."""
        self._menu = next(iter(self._windows().keys() - before), None)
        return self._menu and "IsViewable" in self._facts(self._menu)

    def _facts(self, window):
        return self.run("xwininfo", "-id", window).decode(errors="replace")

    def _settled(self, window):
        before, self._look = self._look, self.run("import", "-window", window, "-silent", "rgba:-")
        return self._look and self._look == before

    def _fail(self, sentence):
        if self._host.ended():
            raise Failure(f"{sentence}: the host has ended\n{self._host.last_words()}")
        picture = self.pictures / "failure.png"
        self.run("import", "-window", "root", picture)
        raise Failure(f"{sentence}; the screen is in {picture}, the host's log in {self._host.log}")
