"""The demo: prepares the machine, starts service and host, lets somebody export, and looks at what came of it."""

# First of all, as whoever ends the demo need not know how far it is.
import ending

ending.expect_signals()

import contextlib
import fcntl
import os
import pathlib
import secrets
import shlex
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "surroundings"))
from checks import Checks
from driver import Driver
from ending import Failure
from keyboard import KeyboardDriver
from options import ROOT, parse
from processes import Host, OwnSurroundings, Service
from screen import Screen

LOCAL_DOMAIN = "orvane.localhost:48443"


def run_script(name, *words, **options):
    done = subprocess.run([ROOT / "scripts" / name, *words], check=False, text=True, **options)
    if done.returncode != 0:
        raise Failure(f"scripts/{name} failed")
    return done.stdout and done.stdout.strip()


def prepare(options):
    if not options.build:
        run_script("install-packages")
    display = os.environ.get("DISPLAY")
    if not options.headless and subprocess.run(["xwininfo", "-root"], capture_output=True, check=False).returncode != 0:
        raise Failure(f"the display {display} cannot be reached; run with --headless, or set DISPLAY to another one")
    if options.build:
        options.host += ["--plugin", options.build / "Orvane.bundle"]
    else:
        options.build = ROOT / "build" / "release"
        run_script("build", "release", "orvane-host", "orvane-service", "orvane-gallery", "orvane_bundle",
                   "orvane_presets")
        run_script("install-built", "release", "presets", "Unspecified")
    options.presets, files, domain = (run_script("configured", options.build, name, stdout=subprocess.PIPE) for name in
                                      ("ORVANE_PLUGIN_FOLDER", "ORVANE_PRESET_FILES", "ORVANE_SERVICE_DOMAIN"))
    options.preset = files.split(";")[0]
    if not os.access(os.path.join(options.presets, options.preset), os.R_OK):
        raise Failure("the encoding presets are not in their place; scripts/demo without --build installs them")
    if domain != LOCAL_DOMAIN:
        raise Failure(f"{options.build} is for the service at {domain}; the demo's is at {LOCAL_DOMAIN}")


def claim(folder):
    """Keeps other demos off the folder as long as this program runs. Returns whether it is free."""
    try:
        folder.mkdir(mode=0o700, parents=True, exist_ok=True)
        lock = os.open(folder / "lock", os.O_RDWR | os.O_CREAT, 0o600)
    except OSError as error:
        raise Failure(f"--state: the folder {folder} cannot be used: {error.strerror}", 2) from error
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        return False
    return True


def claim_state(options):
    """Finds the folder for what stays."""
    folders = [options.state] if options.state else [ROOT / "build" / f"demo{end}" for end in ("", "-2", "-3", "-4")]
    options.state = next(filter(claim, folders), None)
    if not options.state:
        raise Failure(f"another demo is using {folders[-1]}")


def fill_state(options):
    """What stays are passwords, keys, films and logs, which are nobody else's business."""
    os.umask(0o077)
    for name in ("logs", "pictures", "service", "home"):
        (options.state / name).mkdir(exist_ok=True)
        (options.state / name).chmod(0o700)
    for old in (options.state / "pictures").glob("*.png") if options.headless else []:
        old.unlink()
    password = options.state / "password"
    if not password.exists():
        password.write_text(secrets.token_hex(8))


def explain(options, service):
    print(f"The service is running on port {service.port} of this machine; its data is in {service.data}.")
    if options.headless:
        print(f"The demo drives the windows on a display of its own; the pictures go to {options.state / 'pictures'}.")
        return
    # A terminal's line is read and gone; what goes elsewhere may be kept.
    password = service.password if sys.stdout.isatty() else f"as in {options.state / 'password'}"
    print('In the window "Orvane Host" choose File > Export > Orvane. Log in with\n'
        f"    subdomain acme, user name editor, password {password}\n"
        "then choose a project and a folder and press Upload. Quit the host when you are done.\n"
        "Your browser will warn of an unknown authority: only the host trusts the service's own. It is\n"
        f"    {service.authority}")


def export(options, cleanup):
    started = time.time()
    surroundings = OwnSurroundings(options, cleanup)
    service = Service(options, surroundings, cleanup)
    explain(options, service)
    host = Host(options, surroundings, service, cleanup)
    if options.headless:
        screen = Screen(surroundings.environment, options.state / "pictures", host)
        kind = KeyboardDriver if options.variant == "keyboard" else Driver
        kind(screen, service, options.variant).drive()
    checks = Checks(options, surroundings, service, host, started)
    checks.run()
    if checks.link:
        print(f"The film's page: {checks.link}")
        if not options.headless and sys.stdin.isatty():
            print("The service runs until you press Return.")
            sys.stdin.readline()
        command = shlex.join(map(str, [*service.command, service.port]))
        print(f"The service ends with the demo. To see the page again, start it with\n    {command}")


def main():
    sys.stdout.reconfigure(line_buffering=True)
    options = parse(sys.argv[1:])
    cleanup = contextlib.ExitStack()
    try:
        claim_state(options)
        prepare(options)
        fill_state(options)
        export(options, cleanup)
    except (Failure, OSError) as failure:
        print(f"demo: {failure}", file=sys.stderr)
        return getattr(failure, "status", 1)
    finally:
        ending.ignore_signals()
        cleanup.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
