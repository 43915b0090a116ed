"""The programs that the demo runs: its surroundings, the review service and the stand-in host."""

import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import sys

from ending import Failure
from surroundings import TOOLS, Browser, Surroundings, wait_until

DEFAULT_PORT = 48443
REFUSAL = "The demo was asked for a refusal."


class OwnSurroundings(Surroundings):
    """A home, a keyring and, without a person, a display of the demo's own. They end with the demo, however that
    ends."""

    def __init__(self, options, cleanup):
        home = [] if options.headless else ["--home", options.state / "home"]
        display = [TOOLS / "with_display"] if options.headless else []
        super().__init__(TOOLS / "with_home", *home, TOOLS / "with_keyring", *display)
        cleanup.callback(self.end)
        self.folder = pathlib.Path(self.environment["TMPDIR"])
        self.browser = Browser(self.folder, "" if options.headless else self._browser_of_the_person())
        self.environment["PATH"] = self.browser.path(self.environment)

    def _browser_of_the_person(self):
        """What opens a page in it, with the person's own environment. That is not on a command line, which everybody on
        the machine can read: it may hold secrets."""
        own = self.folder / "environment"
        become = "import json, os, sys; os.execvpe('xdg-open', sys.argv[1:], json.load(open(sys.argv[1])))"
        own.write_text(json.dumps(dict(os.environ)))
        own.chmod(0o600)
        return f'exec {shlex.join([sys.executable, "-c", become, str(own)])} "$1"\n'


class Program:
    def __init__(self, command, surroundings, log, cleanup):
        self.log = log
        with open(log, "w") as output:
            self._process = subprocess.Popen(command, env=surroundings.environment, stdin=subprocess.DEVNULL, stdout=output,
                                             stderr=subprocess.STDOUT, start_new_session=True)
        cleanup.callback(self._end)
        self.send, self.wait = self._process.send_signal, self._process.wait

    def ended(self):
        return self._process.poll() is not None

    def _end(self):
        self.send(signal.SIGCONT)
        self.send(signal.SIGTERM)
        # A host that hangs in a modal window does not hear that.
        if not wait_until(10, self.ended):
            self.send(signal.SIGKILL)
        self.wait()

    def said(self):
        return self.log.read_text(errors="replace")

    def last_words(self):
        return "\n".join(self.said().splitlines()[-5:])


class Service(Program):
    def __init__(self, options, surroundings, cleanup):
        self.data, password = options.state / "service", options.state / "password"
        self.password, self.authority = password.read_text().strip(), self.data / "ca" / "ca.pem"
        self.command = [options.build / "Service" / "orvane-service", "--data", self.data, "--port"]
        words = ["--demo-password-file", password]
        words += ["--refuse-uploads", REFUSAL] if options.variant == "upload" else []
        for port in [options.port] if options.port is not None else [DEFAULT_PORT, 0]:
            super().__init__([*self.command, str(port), *words], surroundings, options.state / "logs" / "service.log",
                             cleanup)
            wait_until(30, lambda: "ready on" in self.said() or self.ended())
            if "is in use" not in self.said():
                break
        ready = re.search(r"ready on https://127\.0\.0\.1:(\d+) ", self.said())
        if not ready:
            raise Failure(f"the service did not start\n{self.last_words()}")
        self.port = ready[1]


class Host(Program):
    def __init__(self, options, surroundings, service, cleanup):
        command = [options.build / "Host" / "orvane-host", *options.host, "--ca", service.authority,
                   "--connect-port", service.port]
        if options.variant == "preset":
            command = hide_preset(options.presets, options.preset, surroundings.folder / "presets") + command
        super().__init__(command, surroundings, options.state / "logs" / "host.log", cleanup)


def hide_preset(folder, preset, others):
    """Returns the words before a command for which the folder lacks the preset. Only that command sees it so: it has a
    mount namespace of its own."""
    shutil.copytree(folder, others, symlinks=True, ignore=shutil.ignore_patterns(preset))
    mount = ["--mount", "sh", "-c", 'mount --bind "$1" "$2" && shift 2 && exec "$@"', "sh", others, folder]
    # Whoever is not root is it for the mounting, and then oneself again.
    oneself = ["unshare", "--user", f"--map-user={os.getuid()}", f"--map-group={os.getgid()}"]
    for words in (["unshare", *mount], ["unshare", "--user", "--map-root-user", *mount, *oneself]):
        if subprocess.run([*words, "true"], stderr=subprocess.DEVNULL, check=False).returncode == 0:
            return words
    raise Failure("this machine lets nobody but root hide the encoding preset from one program", 77)
