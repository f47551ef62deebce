"""What became of a test."""

from dataclasses import dataclass

PASSED, FAILED, SKIPPED = "passed", "failed", "skipped"


@dataclass
class Outcome:
    name: str
    result: str
    seconds: float
    # What it wrote; kept where somebody will want to read it.
    output: str = ""

    def reason(self):
        """Why it was skipped."""
        lines = [line.strip() for line in self.output.splitlines() if line.strip()]
        for line in lines:
            if line.startswith("SKIPPED: "):
                return line[len("SKIPPED: "):]
        for line, following in zip(lines, lines[1:]):
            if line.endswith(": Skipped"):
                return following
        return "it does not say why"
