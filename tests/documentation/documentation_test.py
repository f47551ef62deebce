"""Holds what the documentation says against the code, the scenarios and the tree."""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "support")]

import figures
import help
import links
import log_lines
import messages
import named_tests
import pictures
import privacy
import server_page

TESTS = {name: test for module in (messages, log_lines, privacy, pictures, help, server_page, links, figures) for name, test in module.TESTS.items()}

sys.exit(named_tests.main(TESTS, [word for word in sys.argv[1:] if word.startswith("--")]))
