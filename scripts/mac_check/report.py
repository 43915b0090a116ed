"""The list that the check prints: a line for each thing that has to be so."""

import sys


class Report:
    """Prints as it goes, and remembers whether anything is not so."""

    def __init__(self):
        self.failures = 0
        self.lines = 0

    def check(self, is_so, what, *faults):
        """One line for what has to be so; when it is not, the faults stand below it."""
        self.lines += 1
        print(f"{'ok    ' if is_so else 'NOT SO'}  {what}")
        if not is_so:
            self.failures += 1
            for fault in faults:
                print(f"          {fault}")
        sys.stdout.flush()

    def none(self, what, faults):
        """One line for what must have no faults."""
        self.check(not faults, what, *faults)

    def same(self, what, found, expected):
        """One line for what must be equal to something; sets tell what is missing and what is too many."""
        if isinstance(expected, (set, frozenset)):
            faults = [f"missing: {name}" for name in sorted(expected - set(found))]
            faults += [f"too many: {name}" for name in sorted(set(found) - expected)]
        else:
            faults = [] if found == expected else [f"found {found}, not {expected}"]
        self.none(what, faults)
