"""Puts the results of measure.py into the page and draws the chart:

write_page.py RESULTS.JSON PAGE.MD CHART.SVG CONDITIONS
"""

import json
import pathlib
import sys

from programs import PROGRAMS

BEGIN = "<!-- compare:figures -->"
END = "<!-- end -->"


class Row:
    """What the tables say about one program that did the job."""

    def __init__(self, result, facets):
        self.name = result["name"]
        self.version = result["version"]
        self.start_up = min(result["cpu"]["tiny"])
        self.whole = min(result["cpu"]["large"])
        self.per_million = (self.whole - self.start_up) / (facets["large"] - facets["tiny"]) * 1e6
        self.peak = max(result["peak"]) / 1024
        self.mebibytes = result["bytes"] / 2**20
        self.verdict = result["verdict"]


def percent(share):
    """Never rounded up to 100."""
    hundredths = int(share * 10000)
    return "all" if share == 1 else f"{hundredths / 100:.2f} %"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|---" * len(head) + "|"]
    return lines + ["| " + " | ".join(row) + " |" for row in rows]


def cost_table(rows, facets):
    ours = next(row.per_million for row in rows if row.name == PROGRAMS[0].name)
    head = [
        "program",
        f"{facets['tiny']} facets, CPU s",
        f"{facets['large']:,} facets, CPU s",
        "CPU s per million facets after start-up",
        f"times {PROGRAMS[0].name}",
        "peak memory, MiB",
    ]
    return table(
        head,
        [
            [row.name, f"{row.start_up:.2f}", f"{row.whole:.2f}", f"{row.per_million:.2f}"]
            + [f"{row.per_million / ours:.1f}", f"{row.peak:.0f}"]
            for row in rows
        ],
    )


def output_table(rows):
    head = ["program", "coordinates that survive", "largest error", "normals that fit", "output, MiB"]
    return table(
        head,
        [
            [row.name, percent(row.verdict["surviving"]), f"{row.verdict['largest_error']:.0e}"]
            + [percent(row.verdict["normals"]), f"{row.mebibytes:.0f}"]
            for row in rows
        ],
    )


def command_table(results):
    versions = {result["name"]: result["version"] for result in results}
    return table(
        ["program", "Debian package", "command", "what it uses"],
        [
            [program.name, f"{program.package} {versions[program.name] or ''}".strip() or "this repository"]
            + [f"`{program.command}`", program.method]
            for program in PROGRAMS
        ],
    )


def failures(results):
    return [
        f"- {result['name']} is not in these tables: it {result['failure']}."
        for result in results
        if "failure" in result
    ]


def section(summary, rows, conditions):
    facets = summary["facets"]
    rounds = summary["rounds"]
    lines = [conditions, "", f"Least CPU seconds and largest memory of {rounds} alternating rounds.", ""]
    lines += cost_table(rows, facets)
    lines += ["", "![CPU seconds and peak memory of each program](images/comparison.svg)", ""]
    lines += output_table(rows) + [""]
    if missing := failures(summary["programs"]):
        lines += missing + [""]
    return lines + command_table(summary["programs"])


def put_between_markers(page, lines):
    text = page.read_text()
    head, begin, rest = text.partition(BEGIN + "\n")
    _, end, tail = rest.partition(END)
    if not begin or not end:
        sys.exit(f"{page} has no markers for the figures.")
    page.write_text(head + begin + "\n".join(lines) + "\n" + end + tail)


ROW_HEIGHT = 26
NAME_WIDTH = 90
BAR_WIDTH = 210
PANEL_WIDTH = 280
TOP = 44

STYLE = """text { font: 13px sans-serif; fill: #24292f }
.title { font-weight: bold }
.paper { fill: #ffffff }
.bar { fill: #6b8fb5 }
.ours { fill: #c8702a }
@media (prefers-color-scheme: dark) { text { fill: #e6edf3 } .paper { fill: #161b22 } }"""


def panel(left, title, rows, value_of, form):
    largest = max(value_of(row) for row in rows)
    yield f'<text class="title" x="{left}" y="24">{title}</text>'
    for index, row in enumerate(rows):
        value = value_of(row)
        width = max(value / largest * BAR_WIDTH, 1)
        top = TOP + index * ROW_HEIGHT
        kind = "ours" if row.name == PROGRAMS[0].name else "bar"
        yield f'<rect class="{kind}" x="{left}" y="{top}" width="{width:.1f}" height="16"/>'
        yield f'<text x="{left + width + 6:.1f}" y="{top + 13}">{value:{form}}</text>'


def chart(rows):
    width = NAME_WIDTH + 2 * PANEL_WIDTH + 10
    height = TOP + len(rows) * ROW_HEIGHT + 6
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}"'
        ' role="img">',
        "<title>CPU seconds per million facets and peak memory of each program</title>",
        f"<style>{STYLE}</style>",
        f'<rect class="paper" width="{width}" height="{height}"/>',
    ]
    for index, row in enumerate(rows):
        baseline = TOP + index * ROW_HEIGHT + 13
        lines.append(f'<text x="{NAME_WIDTH - 10}" y="{baseline}" text-anchor="end">{row.name}</text>')
    lines += panel(NAME_WIDTH, "CPU seconds per million facets", rows, lambda row: row.per_million, ".2f")
    lines += panel(NAME_WIDTH + PANEL_WIDTH, "Peak memory, MiB", rows, lambda row: row.peak, ".0f")
    return "\n".join([*lines, "</svg>", ""])


def main(results, page, picture, conditions):
    summary = json.loads(results.read_text())
    rows = [Row(result, summary["facets"]) for result in summary["programs"] if "failure" not in result]
    if not any(row.name == PROGRAMS[0].name for row in rows):
        sys.exit(f"{PROGRAMS[0].name} itself did not do the job.")
    rows.sort(key=lambda row: row.per_million)
    put_between_markers(page, section(summary, rows, conditions))
    picture.write_text(chart(rows))


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:4]), sys.argv[4])
