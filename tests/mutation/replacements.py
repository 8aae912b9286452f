"""The tables of what a token of the product may be mistaken for."""

import re

# An operator between two operands stands between two blanks, which sets it apart from a
# pointer's star, a reference's ampersand and a template's brackets.
BETWEEN_OPERANDS = {
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "==": ["!="],
    "!=": ["=="],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "<<": [">>"],
    ">>": ["<<"],
    "&": ["|"],
    "|": ["&"],
    "+=": ["-=", "="],
    "?": ["|| true ?", "&& false ?"],
}
BESIDE_OPERAND = {"++": ["--"], "--": ["++"], "!": [""], "-": [""]}
WORDS = {
    "true": "false",
    "false": "true",
    "break": "continue",
    "min": "max",
    "static": "",
    "stdout": "stderr",
    "nullptr": '""',
    "SIG_IGN": "SIG_DFL",
    "STDERR_FILENO": "STDOUT_FILENO",
    "CUPS_SC_BIDI_SUPPORTED": "CUPS_SC_BIDI_NOT_SUPPORTED",
    "CUPS_SC_CMD_DRAIN_OUTPUT": "CUPS_SC_CMD_GET_BIDI",
    "CUPS_SC_CMD_GET_BIDI": "CUPS_SC_CMD_DRAIN_OUTPUT",
    "CUPS_SC_STATUS_OK": "CUPS_SC_STATUS_NONE",
    "begin": "end",
    "end": "begin",
}
# Where a word is no mistake: a name that is not called, a constant, a declared function.
HARMLESS = re.compile(r"(?:begin|end|min)\b(?!\()|static (?:constexpr\b|\w+ \w+\()")
TYPES = {"Available": "Unavailable", "Unavailable": "Available"}  # after "Type::"


def other_number(number):
    digits = number.replace("'", "")
    if digits.startswith("0x"):
        return [f"0x{int(digits, 16) ^ 1:0{len(digits) - 2}x}"]
    if "." in digits:
        return [str(float(digits) + 1)]
    return [str(int(digits) + 1)] + ([str(int(digits) - 1)] if int(digits) > 0 else [])


def other_text(text):
    """One plain character changed, one numeric escape changed, nothing left of it."""
    inside = text[1:-1]
    pieces = re.findall(r"\\x[0-9a-f]{2}|\\[0-7]{1,3}|\\.|[^\\]", inside)
    changed = []
    plain_ones = [i for i, piece in enumerate(pieces) if piece.isalnum()]
    numeric = [i for i, piece in enumerate(pieces) if re.match(r"\\[x0-7]", piece)]
    if plain_ones:
        changed.append((plain_ones[-1], chr(ord(pieces[plain_ones[-1]]) + 1)))
    changed += [(i, r"\1") for i in numeric]
    texts = ["".join(pieces[:i] + [other] + pieces[i + 1 :]) for i, other in changed]
    # A single word stands in a table or names a field: one change to it says all.
    if inside and not re.fullmatch(r"[\w.-]+", inside):
        texts.append("")
    return [f'"{other}"' for other in texts]


def replacements(match, before, after):
    """The kind of a token and what it may be mistaken for."""
    token, kind = match[0], match.lastgroup
    blanks = before.endswith(" ") and after.startswith((" ", "\n"))
    if kind == "number":
        return "constant", other_number(token)
    if kind == "string":
        return "text", other_text(token)
    if kind == "character":
        return "text", ["'#'" if token != "'#'" else "'$'"]
    if kind == "word" and before.endswith("Type::"):
        return "word", [TYPES[token]] if token in TYPES else []
    if kind == "word" and token in WORDS and not HARMLESS.match(token + after):
        return "word", [WORDS[token]]
    if kind == "operator":
        return "operator", (BETWEEN_OPERANDS if blanks else BESIDE_OPERAND).get(token, [])
    return kind, []
