# SPDX-License-Identifier: Apache-2.0
"""Puts the figures measured last into docs/performance.md and docs/performance.svg."""

import json
import math
import re
from pathlib import Path

PAGE = Path("docs/performance.md")
PLOT = Path("docs/performance.svg")
RESULTS = Path("build/release/bench/results.json")

WIDTH, HEIGHT = 640, 360
LEFT, RIGHT, TOP, BOTTOM = 70, 110, 20, 50


def bar(value):
    return f"{value:.2f}" if value else "–"


def table(results):
    averages = " ".join(map(str, results["load_before"])), " ".join(map(str, results["load_after"]))
    lines = [f"{results['date']}, {results['processor']}, {results['cores']} cores, "
             f"{results['compiler']}. Load averages: {averages[0]} before, {averages[1]} after.", "",
             "| figure | median | quartiles | must | aim | |", "|---|---|---|---|---|---|"]
    for figure in results["figures"]:
        low, high = figure["quartiles"]
        lines.append(f"| {figure['title']} | {figure['median']:.3f} | {low:.3f}–{high:.3f} | "
                     f"{bar(figure['must'])} | {bar(figure['aim'])} | {figure['verdict']} |")
    return "\n".join(lines)


def plot(costs):
    """Microseconds per record against records, both logarithmic."""
    series = (("Parse", "ours_us", "#1f6fb4"), ("bare DOM", "bare_dom_us", "#b4551f"))
    sizes = [cost["records"] for cost in costs]
    values = [cost[key] for cost in costs for _, key, _ in series]
    bottom, top = 1, max(values) * 1.2
    while bottom > min(values):
        bottom /= 10

    def x(size):
        return LEFT + (WIDTH - LEFT - RIGHT) * math.log(size / sizes[0]) / math.log(sizes[-1] / sizes[0])

    def y(value):
        return TOP + (HEIGHT - TOP - BOTTOM) * math.log(top / value) / math.log(top / bottom)

    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" '
           'font-family="sans-serif" font-size="12">',
           f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#fff"/>']
    for size in sizes:
        svg.append(f'<path d="M{x(size):.1f} {TOP}V{HEIGHT - BOTTOM}" stroke="#ddd"/>'
                   f'<text x="{x(size):.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">'
                   f'{size:,}</text>')
    ticks = [digit * 10.0 ** power for power in range(-3, 6) for digit in (1, 2, 5)]
    for tick in (tick for tick in ticks if bottom <= tick <= top):
        svg.append(f'<path d="M{LEFT} {y(tick):.1f}H{WIDTH - RIGHT}" stroke="#ddd"/>'
                   f'<text x="{LEFT - 8}" y="{y(tick) + 4:.1f}" text-anchor="end">{tick:g}</text>')
    for name, key, colour in series:
        points = [(x(cost["records"]), y(cost[key])) for cost in costs]
        path = " ".join(f"{px:.1f},{py:.1f}" for px, py in points)
        svg.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        svg += [f'<circle cx="{px:.1f}" cy="{py:.1f}" r="3" fill="{colour}"/>' for px, py in points]
        svg.append(f'<text x="{points[-1][0] + 10:.1f}" y="{points[-1][1] + 4:.1f}" '
                   f'fill="{colour}">{name}</text>')
    svg.append(f'<text x="{(LEFT + WIDTH - RIGHT) / 2}" y="{HEIGHT - 12}" text-anchor="middle">'
               'records in the document</text>')
    svg.append(f'<text transform="translate(18 {(TOP + HEIGHT - BOTTOM) / 2}) rotate(-90)" '
               'text-anchor="middle">microseconds per record</text>')
    return "\n".join(svg + ["</svg>", ""])


def main():
    results = json.loads(RESULTS.read_text())
    start, end = "<!-- measured -->\n", "\n<!-- end of measured -->"
    page, count = re.subn(f"(?<={start}).*(?={end})", lambda _: table(results), PAGE.read_text(),
                          flags=re.DOTALL)
    if count != 1:
        raise SystemExit(f"{PAGE}: the marks of the table are missing")
    PAGE.write_text(page)
    PLOT.write_text(plot(results["costs"]))


if __name__ == "__main__":
    main()
