"""Tells what was measured: a table for the terminal and for Markdown, and a chart of the ratios as SVG."""

from html import escape

INK, FAINT, GRID = "#1f2933", "#616e7c", "#cbd2d9"
PASS_COLOUR, MISS_COLOUR, LIMIT_COLOUR = "#2a78b5", "#d9622b", "#111820"


def megabytes(size):
    return f"{size / 1e6:.0f}"


def scales(result):
    """Whether twice the work was set beside the work once, instead of us beside the peer."""
    return "twice" in result


def verdict(result):
    if "ratio" not in result:
        return "FAILED" if "error" in result else "-"
    reasons = []
    if result["ratio"] > result["limit"]:
        reasons.append("time")
    if result["memory_limit"] and result["once" if scales(result) else "ours"]["peak"] > result["memory_limit"]:
        reasons.append("memory")
    return "MISS (" + ", ".join(reasons) + ")" if reasons else "PASS"


def memory_limit(result):
    return megabytes(result["memory_limit"]) if result["memory_limit"] else "-"


def comparison_rows(results):
    rows = [["job", "ours s", "peer s", "ratio", "limit", "processor", "ours MB", "limit MB", "peer MB", "memory",
             "disk s", ""]]
    for result in results:
        if scales(result):
            continue
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
            memory_limit(result),
            megabytes(peer["peak"]) if peer else "-",
            f"{ours['peak'] / peer['peak']:.2f}" if both else "-",
            f"{ours['write_back']:.2f} / {peer['write_back']:.2f}" if both else "-",
            verdict(result),
        ])
    return rows


def scaling_rows(results):
    rows = [["job", "twice s", "once s", "ratio", "limit", "processor", "twice MB", "once MB", "limit MB", ""]]
    for result in results:
        if not scales(result):
            continue
        twice, once = result["twice"], result["once"]
        rows.append([
            result["name"],
            f"{twice['wall']:.2f}",
            f"{once['wall']:.2f}",
            f"{result['ratio']:.2f}",
            f"{result['limit']:.2f}",
            f"{twice['cpu'] / once['cpu']:.2f}",
            megabytes(twice["peak"]),
            megabytes(once["peak"]),
            memory_limit(result),
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


def text(results, peer_only):
    tables = [peer_rows(results)] if peer_only else [comparison_rows(results), scaling_rows(results)]
    return "\n\n".join(as_text(rows) for rows in tables if len(rows) > 1)


def as_markdown(rows):
    lines = ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join([lines[0], "|" + "---|" * len(rows[0]), *lines[1:]])


def markdown(report):
    machine = report["machine"]
    parts = [
        "# Us beside ogr2ogr",
        f"{machine['date']}, {machine['processor']} ({machine['processors']} processors, {machine['memory_gb']} GB), "
        f"{machine['system']}. Peer: {machine['peer']}. Median of {report['runs']} runs in alternation, "
        f"{report['count']:,} features with {report['vertices']} vertices or a few more, or five times as many records, "
        "in each file; load of the "
        f"machine {machine['load_before']} before and {machine['load_after']} after.",
        as_markdown(comparison_rows(report["results"])),
        "Ratio: wall time, us / peer. Processor: the same of processor time. Memory: the same of the largest peak. Disk: "
        "seconds that fsync of the result takes after the run, us / peer, not part of the ratio.",
    ]
    scaling = scaling_rows(report["results"])
    if len(scaling) > 1:
        parts += ["Twice the work beside the work once, both ours:", as_markdown(scaling)]
    failures = [f"- {r['name']}: {r['error']}" for r in report["results"] if "error" in r]
    if failures:
        parts += ["Not measured:", "\n".join(failures)]
    parts += ["The peer's own figures:", as_markdown(peer_rows(report["results"]))]
    return "\n\n".join(parts) + "\n"


class Drawing:
    """Words and lines of an SVG file."""

    def __init__(self):
        self.parts = []

    def text(self, x, y, words, size=13, colour=INK, anchor="start", weight="normal"):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" fill="{colour}" text-anchor="{anchor}" '
                          f'font-weight="{weight}">{escape(words)}</text>')

    def line(self, x1, y1, x2, y2, colour, width=1.0, dash=""):
        extra = f' stroke-dasharray="{dash}"' if dash else ""
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" '
                          f'stroke-width="{width}"{extra}/>')

    def bar(self, x, y, width, colour):
        self.parts.append(f'<rect x="{x}" y="{y}" width="{width:.1f}" height="22" rx="2" fill="{colour}"/>')

    def svg(self, width, height):
        return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
                f'height="{height}" font-family="DejaVu Sans, Helvetica, Arial, sans-serif">\n'
                f'<rect width="{width}" height="{height}" fill="#ffffff"/>\n' + "\n".join(self.parts) + "\n</svg>\n")


