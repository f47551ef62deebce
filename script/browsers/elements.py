"""elements.py: prints the top accessibility elements of the browser as JSON. A process of its own for each look: the
library keeps the bus of the first one."""
import json

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def shown(element, depth):
    entry = {"role": element.get_role_name(), "name": element.get_name()}
    inner = [shown(element.get_child_at_index(place), depth - 1)
             for place in range(element.get_child_count())] if depth else []
    inner = [child for child in inner if child["name"] or child.get("holds")]
    return {**entry, "holds": inner} if inner else entry


def main():
    desktop = Atspi.get_desktop(0)
    found = []
    for place in range(desktop.get_child_count()):
        try:
            application = desktop.get_child_at_index(place)
            if application and "hrom" in (application.get_name() or ""):
                found += [shown(application.get_child_at_index(number), 1)
                          for number in range(application.get_child_count())]
        except GLib.Error:
            continue
    print(json.dumps(found, ensure_ascii=False))


main()
