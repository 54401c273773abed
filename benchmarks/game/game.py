# SPDX-License-Identifier: MIT
"""Measures the library in games and writes docs/performance-games.md, or prints it with --quick."""

import argparse
import json
import os
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# pylint: disable=wrong-import-position
import run

DOCUMENT = f"{run.ROOT}/docs/performance-games.md"
GAME = "bin/vexmora-game-bench"


def measure(bench, mode, count):
    run.say(f"game: {mode}")
    done = subprocess.run([f"{bench.build}/{GAME}", mode, bench.libraries[0], str(count)],
                          check=True, capture_output=True)
    return json.loads(done.stdout)


def started(command):
    """Milliseconds until a program says that it shows its banner, and its memory then."""
    begin = time.perf_counter()
    process = subprocess.Popen(command, env=run.OURS, stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    process.stdout.readline()
    taken = (time.perf_counter() - begin) * 1000
    memory = run.proportional_bytes(process.pid)
    process.communicate()
    return taken, memory


def starts(bench, rounds):
    run.say("game: from the start of the process")
    library = bench.libraries[0]
    commands = {"window": [f"{bench.build}/{GAME}", "window", library],
                "game": [f"{bench.build}/{GAME}", "start", library],
                "loop": [f"{bench.build}/bin/vexmora-host-with-loop", library],
                "qt": [f"{bench.build}/bin/vexmora-host-with", library]}
    samples = {who: [] for who in commands}
    for _ in range(rounds):
        for who, command in commands.items():
            samples[who].append(started(command))
    return {who: [statistics.median(values) for values in zip(*taken)]
            for who, taken in samples.items()}


def reached(good):
    return "yes" if good else "**no**"


def rows(bench, quick):
    for kind, times in measure(bench, "one-by-one", 60 if quick else 600).items():
        sdk, floor = statistics.median(times["sdk"]), statistics.median(times["floor"])
        yield (f"time to ad at 0 ms latency, {kind}", f"{sdk:.2f} ms", f"{floor:.2f} ms",
               f"{sdk / floor:.2f}", "1.10", reached(sdk / floor <= 1.1))
    frames = measure(bench, "frames", 2000 if quick else 10_000)
    worked, waited = sorted(frames["worked"]), sorted(frames["waited"])
    at = round(0.999 * (len(worked) - 1))
    yield (f"processor time of a frame, 99.9 % of {len(worked)}", f"{worked[at]:.2f} ms", "",
           "", "0.5 ms", reached(worked[at] <= 0.5))
    yield "processor time of a frame, at most", f"{worked[-1]:.2f} ms", "", "", "2 ms", \
        reached(worked[-1] <= 2)
    yield "wall clock of a frame, at most", f"{waited[-1]:.2f} ms", "", "", "not judged", ""
    for what in ("allocations", "uploads"):
        label = "texture uploads" if what == "uploads" else what
        yield f"{label} in 1,000 frames without a change", frames[what], "", "", "0", \
            reached(frames[what] == 0)
    start = starts(bench, 5 if quick else 40)
    window, qt = start["window"][0], start["qt"][0]
    yield "process start to an empty window of SDL, against Qt's banner", f"{window:.1f} ms", \
        f"{qt:.1f} ms", f"{window / qt:.2f}", "not judged", ""
    for who, whose in (("loop", "without a window"), ("game", "in a window of SDL")):
        for index, (what, unit, scale) in enumerate(
                (("process start to first banner", "ms", 1), ("memory then", "MiB", 2 ** 20))):
            taken, qt = start[who][index] / scale, start["qt"][index] / scale
            yield f"{what}, {whose}, against Qt", f"{taken:.1f} {unit}", f"{qt:.1f} {unit}", \
                f"{taken / qt:.2f}", "0.80", reached(taken / qt <= 0.8)


def document(table, machine):
    lines = ["# Performance in games", "",
             "The costs of the library on Pango, Cairo and SDL, in a loop that sleeps until it is "
             "woken. The floor does the same work by hand, without error handling: libcurl, the "
             "codecs, Boost.JSON, Pango, Cairo and one texture upload. `scripts/bench.sh --game` "
             "measures it. The values are medians, except for the frames: at 60 per second, with "
             "a new banner every ten seconds, a native ad every twenty and an interstitial every "
             "minute.", "",
             "The start is mostly the dynamic loader's: the game loads 111 libraries, 46 of them "
             "for Pango, Cairo and SDL, and the Qt program 80. A program that links the same and "
             "only opens a window shows it.", "",
             f"{machine}.", "",
             "| what | library | floor, or Qt | ratio | target | reached |",
             "|---|---|---|---|---|---|"]
    lines += ["| " + " | ".join(str(cell) for cell in row) + " |" for row in table]
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench.sh --game", description=__doc__)
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--quick", action="store_true",
                        help="fewer samples, and print instead of recording")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder, run.Bench(options.build, folder) as bench:
        run.OURS["XDG_RUNTIME_DIR"] = folder
        table = list(rows(bench, options.quick))
    text = document(table, run.machine())
    if options.quick:
        print(text)
        return
    with open(DOCUMENT, "w", encoding="utf-8") as file:
        file.write(text)


if __name__ == "__main__":
    main()
