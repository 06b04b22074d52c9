"""The declarations of a header, and the comment of each.

It reads headers as clang-format leaves them, and no C++ beyond what stands in them. What it knows of
a comment:

    // Told above: a comment that ends on the line before the declaration.
    int a;
    int b;  // A group: what follows without a blank line shares the comment above.
    int c;  // Told behind: a comment on the declaration's own line, or below it in the same column.

The members that an enumeration or class of one line has share that line's comment.
"""

import dataclasses
import re

_TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>(?<![^\n])[ \t]*\#(?:[^\n\\]|\\.)*)
      | (?P<string>"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')
      | (?P<word>[A-Za-z_]\w*)
      | (?P<number>\d[\w.']*)
      | (?P<sign>::|->|<=>|[^\s])""",
    re.VERBOSE | re.DOTALL,
)
_OPENING = {"(": ")", "{": "}", "[": "]"}
_TYPE_WORDS = {"class", "struct", "union", "enum"}
_OUTSIDE = "..."  # marks the definition of what a class has declared before
_NOT_A_NAME = {"alignas", "decltype", "__attribute__", "__declspec", "noexcept", "PXDUTIL_PRINTF"}


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    line: int
    column: int


@dataclasses.dataclass
class Declaration:
    kind: str  # class, enum, enumerator, function, variable, alias, macro; other for what names nothing
    name: str  # with its scopes
    line: int  # its first line, counted from 1
    column: int  # and where in that it begins, from 0
    head_end: int  # the last line before its body
    end: int
    public: bool  # whether users can reach it: neither private, nor in pxd::detail
    tokens: list  # the words and signs up to its body or end
    parent: "Declaration | None" = None
    comment: str = ""  # without the slashes, lines kept
    comment_lines: tuple = ()  # the lines on which it stands
    lines_behind: tuple = ()  # those of a comment behind code, which may come to one above
    placed: str = ""  # above, group, behind or parent; empty where there is none

    @property
    def is_outside(self):
        """Whether it only defines, or takes over, what is declared elsewhere."""
        return _OUTSIDE in self.name

    def has(self, *words):
        return any(token.text in words for token in self.tokens)

    @property
    def plain_name(self):
        return self.name.rpartition("::")[2]


def _tokens(text):
    found = []
    line, line_start, seen = 1, 0, 0
    for match in _TOKEN.finditer(text):
        if newlines := text.count("\n", seen, match.start()):
            line += newlines
            line_start = text.rfind("\n", seen, match.start()) + 1
        seen = match.start()
        found.append(Token(match.lastgroup, match[0], line, match.start() - line_start))
    return found


class _Reader:
    def __init__(self, text):
        every = _tokens(text)
        self.comments = [token for token in every if token.kind == "comment"]
        self.directives = [token for token in every if token.kind == "directive"]
        self.tokens = [token for token in every if token.kind not in ("comment", "directive")]
        self.at = 0
        self.found = []

    def peek(self, text):
        return self.at < len(self.tokens) and self.tokens[self.at].text == text

    def skip_balanced(self):
        """From an opening bracket to behind the one that closes it."""
        closing = [_OPENING[self.tokens[self.at].text]]
        while closing:
            self.at += 1
            text = self.tokens[self.at].text
            if text in _OPENING:
                closing.append(_OPENING[text])
            elif text == closing[-1]:
                closing.pop()
        self.at += 1

    def last_line(self):
        return self.tokens[self.at - 1].line

    def scope(self, path, public, parent, class_name=""):
        """Reads declarations up to the closing brace of the scope or the end of the header."""
        reachable = public
        while self.at < len(self.tokens) and not self.peek("}"):
            token = self.tokens[self.at]
            if class_name and token.text in ("public", "protected", "private"):
                reachable = public and token.text != "private"
                self.at += 2
                continue
            self.declaration(path, reachable, parent)
        self.at += 1

    def declaration(self, path, public, parent):
        first = self.at
        start = self.tokens[first]
        if start.text == "namespace":
            while not self.peek("{"):
                self.at += 1
            name = "".join(token.text for token in self.tokens[first + 1 : self.at])
            self.at += 1
            self.scope(path + [name], public and "detail" not in name, None)
            return
        if start.text.startswith("PXDUTIL_") and self.tokens[first + 1].text == "(":
            self.at += 1
            self.skip_balanced()
            if self.peek(";"):
                self.at += 1
            self.add("other", path, first, self.at, public, parent)
            return
        in_initialisers = False
        while True:
            text = self.tokens[self.at].text
            if text == ";":
                self.at += 1
                self.add(self.kind(first, self.at), path, first, self.at - 1, public, parent)
                return
            if text == "{":
                head = self.tokens[first : self.at]
                words = [token.text for token in head]
                if self.is_type(words):
                    self.type_body(path, first, public, parent)
                    return
                body = self.at
                self.skip_balanced()
                if self.peek(";"):
                    self.at += 1
                    kind = self.kind(first, body)
                    self.add(kind, path, first, body, public, parent)
                    return
                in_initialisers = in_initialisers or (
                    self.peek(",") or (self.peek("{") and ":" in words)
                )
                if not self.peek(",") and not self.peek("{"):
                    self.add("function", path, first, body, public, parent)
                    return
            elif text in _OPENING:
                self.skip_balanced()
            else:
                self.at += 1

    @staticmethod
    def without_template(words):
        """The words behind any template<...> in front of them."""
        while words[:1] == ["template"]:
            depth = 0
            for place, word in enumerate(words):
                depth += (word == "<") - (word == ">")
                if word == ">" and depth == 0:
                    words = words[place + 1 :]
                    break
            else:
                return []
        return words

    def is_type(self, words):
        words = self.without_template(words)
        return bool(words) and words[0] in _TYPE_WORDS and "(" not in words and "=" not in words

    def kind(self, first, end):
        words = self.without_template([token.text for token in self.tokens[first:end]])
        if not words or words[0] in ("static_assert", "extern") and "template" in words:
            return "other"
        if words[0] == "static_assert" or words[0].startswith("PXDUTIL_DECLARE"):
            return "other"
        if words[0] in ("using", "typedef"):
            return "alias"
        if words[0] in _TYPE_WORDS or words[0] == "friend" and "(" not in words:
            return "other"  # a forward declaration
        head = words[: words.index("=")] if "=" in words and "operator" not in words else words
        calls = [at for at, word in enumerate(head) if word == "(" and head[at - 1] not in _NOT_A_NAME]
        return "function" if calls else "variable"

    def type_body(self, path, first, public, parent):
        head = [token.text for token in self.tokens[first : self.at]]
        words = self.without_template(head)
        is_enum = words[0] == "enum"
        declared = self.add("enum" if is_enum else "class", path, first, self.at, public, parent)
        self.at += 1
        inner = path + [declared.plain_name]
        if is_enum:
            self.enumerators(path if words[1] != "class" else inner, public, declared)
        else:
            starts_public = words[0] != "class"
            # A specialisation says what the primary template says; its members are its own affair.
            specialised = head[:3] == ["template", "<", ">"]
            self.members(inner, public and not specialised, starts_public, declared)
        while not self.peek(";"):
            self.at += 1
        self.at += 1
        declared.end = self.last_line()

    def members(self, path, public, starts_public, declared):
        reachable = public and starts_public
        while not self.peek("}"):
            if self.tokens[self.at].text in ("public", "protected", "private") and (
                self.tokens[self.at + 1].text == ":"
            ):
                reachable = public and self.tokens[self.at].text != "private"
                self.at += 2
            else:
                self.declaration(path, reachable, declared)
        self.at += 1

    def enumerators(self, path, public, declared):
        while not self.peek("}"):
            first = self.at
            while not self.peek(",") and not self.peek("}"):
                if self.tokens[self.at].text in _OPENING:
                    self.skip_balanced()
                else:
                    self.at += 1
            if self.peek(","):
                self.at += 1
            self.add("enumerator", path, first, self.at, public, declared)
        self.at += 1

    def add(self, kind, path, first, head_end, public, parent):
        tokens = self.tokens[first:head_end]
        if tokens[-1].text == ":" and kind == "class":
            tokens = tokens[:-1]
        declared = Declaration(
            kind=kind,
            name="::".join(path + [_name(kind, [token.text for token in tokens])]),
            line=tokens[0].line,
            column=tokens[0].column,
            head_end=tokens[-1].line,
            end=self.last_line(),
            public=public,
            tokens=tokens,
            parent=parent,
        )
        self.found.append(declared)
        return declared


def _name(kind, words):
    if kind == "other":
        return words[0]
    if kind == "enumerator":
        return words[0]
    words = _Reader.without_template(words)
    if kind in ("class", "enum"):
        names = []
        for word in words[1:]:
            if word in (":", "<"):
                break
            if re.match(r"[A-Za-z_]", word) and word not in ("class", "final", "PXDUTIL_API"):
                names.append(word)
        return names[-1] if names else ""
    if kind == "alias":
        return words[1] if words[2:3] == ["="] else _OUTSIDE + "".join(words[1:])
    if kind == "function" and "operator" in words:
        at = words.index("operator")
        end = words.index("(", at + 2 if words[at + 1] == "(" else at + 1)
        return "operator" + " ".join(words[at + 1 : end]).replace(" ", "", 1)
    stops = ("(",) if kind == "function" else ("=", "{", "[", ":", ";")
    for at, word in enumerate(words):
        if word in stops and words[at - 1] not in _NOT_A_NAME and at > 0:
            if kind == "variable" and word == "[" and words[at + 1] == "[":
                continue
            name = words[at - 1]
            if at > 1 and words[at - 2] == "~":
                return "~" + name
            if at > 1 and words[at - 2] == "::":
                return _OUTSIDE + name
            return name
    return words[-1]


def _macros(directives):
    withdrawn = [token.text.split()[-1] for token in directives if "undef" in token.text]
    for token in directives:
        if match := re.match(r"\s*#\s*define\s+(\w+)", token.text):
            end = token.line + token.text.count("\n")
            name = Token("word", match[1], token.line, token.column)
            # A guard, and what only switches something, has no text of its own.
            is_guard = match[1].endswith("_H") and token.text.strip().endswith(match[1])
            kind = "other" if is_guard or match[1] in withdrawn else "macro"
            yield Declaration(
                kind, match[1], token.line, 0, end, end, True, [name]
            )


def _stripped(line):
    return re.sub(r"^\s*//", "", line).rstrip()


def _give_comments(text, declared, comments, directives):
    lines = text.split("\n")
    directive_lines = {
        line
        for token in directives
        for line in range(token.line, token.line + token.text.count("\n") + 1)
    }
    alone = {}  # the comments that have their lines to themselves, and those behind code, by line
    behind = {}
    for token in comments:
        place = alone if not lines[token.line - 1][: token.column].strip() else behind
        place[token.line] = token
    for line in sorted(behind):  # the lines below that go on with a comment behind code
        column = behind[line].column
        while line + 1 in alone and alone[line + 1].column == column and column > 20:
            line += 1
            behind[line] = alone.pop(line)
    ends = {}  # the last declaration that ends on a line, of those that stand side by side
    for one in declared:
        above = one.line - 1
        while one.kind == "macro" and above in directive_lines:
            above -= 1  # the conditions that a macro stands under, and macros of the same group
        own = []
        for line in range(one.line, one.end + 1):
            if line in behind and (line <= one.head_end or one.kind in ("variable", "alias")):
                own.append(line)
                while line + 1 in behind and not lines[line][: behind[line + 1].column].strip():
                    line += 1
                    own.append(line)
        one.lines_behind = tuple(dict.fromkeys(own))
        on_one_line = one.parent is not None and one.parent.end == one.parent.line
        if above in alone:
            first = above
            while first - 1 in alone:
                first -= 1
            one.placed = "above"
            one.comment_lines = tuple(range(first, above + 1))
            one.comment = "\n".join(_stripped(lines[line - 1]) for line in one.comment_lines)
        elif own and not (one.kind == "class" and one.end != one.line):
            one.placed = "behind"
            one.comment_lines = one.lines_behind
            one.comment = "\n".join(_stripped(behind[line].text) for line in one.comment_lines)
        elif one.kind == "enumerator" and on_one_line and one.parent.comment:
            one.placed = "parent"
            one.comment = one.parent.comment
        else:
            before = ends.get((id(one.parent), above)) or ends.get((id(one.parent), one.line))
            if before is not None and (before.placed in ("above", "group")):
                one.placed = "group"
                one.comment = before.comment
        ends[(id(one.parent), one.end)] = one


def of(text):
    """Every declaration of a header, in the order of their first lines."""
    reader = _Reader(text)
    reader.scope([], True, None)
    declared = reader.found + list(_macros(reader.directives))
    declared.sort(key=lambda one: (one.line, one.column))
    _give_comments(text, declared, reader.comments, reader.directives)
    return declared


def opening_comment(text):
    """The words at the top of a header, above its guard."""
    lines = []
    for line in text.split("\n"):
        if not line.startswith("//"):
            break
        lines.append(_stripped(line))
    return "\n".join(lines)
