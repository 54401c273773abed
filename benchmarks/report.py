# SPDX-License-Identifier: MIT
"""Tables and plots of what was measured."""

import math
import re
import statistics

MIB = 1 << 20
THEMES = {
    "light": {"back": "#ffffff", "ink": "#1f2328", "faint": "#59636e", "line": "#d1d9e0",
              "sdk": "#0969da", "floor": "#818b98", "other": "#bc4c00"},
    "dark": {"back": "#0d1117", "ink": "#f0f6fc", "faint": "#9198a1", "line": "#3d444d",
             "sdk": "#4493f8", "floor": "#9198a1", "other": "#db6d28"},
}
WIDTH = 720


class Drawing:
    def __init__(self, theme, title, height, legend):
        self.colors, self.height, self.parts = THEMES[theme], height, []
        self.text(16, 30, title, size=16, weight=600)
        x = 16
        for color, name in legend:
            self.box(x, 45, 11, 11, color)
            self.text(x + 17, 55, name, color="faint")
            x += 44 + 7 * len(name)

    def text(self, x, y, text, color="ink", size=13, anchor="start", weight=400):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" fill="{self.colors[color]}" '
                          f'font-size="{size}" text-anchor="{anchor}" font-weight="{weight}">'
                          f'{text}</text>')

    def box(self, x, y, width, height, color):
        self.parts.append(f'<rect x="{x:.1f}" y="{y:.1f}" width="{max(width, 1):.1f}" '
                          f'height="{height}" rx="2" fill="{self.colors[color]}"/>')

    def line(self, points, color, width=1, dash=""):
        path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polyline points="{path}" fill="none" stroke="{self.colors[color]}" '
                          f'stroke-width="{width}" stroke-dasharray="{dash}"/>')

    def dot(self, x, y, color):
        self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="4" '
                          f'fill="{self.colors[color]}"/>')

    def svg(self):
        return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {self.height}" '
                'font-family="system-ui, sans-serif">'
                f'<rect width="100%" height="100%" fill="{self.colors["back"]}"/>'
                + "".join(self.parts) + "</svg>\n")


def bars(theme, title, legend, groups):
    """Groups of (name, [(color, value, text)]), each with a scale of its own."""
    height = 78 + sum(24 * len(rows) + 18 for _, rows in groups)
    drawing = Drawing(theme, title, height, legend)
    y = 78
    for name, rows in groups:
        drawing.text(150, y + 12 * len(rows) + 4, name, anchor="end")
        longest = max(value for _, value, _ in rows)
        for color, value, text in rows:
            length = value / longest * 410
            drawing.box(162, y + 3, length, 18, color)
            drawing.text(170 + length, y + 17, text, color="faint")
            y += 24
        y += 18
    return drawing.svg()


def lines(theme, title, legend, series, unit):
    """Series of (color, dash, name, [(x, y)]) on logarithmic axes."""
    drawing = Drawing(theme, title, 420, legend)
    left, right, top, bottom = 84, WIDTH - 110, 84, 372
    xs = [x for *_, points in series for x, _ in points]
    ys = [y for *_, points in series for _, y in points]
    decades = math.floor(math.log10(min(ys))), math.ceil(math.log10(max(ys)))

    def place(x, y):
        return (left + (right - left) * math.log10(x) / max(1, math.log10(max(xs))),
                bottom - (bottom - top) * (math.log10(y) - decades[0]) / (decades[1] - decades[0]))

    for decade in range(decades[0], decades[1] + 1):
        y = place(1, 10 ** decade)[1]
        drawing.line([(left, y), (right, y)], "line")
        drawing.text(left - 10, y + 4, f"{10 ** decade:,g} {unit}", "faint", anchor="end")
    for x in sorted(set(xs)):
        drawing.text(place(x, 1)[0], bottom + 22, f"{x:,}", "faint", anchor="middle")
    drawing.text((left + right) / 2, bottom + 42, "views at once", "faint", anchor="middle")
    taken = []
    for color, dash, name, points in series:
        placed = [place(*point) for point in points]
        drawing.line(placed, color, 2, dash)
        for x, y in placed:
            drawing.dot(x, y, color)
        x, y = placed[-1]
        while any(abs(y - other) < 15 for other in taken):
            y += 3
        taken.append(y)
        drawing.text(x + 10, y + 4, name, "faint", size=12)
    return drawing.svg()


