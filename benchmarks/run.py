# SPDX-License-Identifier: MIT
"""Runs the benchmarks and records them in docs/, or compares them with what is recorded there."""

import argparse
import contextlib
import datetime
import glob
import http.server
import json
import math
import os
import platform
import plistlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import threading
import time

import distant
import report

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
KINDS = ("banner", "native", "interstitial")
CREATIVES = {
    "banner": {"adTypeId": 77, "picture": "harbour-coffee-320x60.png"},
    "native": {"adTypeId": 1, "picture": "solstice-gardens-native.jpg"},
    "interstitial": {"adTypeId": 14, "picture": "solstice-gardens-300x250.jpg"},
}
VIEWS = (1, 10, 100, 1000, 10000)
KEPT_PICTURES = 10
OURS = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software", QT_HASH_SEED="0")


class Bench:
    """One ad server for each latency, and the programs that ask them for ads."""

    def __init__(self, build, folder):
        self.build, self.folder, self.servers = build, folder, {}
        with open(f"{ROOT}/adserver/catalog/catalog.json", encoding="utf-8") as file:
            shipped = json.load(file)["creatives"]
        wanted = [creative["picture"] for creative in CREATIVES.values()]
        creatives = {n: c for n, c in shipped.items() if c["picture"] in wanted}
        # Banners of all sizes, so that there are ten.
        banners = sorted({c["picture"] for c in shipped.values()
                          if c["adTypeId"] in (77, 83, 84, 15) and "2x" not in c["picture"]})
        kept = {f"kept-{i}": {"adTypeId": 77, "clickUrl": "/landing/kept", "picture": picture}
                for i, picture in enumerate(banners[:KEPT_PICTURES])}
        os.makedirs(f"{folder}/pictures")
        for picture in {*wanted, *banners}:
            shutil.copy(f"{ROOT}/adserver/catalog/pictures/{picture}", f"{folder}/pictures")
        with open(f"{folder}/catalog.json", "w", encoding="utf-8") as file:
            json.dump({"creatives": creatives | kept,
                       "placements": {name: [name] for name in kept}}, file)
        self.creatives = {c["adTypeId"]: c for c in creatives.values()}

    def __enter__(self):
        self.libraries = {latency: self.library(self.serve(latency)) for latency in (0, 20, 100)}
        return self

    def __exit__(self, *_):
        for server in self.servers.values():
            server.terminate()
            server.wait()

    def serve(self, latency):
        # It prints each request, and a reader would be woken up each time.
        log = f"{self.folder}/server-{latency}.log"
        with open(log, "w", encoding="utf-8") as output:
            self.servers[latency] = subprocess.Popen(
                [f"{self.build}/bin/vexmora-adserver", "--latency", str(latency),
                 "--catalog", f"{self.folder}/catalog.json"], stdout=output)
        with open(log, encoding="utf-8") as written:
            told = ""
            while not (template := re.search(r"^Request template: (.*)\n", told, re.M)):
                time.sleep(0.01)
                told += written.read()
        return template[1]

    def server_work(self, latency=0):
        """Processor time of an ad server so far, in milliseconds."""
        with open(f"/proc/{self.servers[latency].pid}/stat", encoding="ascii") as file:
            fields = file.read().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) * 1000 / os.sysconf("SC_CLK_TCK")

    def library(self, request_url):
        library = tempfile.mkdtemp(dir=self.folder)
        shutil.copytree(f"{self.build}/share/VexmoraSDK", library, dirs_exist_ok=True)
        with open(f"{library}/VexmoraSettings.plist", "wb") as file:
            plistlib.dump({"requestUrlFormat": request_url}, file)
        return library

    def command(self, mode, latency=0, **options):
        command = [f"{self.build}/bin/vexmora-bench", mode, "--library", self.libraries[latency]]
        for name, value in options.items():
            command += [f"--{name}", str(value)]
        return command

    def start(self, mode, latency=0, **options):
        return subprocess.Popen(self.command(mode, latency, **options), env=OURS,
                                stdout=subprocess.PIPE)

    def run(self, mode, latency=0, **options):
        return result_of(self.start(mode, latency, **options))


