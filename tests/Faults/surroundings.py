"""A home, a keyring and a display that rows share, and what can be wrong with the machine."""

import contextlib
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import time

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "surroundings"
NO_BUS = "unix:path=/nonexistent/bus"
LOCK = ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.secrets", "/org/freedesktop/secrets",
        "org.freedesktop.Secret.Service.Lock", "array:objpath:/org/freedesktop/secrets/aliases/default"]


def wait_until(seconds, condition):
    """Asks again and again; returns whether the condition came true in that time."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.05)
    return True


class Surroundings:
    """They exist from construction to end()."""

    def __init__(self, keyring=True):
        # A keyring that is locked must not ask the person who runs this.
        own = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        bus = TOOLS.parents[1] / "tests" / "KcKeychain" / "bus_without_services.conf"
        no_keyring = ["dbus-run-session", f"--config-file={bus}", "--"]
        tools = [TOOLS / "with_home", *([TOOLS / "with_keyring"] if keyring else no_keyring), TOOLS / "with_display"]
        teller = "import json, os, sys; print(json.dumps(dict(os.environ)), flush=True); sys.stdin.read()"
        self._process = subprocess.Popen([*tools, sys.executable, "-c", teller], stdin=subprocess.PIPE, env=own,
                                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True)
        self.environment = json.loads(self._process.stdout.readline())

    def end(self):
        self._process.stdin.close()
        self._process.wait()

    def lock_keyring(self):
        subprocess.run(LOCK, env=self.environment, check=True, capture_output=True)


class Place:
    """The folder of a row: its temporary folder, its bundle, and a browser that only notes where it was sent."""

    def __init__(self, folder, bundle, setting):
        self.folder, self._setting, self.prefix = folder, setting, []
        self.temporary, self.bundle, self._opened = folder / "tmp", bundle, folder / "opened"
        if setting != "missing":
            self.temporary.mkdir()
            os.mkdir(os.fsencode(self.temporary) + b"\xff")  # a folder whose path is no text
        if setting == "full":
            as_root = [] if os.geteuid() == 0 else ["--user", "--map-root-user"]
            self.prefix = ["unshare", *as_root, "--mount", "sh", "-c", 'mount -t tmpfs -o size=64k tmpfs "$0" && exec "$@"', self.temporary]
        if setting.startswith("without "):
            self.bundle = folder / "Orvane.bundle"
            shutil.copytree(bundle, self.bundle, symlinks=True)
            (self.bundle / "Contents" / "Resources" / f"{setting.split()[1]}.xib").unlink()
        self._opener = folder / "bin" / "xdg-open"
        self._opener.parent.mkdir()
        self._opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>{shlex.quote(str(self._opened))}\n')
        self._opener.chmod(0o700)

    def environment(self, surroundings):
        own = {**surroundings.environment, "TMPDIR": str(self.temporary),
               "PATH": f"{self.folder / 'bin'}:{surroundings.environment['PATH']}"}
        return {**own, "DBUS_SESSION_BUS_ADDRESS": NO_BUS} if self._setting == "no bus" else own

    def opened(self):
        # The browser may outlive the host that started it.
        wait_until(10, lambda: not self._opener_runs())
        return self._opened.read_text().splitlines() if self._opened.exists() else []

    def _opener_runs(self):
        for process in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
            with contextlib.suppress(OSError):
                if os.fsencode(self._opener) in process.read_bytes().split(b"\0"):
                    return True
        return False

    def films(self):
        """How many films the temporary folder holds."""
        return len(list(self.temporary.glob("*.mp4")))

    def wait_for_another_name(self):
        """A film is named for the second in which its render begins: that of a host that was killed would be written
        over, and deleted, by an export within the same second."""
        newest = max((film.stat().st_mtime for film in self.temporary.glob("*.mp4")), default=0)
        wait_until(10, lambda: int(time.time()) > int(newest))