def plots(results, theme):
    times, scenes, at_once = results["timeToAd"]["0"], results["scenes"], results["atOnce"]
    legend = [("sdk", "VexmoraSDK"), ("floor", "written by hand, without it")]

    def milliseconds(color, value):
        return color, value, f"{value:.2f} ms"

    yield "time-to-ad", bars(
        theme, "From the call to the painted ad, median", legend,
        [(kind, [milliseconds("sdk", run["sdk"]["painted"]["median"]),
                 milliseconds("floor", run["floor"]["painted"]["median"])])
         for kind, run in times.items()])
    yield "qml", bars(
        theme, "In a Qt Quick scene, from the item to the ad, median",
        [("sdk", "VexmoraAdView"), ("other", "page written by hand in QML"),
         ("floor", "the floor, without a scene")],
        [(f"{kind}, {name}", [milliseconds(color, run[who][key]["median"]) for who, color in (
            ("sdk", "sdk"), ("qml", "other"), ("floor", "floor"))])
         for kind, run in scenes.items() for key, name in (("received", "time"),
                                                           ("main", "main thread"))])
    yield "at-once", lines(
        theme, "Until all of them are there", legend,
        [(who, dash, f"{kind}", [(int(n), run[who]["passed"]["median"])
                                 for n, run in at_once[kind].items()])
         for kind, dash in (("native", ""), ("banner", "6 4")) for who in ("sdk", "floor")], "ms")
    start = results["fromStart"]
    if "chromium" in start:
        yield "from-start", bars(
            theme, "From the start of a process to its first banner, median",
            [("sdk", "app with VexmoraSDK"), ("other", "Chromium with a page")],
            [(name, [(color, start[who][key], f"{start[who][key] / unit:,.0f} {symbol}")
                     for who, color in (("sdk", "sdk"), ("chromium", "other"))])
             for key, name, unit, symbol in (("milliseconds", "time", 1, "ms"),
                                             ("bytes", "memory", MIB, "MiB"))])


def table(head, rows):
    return "\n".join("| " + " | ".join(row) + " |"
                     for row in [head, ["---"] + ["---:"] * (len(head) - 1), *rows]) + "\n"


