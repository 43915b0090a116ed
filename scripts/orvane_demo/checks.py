"""What the demo looks at when the host has ended."""

import hashlib
import html
import os
import re
import subprocess

from driver import DESCRIPTION, TAGS, TITLE, UNWANTED_TAG
from ending import Failure
from processes import REFUSAL

# Exit statuses of the host; the demo has the first one, too.
NOTHING_EXPORTED = 3
RENDER_FAILED = 4
UNFINISHED = 7


def sha256(path):
    with open(path, "rb") as file:
        return hashlib.file_digest(file, "sha256").hexdigest()


def runs(*command):
    done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, errors="replace", check=False)
    return done.stdout if done.returncode == 0 else None


class Checks:
    """The functions that end in _facts give sentences and whether they are true."""

    def __init__(self, options, surroundings, service, host, started):
        self._options, self._surroundings, self._service = options, surroundings, service
        self._status, self._said, self._host, self._started = host.wait(), host.said(), host, started
        found = re.findall(r"orvane-host: rendered (.*) \(\d+ bytes, sha256 ([0-9a-f]{64}),", self._said)
        self._rendered, self._checksum = found[-1] if found else (None, None)
        self._cancelled = self._status == RENDER_FAILED and "the render was cancelled" in self._said
        self.link = None

    def run(self):
        """Raises a failure when something is not as it should be, or when the person exported nothing."""
        variant, failures = self._options.variant, 0
        if not self._options.headless and variant != "preset" and not self._rendered:
            self._explain_nothing()
        facts = {"preset": self._preset_facts, "render": self._render_facts, "cancel": self._render_facts,
                 "upload": self._refusal_facts}.get(variant, self._film_facts)
        print("What came of it:")
        for sentence, true in facts():
            print(f"  {'ok' if true else 'NOT SO'}: {sentence}")
            failures += not true
        if failures:
            logs = self._options.state / "logs"
            raise Failure(f"{failures} of these are not as they should be; the logs are in {logs}")

    def _explain_nothing(self):
        if self._cancelled and self._options.variant != "cancel":
            raise Failure("the render was cancelled; nothing was exported", NOTHING_EXPORTED)
        if self._status in (0, NOTHING_EXPORTED):
            raise Failure("the windows were closed; nothing was exported", NOTHING_EXPORTED)
        if self._status != RENDER_FAILED:
            raise Failure(f"the host ended with status {self._status}\n{self._host.last_words()}")

    def _preset_facts(self):
        yield "nothing was rendered", not self._rendered
        yield "the service was not asked for anything", " POST " not in self._service.said()
        yield "the host's exit status tells that nothing was exported", self._status == NOTHING_EXPORTED

    def _render_facts(self):
        what = "failed" if self._options.variant == "render" else "was cancelled"
        yield f"the host told that the render {what}", f"the render {what}" in self._said
        yield "the service has stored nothing", not self._stored()
        yield "the host's exit status tells it", self._status == RENDER_FAILED

    def _refusal_facts(self):
        yield "the host rendered a file", self._rendered
        yield "the plug-in reported the service's message", REFUSAL in self._said
        yield "the service has stored nothing", not self._stored()
        yield "the rendered file was kept", self._rendered and os.path.isfile(self._rendered)
        yield "the host's exit status tells that the upload did not end well", self._status == UNFINISHED

    def _film_facts(self):
        yield "the host rendered a file", self._rendered
        film = next((file for file in self._stored() if sha256(file) == self._checksum), None)
        yield f"the service has stored the same file (SHA-256 {self._checksum})", film
        if not film:
            return
        page = self._find_page(film.name)
        yield "its page is there", page
        yield "the film downloads unchanged from there", self._downloads()
        streams = runs("ffprobe", "-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0", film) or ""
        yield "it has a picture", "video" in streams
        yield "it has sound", "audio" in streams
        yield "it plays to its end", runs("ffmpeg", "-v", "error", "-xerror", "-i", film, "-f", "null", "-") is not None
        yield "the temporary file is gone", not os.path.exists(self._rendered)
        # A person may have cancelled another export after this one.
        cancelled = not self._options.headless and (self._cancelled or self._status == NOTHING_EXPORTED)
        yield "the host ended well", self._status == 0 or cancelled
        if self._options.headless and page:
            yield from self._page_facts(page)

    def _page_facts(self, page):
        # Only what the driver has typed and chosen can be compared.
        yield "the browser was sent to the page", self._surroundings.browser.opened() == [self.link]
        yield "the page has the title", html.escape(TITLE) in page
        yield "the page has the description", all(html.escape(line) in page for line in DESCRIPTION)
        for tag in TAGS:
            yield f"the page has the tag {tag}", f">{tag}</li>" in page
        if self._options.variant == "keyboard":
            yield "the page lacks the tag that was removed", UNWANTED_TAG not in page

    def _stored(self):
        files = (self._service.data / "files").rglob("*")
        return [file for file in files if file.is_file() and file.stat().st_mtime >= self._started]

    def _fetch(self, address):
        path, authority = self._surroundings.folder / "fetched", self._service.authority
        done = runs("curl", "-sSf", "--max-time", "60", "--cacert", authority, "-o", path, address)
        return path if done is not None else None

    def _find_page(self, name):
        """Returns the page of the stored file and keeps its address. Whose it is, only the service knows."""
        for subdomain in ("acme", "nordlicht"):
            address = f"https://{subdomain}.orvane.localhost:{self._service.port}/review/{name}"
            page = self._fetch(address)
            if page:
                self.link = address
                return page.read_text()
        return None

    def _downloads(self):
        download = self.link and self._fetch(f"{self.link}/file")
        return download and sha256(download) == self._checksum
