"""How the demo ends when something is not as it should be."""

import time


class Failure(Exception):
    """A sentence for the person, and the demo's exit status."""

    def __init__(self, sentence, status=1):
        super().__init__(sentence)
        self.status = status


def wait_until(seconds, condition):
    """Asks again and again; returns whether the condition came true in that time."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.05)
    return True
