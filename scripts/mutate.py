#!/usr/bin/env python3
"""Puts single faults into a copy of the sources, and shows those that no test finds.

usage: mutate.py [FILES] [COUNT] [SEED]

Each fault is one change such as a person makes by mistake: a comparison turned, a condition negated or dropped, "&&"
and "||" exchanged, a constant moved by one, a returned value turned, a statement removed. It is built, and the tests of
the core run until the first fails. What they do not find is printed: a gap in the tests, or a change that nobody can
tell, which scripts/mutate-equivalent.txt then lists with the reason.

FILES are sources or folders (of whose sources the headers are left out, since a change of one builds nearly everything
again), src/technology and src/model where none are named. COUNT faults that compile are tried, 100 without another
number. The same SEED draws the same faults from the same sources. The working tree is only read: the copy and its build
lie in build/mutate.
"""
import fcntl
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
TREE, BUILD = ROOT / "build/mutate/tree", ROOT / "build/mutate/build"
COPIED = ["CMakeLists.txt", "apps", "cmake", "docs", "examples", "src", "tests"]
EQUIVALENT = ROOT / "scripts/mutate-equivalent.txt"
DEFAULT_FILES, DEFAULT_COUNT, DEFAULT_SEED = ["src/technology", "src/model"], 100, 1
MEMORY, FILE_SIZE = 4 << 30, 1 << 28  # bytes that the tests may take
SLOW = 2  # seconds; tests that take longer are run last
NOBODY = 65534


class Fault(NamedTuple):
    """`text[begin:end]` of a file becomes `new`."""

    file: str
    kind: str
    begin: int
    end: int
    new: str

    def lines(self, text):
        """The lines it is in as they are and as they become, without indentation and line ends."""
        first = text.rfind("\n", 0, self.begin) + 1
        last = text.find("\n", self.end)
        return (
            " ".join(text[first:last].split()),
            " ".join((text[first : self.begin] + self.new + text[self.end : last]).split()),
        )

    def put_into(self, text):
        return text[: self.begin] + self.new + text[self.end :]


# ---- Where the faults are found

COMMENT = r"//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*"  # a preprocessor line counts as one
LITERAL = r'R"(?P<mark>[^(\s"]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\''
HIDDEN = re.compile(f"(?P<comment>{COMMENT})|{LITERAL}", re.DOTALL | re.MULTILINE)
ASSERT = re.compile(r"\b(?:static_)?assert\s*\(")

COMPARISONS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"]}
COMPARISON = re.compile(r"(?<=\s)(==|!=|<=|>=|<|>)(?=\s)")  # with blanks around: template brackets have none
LOGIC = re.compile(r"(?<=\s)(&&|\|\|)(?=\s)")
NUMBER = re.compile(r"(?<![\w.'])\d[\d']*(?![\w.'])")
CONDITION = re.compile(r"\b(if|while)\s*\(")
NEGATION = re.compile(r"(?<![\w!])!(?=[\w(])")
ASSIGNMENT = re.compile(r"(?<![=!<>])=(?!=)")

NO_CODE = re.compile(r"\s*(?:(?:public|protected|private):)?\s*(?:\w+\s+)*(?:namespace|class|struct|union|enum)\b")
TEMPLATE = re.compile(r"template\s*<[^{}()]*>\s")
CODE = re.compile(
    r"(?:[)\]:]|\b(?:const|noexcept|override|final|mutable|else|do|try))$|\)\s*->[^(){}]*$|\)\s*:\s.*}$", re.DOTALL
)
HEAD = re.compile(r"\s*(?:(if|for|while|switch)(?:\s+constexpr)?\s*\(|else\b|(?:case\b(?:::|[^:;])*|default\s*):)")
KEPT = re.compile(r"(?:using|typedef|const|constexpr|static|auto|class|struct|enum|template|friend|return|throw|do)\b")
DECLARATION = re.compile(r"[\w:]+(?:<.*>)?[\s*&]+(?:const\s+)?\w+\s*(?:$|[=({\[,])", re.DOTALL)


