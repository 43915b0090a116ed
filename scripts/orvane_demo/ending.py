"""How the demo ends when something is not as it should be, and when it is told to."""

import os
import signal
import sys

SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


class Failure(Exception):
    """A sentence for the person, and the demo's exit status."""

    def __init__(self, sentence, status=1):
        super().__init__(sentence)
        self.status = status


def expect_signals():
    """From now on Ctrl-C and its like end the program in order, with a line and the status that shells give."""
    for number in SIGNALS:
        signal.signal(number, _end)
    # Before this program was there, they were kept waiting.
    signal.pthread_sigmask(signal.SIG_UNBLOCK, SIGNALS)


def ignore_signals():
    """For the rest of the program, which is at its end."""
    signal.pthread_sigmask(signal.SIG_BLOCK, SIGNALS)


def _end(number, _):
    ignore_signals()
    # Not print(): what was interrupted may be just that.
    os.write(2, f"demo: ended by {signal.Signals(number).name}\n".encode())
    sys.exit(128 + number)