def targets(results):
    """(what, aim, found, whether it is reached)"""
    aims = {"banner": 1.05, "native": 1.00, "interstitial": 1.00}
    for latency in "0", "20":
        for kind, run in results["timeToAd"][latency].items():
            most = aims[kind] if latency == "0" else 1.02
            received, painted = (run["sdk"][until]["median"] / run["floor"][until]["median"]
                                 for until in ("received", "painted"))
            yield (f"{kind}, {latency} ms of latency, against the floor: received, painted",
                   f"≤ {most:.2f} ×", f"{received:.2f} ×, {painted:.2f} ×",
                   max(received, painted) <= most)
    for format, most in ("jpg", 0.80), ("webp", 1.03), ("png", 1.05):
        ratio = statistics.median(results["codecs"][format].values())
        yield (f"decoding {FORMATS[format]}, against QImageReader, median of the catalogue",
               f"≤ {most:.2f} ×", f"{ratio:.2f} ×", ratio <= most)
    kept = results["kept"]
    burst = kept["atOnce"]
    for key, name in ("passed", "time"), ("process", "processor time"):
        ratio = burst["sdk"][key]["median"] / burst["floor"][key]["median"]
        yield (f"{kept['views']:,} banners of ten pictures that may be kept, against the floor, "
               f"{name}", "≤ 0.35 ×", f"{ratio:.2f} ×", ratio <= 0.35)
    heap = statistics.median(r["heapWith"] - r["heapBefore"]
                             for r in kept["memory"]["rounds"]) / kept["views"] / 1024
    yield "the same, heap per view", "≤ 16 KiB", f"{heap:.1f} KiB", heap <= 16
    ratio = (kept["oneByOne"]["sdk"]["painted"]["median"] /
             kept["oneByOne"]["floor"]["painted"]["median"])
    yield ("banner whose picture is kept, 20 ms of latency, against the floor", "≤ 0.55 ×",
           f"{ratio:.2f} ×", ratio <= 0.55)
    for app in "", ", in an app that has shown a text":
        called = results["firstCalls"][f"banner{app}"]["sdk"]["called"]["median"]
        yield (f"the first `createView` of a process, main thread{app}", "≤ 2 ms",
               f"{called:.1f} ms", called <= 2)
    cold = {who: time / ROUND_TRIP for who, time in results["coldStart"].items()}
    yield ("cold start over TLS, in round trips, no more than the floor",
           f"≤ {cold['floor'] + 0.5:.1f}", f"{cold['sdk']:.1f}",
           cold["sdk"] <= cold["floor"] + 0.5)
    for kind, run in results["scenes"].items():
        for key, name, most in ("received", "time", 0.5), ("main", "main thread", 1.0):
            ratio = run["sdk"][key]["median"] / run["qml"][key]["median"]
            yield (f"{kind}, against QML by hand, {name}", f"≤ {most:.1f} ×", f"{ratio:.2f} ×",
                   ratio <= most)
    start = results["fromStart"]
    if "chromium" in start:
        for key, name in ("milliseconds", "time from process start"), ("bytes", "memory"):
            ratio = start["sdk"][key] / start["chromium"][key]
            yield (f"against Chromium, {name}", "≤ 0.10 ×", f"{ratio:.3f} ×", ratio <= 0.1)
    for kind, most in ("banner", 0.2), ("native", 0.6):
        main = results["timeToAd"]["0"][kind]["sdk"]["main"]["median"]
        yield f"{kind}, main thread, paint included", f"≤ {most} ms", f"{main:.3f} ms", main <= most
    counts = results["instructions"]
    ratio = counts["whole ad in a slot: banner"] / counts["whole ad: banner"]
    yield "banner in a slot, instructions", "≤ 1.02 ×", f"{ratio:.3f} ×", ratio <= 1.02
    ratio = counts["banner in a scene, item"] / counts["banner in a scene, view"]
    yield "the same in Qt Quick", "≤ 1.02 ×", f"{ratio:.3f} ×", ratio <= 1.02
    for kind, runs in results["atOnce"].items():
        longest = runs["100"]["sdk"]["longest"]["median"]
        yield (f"100 × {kind}, longest stall of the main thread", "≤ 8 ms", f"{longest:.2f} ms",
               longest <= 8)
    for kind, exponents in results["growth"].items():
        exponent = exponents["sdk"]["passed"]
        yield f"growth of time, {kind}, exponent", "≤ 1.05", f"{exponent:.2f}", exponent <= 1.05
    cores = min(results["cores"], 4)
    for kind, runs in results["atOnce"].items():
        busy = sharing(runs["1000"]["threads"])
        yield (f"1,000 × {kind}, threads that share the work", f"≥ {cores}", str(busy),
               busy >= cores)
    for kind, runs in results["memory"].items():
        left = max(abs(r["heapAfter"] - r["heapBefore"]) for r in runs["100"]["rounds"])
        yield (f"heap after 100 × {kind}, worst of 10 rounds", "≤ 1 MiB", f"{left / MIB:.2f} MiB",
               left <= MIB)
    size = results["host"]["library"]
    yield "library, stripped", "≤ 400 KiB", f"{size / 1024:.0f} KiB", size <= 400 * 1024
    count = results["host"]["initialisers"]
    yield "load-time initialisers", "0", str(count), count == 0
    for when, most in ("Before", 0), ("After", cores + 1):
        count = max(len(ours(run[f"threads{when}"]))
                    for runs in results["memory"].values() for run in runs.values())
        yield f"threads {when.lower()} the first request", f"≤ {most}", str(count), count <= most


FORMATS = {"jpg": "JPEG", "webp": "WebP", "png": "PNG"}
ROUND_TRIP = 50  # of the cold start, in milliseconds


