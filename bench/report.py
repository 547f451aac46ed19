"""Tells what was measured: a table for the terminal and for Markdown, and a chart of the ratios as SVG."""

from html import escape

MEMORY_LIMIT = 120e6  # bytes, ours, in every job

INK, FAINT, GRID = "#1f2933", "#616e7c", "#cbd2d9"
PASS_COLOUR, MISS_COLOUR, LIMIT_COLOUR = "#2a78b5", "#d9622b", "#111820"


def megabytes(size):
    return f"{size / 1e6:.0f}"


def verdict(result):
    if "ratio" not in result:
        return "FAILED" if "error" in result else "-"
    reasons = []
    if result["ratio"] > result["limit"]:
        reasons.append("time")
    if result["ours"]["peak"] > MEMORY_LIMIT:
        reasons.append("memory")
    return "MISS (" + ", ".join(reasons) + ")" if reasons else "PASS"


def comparison_rows(results):
    rows = [["job", "ours s", "peer s", "ratio", "limit", "processor", "ours MB", "peer MB", "memory", "disk s", ""]]
    for result in results:
        ours, peer = result.get("ours"), result.get("peer")
        both = ours and peer
        rows.append([
            result["name"],
            f"{ours['wall']:.2f}" if ours else "-",
            f"{peer['wall']:.2f}" if peer else "-",
            f"{result['ratio']:.2f}" if both else "-",
            f"{result['limit']:.2f}",
            f"{ours['cpu'] / peer['cpu']:.2f}" if both else "-",
            megabytes(ours["peak"]) if ours else "-",
            megabytes(peer["peak"]) if peer else "-",
            f"{ours['peak'] / peer['peak']:.2f}" if both else "-",
            f"{ours['write_back']:.2f} / {peer['write_back']:.2f}" if both else "-",
            verdict(result),
        ])
    return rows


def peer_rows(results):
    rows = [["job", "peer", "wall s", "from", "to", "processor s", "peak MB", "disk s"]]
    for result in results:
        measured = {"as compared": result.get("peer"), **result.get("variants", {})}
        for name, cost in measured.items():
            if cost:
                rows.append([result["name"], name, f"{cost['wall']:.2f}", f"{cost['fastest']:.2f}",
                             f"{cost['slowest']:.2f}", f"{cost['cpu']:.2f}", megabytes(cost["peak"]),
                             f"{cost['write_back']:.2f}"])
    return rows


def as_text(rows):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    lines = ["  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows]
    return "\n".join([lines[0], "-" * len(lines[0]), *lines[1:]])


def as_markdown(rows):
    lines = ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join([lines[0], "|" + "---|" * len(rows[0]), *lines[1:]])


def markdown(report):
    machine = report["machine"]
    parts = [
        "# Us beside ogr2ogr",
        f"{machine['date']}, {machine['processor']} ({machine['processors']} processors, {machine['memory_gb']} GB), "
        f"{machine['system']}. Peer: {machine['peer']}. Median of {report['runs']} runs in alternation, "
        f"{report['count']:,} features with {report['vertices']} vertices or a few more in each file; load of the "
        f"machine {machine['load_before']} before and {machine['load_after']} after.",
        as_markdown(comparison_rows(report["results"])),
        "Ratio: wall time, us / peer. Processor: the same of processor time. Memory: the same of the largest peak "
        f"(limit of ours: {megabytes(MEMORY_LIMIT)} MB). Disk: seconds that fsync of the result takes after the run, "
        "us / peer, not part of the ratio.",
    ]
    failures = [f"- {r['name']}: {r['error']}" for r in report["results"] if "error" in r]
    if failures:
        parts += ["Not measured:", "\n".join(failures)]
    parts += ["The peer's own figures:", as_markdown(peer_rows(report["results"]))]
    return "\n\n".join(parts) + "\n"


class Chart:
    """Horizontal bars of the time ratio, a tick at each job's limit, a line at 1 = the peer."""

    LEFT, BAR, RIGHT, TOP, ROW = 400, 440, 300, 74, 46

    def __init__(self, results):
        self.results = [r for r in results if "ratio" in r]
        largest = max([1.0] + [max(r["ratio"], r["limit"]) for r in self.results])
        self.end = min(largest * 1.06, 2.0)  # a bar beyond is cut and says its number
        self.parts = []

    def x(self, ratio):
        return self.LEFT + self.BAR * min(ratio, self.end) / self.end

    def text(self, x, y, words, size=13, colour=INK, anchor="start", weight="normal"):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" fill="{colour}" text-anchor="{anchor}" '
                          f'font-weight="{weight}">{escape(words)}</text>')

    def line(self, x1, y1, x2, y2, colour, width=1.0, dash=""):
        extra = f' stroke-dasharray="{dash}"' if dash else ""
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" '
                          f'stroke-width="{width}"{extra}/>')

    def axis(self, bottom):
        ticks = int(self.end / 0.25 + 1e-9)
        for i in range(ticks + 1):
            ratio = i * 0.25
            at_peer = ratio == 1.0
            self.line(self.x(ratio), self.TOP - 8, self.x(ratio), bottom, FAINT if at_peer else GRID,
                      1.5 if at_peer else 1.0, "5 4" if at_peer else "")
            self.text(self.x(ratio), self.TOP - 14, f"{ratio:g}" + (" = peer" if at_peer else ""), 11, FAINT,
                      "middle")

    def bar(self, result, y):
        missed = verdict(result) != "PASS"
        ours, peer = result["ours"], result["peer"]
        self.text(self.LEFT - 14, y + 16, result["title"], 13, INK, "end")
        self.text(self.LEFT - 14, y + 31, f"{ours['wall']:.2f} s / {peer['wall']:.2f} s", 11, FAINT, "end")
        colour = MISS_COLOUR if missed else PASS_COLOUR
        width = self.x(result["ratio"]) - self.LEFT
        self.parts.append(f'<rect x="{self.LEFT}" y="{y + 5}" width="{width:.1f}" height="22" rx="2" '
                          f'fill="{colour}"/>')
        self.line(self.x(result["limit"]), y + 1, self.x(result["limit"]), y + 31, LIMIT_COLOUR, 2.5)
        side = self.LEFT + self.BAR + 18
        self.text(side, y + 16, f"{result['ratio']:.2f}  (limit {result['limit']:.2f})  {verdict(result)}", 13,
                  colour, weight="bold")
        self.text(side, y + 31, f"peak {megabytes(ours['peak'])} MB / {megabytes(peer['peak'])} MB", 11, FAINT)

    def svg(self):
        bottom = self.TOP + self.ROW * len(self.results)
        width, height = self.LEFT + self.BAR + self.RIGHT, bottom + 34
        self.text(self.LEFT, 26, "Wall time, us / ogr2ogr (shorter is faster)", 16, weight="bold")
        self.axis(bottom)
        for i, result in enumerate(self.results):
            self.bar(result, self.TOP + i * self.ROW)
        self.text(self.LEFT, bottom + 22, "black tick: the limit set for the job", 11, FAINT)
        return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
                f'height="{height}" font-family="DejaVu Sans, Helvetica, Arial, sans-serif">\n'
                f'<rect width="{width}" height="{height}" fill="#ffffff"/>\n' + "\n".join(self.parts) + "\n</svg>\n")