def result_of(process):
    output = process.communicate()[0]
    if process.returncode != 0:
        sys.exit(f"{process.args} failed")
    return json.loads(output)


def summaries(*runs):
    """What the samples of one or more runs of each contender amount to."""
    def summary(samples):
        samples.sort()
        return {"median": statistics.median(samples), "max": samples[-1],
                "p99": samples[round(0.99 * (len(samples) - 1))], "count": len(samples)}

    return {who: {what: summary([sample for run in runs for sample in run[who][what]])
                  for what in runs[0][who]} for who in runs[0]}


def say(what):
    print(f"== {what}", file=sys.stderr, flush=True)


def time_to_ad(bench, count):
    say("time to ad")
    result = {0: {kind: summaries(bench.run("one-by-one", kind=kind, count=count))
                  for kind in KINDS}}
    # Processes that mostly wait run at the same time, more of them where the latency is larger.
    running = {latency: {kind: [
        bench.start("one-by-one", latency, kind=kind, count=count * 20 // latency)
        for _ in range(latency // 20)] for kind in KINDS} for latency in bench.libraries if latency}
    for latency, kinds in running.items():
        result[latency] = {kind: summaries(*[result_of(process) for process in processes])
                           for kind, processes in kinds.items()}
    return result


def kept(bench, views, rounds):
    """Ads of ten pictures that the server lets be kept; the floor keeps none."""
    say("kept pictures")
    run = bench.run("at-once", kind="banner", views=views, rounds=rounds, pictures=KEPT_PICTURES)
    run.pop("threads")
    return {
        "views": views,
        "atOnce": summaries(run),
        "memory": bench.run("memory", kind="banner", views=views, rounds=3,
                            pictures=KEPT_PICTURES),
        "oneByOne": summaries(bench.run("one-by-one", 20, kind="banner", count=rounds * 5,
                                        container="kept-0")),
    }


def first_calls(bench, rounds):
    """The first ad of a process."""
    say("the first call")
    taken = {(kind, shown): {who: {} for who in ("sdk", "floor")}
             for shown in ("", "text") for kind in KINDS}
    for _ in range(rounds):
        for (kind, shown), contenders in taken.items():
            options = {shown: "shown"} if shown else {}
            for who, samples in contenders.items():
                for what, values in bench.run("first", kind=kind, only=who, **options).items():
                    samples.setdefault(what, []).extend(values)
    return {kind + (", in an app that has shown a text" if shown else ""): summaries(contenders)
            for (kind, shown), contenders in taken.items()}


def scenes(bench, count):
    say("against hand-written QML")
    return {kind: summaries(bench.run("scenes", kind=kind, count=count,
                                      qml=f"{ROOT}/benchmarks/qml"))
            for kind in ("banner", "native")}


def at_once(bench, most, rounds):
    result = {}
    for kind in ("banner", "native"):
        say(f"at once: {kind}")
        result[kind] = {}
        for n in VIEWS:
            if n > most:
                break
            count = max(1, rounds // n)
            before = bench.server_work()
            run = bench.run("at-once", kind=kind, views=n, rounds=count)
            threads = run.pop("threads")
            result[kind][n] = summaries(run) | {
                "threads": threads,
                "serverPerAd": (bench.server_work() - before) / (2 * (count * n + 1))}
    return result


def growth(runs, who, what):
    """The exponent of the power law nearest to what 10 and more ads at once take."""
    points = [(math.log(n), math.log(run[who][what]["median"]))
              for n, run in runs.items() if n >= 10]
    slope, _ = statistics.linear_regression(*zip(*points))
    return slope


def memory(bench, most):
    say("memory")
    return {kind: {n: bench.run("memory", kind=kind, views=n, rounds=10 if n == 100 else 2)
                   for n in VIEWS if n <= most} for kind in ("banner", "native")}


def host_cost(bench):
    say("cost to the host")
    def stripped(file):
        subprocess.run(["strip", "-o", f"{bench.folder}/stripped", file], check=True)
        return os.path.getsize(f"{bench.folder}/stripped")

    with_sdk, without = (f"{bench.build}/bin/vexmora-host-{name}" for name in ("with", "without"))
    seconds = {with_sdk: [], without: []}
    for _ in range(100):
        for program, took in seconds.items():
            begin = time.perf_counter()
            subprocess.run([program], check=True)
            took.append(time.perf_counter() - begin)
    def initialisers(*files):
        """What the loader is told to call; a function that nobody calls may be there besides."""
        sections = subprocess.run(["readelf", "-SW", *files], check=True, capture_output=True,
                                  text=True).stdout
        sizes = re.findall(r" \.(?:init_array|ctors)\S* +\w+ +\w+ \w+ (\w+)", sections)
        return sum(int(size, 16) for size in sizes) // 8

    return {
        "library": stripped(f"{bench.build}/lib/libvexmora_shared.so"),
        "static": stripped(with_sdk) - stripped(without),
        "start": {"with": statistics.median(seconds[with_sdk]) * 1000,
                  "without": statistics.median(seconds[without]) * 1000},
        "initialisers": initialisers(f"{bench.build}/lib/libVexmoraSDK.a"),
        "initialisersInQml": initialisers(*glob.glob(f"{bench.build}/VexmoraSDK/quick/**/*.o",
                                                     recursive=True)),
    }


def micro(bench):
    say("parts one by one")
    done = subprocess.run(
        [f"{bench.build}/bin/vexmora-micro", bench.libraries[0],
         f"{ROOT}/adserver/catalog/pictures", "--benchmark_format=json", "--benchmark_repetitions=5",
         "--benchmark_report_aggregates_only=true", "--benchmark_min_time=0.1",
         "--benchmark_enable_random_interleaving=true"],
        env=OURS, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return {b["run_name"]: {"nanoseconds": b["cpu_time"],
                            "bytesPerSecond": b.get("bytes_per_second")}
            for b in json.loads(done.stdout)["benchmarks"] if b["aggregate_name"] == "median"}


def codecs(parts):
    """Moves the pictures of the catalogue out of the parts: by format, what decoding each takes
    against QImageReader."""
    ratios = {}
    for name in [name for name in parts if name.startswith("codec: ")]:
        picture = name.removeprefix("codec: ")
        ours, qts = parts.pop(name), parts.pop(f"QImageReader: {picture}")
        ratios.setdefault(picture.rpartition(".")[2], {})[picture] = (
            ours["nanoseconds"] / qts["nanoseconds"])
    return ratios


def callgrind(bench, command, *options):
    """The dumps that callgrind writes, as instructions by what triggered them."""
    out = f"{bench.folder}/callgrind"
    for old in glob.glob(out + "*"):
        os.remove(old)
    subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={out}", *options,
                    *command], env=OURS, check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    dumps = {}
    for file in glob.glob(out + "*"):
        with open(file, encoding="utf-8", errors="replace") as dump:
            text = dump.read()
        trigger = re.search(r"^desc: Trigger: (?:Client Request: )?(.*)$", text, re.M)[1]
        dumps[trigger] = int(re.search(r"^totals: (\d+)", text, re.M)[1])
    return dumps


def instructions(bench):
    say("instructions")
    counts = callgrind(bench, [f"{bench.build}/bin/vexmora-micro", bench.libraries[0],
                               f"{bench.folder}/pictures", "count"], "--collect-atstart=no")
    counts.pop("Program termination")
    for kind in KINDS:
        for who in ("sdk", "floor"):
            few, many = (sum(callgrind(bench, bench.command(
                "one-by-one", kind=kind, only=who, count=count)).values()) for count in (20, 120))
            counts[f"{who}, all threads: {kind}"] = (many - few) // 100
    return counts


class Page(http.server.BaseHTTPRequestHandler):
    """A page that fetches an ad and its picture, and what it fetches."""

    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True  # the body must not wait until the headers are acknowledged
    html = """<!doctype html><body><script>
        const show = async () => {
            const begin = performance.now();
            const [ad] = await (await fetch('ADS')).json();
            const picture = new Image();
            picture.src = ad.bannerUrl;
            await picture.decode();
            document.body.append(picture);
            requestAnimationFrame(() => requestAnimationFrame(() => 
                fetch('/done?' + (performance.now() - begin))));
        };
        show();
        </script>"""

    def do_GET(self):
        server = self.server
        if self.path.startswith("/done"):
            server.milliseconds = float(self.path.partition("?")[2])
            server.done.set()
            server.go_on.wait(30)
        answers = {"/": ("text/html", self.html.replace("ADS", server.ads).encode()),
                   "/picture": ("image/png", server.picture),
                   "/done": ("text/plain", b"")}
        ads = ("application/json", json.dumps([{
            "adTypeId": 77, "clickUrl": "http://127.0.0.1/",
            "bannerUrl": f"http://127.0.0.1:{server.server_port}/picture"}]).encode())
        kind, body = answers.get(self.path.partition("?")[0], ads)
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def proportional_bytes(process):
    """Of a process and all below it."""
    total = 0
    with contextlib.suppress(OSError):
        with open(f"/proc/{process}/smaps_rollup", encoding="ascii") as file:
            total = int(re.search(r"^Pss:\s+(\d+)", file.read(), re.M)[1]) * 1024
        for children in glob.glob(f"/proc/{process}/task/*/children"):
            with open(children, encoding="ascii") as file:
                total += sum(proportional_bytes(int(child)) for child in file.read().split())
    return total


@contextlib.contextmanager
def page_server(bench, ads="/ads"):
    """A server of the page; `ads` is where the page asks for its ad."""
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Page)
    server.ads = ads
    with open(f"{bench.folder}/pictures/{CREATIVES['banner']['picture']}", "rb") as file:
        server.picture = file.read()
    threading.Thread(target=server.serve_forever, daemon=True).start()
    yield server
    server.shutdown()


def browser():
    return shutil.which("chromium") or shutil.which("chromium-browser")


@contextlib.contextmanager
def showing_page(server, *options):
    """Chromium, when its page has shown the ad."""
    server.done, server.go_on = threading.Event(), threading.Event()
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        process = subprocess.Popen(
            [browser(), "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
             f"--user-data-dir={profile}", *options, f"http://127.0.0.1:{server.server_port}/"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if not server.done.wait(60):
            sys.exit("Chromium did not show the page")
        yield process
        server.go_on.set()
        process.terminate()
        process.wait()


def cold_start(bench, rounds):
    """The first ad of a process, over TLS from two servers that are far away."""
    say("cold start over TLS")
    picture = f"{bench.folder}/pictures/{CREATIVES['banner']['picture']}"
    with open(picture, "rb") as file, tempfile.TemporaryDirectory() as folder, \
            distant.DistantServers(folder, file.read(), report.ROUND_TRIP / 1000) as servers, \
            page_server(bench, f"{servers.ads}/ads") as server:
        bench.libraries["distant"] = bench.library(f"{servers.ads}/ads?container=%@&types=%@")
        samples = {}
        for _ in range(rounds):
            for who in "sdk", "floor", "qml":
                run = bench.run("first", "distant", kind="banner", only=who,
                                certificate=servers.certificate, qml=f"{ROOT}/benchmarks/qml")
                samples.setdefault(who, []).extend(run["painted"])
            if browser():
                with showing_page(server, "--ignore-certificate-errors"):
                    samples.setdefault("chromium", []).append(server.milliseconds)
        del bench.libraries["distant"]
    return {who: statistics.median(values) for who, values in samples.items()}


def from_process_start(bench, rounds):
    if not browser():
        print("Chromium is not installed: the comparison with its page is skipped.")
    say("from the start of the process")
    samples = {"sdk": [], "chromium": []}
    with page_server(bench) as server:
        address = f"http://127.0.0.1:{server.server_port}"
        library = bench.library(f"{address}/ads?container=%@&types=%@")

        def sdk():
            begin = time.perf_counter()
            process = subprocess.Popen(
                [f"{bench.build}/bin/vexmora-host-with", library], env=OURS,
                stdin=subprocess.PIPE, stdout=subprocess.PIPE)
            process.stdout.readline()
            samples["sdk"].append((time.perf_counter() - begin, proportional_bytes(process.pid)))
            process.communicate()

        def chromium():
            begin = time.perf_counter()
            with showing_page(server) as process:
                samples["chromium"].append(
                    (time.perf_counter() - begin, proportional_bytes(process.pid)))

        for _ in range(rounds):
            sdk()
            if browser():
                chromium()
    return {who: {"milliseconds": statistics.median(s[0] for s in taken) * 1000,
                  "bytes": statistics.median(s[1] for s in taken)}
            for who, taken in samples.items() if taken}


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"model name\s*: (.*)", file.read())[1]
    return f"{model}, {os.cpu_count()} cores, Linux {platform.release().split('-')[0]}"


def everything(bench, quick):
    parts = micro(bench)
    once_at = at_once(bench, 1000 if quick else 10000, 200 if quick else 1000)
    result = {
        "cores": os.cpu_count(),
        "timeToAd": time_to_ad(bench, 20 if quick else 1000),
        "scenes": scenes(bench, 20 if quick else 500),
        "atOnce": once_at,
        "growth": {kind: {who: {what: growth(runs, who, what) for what in ("passed", "process")}
                          for who in ("sdk", "floor")} for kind, runs in once_at.items()},
        "memory": memory(bench, 100 if quick else 10000),
        "host": host_cost(bench),
        "fromStart": from_process_start(bench, 3 if quick else 15),
        "kept": kept(bench, 1000, 2 if quick else 20),
        "firstCalls": first_calls(bench, 3 if quick else 30),
        "coldStart": cold_start(bench, 2 if quick else 15),
        "micro": parts,
        "codecs": codecs(parts),
        "instructions": instructions(bench),
    }
    # In the file the keys will be strings, too.
    return json.loads(json.dumps(result))


def check(bench, recorded):
    """Prints what differs from the record; false where instructions grew by more than 10 %."""
    now = time_to_ad_ratios({0: {kind: summaries(bench.run("one-by-one", kind=kind, count=200))
                                 for kind in KINDS}})
    before = time_to_ad_ratios(recorded["timeToAd"])
    for name, ratio in now.items():
        print(f"{name}: {ratio:.2f} × floor, recorded {before[name]:.2f} ×")
    good = True
    counts = instructions(bench)
    for name in sorted(recorded["instructions"].keys() - counts.keys()):
        print(f"{name}: recorded, and not there now")
    for name, count in sorted(counts.items()):
        known = recorded["instructions"].get(name)
        change = count / known - 1 if known else 0
        # The floor is not the library; its cost is not compared.
        worse = change > 0.1 and not name.startswith("floor")
        good = good and not worse
        print(f"{name}: {count:,} instructions, {change:+.1%}{'  TOO MANY' if worse else ''}")
    return good


def time_to_ad_ratios(times):
    return {f"{kind} at {latency} ms":
            run["sdk"]["painted"]["median"] / run["floor"]["painted"]["median"]
            for latency, kinds in times.items() for kind, run in kinds.items()}


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench.sh", description=__doc__)
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--check", action="store_true",
                        help="compare with the record, and fail where instructions grew by 10 %%")
    parser.add_argument("--quick", action="store_true",
                        help="fewer samples, and print instead of recording")
    options = parser.parse_args()
    record = f"{ROOT}/docs/performance.json"
    with tempfile.TemporaryDirectory() as folder, Bench(options.build, folder) as bench:
        OURS["XDG_RUNTIME_DIR"] = folder
        if options.check:
            with open(record, encoding="utf-8") as file:
                sys.exit(0 if check(bench, json.load(file)["results"]) else 1)
        measured = {"machine": machine(), "command": "scripts/bench.sh",
                    "date": datetime.date.today().isoformat(),
                    "results": everything(bench, options.quick)}
    if options.quick:
        print(report.aims(measured), report.tables(measured), sep="\n")
        return
    with open(record, "w", encoding="utf-8") as file:
        json.dump(measured, file, indent=1)
        file.write("\n")
    report.write(measured, f"{ROOT}/docs")


if __name__ == "__main__":
    main()
