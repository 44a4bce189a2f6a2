#!/usr/bin/env python3
"""Draws a table of docs/performance.md as a chart: charts.py run|growth <table >picture.svg"""
import math
import sys

STYLE = """<style>text { font: 13px sans-serif; fill: #24292f }
.title { font-weight: bold }
.end { text-anchor: end }
.middle { text-anchor: middle }
.paper { fill: #ffffff }
.grid { stroke: #d0d7de }
.run { fill: #c8702a }
.plain { fill: #8c959f }
.moving { fill: #6b8fb5 }
.line { fill: none; stroke-width: 2.5 }
.line.run { stroke: #c8702a }
.line.moving { stroke: #6b8fb5 }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3 } .paper { fill: #161b22 } .grid { stroke: #3d444d } }</style>"""
WIDTH = 720
NAMES = {"plain": "plain twin", "run": "this program", "moving": "moving the bytes"}


def rows_of(text):
    """The Markdown table as a list of rows by column name."""
    cells = [[cell.strip() for cell in line.strip().strip("|").split("|")]
             for line in text.splitlines() if line.startswith("|")]
    return [dict(zip(cells[0], row)) for row in cells[2:]]


def text_at(x, y, content, style=""):
    attribute = f' class="{style}"' if style else ""
    return f'<text x="{x:.1f}" y="{y:.1f}"{attribute}>{content}</text>'


def rect_at(x, y, width, height, style):
    return f'<rect class="{style}" x="{x:.1f}" y="{y:.1f}" width="{width:.1f}" height="{height:.1f}"/>'


def picture(title, height, body):
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" '
            f'height="{height}" role="img">')
    return "\n".join([head, f"<title>{title}</title>", STYLE, rect_at(0, 0, WIDTH, height, "paper"),
                      text_at(20, 26, title, "title"), *body, "</svg>"])


def legend(kinds):
    lines, x = [], 20
    for kind in kinds:
        lines += [rect_at(x, 41, 12, 12, kind), text_at(x + 18, 52, NAMES[kind])]
        x += 150
    return lines


def seconds_in(cell):
    """Of "0.271 + 0.280" or "7.79"."""
    return sum(float(part) for part in cell.split("+"))


def chart_of_runs(rows):
    """Bars for the rows in which the plain twin was measured, with the first options."""
    options = rows[0]["options"]
    chosen = [row for row in rows if row["options"] == options and row["plain twin"]]
    columns = {"plain": "plain twin", "run": "run", "moving": "moving bytes"}
    left, bar, group = 180, 14, 60
    scale = (WIDTH - left - 70) / max(seconds_in(row["plain twin"]) for row in chosen)
    body = legend(columns)
    for i, row in enumerate(chosen):
        top = 74 + i * group
        body.append(text_at(left - 10, top + 1.5 * bar + 5, f'{row["mesh"]}, {row["input"]}', "end"))
        for j, (kind, column) in enumerate(columns.items()):
            seconds = seconds_in(row[column])
            body += [rect_at(left, top + j * bar, max(seconds * scale, 1), bar - 2, kind),
                     text_at(left + seconds * scale + 6, top + j * bar + bar - 3, f"{seconds:.2f}")]
    return picture(f"CPU seconds per million facets, {options}", 74 + len(chosen) * group, body)


def with_unit(facets):
    return f"{facets / 1e6:g} million" if facets >= 1000000 else f"{facets:,}"


def chart_of_growth(rows):
    """Lines over the number of facets, which is drawn by its logarithm."""
    points = [(int(row["facets"]), float(row["microseconds"]), float(row["moving the bytes"])) for row in rows]
    left, right, top, bottom = 60, WIDTH - 40, 80, 300
    first, last = math.log10(points[0][0]), math.log10(points[-1][0])
    highest = math.ceil(10 * max(point[1] for point in points)) / 10

    def x_of(facets):
        return left + (right - left) * (math.log10(facets) - first) / max(last - first, 0.1)

    def y_of(microseconds):
        return bottom - (bottom - top) * microseconds / highest

    body = legend(["run", "moving"])
    for tenth in range(0, round(highest * 10) + 1, 1 if highest <= 1 else 2):
        y = y_of(tenth / 10)
        body += [f'<path class="grid" d="M{left} {y:.1f}H{right}"/>',
                 text_at(left - 8, y + 4, f"{tenth / 10:.1f}", "end")]
    for exponent in range(math.ceil(first), math.floor(last) + 1):
        x = x_of(10**exponent)
        body += [f'<path class="grid" d="M{x:.1f} {top}V{bottom}"/>',
                 text_at(x, bottom + 20, with_unit(10**exponent), "middle")]
    for kind, column in (("run", 1), ("moving", 2)):
        line = " ".join(f"{x_of(point[0]):.1f},{y_of(point[column]):.1f}" for point in points)
        body.append(f'<polyline class="line {kind}" points="{line}"/>')
        body += [f'<circle class="{kind}" cx="{x_of(point[0]):.1f}" cy="{y_of(point[column]):.1f}" r="3.5"/>'
                 for point in points]
    body.append(text_at((left + right) / 2, bottom + 42, "facets", "middle"))
    return picture("Microseconds of processor time per facet against the size of the mesh", bottom + 56, body)


def main():
    charts = {"run": chart_of_runs, "growth": chart_of_growth}
    if len(sys.argv) != 2 or sys.argv[1] not in charts:
        sys.exit(__doc__)
    print(charts[sys.argv[1]](rows_of(sys.stdin.read())))


if __name__ == "__main__":
    main()
