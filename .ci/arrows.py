#!/usr/bin/env python3
"""Checks that includes point only where the architecture lets them.

host/, editor/  a floor includes only floors that stand before it
src/            only src/ and host/; a tool's folder never another tool's; src/common no frame, no tool
everywhere      Qt headers in the short form, headers with #pragma once (but not -inl.h, which kernels read once
                for each instruction set)
"""
import re
import subprocess
import sys
from pathlib import Path

FLOORS = ["utils", "resource", "image", "document", "history", "core", "guicore", "geometryengine", "gui",
          "plugincore", "formats", "scripting", "app"]
ROOTS = {"host": ["host"], "editor": ["editor", "host"], "src": ["src", "host"]}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
LONG_QT_FORM = re.compile(r"Qt[A-Z]\w*/(?!.*private/)")


def floor_of(path):
    return FLOORS.index(path.parts[1]) if path.parts[0] != "src" and path.parts[1] in FLOORS else None


def folder_of(path):
    """The folder of a file below src/; "" for the frame itself."""
    return path.parts[1] if len(path.parts) > 2 else ""


def resolve(source, target):
    """The file of this project that a quoted include means, or None."""
    for root in [str(source.parent), *ROOTS[source.parts[0]]]:
        candidate = Path(root) / target
        if candidate.exists():
            return candidate
    return None


def tool_complaint(source, found):
    here, there = folder_of(source), folder_of(found)
    if found.parts[0] != "src" or here == there or there == "common":
        return None
    if here == "common":
        return "what the tools share must not know who uses it"
    return None if there == "" or here == "" else f"{here} must not know {there}"


def complaint(source, bracket, target):
    if LONG_QT_FORM.match(target):
        return "Qt headers are included in the short form"
    if bracket == "<" or target.startswith("ui_") or target.endswith(".moc"):
        return None
    found = resolve(source, target)
    if found is None:
        return "no such file on this side"
    if source.parts[0] == "src":
        return tool_complaint(source, found)
    here, there = floor_of(source), floor_of(found)
    if here is not None and there is not None and there > here:
        return f"{FLOORS[here]} stands below {FLOORS[there]}"
    return None


def main():
    names = subprocess.run(["git", "ls-files", "--", *ROOTS], check=True, text=True,
                           capture_output=True).stdout.splitlines()
    faults = []
    for source in (Path(name) for name in names if name.endswith((".h", ".cpp"))):
        lines = source.read_text(encoding="utf-8").splitlines()
        is_read_again = source.name.endswith("-inl.h")
        if source.suffix == ".h" and not is_read_again and "#pragma once" not in lines:
            faults.append(f"{source}: no #pragma once")
        for number, line in enumerate(lines, 1):
            match = INCLUDE.match(line)
            fault = match and complaint(source, *match.groups())
            if fault:
                faults.append(f"{source}:{number}: {fault}: {match.group(2)}")
    print("\n".join(faults) or "All includes point the right way.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