def mask(text):
    """The text with comments and asserts as blanks and literals as quotation marks, each character in its place."""

    def blank(found):
        return re.sub(r"[^\n]", " " if found["comment"] is not None else '"', found[0])

    text = HIDDEN.sub(blank, text)
    for found in reversed(list(ASSERT.finditer(text))):
        end = closing(text, found.end() - 1)
        text = text[: found.start()] + re.sub(r"[^\n]", " ", text[found.start() : end]) + text[end:]
    return text


def closing(text, at):
    """Behind the bracket that closes the one at `at`."""
    depth = 0
    for place in range(at, len(text)):
        depth += (text[place] in "([{") - (text[place] in ")]}")
        if depth == 0:
            return place + 1
    return len(text)


def opens_code(head, inside_code):
    """Whether an opening brace behind `head` begins statements, no declarations and no list of values."""
    head = TEMPLATE.sub("", head).strip()
    if not head:
        return inside_code
    return not NO_CODE.match(head) and bool(CODE.search(head))


def statements(text):
    """Begin and end of every statement inside a function, without its semicolon; of a lambda also those within it."""
    begin, open_brackets = 0, []  # of each bracket whether it holds statements, and where the one around it began
    for at, char in enumerate(text):
        if char in "([{":
            inside_code = bool(open_brackets) and open_brackets[-1][0]
            open_brackets.append((char == "{" and opens_code(text[begin:at], inside_code), begin))
            begin = at + 1
        elif char in ")]}" and open_brackets:
            is_code, around = open_brackets.pop()
            begin = at + 1 if is_code else around
        elif char == ";":
            if open_brackets and open_brackets[-1][0]:
                yield begin, at
            begin = at + 1


def behind_heads(text, begin, end):
    """Where the last statement begins in one such as "if (a) while (b) c()", and the word before it: "while"."""
    word = None
    while found := HEAD.match(text, begin, end):
        word = found[1]
        begin = closing(text, found.end() - 1) if word else found.end()
    return end - len(text[begin:end].lstrip()), word


def faults_of_conditions(text):
    for found in CONDITION.finditer(text):
        begin, end = found.end(), closing(text, found.end() - 1) - 1
        begin = end - len(text[begin:end].split(";")[-1].lstrip())
        if ASSIGNMENT.search(text, begin, end):
            continue  # declares what the statement works with
        if not NEGATION.match(text, begin) or LOGIC.search(text, begin, end):
            yield begin, end, "!({})"
        yield begin, end, "false"
        if found[1] == "if":
            yield begin, end, "true"
    for found in NEGATION.finditer(text):
        yield found.start(), found.end(), ""


def faults_of_statements(text):
    for begin, end in statements(text):
        begin, word = behind_heads(text, begin, end)
        body = text[begin:end]
        if re.match(r"return\b.", body, re.DOTALL):
            begin = end - len(body[6:].lstrip())
            value = text[begin:end]
            if value not in ("true", "false") and not re.fullmatch(r"\{\}|nullptr|0|\"\"", value):
                yield "returned value turned", begin, end, "{{}}"
        elif word in ("if", "while"):
            continue  # the same as a condition that is false
        elif body in ("return", "break", "continue") or (
            re.search(r"[(=]|\+\+|--", body) and not KEPT.match(body) and not DECLARATION.match(body)
        ):
            yield "statement removed", begin, end, ""


def faults_of_constants(text):
    for found in NUMBER.finditer(text):
        value = int(found[0].replace("'", ""))
        if found[0] == "0" or not found[0].startswith("0"):
            for moved in {value + 1, max(value - 1, 0)} - {value}:
                yield *found.span(), str(moved)