class Panel:
    """Horizontal bars of the time ratio, a tick at each job's limit, a dashed line at what the ratio is of."""

    LEFT, BAR, RIGHT, HEAD, ROW = 400, 440, 300, 74, 46
    WIDTH = LEFT + BAR + RIGHT

    def __init__(self, drawing, title, sides, mark, results):
        self.drawing, self.title, self.sides, self.results = drawing, title, sides, results
        self.mark, self.mark_name = mark
        largest = max([self.mark] + [max(r["ratio"], r["limit"]) for r in results])
        self.end = min(largest * 1.06, 2.4)  # a bar beyond is cut and says its number

    def x(self, ratio):
        return self.LEFT + self.BAR * min(ratio, self.end) / self.end

    def axis(self, top, bottom):
        for i in range(int(self.end / 0.25 + 1e-9) + 1):
            ratio = i * 0.25
            marked = ratio == self.mark
            self.drawing.line(self.x(ratio), top - 8, self.x(ratio), bottom, FAINT if marked else GRID,
                              1.5 if marked else 1.0, "5 4" if marked else "")
            if self.end <= 1.5 or i % 2 == 0:
                words = f"{ratio:g}" + (f" = {self.mark_name}" if marked else "")
                self.drawing.text(self.x(ratio), top - 14, words, 11, FAINT, "middle")

    def row(self, result, y):
        missed = verdict(result) != "PASS"
        first, second = (result[side] for side in self.sides)
        self.drawing.text(self.LEFT - 14, y + 16, result["title"], 13, INK, "end")
        self.drawing.text(self.LEFT - 14, y + 31, f"{first['wall']:.2f} s / {second['wall']:.2f} s", 11, FAINT, "end")
        colour = MISS_COLOUR if missed else PASS_COLOUR
        self.drawing.bar(self.LEFT, y + 5, self.x(result["ratio"]) - self.LEFT, colour)
        self.drawing.line(self.x(result["limit"]), y + 1, self.x(result["limit"]), y + 31, LIMIT_COLOUR, 2.5)
        side = self.LEFT + self.BAR + 18
        self.drawing.text(side, y + 16, f"{result['ratio']:.2f}  (limit {result['limit']:.2f})  {verdict(result)}", 13,
                          colour, weight="bold")
        self.drawing.text(side, y + 31, f"peak {megabytes(first['peak'])} MB / {megabytes(second['peak'])} MB", 11,
                          FAINT)

    def draw(self, y):
        """Draws from there down; returns where the panel ends."""
        top = y + self.HEAD
        bottom = top + self.ROW * len(self.results)
        self.drawing.text(self.LEFT, y + 26, self.title, 16, weight="bold")
        self.axis(top, bottom)
        for i, result in enumerate(self.results):
            self.row(result, top + i * self.ROW)
        return bottom


def chart(results):
    measured = [result for result in results if "ratio" in result]
    drawing = Drawing()
    compared = [result for result in measured if not scales(result)]
    scaling = [result for result in measured if scales(result)]
    y = 0
    if compared:
        y = Panel(drawing, "Wall time, us / ogr2ogr (shorter is faster)", ("ours", "peer"), (1.0, "peer"),
                  compared).draw(y)
    if scaling:
        y = Panel(drawing, "Wall time, twice the work / once", ("twice", "once"), (2.0, "twice"), scaling).draw(y)
    drawing.text(Panel.LEFT, y + 22, "black tick: the limit set for the job", 11, FAINT)
    return drawing.svg(Panel.WIDTH, y + 34)
