#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the blocks of code in the documents.

cpp, qml, cmake: the lines of a block are, in this order, lines of one file that is compiled.
json: it is read.
sh: it is run, but for the commands that scripts/test.sh runs by itself.
console: each command is run and prints what follows it, and maybe more; it goes on until its
document ends.
text: neither code nor a command that a machine of ours can run.

A command is run as it is written, but for this: the home folder is a temporary one, port 8080 is
one that is free, and the demo plays its scenario instead of opening a window.
"""
import contextlib
import json
import os
import pathlib
import re
import select
import signal
import socket
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
RUN_BY_TESTS = {re.sub(r"^\s*(exec |step \w+ )?|( \| tee .*)$", "", line)
                for script in (".ci/run", "scripts/test.sh")
                for line in (ROOT / script).read_text().splitlines()}


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


class Reader:
    """Does with one document what it says."""

    def __init__(self, home, port):
        self.environment = dict(os.environ, HOME=home, XDG_RUNTIME_DIR=home)
        self.port = port
        self.running = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.running:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)
            process.wait()

    def as_run(self, command):
        command = re.sub(r"\s+#.*", "", command)
        command = re.sub(r"\b8080\b", str(self.port), command)
        return re.sub(r"(demo\.sh( --game)?)$", r"\1 --headless --out build/pictures", command)

    def check_shell(self, lines):
        commands = [command for command in map(self.as_run, lines) if command not in RUN_BY_TESTS]
        run = subprocess.run(["bash", "-eo", "pipefail", "-c", "\n".join(commands)], text=True,
                             cwd=ROOT, env=self.environment, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        return f"fails\n{run.stdout}" if run.returncode else None

    def check_console(self, lines):
        for line in lines:
            if line.startswith("$ "):
                self.running.append(subprocess.Popen(
                    ["stdbuf", "-oL", "bash", "-c", self.as_run(line[2:])], bufsize=0, cwd=ROOT,
                    env=self.environment, stdout=subprocess.PIPE, start_new_session=True))
                continue
            output = self.running[-1].stdout
            prints = select.select([output], [], [], 60)[0]
            printed = output.readline().decode().rstrip("\n") if prints else ""
            if printed.replace(str(self.port), "8080") != line:
                return f"prints, instead of {line}\n{printed}"
        return None

    def check(self, language, lines):
        checks = {
            "cpp": lambda: check_compiled(lines, ".cpp"),
            "qml": lambda: check_compiled(lines, ".qml"),
            "cmake": lambda: check_compiled(lines, "CMakeLists.txt"),
            "json": lambda: check_json(lines),
            "sh": lambda: self.check_shell(lines),
            "console": lambda: self.check_console(lines),
            "text": lambda: None,
        }
        return checks[language]() if language in checks else f"has no such language: {language}"


@contextlib.contextmanager
def builds_that_ask(port):
    """Their settings lead to the port meanwhile. Nothing is compiled anew for that."""
    def configure(option):
        for preset in ("dev", "release"):
            subprocess.run(["cmake", "--preset", preset, option], cwd=ROOT, check=True,
                           stdout=subprocess.DEVNULL)

    template = f"http://127.0.0.1:{port}/ads?container=%@&types=%@"
    configure(f"-DVEXMORA_REQUEST_URL_FORMAT={template}")
    try:
        yield
    finally:
        configure("-UVEXMORA_REQUEST_URL_FORMAT")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


def main():
    listed = subprocess.run(["git", "ls-files", "*.md"], cwd=ROOT, text=True, capture_output=True,
                            check=True).stdout.split()
    port = free_port()
    checked, wrong = 0, 0
    with builds_that_ask(port):
        for name in listed:
            with tempfile.TemporaryDirectory() as home, Reader(home, port) as reader:
                for language, line, lines in blocks(ROOT / name):
                    fault = reader.check(language, lines)
                    checked += 1
                    if fault:
                        wrong += 1
                        print(f"{name}:{line}: {fault}")
    print(f"{checked} blocks, {wrong} wrong")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
