"""How the demo ends when something is not as it should be."""


class Failure(Exception):
    """A sentence for the person, and the demo's exit status."""

    def __init__(self, sentence, status=1):
        super().__init__(sentence)
        self.status = status