def ours(threads):
    """The processor times of the library's own among these threads, in milliseconds."""
    return [time for name, time in threads.items() if re.fullmatch(r"vexmora-\d+", name)]


def sharing(threads):
    """How many of the library's threads took at least half of an even share of the work."""
    times = ours(threads)
    return sum(time >= statistics.fmean(times) / 2 for time in times)


def aims(measured):
    return "\n".join([
        f"Measured on {measured['date']} with `{measured['command']}` on {measured['machine']}.\n",
        table(["what", "target", "measured", "reached"],
              [[what, aim, found, "yes" if good else "**no**"]
               for what, aim, found, good in targets(measured["results"])])])


def tables(measured):
    results = measured["results"]
    parts = ["### Time to ad, in ms\n"]
    rows = []
    columns = (("received", "median"), ("received", "p99"), ("painted", "median"),
               ("main", "median"))
    for latency, kinds in results["timeToAd"].items():
        for kind, run in kinds.items():
            rows.append([f"{kind}, {latency} ms of latency"] + [
                text for who in ("sdk", "floor")
                for text in [f"{run[who][key][part]:.2f}" for key, part in columns] +
                [f"{run[who]['wakeUps']['median']:.0f}"]])
    count = results["timeToAd"]["0"]["banner"]["sdk"]["received"]["count"]
    parts.append(f"Medians of {count:,} ads each; “99 %” is the value that 99 % stay below.\n")
    parts.append(table(["", "SDK: `didReceiveAd`", "99 %", "painted", "main thread", "wake-ups",
                        "floor: there", "99 %", "painted", "main thread", "wake-ups"], rows))
    parts.append("### In a Qt Quick scene, in ms\n")
    parts.append(table(
        ["", "time", "99 %", "main thread", "wake-ups"],
        [[f"{kind}, {name}"] + [f"{run[who][key][part]:.2f}" for key, part in (
            ("received", "median"), ("received", "p99"), ("main", "median"))] +
         [f"{run[who]['wakeUps']['median']:.0f}"]
         for kind, run in results["scenes"].items() for who, name in (
             ("sdk", "`VexmoraAdView`"), ("qml", "QML by hand"),
             ("floor", "the floor, at that pace"))]))
    parts.append("### Many at once\n")
    rows = []
    for kind, runs in results["atOnce"].items():
        for n, run in runs.items():
            row = [f"{int(n):,} × {kind}"]
            for who in ("sdk", "floor"):
                taken = {what: samples["median"] for what, samples in run[who].items()}
                row += [f"{value:,.2f}" for value in (
                    taken["passed"], (taken["main"] + taken["created"]) / int(n),
                    taken["process"] / int(n))]
                if who == "sdk":
                    row += [f"{taken['longest']:,.2f}", f"{run[who]['lostFrames']['max']:.0f}"]
            rows.append(row + [f"{run['serverPerAd']:.2f}"])
    parts.append(table(
        ["", "SDK: all there, ms", "main thread per ad, ms", "all threads per ad, ms",
         "longest stall, ms", "frames lost", "floor: all there, ms", "main thread per ad, ms",
         "all threads per ad, ms", "ad server per ad, ms"], rows))
    parts.append("Exponents of growth, fitted from 10 views on: " + "; ".join(
        f"{kind} {exponents['sdk']['passed']:.2f} (processor time "
        f"{exponents['sdk']['process']:.2f}), the floor {exponents['floor']['passed']:.2f} "
        f"({exponents['floor']['process']:.2f})"
        for kind, exponents in results["growth"].items()) + ".\n")
    parts.append("### Ads of ten pictures that may be kept\n")
    kept = results["kept"]
    parts.append(table(
        ["", "all there, ms", "all threads per ad, ms", "one banner, 20 ms of latency, ms"],
        [[name, f"{kept['atOnce'][who]['passed']['median']:,.1f}",
          f"{kept['atOnce'][who]['process']['median'] / kept['views']:.3f}",
          f"{kept['oneByOne'][who]['painted']['median']:.1f}"]
         for who, name in (("sdk", f"SDK, {kept['views']:,} at once"), ("floor", "floor"))]))
    parts.append("### The first ad of a process\n")
    parts.append(table(
        ["", "SDK: the call, ms of the main thread", "painted, ms", "floor: the call", "painted"],
        [[kind] + [f"{run[who][what]['median']:.2f}" for who in ("sdk", "floor")
                   for what in ("called", "painted")]
         for kind, run in results["firstCalls"].items()]))
    parts.append("### Cold start over TLS\n")
    parts.append("A banner and its picture from two servers, 50 ms of round trip. TCP's own "
                 "handshake takes no time here; in the field it is one round trip more for each "
                 "server, whoever asks.\n")
    names = {"sdk": "SDK", "floor": "floor", "qml": "QML by hand", "chromium": "Chromium"}
    parts.append(table(["", "painted, ms", "round trips"],
                       [[names[who], f"{time:.0f}", f"{time / ROUND_TRIP:.1f}"]
                        for who, time in results["coldStart"].items()]))
    parts.append("### Decoding, against QImageReader\n")
    parts.append(table(["picture", "×"], [
        [picture, f"{ratio:.2f}"] for pictures in results["codecs"].values()
        for picture, ratio in sorted(pictures.items())]))
    parts.append("### Memory\n")
    rows = []
    for kind, runs in results["memory"].items():
        for n, run in runs.items():
            def middle(which, run=run):
                return statistics.median(r[which] for r in run["rounds"])
            rows.append([f"{int(n):,} × {kind}"] + [
                f"{(middle(what + 'With') - middle(what + 'Before')) / int(n) / 1024:,.0f}"
                for what in ("heap", "pss")] + [
                f"{middle(what + when) / MIB:,.1f}"
                for what in ("pss", "rss") for when in ("Before", "With", "After")])
    parts.append(table(["", "heap per view, KiB", "proportional per view, KiB",
                        "proportional before, MiB", "with the views", "after release",
                        "resident before, MiB", "with the views", "after release"], rows))
    parts.append("### Cost to the host\n")
    host, start = results["host"], results["fromStart"]
    rows = [["library, stripped", f"{host['library'] / 1024:.0f} KiB"],
            ["added to a statically linked program, stripped", f"{host['static'] / 1024:.0f} KiB"],
            ["added to the start of a program, what it depends on included",
             f"{host['start']['with'] - host['start']['without']:.1f} ms"],
            ["load-time initialisers", str(host["initialisers"])],
            ["load-time initialisers of the QML module, which Qt's tools generate",
             str(host["initialisersInQml"])]]
    rows += [[f"from process start to the first banner, {name}",
              f"{start[who]['milliseconds']:.0f} ms, {start[who]['bytes'] / MIB:.0f} MiB"]
             for who, name in (("sdk", "this library"), ("chromium", "Chromium")) if who in start]
    parts.append(table(["what", "cost"], rows))
    parts.append("### Part by part\n")
    rows = []
    for name, count in results["instructions"].items():
        part = results["micro"].get(name, {})
        speed = part.get("bytesPerSecond")
        rows.append([name, f"{count:,}",
                     f"{part['nanoseconds'] / 1000:,.1f}" if part else "",
                     f"{speed / 1e6:,.0f}" if speed else ""])
    parts.append(table(["what", "instructions", "µs", "MB/s"], sorted(rows)))
    return "\n".join(parts)


def put(text, page):
    """Puts the text between the marks in a page."""
    begin, end = "<!-- measured -->\n", "<!-- /measured -->"
    with open(page, encoding="utf-8") as file:
        before, rest = file.read().split(begin)
    with open(page, "w", encoding="utf-8") as file:
        file.write(before + begin + "\n" + text + "\n" + end + rest.split(end)[1])


def write(measured, folder):
    """Puts aims and tables into their pages, and the plots beside them."""
    for theme in THEMES:
        for name, svg in plots(measured["results"], theme):
            with open(f"{folder}/pictures/performance-{name}-{theme}.svg", "w",
                      encoding="utf-8") as file:
                file.write(svg)
    put(aims(measured), f"{folder}/performance.md")
    put(tables(measured), f"{folder}/performance-tables.md")
