#!/usr/bin/env python3
"""Fails on every #include under src/ and apps/ that docs/architecture.md does not draw.

A line of the drawing reads "folder/  what it holds  -> folders; libraries". A folder may include itself and what stands
behind its arrow: "model/*" is every folder right in src/model, a name with a dot one header. The C++ standard library is
open to all; any other header in angle brackets belongs to a library that the folder has to name.
"""
import fnmatch
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DRAWING = "docs/architecture.md"
ROW = re.compile(r"^(?P<folder>(?:src|apps)/\S+)/ .*->(?P<may>[^;]*)(?:;(?P<libraries>.*))?$")
INCLUDE = re.compile(r'^\s*#\s*include\s*(?P<bracket>["<])(?P<path>[^">]+)[">]')
STANDARD = re.compile(r"[a-z0-9_]+")
LIBRARIES = {"simdjson": r"simdjson\.h", "CLI11": r"CLI/.*", "RE2": r"re2/.*", "Qt": r"Q\w+", "POSIX": r"(?!simdjson)(sys/)?[a-z]+\.h"}


def words(text):
    return [word.strip() for word in (text or "").split(",") if word.strip()]


def read_drawing():
    rows = {}
    for line in (ROOT / DRAWING).read_text(encoding="utf-8").splitlines():
        row = ROW.match(line.strip())
        if row:
            libraries = words(row["libraries"])
            unknown = [name for name in libraries if name not in LIBRARIES]
            if unknown:
                sys.exit(f"{DRAWING}: {row['folder']} names {unknown[0]}, whose headers this script does not know.")
            rows[row["folder"]] = (words(row["may"]), libraries)
    if not rows:
        sys.exit(f"{DRAWING}: no arrows found.")
    return rows


def home(path):
    """The folder of a header that is included by its path from src/ or apps/."""
    root = "apps" if (ROOT / "apps" / path).exists() else "src"
    return f"{root}/{pathlib.PurePosixPath(path).parent}"


def is_drawn(path, folder, arrows):
    inside = home(path)
    if inside == folder:
        return True
    inside = inside.removeprefix("src/")
    return any(
        path == arrow if "." in arrow else fnmatch.fnmatch(inside, arrow) and inside.count("/") == arrow.count("/")
        for arrow in arrows
    )


def complaint(include, folder, rows):
    path = include["path"]
    arrows, libraries = rows[folder]
    if include["bracket"] == '"':
        if is_drawn(path, folder, arrows):
            return None
        return f'"{path}" is not drawn for {folder}, which may include: {", ".join([folder, *arrows])}'
    if STANDARD.fullmatch(path) or any(re.fullmatch(LIBRARIES[name], path) for name in libraries):
        return None
    return f'<{path}> is neither in the standard library nor of a library drawn for {folder}: {", ".join(libraries) or "none"}'


def main():
    rows = read_drawing()
    complaints = []
    for file in sorted(file for top in ("src", "apps") for file in (ROOT / top).rglob("*.*")):
        if file.suffix not in (".h", ".cpp", ".def"):
            continue
        name = file.relative_to(ROOT)
        folder = str(name.parent)
        if folder not in rows:
            complaints.append(f"{name}: {folder}/ is not drawn in {DRAWING}")
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            include = INCLUDE.match(line)
            if include and (text := complaint(include, folder, rows)):
                complaints.append(f"{name}:{number}: {text}")
    print("\n".join(complaints), end="\n" if complaints else "")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
