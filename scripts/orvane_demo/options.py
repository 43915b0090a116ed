"""usage: demo [OPTION...]

Exports a film from the stand-in host to a review service on this machine, from a fresh Debian 12 to the end: installs
what is missing, builds, puts bundle and presets in place, starts service and host. With a display the windows wait for
you; without one, or with --headless, the demo drives them itself and saves pictures of them. It ends with a look at
what the service has stored.

  --media FILE, --size WxH, --rate N/D, --seconds S
                    the sequence, as orvane-host takes them
  --fail WHAT       what goes wrong: input (fields left empty), login (a wrong subdomain, then a wrong password), preset
                    (the encoding preset is missing, for this host alone), render (it fails), cancel (of the render) or
                    upload (the service refuses it); input and login are headless
  --keyboard        drive the windows by keyboard alone, headless
  --headless        drive the windows on a display of its own, even when there is one
  --web-version V   the plug-in version that the service's web site offers (default: 1.1)
  --build FOLDER    use what is built there, and install nothing; the encoding presets must be in their place
  --state FOLDER    keep the service's data, logs and pictures there (default: build/demo; build/demo-2 and so on while
                    another demo uses that)
  --port N          the service's port, 0 for any free one (default: 48443, or a free one when that is taken)

The exit status is 0 when everything happened as it should; a failure that was asked for counts as that. It is 1 when
something is not as it should be, 2 for wrong options, 3 when you ended it without an export, and 77 when this machine
does not let the demo hide the preset."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# Whether a number can be used is for the host and the service to say. They say it only when they are built.
SHAPES = {"size": (r"\d+x\d+", "needs two numbers with 'x' between them"),
          "rate": (r"\d+/\d+", "needs two numbers with '/' between them"),
          "seconds": (r"\d+\.?\d*", "needs a number"),
          "port": (r"\d+", "needs a number from 0 to 65535"),
          "fail": (r"input|login|preset|render|cancel|upload", "takes input, login, preset, render, cancel or upload"),
          "web-version": (r".+", "needs a text")}


def film(path):
    """Refuses what the host would refuse, in its words, as far as this machine can tell."""
    if not os.access(path, os.R_OK):
        return f"--media cannot read {path}"
    if not shutil.which("ffprobe"):
        return None
    command = ["ffprobe", "-v", "error", "-select_streams", "V", "-show_entries", "stream=index", "-of", "csv=p=0"]
    probe = subprocess.run([*command, f"file:{path}"], capture_output=True, text=True, errors="replace", check=False)
    if probe.returncode != 0:
        return f"cannot read {path}: {probe.stderr.strip()}"
    return None if probe.stdout.strip() else f"{path} has no picture"


def complaint(options):
    """What is wrong with the options, or nothing."""
    for name, (shape, sentence) in SHAPES.items():
        value = getattr(options, name.replace("-", "_"))
        if value is not None and not re.fullmatch(shape, value):
            return f"--{name} {sentence}"
    if options.build and not (options.build / "Host" / "orvane-host").exists():
        return f"--build: nothing is built in {options.build}"
    if options.fail and options.keyboard:
        return "--keyboard and --fail do not go together"
    return film(options.media) if options.media else None


class Once(argparse.Action):
    def __call__(self, parser, options, value, name=None):
        if getattr(options, self.dest) is not None:
            parser.error(f"{name} can be given only once")
        setattr(options, self.dest, value)


class Parser(argparse.ArgumentParser):
    def error(self, message):
        self.exit(2, f"demo: {message}; see scripts/demo --help\n")

    def format_help(self):
        return __doc__ + "\n"


def parse(arguments):
    """Returns the options, `host` being those for the host. Ends the program with a sentence when they are wrong."""
    parser = Parser(allow_abbrev=False)
    for name in SHAPES:
        parser.add_argument(f"--{name}", action=Once)
    parser.add_argument("--media", action=Once, type=os.path.realpath)
    for name in ("build", "state"):
        parser.add_argument(f"--{name}", action=Once, type=lambda text: pathlib.Path(text).resolve())
    for name in ("keyboard", "headless"):
        parser.add_argument(f"--{name}", action="store_true")
    options = parser.parse_args(arguments)
    problem = complaint(options)
    if problem:
        parser.error(problem)
    options.variant = "keyboard" if options.keyboard else options.fail
    # Only the demo itself makes these mistakes, or keeps its hands off the mouse.
    alone = options.variant in ("keyboard", "input", "login")
    options.headless = options.headless or alone or not os.environ.get("DISPLAY")
    chosen = {name: getattr(options, name) for name in ("media", "size", "rate", "seconds")}
    if options.variant in ("render", "cancel"):
        chosen["fail"] = options.variant
    options.host = [word for name, value in chosen.items() if value for word in (f"--{name}", value)]
    return options
