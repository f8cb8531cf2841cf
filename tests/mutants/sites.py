"""Finds the places of C++ sources that can be broken in a small way."""

import re
from dataclasses import dataclass

from clang.cindex import Config, CursorKind, Index, TypeKind

Config.set_library_file("/usr/lib/llvm-19/lib/libclang-19.so.1")

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": None, "!=": None}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*"}
NUMBERS = {
    TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.ULONGLONG,
    TypeKind.SHORT, TypeKind.USHORT, TypeKind.FLOAT, TypeKind.DOUBLE,
}
EXPRESSIONS = {
    CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR,
    CursorKind.UNARY_OPERATOR, CursorKind.UNEXPOSED_EXPR, CursorKind.CONDITIONAL_OPERATOR,
}
NEW, ON = "\x04", "\x05"
LOOPS = {CursorKind.FOR_STMT, CursorKind.CXX_FOR_RANGE_STMT, CursorKind.WHILE_STMT, CursorKind.DO_STMT}


@dataclass
class Site:
    """A place, as bytes of a file, and one way to break it. In `pattern`, which takes the place, NEW stands for the text
    that was there, with other mutants in it, and ON for the condition under which this one is alive."""

    file: str
    start: int
    end: int
    kind: str
    change: str
    pattern: str
    in_constant_function: bool = False
    variable: object = None  # the constant of the language that must become one of the program
    line: int = 0


@dataclass
class Variable:
    """A constexpr variable: its name and the bytes of the keyword."""

    name: str
    start: int
    end: int


@dataclass
class Context:
    in_constant_function: bool = False
    variable: object = None
    loop: bool = False


def shortened(text, most=90):
    text = " ".join(text.split())
    return text if len(text) <= most else text[: most - 3] + "..."


