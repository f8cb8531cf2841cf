"""Writes sources in which every mutant stands behind a switch, and finds those that do not compile."""

import re

from sites import NEW, ON

# Marks around each mutant while the text is put together, so that an error can be traced to it.
OPEN, MIDDLE, CLOSE = "\x01", "\x02", "\x03"


class Woven:
    """A file with its mutants; `spans` says where each is, as (start, end, number) in bytes."""

    def __init__(self, marked):
        out, spans, stack = [], [], []
        place = 0
        for piece in re.split("(\x01\\d+\x02|\x03)", marked):
            if piece.startswith(OPEN):
                stack.append((place, int(piece[1:-1])))
            elif piece == CLOSE:
                start, number = stack.pop()
                spans.append((start, place, number))
            else:
                out.append(piece)
                place += len(piece.encode())
        self.text = "".join(out)
        self.spans = spans

    def mutants_at(self, place):
        """The innermost mutants around a byte."""
        around = [(end - start, number) for start, end, number in self.spans if start <= place <= end]
        least = min(around, default=(0, 0))[0]
        return {number for size, number in around if size == least}


def weave(text, numbered, variables):
    """The text with the mutants `numbered` (number -> site) in it; `variables` are (start, end) of constexpr
    keywords that become const."""
    edits = [(site.start, site.end, number, site) for number, site in numbered.items()]
    edits += [(start, end, 0, None) for start, end in variables]
    # The outer one first; of those at the same place, the first found is the inner one.
    edits.sort(key=lambda edit: (edit[0], -edit[1], -edit[2]))
    return Woven(_woven(text, 0, len(text), edits))


def _woven(text, start, end, edits):
    out, place, index = [], start, 0
    while index < len(edits):
        first, last, number, site = edits[index]
        inside = index + 1
        while inside < len(edits) and edits[inside][0] < last:
            inside += 1
        out.append(text[place:first].decode())
        new = _woven(text, first, last, edits[index + 1:inside])
        if site is None:
            out.append(_constant(text, first, last))
        else:
            on = f"mutants::onWhenRun<{number}>()" if site.in_constant_function else f"mutants::on({number})"
            out.append(OPEN + str(number) + MIDDLE + site.pattern.replace(NEW, new).replace(ON, on) + CLOSE)
        place, index = last, inside
    out.append(text[place:end].decode())
    return "".join(out)


def _constant(text, start, end):
    line = text[text.rfind(b"\n", 0, start) + 1:start].decode()
    if text[end:end + 7] == b" const ":
        return ""
    in_class = re.match(r"\s+static\s+$", line)
    return "inline const" if in_class else "const"


def blamed(diagnostic, woven_at, numbers_of_variable):
    """The mutants to leave out, and the constants to leave as they are, for one error. `woven_at` gives the Woven of
    a file's name, or None."""
    places = [diagnostic] + list(diagnostic.children)
    for place in places:
        file = place.location.file
        woven = woven_at(file.name) if file else None
        found = woven.mutants_at(place.location.offset) if woven else set()
        if found:
            return found, set()
    names = {name for place in places for name in re.findall(r"'(?:\w+::)*(\w+)'", place.spelling)}
    return set(), names & numbers_of_variable
