"""Every small mistake that can be made in a source of the product, one at a time."""

import re
from dataclasses import dataclass

from cpp_text import FUNCTION_BODY, TOKEN, arguments, closing, masked, only_bodies, statements
from replacements import replacements

COMPARISON = re.compile(r" (?:[<>]|[<>=!]=) ")
LOGIC = re.compile(r" (?:&&|\|\|) ")
TABLE_ROW = re.compile(r"^    \{\{0x.*\n", re.M)


@dataclass(frozen=True)
class Mistake:
    file: str
    line: int
    kind: str
    old: str  # the lines concerned, as they are and with the mistake in them
    new: str
    text: str  # the whole file with the mistake in it

    def __str__(self):
        return f"{self.file}:{self.line}: {self.old}  ->  {self.new}"


def plain(text):
    """On one line, without blanks that do not matter."""
    return " ".join(text.split())


def mistake(file, text, kind, start, end, replacement):
    changed = text[:start] + replacement + text[end:]
    first = text.rfind("\n", 0, start) + 1
    last = (text + "\n").find("\n", end)
    old, new = text[first:last], changed[first : last + len(changed) - len(text)]
    return Mistake(file, text.count("\n", 0, start) + 1, kind, plain(old), plain(new), changed)


def wrong_tokens(file, text):
    for match in TOKEN.finditer(text):
        before, after = text[: match.start()], text[match.end() :]
        kind, others = replacements(match, before, after)
        for other in others:
            yield mistake(file, text, kind, match.start(), match.end(), other)


def negated_conditions(file, text, mask):
    for match in re.finditer(r"\b(?:if|while) \(|\breturn (?=[^;{]*\()", mask):
        start = match.end()
        end = mask.find(";", start) if "return" in match[0] else closing(mask, start - 1)
        # A lone comparison is negated by its operator already.
        if not COMPARISON.search(mask, start, end) or LOGIC.search(mask, start, end):
            yield mistake(file, text, "condition", start, end, f"!({text[start:end]})")


def removed_statements(file, text, mask):
    for body in FUNCTION_BODY.finditer(mask):
        for start, end in statements(mask, *body.span(1)):
            if end + 2 == body.end(1) and mask.startswith("return", start):
                continue  # the compiler tells a function that returns nothing
            yield mistake(file, text, "removed statement", start, end, "")


def is_literal(argument):
    return argument[:1] == '"' or argument[:1].isdigit()


def swapped_arguments(file, text, mask):
    for match in re.finditer(r"\b(?!if\b|for\b|while\b|return\b)\w+\(", mask):
        places = list(arguments(mask, match.end() - 1))
        is_message = match[0] == "write_message("
        for (start, middle), (_, end) in zip(places, places[1:]):
            first, second = text[start:middle].strip(), text[middle + 1 : end].strip()
            if first == second or (is_literal(first) != is_literal(second) and not is_message):
                continue  # the types tell them apart
            yield mistake(file, text, "swapped arguments", start, end, f"{second}, {first}")


def table_rows(file, text):
    rows = [match.span() for match in TABLE_ROW.finditer(text)]
    for start, end in rows:
        yield mistake(file, text, "table row", start, end - 1, "")
    for (start, middle), (after, end) in zip(rows, rows[1:]):
        if middle == after:
            swapped = (text[middle:end] + text[start:middle]).rstrip("\n")
            yield mistake(file, text, "table row", start, end - 1, swapped)


def mistakes_in(file, tree):
    """Every mistake in a source, each text once, in the order of its lines."""
    text = (tree / file).read_text()
    mask = masked(text)
    if file.endswith(".h"):  # declarations have nothing to remove or to swap
        mask = only_bodies(mask)
    found = {}
    for source in (
        wrong_tokens(file, text),
        negated_conditions(file, text, mask),
        removed_statements(file, text, mask),
        swapped_arguments(file, text, mask),
        table_rows(file, text),
    ):
        for one in source:
            found.setdefault(one.text, one)
    return sorted(found.values(), key=lambda one: one.line)
