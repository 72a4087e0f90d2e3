"""Small changes of C++ sources that a test should notice, for tools/mutate."""

from __future__ import annotations

import hashlib
import re
from dataclasses import dataclass
from pathlib import Path
from typing import Iterator

# What stands between blanks is a binary operator: the sources are formatted, and neither template brackets nor
# the marks of pointers and references have a blank on both sides.
BINARY = {
    "comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
    "arithmetic": {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "+=": "-=", "-=": "+=", "<<": ">>", ">>": "<<"},
    "logic": {"&&": "||", "||": "&&", "&": "|", "|": "&", "|=": "&=", "&=": "|="},
}
KIND_OF = {old: (kind, new) for kind, table in BINARY.items() for old, new in table.items()}
ANY = "|".join(re.escape(s) for s in sorted(KIND_OF, key=len, reverse=True))
OPERATOR = re.compile(r"(?<= )(" + ANY + r")(?=[ \n])")
STEP = re.compile(r"\+\+|--")
NOT = re.compile(r"(?<![\w)\]])!(?=[\w(:])")
WHOLE = re.compile(r"(?<![\w.'])(\d+)([uU]?[lL]{0,2})(?![\w.'])")
REAL = re.compile(r"(?<![\w.'])(\d+\.\d+(?:[eE][+-]?\d+)?)([fF]?)(?![\w.'])")
RETURN = re.compile(r"\breturn ([^;{}\n]+);")
NOTHING = {"false": "true", "true": "false", "0": "", "nullptr": "", "*this": ""}

# Comments, texts and lines for the preprocessor, in which nothing is changed.
ASIDE = re.compile(r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])'|^[ \t]*#(?:\\\n|[^\n])*", re.S | re.M)


@dataclass(frozen=True)
class Mutant:
    """One change: `old` at `pos` of a file becomes `new`."""

    path: str
    pos: int
    line: int
    text: str  # of the line, without blanks around it
    old: str
    new: str
    kind: str
    nth: int  # of the same changes in lines of the same text in this file, from 0

    @property
    def key(self) -> str:
        """What it is, also when other lines of the file have changed."""
        return f"{self.path}: {self.text}: {self.old} -> {self.new} [{self.nth}]"

    def rank(self, seed: int) -> str:
        return hashlib.sha256(f"{seed}:{self.key}".encode()).hexdigest()

    def apply(self, source: str) -> str:
        if not source.startswith(self.old, self.pos):
            raise ValueError(f"{self.path} is not the file that was read")
        return source[: self.pos] + self.new + source[self.pos + len(self.old) :]


def blank_aside(source: str) -> str:
    """The source with blanks for what is not code, so that positions stay."""
    return ASIDE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), source)


def find_changes(code: str) -> Iterator[tuple[int, str, str, str]]:
    """All (position, old, new, kind) in a source without comments."""
    for match in OPERATOR.finditer(code):
        kind, new = KIND_OF[match.group()]
        yield match.start(), match.group(), new, kind
    for match in STEP.finditer(code):
        yield match.start(), match.group(), "--" if match.group() == "++" else "++", "arithmetic"
    for match in NOT.finditer(code):
        yield match.start(), "!", "", "logic"
    for match in WHOLE.finditer(code):
        number, suffix = int(match.group(1)), match.group(2)
        yield match.start(), match.group(), f"{number + 1}{suffix}", "constant"
        if number > 0:
            yield match.start(), match.group(), f"{number - 1}{suffix}", "constant"
    for match in REAL.finditer(code):
        yield match.start(), match.group(), f"({match.group()} + 1)", "constant"
        yield match.start(), match.group(), f"({match.group()} - 1)", "constant"
    for match in RETURN.finditer(code):
        new = NOTHING.get(match.group(1), "{}")
        if new:
            yield match.start(1), match.group(1), new, "return"


def find_mutants(root: Path, path: Path) -> list[Mutant]:
    """All changes of one file, in its order."""
    source = path.read_text()
    name = path.relative_to(root).as_posix()
    lines = source.split("\n")
    seen: dict[tuple[str, str, str], int] = {}
    mutants = []
    for pos, old, new, kind in sorted(find_changes(blank_aside(source))):
        number = source.count("\n", 0, pos)
        text = " ".join(lines[number].split())
        change = (text, old, new)
        nth = seen.get(change, 0)
        seen[change] = nth + 1
        mutants.append(Mutant(name, pos, number + 1, text, old, new, kind, nth))
    return mutants
