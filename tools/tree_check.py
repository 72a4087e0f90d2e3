"""What the checks of the tree have in common: their command line and their self-tests.

A check is a function that takes the root of a tree and returns its problems, one line each.
"""

import argparse
import tempfile
from pathlib import Path

# The folders of the library and the host: what is installed or linked into what is installed, and the sample.
PRODUCT = ("zor0lang", "zor1math", "zor3geom", "include", "formats", "octree", "io", "analysis", "cloud",
           "companions", "sample", "host")
AROUND = ("tests", "fuzz", "bench", "examples")


def read_files(root, folders, suffixes):
    """All (path relative to the root, text) of the files with these suffixes below these folders, in order."""
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in suffixes and path.is_file():
                yield path.relative_to(root), path.read_text(errors="replace")


def run_self_tests(check, tests):
    """Runs `check` on made-up trees: (what it shows, {file: its text}, how many problems) each. Returns failures."""
    failed = 0
    for name, files, expected in tests:
        with tempfile.TemporaryDirectory() as scratch:
            root = Path(scratch).resolve()
            for path, text in files.items():
                (root / path).parent.mkdir(parents=True, exist_ok=True)
                (root / path).write_text(text)
            problems = check(root)
        if len(problems) != expected:
            failed += 1
            print(f"self-test '{name}': {expected} expected, found {problems}")
    print(f"{len(tests) - failed} of {len(tests)} self-tests passed")
    return failed


def run(check, tests, description, all_well):
    """The command line of a check. Returns the program's status."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--root", type=Path, default=Path(__file__).parent.parent)
    parser.add_argument("--self-test", action="store_true")
    arguments = parser.parse_args()
    if arguments.self_test:
        return 1 if run_self_tests(check, tests) else 0
    problems = check(arguments.root.resolve())
    print("\n".join(problems) if problems else all_well)
    return 1 if problems else 0