def faults_in(file):
    source = (TREE / file).read_text(encoding="utf-8")
    text = mask(source)
    found = [("comparison turned", *one.span(), to) for one in COMPARISON.finditer(text) for to in COMPARISONS[one[0]]]
    found += [("&& and || exchanged", *one.span(), "||" if one[0] == "&&" else "&&") for one in LOGIC.finditer(text)]
    found += [("condition negated or dropped", *one) for one in faults_of_conditions(text)]
    found += [("constant moved", *one) for one in faults_of_constants(text)]
    for one in re.finditer(r"\b(true|false)\b", text):
        kind = "returned value turned" if text[: one.start()].endswith("return ") else "constant moved"
        found.append((kind, *one.span(), "false" if one[0] == "true" else "true"))
    found += faults_of_statements(text)
    return [Fault(file, kind, begin, end, new.format(source[begin:end])) for kind, begin, end, new in sorted(found)]


def equivalent_faults():
    """The faults that nobody can tell, as file, line and changed line."""
    known = set()
    for block in EQUIVALENT.read_text(encoding="utf-8").split("\n\n"):
        lines = [line for line in block.splitlines() if not line.startswith("#")]
        if not lines:
            continue
        if len(lines) < 4 or lines[1][:2] != "- " or lines[2][:1] != "+":
            sys.exit(f"{EQUIVALENT.name}: this is no file, line, changed line and reason:\n{block}")
        known.add((lines[0], lines[1][2:], lines[2][2:]))
    return known


def draw(files, seed):
    """All faults of the files in the order in which they are tried: of every kind in turn, so that none prevails."""
    known = equivalent_faults()
    kinds = {}
    for file in files:
        for fault in faults_in(file):
            kinds.setdefault(fault.kind, []).append(fault)
    chance = random.Random(seed)
    left = [kinds[kind] for kind in sorted(kinds)]
    for faults in left:
        chance.shuffle(faults)
    while left := [faults for faults in left if faults]:
        for fault in [faults.pop() for faults in left]:
            if (fault.file, *fault.lines((TREE / fault.file).read_text(encoding="utf-8"))) not in known:
                yield fault


# ---- How they are tried


def lock():
    """Keeps a second run out of the copy until this one ends."""
    TREE.mkdir(parents=True, exist_ok=True)
    held = open(TREE.parent / "lock", "w", encoding="utf-8")
    try:
        fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        sys.exit("Another run is at work in build/mutate.")
    return held


def mirror():
    """Makes the copy like the working tree. What is alike is left alone, so that it is not built again."""
    wanted = [file for top in COPIED for file in ([ROOT / top] if (ROOT / top).is_file() else (ROOT / top).rglob("*"))]
    wanted = {file.relative_to(ROOT): file for file in wanted if file.is_file()}
    for there in [file for file in TREE.rglob("*") if file.is_file()]:
        if there.relative_to(TREE) not in wanted:
            there.unlink()
    for name, file in wanted.items():
        there = TREE / name
        if not there.exists() or there.read_bytes() != file.read_bytes():
            there.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(file, there)


def build():
    done = subprocess.run(["ninja", "-C", BUILD, "techsheet-tests"], capture_output=True, text=True, check=False)
    return done.returncode == 0, done.stdout


def run_tests(which, patience):
    """Whether the tests that the filter `which` names pass within `patience` seconds, and what they print. What they do
    stays in a folder of their own: a fault in the handling of files may write anywhere, so they have no more rights
    than nobody where that can be had."""
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch:
        os.chmod(scratch, 0o777)
        log = pathlib.Path(scratch, "log")
        as_nobody = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        places = {name: scratch for name in ("HOME", "TEST_TMPDIR", "TMPDIR", "XDG_CONFIG_HOME")}
        with log.open("wb") as out:
            process = subprocess.Popen(
                [BUILD / "bin/techsheet-tests", "--gtest_fail_fast", "--gtest_filter=" + which],
                cwd=scratch,
                env={**os.environ, **places},
                stdin=subprocess.DEVNULL,
                stdout=out,
                stderr=subprocess.STDOUT,
                start_new_session=True,
                preexec_fn=limit_resources,
                **as_nobody,
            )
        try:
            passed = process.wait(patience) == 0
        except subprocess.TimeoutExpired:
            passed = False
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)  # also what it started
            except ProcessLookupError:
                pass
            process.wait()
        return passed, log.read_text(encoding="utf-8", errors="replace")


