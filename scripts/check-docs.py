#!/usr/bin/env python3
"""Checks the blocks of code in the documents.

C++, QML and CMake: the lines of a block are, in this order, lines of one file that is compiled.
JSON: it is read. console: each command is run, against the ad server where it asks port 8080, and
prints what follows it. Shell: the programs, scripts and presets exist.

usage: check-docs.py FOLDER_OF_PROGRAMS
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def blocks(document):
    """Language, line and lines of each block of code."""
    language, first, lines = None, 0, []
    for number, line in enumerate(document.read_text().splitlines(), 1):
        if not line.startswith("```"):
            lines.append(line)
        elif language is None:
            language, first, lines = line[3:], number, []
        else:
            yield language, first, lines
            language = None


def words(lines):
    return [line.strip() for line in lines if line.strip()]


def is_part_of(block, source):
    rest = iter(words(source))
    return all(line in rest for line in words(block))


def check_compiled(lines, suffix):
    sources = (path for folder in ("examples", "tests") for path in (ROOT / folder).rglob("*")
               if path.name.endswith(suffix))
    if not any(is_part_of(lines, path.read_text().splitlines()) for path in sources):
        return "is no part of a file that is compiled"
    return None


def check_json(lines):
    json.loads("\n".join(lines))


def check_console(lines, server):
    command, expected = None, []
    for line in [*lines, "$ "]:
        if not line.startswith("$ "):
            expected.append(line)
            continue
        if command:
            printed = subprocess.run(command.replace("127.0.0.1:8080", server), shell=True, text=True,
                                     capture_output=True, timeout=60, check=True, cwd=ROOT).stdout
            printed = printed.replace(server, "127.0.0.1:8080").splitlines()
            if printed != expected:
                return f"{command}\nprints\n" + "\n".join(printed)
        command, expected = line[2:], []
    return None


def check_shell(lines, programs):
    presets = json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]
    text = re.sub(r"(?m)(^|\s)#.*", "", "\n".join(lines))
    for command in re.split(r"&&|[;\n|]", text):
        command = command.strip(" &")
        if not command:
            continue
        program = command.split()[0]
        in_build = re.fullmatch(r"(?:build|~)/\w+/bin/([\w-]+)", program)
        exists = (programs / in_build[1]).exists() if in_build else (
            (ROOT / program).exists() if "/" in program else shutil.which(program))
        preset = re.search(r"--preset (\S+)", command)
        if not exists or preset and preset[1] not in [known["name"] for known in presets]:
            return f"there is no {command}"
    return None


def main():
    programs = pathlib.Path(sys.argv[1]).resolve()
    server = subprocess.Popen([programs / "vexmora-adserver"], stdout=subprocess.PIPE, text=True)
    address = re.search(r"http://(\S+)", server.stdout.readline())[1]
    checks = {
        "cpp": lambda lines: check_compiled(lines, ".cpp"),
        "qml": lambda lines: check_compiled(lines, ".qml"),
        "cmake": lambda lines: check_compiled(lines, "CMakeLists.txt"),
        "json": check_json,
        "console": lambda lines: check_console(lines, address),
        "sh": lambda lines: check_shell(lines, programs),
        "": lambda lines: None,
    }
    listed = subprocess.run(["git", "ls-files", "*.md"], cwd=ROOT, text=True, capture_output=True,
                            check=True).stdout.split()
    checked, wrong = 0, 0
    try:
        for name in listed:
            for language, line, lines in blocks(ROOT / name):
                fault = checks[language](lines)
                checked += 1
                if fault:
                    wrong += 1
                    print(f"{name}:{line}: {fault}")
    finally:
        server.kill()
    print(f"{checked} blocks, {wrong} wrong")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
