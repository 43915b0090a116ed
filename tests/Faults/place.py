"""The folder of a row, and what can be wrong with the machine."""

import os
import shutil
import subprocess
import time

from surroundings import Browser, wait_until

NO_BUS = "unix:path=/nonexistent/bus"
PRESETS = "/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel"

# What the one program sees in place of its temporary folder, $0, or of the presets.
MOUNTS = {
    "full": 'mount -t tmpfs -o size=64k tmpfs "$0"',
    "no presets": f'mount -t tmpfs tmpfs "{PRESETS}"',
    "one preset": f'mount -t tmpfs tmpfs "{PRESETS}" && touch "{PRESETS}/Orvane.epr"',
}
OWN_MOUNTS = ["unshare", *([] if os.geteuid() == 0 else ["--user", "--map-root-user"]), "--mount"]


def mounts_are_allowed():
    """A container may lack the rights."""
    return subprocess.run([*OWN_MOUNTS, "true"], capture_output=True).returncode == 0


class Place:
    """Its temporary folder, its bundle, and its browser."""

    def __init__(self, folder, bundle, setting):
        self.folder, self._setting, self.prefix = folder, setting, []
        self.temporary, self.bundle, self.browser = folder / "tmp", bundle, Browser(folder)
        if setting == "long":
            self.temporary = folder / ("path-of-more-than-127-bytes-" * 4) / "tmp"
        if setting != "missing":
            self.temporary.mkdir(parents=True)
            os.mkdir(os.fsencode(self.temporary) + b"\xff")  # a folder whose path is no text
        if setting in MOUNTS:
            self.prefix = [*OWN_MOUNTS, "sh", "-c", f'{MOUNTS[setting]} && exec "$@"', self.temporary]
        if setting.startswith("without "):
            self.bundle = folder / "Orvane.bundle"
            shutil.copytree(bundle, self.bundle, symlinks=True)
            (self.bundle / "Contents" / "Resources" / f"{setting.split()[1]}.xib").unlink()

    def environment(self, surroundings):
        own = {**surroundings.environment, "TMPDIR": str(self.temporary),
               "PATH": self.browser.path(surroundings.environment)}
        return {**own, "DBUS_SESSION_BUS_ADDRESS": NO_BUS} if self._setting == "no bus" else own

    def films(self):
        return list(self.temporary.glob("*.mp4"))

    def wait_for_another_name(self):
        """A film is named for the second in which its render begins: that of a host that was killed would be written
        over, and deleted, by an export within the same second."""
        newest = max((film.stat().st_mtime for film in self.films()), default=0)
        wait_until(10, lambda: int(time.time()) > int(newest))