def limit_resources():
    """A fault may allocate or write without end."""
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))


def prepare():
    """Builds the copy, and runs its tests without a fault. In which parts the tests are run with one, so that most
    faults are found before the slow tests: of each the filter, and the seconds that it may take."""
    configure = ["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None"]
    configure += ["-DCMAKE_CXX_FLAGS=-O0 -w -D_GLIBCXX_ASSERTIONS", "-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON"]
    configured = subprocess.run(configure, capture_output=True, text=True, check=False)
    if configured.returncode != 0:
        sys.exit(configured.stderr)
    is_built, output = build()
    if not is_built:
        sys.exit(output + "The sources do not build as they are.")
    passed, output = run_tests("*", 3600)
    if not passed:
        sys.exit(output[-3000:] + "The tests fail without a fault.")
    passes = re.findall(r"^\[ +OK \] (\S+) \((\d+) ms\)$", output, re.MULTILINE)
    took = {name: int(time) / 1000 for name, time in passes}
    slow = {name: time for name, time in took.items() if time > SLOW}
    quick_time = sum(took.values()) - sum(slow.values())
    parts = [("-" + ":".join(slow), 10 + 5 * quick_time)]
    return parts + [(":".join(slow), 10 + 5 * sum(slow.values()))] if slow else parts


def try_fault(fault, parts):
    """Whether the tests found it; None if it does not compile."""
    there = TREE / fault.file
    text = there.read_text(encoding="utf-8")
    there.write_text(fault.put_into(text), encoding="utf-8")
    try:
        return not all(run_tests(*part)[0] for part in parts) if build()[0] else None
    finally:
        there.write_text(text, encoding="utf-8")


def files_of(names):
    files = []
    for name in names:
        path = (ROOT / name).resolve()
        if not path.exists() or not path.is_relative_to(ROOT):
            sys.exit(f"{name}: there is no such file in this tree.")
        files += sorted(path.rglob("*.cpp")) if path.is_dir() else [path]
    return [str(file.relative_to(ROOT)) for file in dict.fromkeys(files)]


def main(arguments):
    if "--help" in arguments or "-h" in arguments:
        print(__doc__.strip())
        return
    numbers = [int(one) for one in arguments if one.isdecimal()]
    names = [one for one in arguments if not one.isdecimal()]
    if len(numbers) > 2:
        sys.exit("usage: mutate.py [FILES] [COUNT] [SEED]")
    count, seed = (numbers + [DEFAULT_COUNT, DEFAULT_SEED][len(numbers) :])[:2]
    files = files_of(names or DEFAULT_FILES)
    held = lock()  # until the end
    mirror()
    faults = draw(files, seed)
    parts = prepare()
    drawn, compiled, found = 0, 0, 0
    try:
        while compiled < count and (fault := next(faults, None)):
            if sys.stderr.isatty():
                print(f"\r{compiled}/{count}, {compiled - found} survived ", end="", file=sys.stderr, flush=True)
            outcome = try_fault(fault, parts)
            drawn += 1
            compiled += outcome is not None
            found += outcome is True
            if outcome is False:
                text = (TREE / fault.file).read_text(encoding="utf-8")
                old, new = fault.lines(text)
                place = f"{fault.file}:{text.count(chr(10), 0, fault.begin) + 1}"
                print(f"{place}: {fault.kind}\n- {old}\n+ {new}\n", flush=True)
    except KeyboardInterrupt:
        print(file=sys.stderr)
    print(
        f"{drawn} faults drawn with seed {seed}, {compiled} compiled: {found} found, {compiled - found} survived."
        f" {drawn - compiled} did not compile."
    )


if __name__ == "__main__":
    main(sys.argv[1:])
