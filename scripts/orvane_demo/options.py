"""The command line of the demo."""

import argparse
import os
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

WHAT = """Exports a film from the stand-in host to a review service on this machine, from a fresh Debian 12 to the
end: installs what is missing, builds, puts bundle and presets in place, starts service and host. With a display the
windows wait for you; without one the demo drives them itself and saves pictures of them. It ends with a look at what
the service has stored."""
STATUSES = """The exit status is 0 when everything happened as it should; a failure that was asked for counts as that.
It is 1 when something is not as it should be, 2 for wrong options, 3 when you ended it without an export, and 77 when
this machine does not let the demo hide the preset."""
VARIANTS = ("input", "login", "preset", "render", "cancel", "upload")


# What the host or the service would refuse later is refused here, before anything is built.

def film(text):
    path = os.path.realpath(text)
    if not os.path.isfile(path):
        raise argparse.ArgumentTypeError(f"there is no film at {path}")
    return path


def build_folder(text):
    if not os.path.exists(os.path.join(text, "Host", "orvane-host")):
        raise argparse.ArgumentTypeError(f"nothing is built in {text}")
    return pathlib.Path(text).resolve()


def numbers(pattern, fit, wanted):
    """Returns what takes a text of this pattern, a regular expression, if the numbers in its groups fit."""
    def take(text):
        found = re.fullmatch(pattern, text)
        if not found or not fit(*map(float, found.groups())):
            raise argparse.ArgumentTypeError(f'"{text}" is not {wanted}')
        return text
    return take


SIZE = numbers("([0-9]+)x([0-9]+)", lambda *sides: all(16 <= side <= 16384 for side in sides),
               "a frame size such as 1280x720, with sides of 16 to 16384 pixels")
RATE = numbers("([0-9]+)/([0-9]+)", lambda n, d: 1 <= d <= 1e6 and d <= n <= min(1e6, 240 * d),
               "a frame rate such as 30000/1001, of 1 to 240 frames a second")
SECONDS = numbers("([0-9]*[.]?[0-9]+)", lambda seconds: 0.01 <= seconds <= 86400, "a duration of 0.01 to 86400 seconds")
PORT = numbers("([0-9]+)", lambda port: port <= 65535, "a port, which is a number of 0 to 65535")


def variant(text):
    if text not in VARIANTS:
        raise argparse.ArgumentTypeError(f'"{text}" cannot be made to fail; that is one of {", ".join(VARIANTS)}')
    return text


def parse(arguments):
    """Returns the options, `host` being those for the host. Ends the program with a sentence when they are wrong."""
    parser = argparse.ArgumentParser("demo", "demo [OPTION...]", WHAT, STATUSES, allow_abbrev=False)
    add, variants = parser.add_argument, parser.add_mutually_exclusive_group()
    add("--media", metavar="FILE", type=film, help="the sequence is this film (default: a test picture)")
    add("--size", metavar="WxH", type=SIZE, help="frame size in pixels (default: the film's, or 1280x720)")
    add("--rate", metavar="N/D", type=RATE, help="frame rate (default: the film's, or 25/1)")
    add("--seconds", metavar="S", type=SECONDS, help="duration (default: the film's, or 10)")
    variants.add_argument(
        "--fail", metavar="WHAT", action="append", type=variant,
        help="what goes wrong: input (fields left empty), login (a wrong subdomain, then a wrong password), preset (it "
             "is missing, for this host alone), render (it fails), cancel (of the render) or upload (the service "
             "refuses it); the first two are headless")
    variants.add_argument("--keyboard", action="store_true", help="drive the windows by keyboard alone, headless")
    add("--headless", action="store_true", help="drive the windows on a display of its own, even when there is one")
    add("--build", metavar="FOLDER", type=build_folder,
        help="use what is built there, and install nothing; the encoding presets must be in their place")
    add("--state", metavar="FOLDER", type=lambda text: pathlib.Path(text).resolve(),
        help="keep the service's data, logs and pictures there (default: build/demo, or build/demo-2 and so on while "
             "another demo uses that)")
    add("--port", metavar="N", type=PORT,
        help="the service's port, 0 for any free one (default: 48443, or a free one when that is taken)")
    options = parser.parse_args(arguments)
    if options.fail and len(options.fail) > 1:
        parser.error("argument --fail: it can be given only once")
    options.variant = "keyboard" if options.keyboard else options.fail and options.fail[0]
    # Only the demo itself makes these mistakes, or keeps its hands off the mouse.
    alone = options.variant in ("keyboard", "input", "login")
    options.headless = options.headless or alone or not os.environ.get("DISPLAY")
    chosen = {name: getattr(options, name) for name in ("media", "size", "rate", "seconds")}
    chosen["fail"] = options.variant if options.variant in ("render", "cancel") else None
    options.host = [str(word) for name, value in chosen.items() if value is not None for word in (f"--{name}", value)]
    return options