class Finder:
    """Finds the sites of one file in the syntax tree of a source that includes it."""

    def __init__(self, file, text):
        self.file = file
        self.text = text
        self.sites = []
        self.seen = set()

    def source(self, start, end):
        return self.text[start:end].decode()

    def line_of(self, place):
        return self.text.count(b"\n", 0, place) + 1

    def whole_line(self, place):
        start = self.text.rfind(b"\n", 0, place) + 1
        end = self.text.find(b"\n", place)
        return shortened(self.source(start, end), 110)

    def add(self, kind, start, end, change, pattern, context):
        key = (kind, start, end, change)
        if start >= end or key in self.seen or b"\n#" in self.text[start:end]:
            return
        self.seen.add(key)
        self.sites.append(Site(self.file, start, end, kind, change, pattern, context.in_constant_function,
                               context.variable, self.line_of(start)))

    # --- the tree ---

    def visit(self, cursor, context, parent=None):
        kind = cursor.kind
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if kind in (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR,
                    CursorKind.DESTRUCTOR, CursorKind.CONVERSION_FUNCTION, CursorKind.FUNCTION_TEMPLATE,
                    CursorKind.LAMBDA_EXPR):
            context = self.of_function(cursor, start, context)
            if context is None:
                return
        elif kind == CursorKind.VAR_DECL:
            context = self.of_variable(cursor, start, context)
        elif kind in (CursorKind.STATIC_ASSERT, CursorKind.ENUM_DECL, CursorKind.TEMPLATE_NON_TYPE_PARAMETER):
            return
        elif kind in LOOPS:
            context = Context(context.in_constant_function, context.variable, True)
        elif kind == CursorKind.SWITCH_STMT:
            context = Context(context.in_constant_function, context.variable, False)
        self.examine(cursor, start, end, context, parent)
        children = list(cursor.get_children())
        if kind == CursorKind.CASE_STMT:
            children = children[1:]  # not its label
        for child in children:
            self.visit(child, context, cursor)

    def of_function(self, cursor, start, context):
        children = list(cursor.get_children())
        bodies = [child for child in children if child.kind == CursorKind.COMPOUND_STMT]
        if not bodies or bodies[-1].extent.end.offset - bodies[-1].extent.start.offset < 2:
            if cursor.kind == CursorKind.LAMBDA_EXPR:
                return context
            return None
        head = self.source(start, bodies[-1].extent.start.offset)
        if not self.source(bodies[-1].extent.start.offset, bodies[-1].extent.end.offset).startswith("{"):
            return None  # written by the compiler
        constant = cursor.kind != CursorKind.LAMBDA_EXPR and re.search(r"\bconst(expr|eval)\b", head)
        return Context(bool(constant), None if cursor.kind != CursorKind.LAMBDA_EXPR else context.variable,)

    def of_variable(self, cursor, start, context):
        head = self.source(start, cursor.extent.end.offset).split(cursor.spelling)[0] if cursor.spelling else ""
        keyword = re.search(r"\bconstexpr\b", head)
        if not keyword:
            return context
        place = start + len(head[: keyword.start()].encode())
        return Context(context.in_constant_function, Variable(cursor.spelling, place, place + 9), context.loop)

    # --- one node ---

    def examine(self, cursor, start, end, context, parent):
        kind = cursor.kind
        if kind in (CursorKind.BINARY_OPERATOR, CursorKind.CALL_EXPR):
            self.operator(cursor, start, end, context)
        elif kind == CursorKind.UNARY_OPERATOR:
            self.negation(cursor, start, end, context)
        elif kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            self.number(cursor, start, end, context, parent)
        elif kind == CursorKind.STRING_LITERAL:
            self.words(start, end, context)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            self.truth(start, end, context)
        elif kind == CursorKind.IF_STMT:
            self.condition(cursor, context)
        elif kind in (CursorKind.WHILE_STMT, CursorKind.FOR_STMT):
            self.loop(cursor, context)
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            first = next(cursor.get_children(), None)
            if first is not None:
                self.always(first, context, (True, False))
        self.statements(cursor, context)

    def operator(self, cursor, start, end, context):
        children = list(cursor.get_children())
        if cursor.kind == CursorKind.CALL_EXPR:
            if re.match(r'operator""', cursor.spelling):
                return self.number(cursor, start, end, context, None)
            if len(children) != 3 or not re.match(r"operator(<|<=|>|>=|==|!=|<=>)$", cursor.spelling):
                return None
            left, right = children[0], children[2]
        else:
            if len(children) != 2:
                return None
            left, right = children
        left = (left.extent.start.offset, left.extent.end.offset)
        right = (right.extent.start.offset, right.extent.end.offset)
        if not (start <= left[0] < left[1] <= right[0] < right[1] <= end):
            return None
        operator = re.sub(r"/\*.*?\*/|//[^\n]*", "", self.source(left[1], right[0]), flags=re.S).strip()
        text = shortened(self.source(start, end))
        if operator in COMPARISONS:
            self.add("comparison", start, end, f"the opposite of: {text}",
                     f"(({NEW}) != {ON})", context)
            other = COMPARISONS[operator]
            if other:
                self.exchanged(start, end, left, right, operator, other, context)
        elif operator in ARITHMETIC and cursor.type.get_canonical().kind in NUMBERS:
            self.exchanged(start, end, left, right, operator, ARITHMETIC[operator], context)
        elif operator in ("&&", "||"):
            for child in children:
                self.always(child, context, (operator == "&&",))
        return None

    def exchanged(self, start, end, left, right, operator, other, context):
        broken = self.source(left[0], left[1]) + f" {other} " + self.source(right[0], right[1])
        self.add("operator", start, end, f"{other} for {operator}: {shortened(self.source(start, end))}",
                 f"({ON} ? ({broken}) : ({NEW}))", context)

    def negation(self, cursor, start, end, context):
        text = self.source(start, end)
        if text.startswith("!") and not text.startswith("!="):
            self.add("negation", start, end, f"without the !: {shortened(text)}",
                     f"(({NEW}) != {ON})", context)

    def always(self, cursor, context, values):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source(start, end)
        if text in ("true", "false") or not text:
            return
        for value in values:
            # The condition is computed all the same: what it does stays done.
            tail = f"|| {ON}" if value else f"&& !{ON}"
            self.add("condition", start, end, f"always {str(value).lower()}: {shortened(text)}",
                     f"(static_cast<bool>({NEW}) {tail})", context)

    def number(self, cursor, start, end, context, parent):
        text = self.source(start, end)
        line = self.text.rfind(b"\n", 0, start) + 1
        if re.search(r"\breserve\([^;]*$", self.source(line, start)):
            return  # of room alone
        number = re.match(r"(0x[0-9A-Fa-f']+|\d[\d']*)(\.\d+)?(\w*)$", text)
        if not number:
            return
        whole, fraction, suffix = number.groups()
        value = int(whole.replace("'", ""), 0) if not (whole[0] == "0" and whole.isdigit()) else int(whole, 8)
        if fraction:
            other = f"{value + 1}{fraction}{suffix}"
        else:
            other = f"{value + 1}{suffix}"
        cast = ""
        if parent is not None and parent.kind == CursorKind.UNEXPOSED_EXPR and \
                (parent.extent.start.offset, parent.extent.end.offset) == (start, end):
            if parent.type.get_canonical().kind not in NUMBERS | {TypeKind.UCHAR, TypeKind.CHAR_S, TypeKind.SCHAR}:
                return  # nullptr
            cast = parent.type.get_canonical().spelling.replace("const ", "")
        before = f"static_cast<{cast}>" if cast else ""
        self.add("constant", start, end, f"{other} for {text}: {self.whole_line(start)}",
                 f"{before}({ON} ? {other} : {text})", context)

    def words(self, start, end, context):
        text = self.source(start, end)
        if not re.match(r'"', text):
            return
        close = text.rfind('"')
        other = text[:close] + "~" + text[close:]
        self.add("text", start, end, f"{shortened(other)} for {shortened(text)}: {self.whole_line(start)}",
                 f"({ON} ? {other} : {text})", context)

    def truth(self, start, end, context):
        text = self.source(start, end)
        if text not in ("true", "false"):
            return
        other = "false" if text == "true" else "true"
        self.add("constant", start, end, f"{other} for {text}: {self.whole_line(start)}",
                 f"({ON} ? {other} : {text})", context)

    # --- conditions ---

    def condition(self, cursor, context):
        children = list(cursor.get_children())
        head = self.source(cursor.extent.start.offset, children[0].extent.start.offset) if children else ""
        if re.match(r"if\s+constexpr", head):
            return
        declared = [child for child in children if child.kind == CursorKind.VAR_DECL]
        if declared:
            self.declared_condition(declared[0], context)
            return
        if children[0].kind == CursorKind.DECL_STMT:
            children = children[1:]
        self.always(children[0], context, (True, False))

    def declared_condition(self, variable, context):
        start, end = variable.extent.start.offset, variable.extent.end.offset
        name = variable.spelling
        self.add("condition", start, end, f"always false: {shortened(self.source(start, end))}",
                 f"{NEW}; static_cast<bool>({name}) && !{ON}", context)

    def loop(self, cursor, context):
        for child in cursor.get_children():
            if child.kind in (CursorKind.DECL_STMT, CursorKind.COMPOUND_STMT, CursorKind.VAR_DECL):
                continue
            if child.kind.is_expression() and child.type.get_canonical().kind == TypeKind.BOOL:
                self.always(child, context, (False,))
            return

    # --- statements ---

    def statements(self, cursor, context):
        """What is done: dropped, and, side by side in a block, exchanged."""
        if cursor.kind == CursorKind.COMPOUND_STMT:
            run = []
            children = list(cursor.get_children())
            for child in children:
                end = self.whole_statement(child)
                if end:
                    self.dropped(child, context)
                    run.append((child.extent.start.offset, end))
                    continue
                self.run_of_statements(run, context)
                run = []
                if child is not children[-1]:
                    self.jump(child, context)
            self.run_of_statements(run, context)
        elif cursor.kind in LOOPS | {CursorKind.IF_STMT, CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT}:
            for child in list(cursor.get_children())[1 if cursor.kind == CursorKind.IF_STMT else 0:]:
                if self.whole_statement(child):
                    self.dropped(child, context)
                elif cursor.kind == CursorKind.IF_STMT:
                    self.jump(child, context)

    def whole_statement(self, cursor):
        """The byte after the semicolon of a statement that is an expression; None of everything else."""
        if cursor.kind not in EXPRESSIONS:
            return None
        place = cursor.extent.end.offset
        after = re.match(rb"\s*;", self.text[place:place + 40])
        before = self.text[:cursor.extent.start.offset].rstrip()[-1:]
        return place + after.end() if after and before in b";{}):e" else None

    def dropped(self, cursor, context):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if re.search(r"\breserve\([^;]*$", self.source(start, end)):
            return  # of room alone
        self.add("call", start, end, f"dropped: {shortened(self.source(start, end))}",
                 f"({ON} ? void() : static_cast<void>({NEW}))", context)

    def jump(self, cursor, context):
        """A return of nothing, or an end of a loop or of its turn, that does not happen."""
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source(start, end)
        if text not in ("return", "continue", "break") or (text == "break" and not context.loop):
            return
        after = re.match(rb"\s*;", self.text[end:end + 40])
        if after:
            self.add("call", start, end + after.end(), f"dropped: {self.whole_line(start)}",
                     "{ if (!" + ON + ") " + NEW + " }", context)

    def run_of_statements(self, run, context):
        for (start, first_end), (second, end) in zip(run, run[1:]):
            first, then = self.source(start, first_end), self.source(second, end)
            # What calls nothing can mostly be exchanged without a difference.
            if first == then or "(" not in first or "(" not in then:
                continue
            self.add("order", run[0][0], run[-1][1], f"exchanged: {shortened(first, 60)} {shortened(then, 60)}",
                     self.exchange(run[0][0], run[-1][1], start, first_end, second, end), context)
            self.sites[-1].line = self.line_of(start)

    def exchange(self, begin, finish, start, first_end, second, end):
        before, after = self.source(begin, start), self.source(end, finish)
        turned = self.source(second, end) + " " + self.source(start, first_end)
        return "if (" + ON + ") {" + before + turned + after + "} else {" + NEW + "}"


def parse(path, arguments, unsaved=None):
    return Index.create().parse(path, arguments, unsaved_files=unsaved)


def sites_of(unit, root, folders):
    """The sites of all files below `folders` (of the folder `root`) that the syntax tree names: file -> sites."""
    finders = {}
    for cursor in unit.cursor.get_children():
        file = cursor.location.file
        if file is None or not file.name.startswith(root):
            continue
        name = file.name[len(root):].lstrip("/")
        if not name.startswith(folders):
            continue
        if name not in finders:
            with open(file.name, "rb") as source:
                finders[name] = Finder(name, source.read())
        finders[name].visit(cursor, Context())
    return {name: finder.sites for name, finder in finders.items()}
