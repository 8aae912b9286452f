"""Just enough of the shape of our C++ to make mistakes in the right places."""

import re

TOKEN = re.compile(
    r"""(?P<skip>//[^\n]*|^[ ]*\#[^\n]*)
      | (?P<string>"(?:\\.|[^"\\])*")
      | (?P<character>'(?:\\.|[^'\\])*')
      | (?P<number>0x[0-9a-f]+|\d[\d']*(?:\.\d+)?)
      | (?P<word>\w+)
      | (?P<operator><<|>>|<=|>=|==|!=|&&|\|\||\+\+|--|\+=|-=|::|->|[^\s\w])""",
    re.X | re.M,
)

DECLARATION = re.compile(
    r"(?!return\b|delete\b)[\w:<>]+(?: const)?[*&]*(?: const)? \w+(?: =|;|\[|\(|\{)"
)
FUNCTION_BODY = re.compile(r"^\{\n(.*?)^\}", re.M | re.S)


def masked(text):
    """The same length, with blanks for comments, directives and the insides of texts."""

    def mask(match):
        if match.lastgroup == "skip":
            return " " * len(match[0])
        if match.lastgroup in ("string", "character"):
            return '"' + "_" * (len(match[0]) - 2) + '"'
        return match[0]

    return TOKEN.sub(mask, text)


def only_bodies(mask):
    """The same length, with blanks for all but the bodies of functions."""
    kept = [" "] * len(mask)
    for body in FUNCTION_BODY.finditer(mask):
        kept[slice(*body.span())] = body[0]
    return "".join(kept)


def closing(text, opening):
    """The place of the bracket that closes the one at `opening`."""
    depth = 0
    for place in range(opening, len(text)):
        depth += (text[place] in "([{") - (text[place] in ")]}")
        if depth == 0:
            return place
    raise ValueError("unbalanced brackets")


def statements(mask, start, end):
    """The places of the statements in a function's body that are no declarations."""
    while (blank := re.compile(r"[\s{};]*").match(mask, start, end)).end() < end:
        start = blank.end()
        if control := re.compile(r"(?:if|for|while) (?=\()").match(mask, start):
            start = closing(mask, control.end()) + 1
        elif keyword := re.compile(r"(?:else|do)\b").match(mask, start):
            start = keyword.end()
        else:
            stop = start
            while mask[stop] != ";":
                stop = closing(mask, stop) + 1 if mask[stop] in "([{" else stop + 1
            if not DECLARATION.match(mask, start):
                yield start, stop
            start = stop + 1


def arguments(mask, opening):
    """The places of the arguments between a bracket and the one that closes it."""
    end, start, place = closing(mask, opening), opening + 1, opening + 1
    while place < end:
        if mask[place] in "([{":
            place = closing(mask, place)
        elif mask[place] == ",":
            yield start, place
            start = place + 1
        place += 1
    yield start, end
