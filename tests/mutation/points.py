# SPDX-License-Identifier: MIT
"""The points of a C++ file at which a mutant departs from it, and the file rewritten with them.

Each point becomes a call of switch.h by insertions that nest, so that one compilation holds every
mutant of the file."""

import dataclasses

from clang.cindex import CursorKind, Index, TokenKind, TranslationUnit, TypeKind

# What calls stand for an operator, and what its mutants are.
OPERATORS = {
    "<": ("less", ["<=", ">="]),
    ">": ("greater", [">=", "<="]),
    "<=": ("notGreater", ["<", ">"]),
    ">=": ("notLess", [">", "<"]),
    "==": ("equal", ["!="]),
    "!=": ("notEqual", ["=="]),
    "+": ("plus", ["-"]),
    "-": ("minus", ["+"]),
    "*": ("times", ["/"]),
    "/": ("dividedBy", ["*"]),
    "%": ("rest", ["*"]),
    "&": ("bothBits", ["|"]),
    "|": ("anyBits", ["&"]),
    "^": ("otherBits", ["&"]),
    "<<": ("shiftedLeft", [">>"]),
    ">>": ("shiftedRight", ["<<"]),
}
CONDITIONAL = (CursorKind.IF_STMT, CursorKind.WHILE_STMT)
STATEMENTS = (CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.UNARY_OPERATOR,
              CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CONTINUE_STMT,
              CursorKind.BREAK_STMT)
# Within these a number is one for the compiler.
CONSTANT = (CursorKind.STATIC_ASSERT, CursorKind.ENUM_DECL, CursorKind.ENUM_CONSTANT_DECL,
            CursorKind.FIELD_DECL, CursorKind.PARM_DECL, CursorKind.TEMPLATE_REF,
            CursorKind.TYPE_REF, CursorKind.CXX_UNARY_EXPR)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.LAMBDA_EXPR)
CALL = "zel::mutation::"


def operands_of(cursor):
    """Of an operator between two operands, built in or overloaded."""
    parts = list(cursor.get_children())
    if cursor.kind == CursorKind.BINARY_OPERATOR:
        return parts
    if cursor.kind == CursorKind.CALL_EXPR and cursor.spelling.startswith("operator") and \
            len(parts) == 3 and parts[0].extent.start.offset == cursor.extent.start.offset:
        return [parts[0], parts[2]]
    return []


def has_mutants(cursor, operands, name):
    """Texts are compared, but have no minus; nor do two pointers have a plus."""
    if cursor.kind == CursorKind.CALL_EXPR:
        return name in ("<", ">", "<=", ">=", "==", "!=")
    return name != "-" or any(part.type.kind != TypeKind.POINTER for part in operands)


@dataclasses.dataclass
class Point:
    file: str
    line: int
    last_line: int
    changes: list  # a text a mutant
    insertions: list  # (offset, depth, text, how much of the source it replaces)


