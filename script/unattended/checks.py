"""What a run must show, counted."""


class Checks:
    def __init__(self):
        self.failures = 0

    def __call__(self, what, held):
        print(f"  {'ok    ' if held else 'FAILED'}  {what}", flush=True)
        if not held:
            self.failures += 1
        return held


def in_order(lines, wanted):
    """Whether the wanted lines are among the lines, in their order."""
    rest = iter(lines)
    return all(line in rest for line in wanted)
