"""Where a source file can be changed, and into what: the mutants of one file, in an order that a seed decides."""
import collections
import dataclasses
import hashlib
import re

COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
CHARACTER = re.compile(r"(?<![0-9A-Za-z_])((?:u8|u|U|L)?)'((?:\\.|[^'\\\n])+)'")
TEXT = re.compile(r'"((?:\\.|[^"\\\n])*)"')
NO_CODE = re.compile(f"{COMMENT.pattern}|{TEXT.pattern}|{CHARACTER.pattern}", re.DOTALL)
# Room that is made beforehand changes nothing but the time that is taken.
ONLY_SPEED = re.compile(r"(?:\.|->)(?:reserve|shrink_to_fit)\(")


@dataclasses.dataclass
class Mutant:
    file: str
    line: int
    kind: str
    before: str  # the lines that are changed, and what stands there instead, each in one line without indentation
    after: str
    text: str  # the whole file
    number: int = 1  # the mutants of a file that look the same are counted

    @property
    def key(self):
        return self.file, self.before, self.after, self.number


def code_of(source):
    """The source with blanks in place of comments and text, so that what is left is code, at the same offsets."""
    return NO_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), source)


def closing(code, opening):
    """The offset of the parenthesis that closes the one at the offset."""
    depth = 0
    for offset in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[offset], 0)
        if depth == 0:
            return offset
    return None


def operators(code):
    for match in re.finditer(r"(?<= )(==|!=|<=|>=|<|>)(?= )", code):
        yield "comparison", match.start(), match.end(), COMPARISONS[match.group()]
    for match in re.finditer(r"(?<=[ \n])(&&|\|\|)(?=[ \n])", code):
        yield "logic", match.start(), match.end(), "||" if match.group() == "&&" else "&&"
    for match in re.finditer(r"(?<= )([+-])(=?)(?= )", code):
        yield "arithmetic", match.start(), match.end(), ("-" if match.group(1) == "+" else "+") + match.group(2)
    for match in re.finditer(r"\+\+|--", code):
        yield "step", match.start(), match.end(), "--" if match.group() == "++" else "++"
    for match in re.finditer(r"(?<=[ (])!(?=[A-Za-z_(])", code):
        yield "negation", match.start(), match.end(), ""


def constants(code, source):
    for match in re.finditer(r"(?<![\w.'])(0[xX][0-9a-fA-F']+|\d[\d']*)(?=[uUlLzZ]*(?![\w.']))", code):
        value = int(match.group().replace("'", ""), 0)
        yield "constant", match.start(), match.end(), "0" if value == 1 else str(value + 1)
    for match in re.finditer(r"\b(true|false)\b", code):
        yield "constant", match.start(), match.end(), "false" if match.group() == "true" else "true"
    for match in NO_CODE.finditer(source):
        character, text = CHARACTER.fullmatch(match.group()), TEXT.fullmatch(match.group())
        if character:
            other = "x" if character.group(2) != "x" else "y"
            yield "character", match.start(), match.end(), f"{character.group(1)}'{other}'"
        elif text:
            yield "text", match.start(), match.end(), '""' if text.group(1) else '"x"'


def conditions(code):
    for match in re.finditer(r"\b(if|while) (\()", code):
        end = closing(code, match.start(2))
        if end and ";" not in code[match.start(2):end]:
            for always in ("(false && ", "(true || ") if match.group(1) == "if" else ("(!",):
                yield "condition", match.start(2), match.start(2), always


def statements(code):
    for match in re.finditer(r"\breturn ([^;{}]+);", code):
        if match.group(1) not in ("nullptr", "false", "0"):  # these are what {} is
            yield "return", match.start(1), match.end(1), "{}"
    for match in re.finditer(r"(?<=[;{})\n])\s*\n[ ]+([A-Za-z_(*+-][^;{}]*;)(?=[ ]*\n)", code):
        statement = match.group(1)
        if statement in ("break;", "continue;"):
            yield "jump removed", match.start(1), match.end(1), ";"
        elif re.match(r"(?:\+\+|--|\*)?[\w:.\->\[\]*]+(?:\([^;]*\))?(?:\.|->|\[)?[\w.\->\[\]]*\s*(?:[-+|&^]?=|<<|\(|;)",
                      statement):
            if not re.match(r"(return|using|delete|typedef|static_assert|case|default)\b", statement):
                call = re.match(r"[\w:.\->\[\]]+\(", statement)
                yield "call dropped" if call else "statement removed", match.start(1), match.end(1), ";"


def left_out(source):
    """The numbers of the lines that coverage leaves out, for the reason that stands beside them, and of those that are
    no code of a function."""
    lines, inside = set(), False
    for number, line in enumerate(source.split("\n"), 1):
        if "GCOVR_EXCL_START" in line:
            inside = True
        if inside or "GCOVR_EXCL_LINE" in line or line.lstrip().startswith(("#", "template", "static_assert")):
            lines.add(number)
        if "GCOVR_EXCL_STOP" in line:
            inside = False
    return lines


def one_line(text):
    return " ".join(text.split())


def mutants(file, source, seed):
    """All mutants of a file. A change of the file moves no others in the order than those of the lines that change."""
    code = code_of(source)
    skipped = left_out(source)
    found, seen = [], collections.Counter()
    for make in (operators(code), constants(code, source), conditions(code), statements(code)):
        for kind, start, end, replacement in make:
            line = source.count("\n", 0, start) + 1
            first = source.rfind("\n", 0, start) + 1
            last = source.find("\n", end)
            before = source[first:last]
            if line in skipped or ONLY_SPEED.search(before):
                continue
            text = source[:start] + replacement + source[end:]
            if kind == "condition":
                close = closing(code, start) + len(replacement)
                text = text[:close] + ")" + text[close:]
                last = source.find("\n", closing(code, start))
                before = source[first:last]
            after = text[first:last + len(text) - len(source)]
            mutant = Mutant(file, line, kind, one_line(before), one_line(after), text)
            seen[mutant.key] += 1
            mutant.number = seen[mutant.key]
            found.append(mutant)
    return sorted(found, key=lambda mutant: hashlib.sha256(repr((seed, mutant.key)).encode()).digest())