class File:
    """Finds the points of one file."""

    def __init__(self, path, name, arguments):
        self.name = name
        self.source = path.read_bytes()
        unit = Index.create().parse(str(path), arguments,
                                    options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        self.points = []
        self.macros = [self.span(c) for c in unit.cursor.get_children()
                       if c.kind == CursorKind.MACRO_INSTANTIATION and self.is_here(c, path)]
        for cursor in unit.cursor.get_children():
            if self.is_here(cursor, path):
                self.visit(cursor, [unit.cursor])

    @staticmethod
    def is_here(cursor, path):
        return cursor.location.file is not None and cursor.location.file.name == str(path)

    @staticmethod
    def span(cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def text(self, cursor):
        first, last = self.span(cursor)
        return " ".join(self.source[first:last].decode("utf-8", "replace").split())

    def before(self, cursor):
        return self.source[:self.span(cursor)[0]].rstrip()[-1:]

    def is_plain(self, cursor):
        """Whether it touches no macro: those stand elsewhere than they seem to."""
        start, end = self.span(cursor)
        return start < end and all(end <= first or last <= start for first, last in self.macros)

    def visit(self, cursor, parents):
        if self.is_constant(cursor, parents):
            return
        if self.is_plain(cursor):
            self.add_points(cursor, parents)
        for child in cursor.get_children():
            if cursor.kind != CursorKind.CASE_STMT or child != next(cursor.get_children()):
                self.visit(child, [*parents, cursor])

    def is_constant(self, cursor, parents):
        if cursor.kind in CONSTANT:
            return True
        if cursor.kind != CursorKind.VAR_DECL:
            return False
        words = [token.spelling for token in cursor.get_tokens()]
        is_number = cursor.type.kind not in (TypeKind.RECORD, TypeKind.POINTER, TypeKind.AUTO)
        is_global = parents[-1].kind in (CursorKind.NAMESPACE, CursorKind.TRANSLATION_UNIT)
        return "constexpr" in words or is_global or \
            (cursor.type.is_const_qualified() and is_number and "(" not in words)

    def add_points(self, cursor, parents):
        kind, depth = cursor.kind, 2 * len(parents)
        operands = operands_of(cursor)
        if len(operands) == 2 and all(map(self.is_plain, operands)):
            self.add_operator(cursor, operands, depth)
        if kind == CursorKind.INTEGER_LITERAL and self.is_free_number(cursor, parents):
            self.wrap(cursor, depth, "number", f"{self.text(cursor)} + 1")
        if kind in CONDITIONAL:
            self.add_condition(cursor, depth + 1)
        if kind == CursorKind.RETURN_STMT:
            self.add_result(cursor, parents, depth + 1)
        if kind in STATEMENTS and parents[-1].kind == CursorKind.COMPOUND_STMT:
            self.add(cursor, [f"without {self.text(cursor)}"],
                     [(self.span(cursor)[0], depth - 1, f"if ({CALL}keeps(@)) ", 0)])

    def add(self, cursor, changes, insertions):
        self.points.append(Point(self.name, cursor.extent.start.line, cursor.extent.end.line,
                                 changes, insertions))

    def around(self, cursor, depth, call, end=")"):
        first, last = self.span(cursor)
        return [(first, depth, CALL + call, 0), (last, -depth, end, 0)]

    def wrap(self, cursor, depth, function, change):
        self.add(cursor, [change], self.around(cursor, depth, f"{function}(@, "))

    def operator_of(self, left, right, cursor):
        """Its place and text, None where more than one stands between the operands."""
        after, before = self.span(left)[1], self.span(right)[0]
        between = [token for token in cursor.get_tokens()
                   if token.kind == TokenKind.PUNCTUATION
                   and after <= token.extent.start.offset < before]
        if len(between) != 1:
            return None, ""
        return between[0].extent.start.offset, between[0].spelling

    def add_operator(self, cursor, operands, depth):
        place, name = self.operator_of(*operands, cursor)
        left, right = map(self.text, operands)
        if name in ("&&", "||"):
            other = "||" if name == "&&" else "&&"
            self.add_logic(cursor, operands, depth, f"{left} {other} {right}")
        if name in OPERATORS and has_mutants(cursor, operands, name):
            function, others = OPERATORS[name]
            self.add(cursor, [f"{left} {other} {right}" for other in others],
                     [*self.around(cursor, depth, f"{function}(@, (", "))"),
                      (place, depth, "), (", len(name))])

    # a || b is !(!a && !b): so the second operand stays unevaluated where it was.
    def add_logic(self, cursor, operands, depth, change):
        insertions = self.around(cursor, depth, "flip(@, ")
        for operand in operands:
            insertions += self.around(operand, depth + 1, "flip(@, ")
        self.add(cursor, [change], insertions)

    # A comparison has mutants of its own.
    def add_condition(self, cursor, depth):
        condition = next((c for c in cursor.get_children() if c.kind.is_expression()), None)
        if condition is None or condition.kind == CursorKind.BINARY_OPERATOR:
            return
        declares = self.before(condition) not in (b"(", b";")
        if self.is_plain(condition) and not declares:
            self.wrap(condition, depth, "flip", f"!({self.text(condition)})")

    def add_result(self, cursor, parents, depth):
        function = next((p for p in reversed(parents) if p.kind in FUNCTIONS), None)
        value = next(cursor.get_children(), None)
        if value is None or function is None or value.kind == CursorKind.BINARY_OPERATOR:
            return
        if function.result_type.kind == TypeKind.BOOL and self.is_plain(value):
            self.wrap(value, depth, "flip", f"return !({self.text(value)})")

    # What follows a type's name directly is an argument of a template or a bound.
    def is_free_number(self, cursor, parents):
        if not self.text(cursor)[:1].isdigit():
            return False  # the compiler's own, of a comparison by operator<=>
        before = self.before(cursor)
        kind = parents[-1].kind
        return before not in (b"<", b"[") or kind == CursorKind.ARRAY_SUBSCRIPT_EXPR or \
            (before == b"<" and kind == CursorKind.BINARY_OPERATOR)


def rewritten(source, points):
    """The source with each point of a {number: point} switchable; it takes a number a mutant."""
    insertions = [(offset, depth, text.replace("@", str(number)), skipped)
                  for number, point in points.items()
                  for offset, depth, text, skipped in point.insertions]
    result, at = [], 0
    # At one place: what ends first, innermost first; then what begins, outermost first.
    for offset, _, text, skipped in sorted(insertions):
        result += [source[at:offset], text.encode()]
        at = offset + skipped
    return b"".join([*result, source[at:]])
