"""Small charts as SVG text: points joined by lines over two axes."""
from html import escape
from math import floor, log10

WIDTH, HEIGHT = 720, 400
LEFT, RIGHT, TOP, BOTTOM = 70, 20, 40, 60
COLOURS = ["#1f6fb2", "#c8501e", "#3a8f3a", "#7b4fa3"]


def ticks(low, high, logarithmic):
    if logarithmic:
        decades = range(floor(log10(low)), floor(log10(high)) + 1)
        marks = [digit * 10.0**decade for decade in decades for digit in (1, 2, 5)]
    else:
        step = 10.0 ** floor(log10((high - low) / 4))
        step *= min((m for m in (1, 2, 5, 10) if (high - low) / (m * step) <= 6), default=10)
        first = floor(low / step)
        marks = [step * (first + i) for i in range(12)]
    return [mark for mark in marks if low * (1 - 1e-9) <= mark <= high * (1 + 1e-9)]


class Axis:
    def __init__(self, values, start, end, logarithmic, margin=0.0):
        self.low, self.high = min(values), max(values)
        spread = (self.high - self.low) * margin
        self.low, self.high = self.low - spread, self.high + spread
        self.start, self.end, self.logarithmic = start, end, logarithmic

    def place(self, value):
        low, high = self.low, self.high
        if self.logarithmic:
            low, high, value = log10(low), log10(high), log10(value)
        share = (value - low) / (high - low) if high > low else 0.5
        return self.start + share * (self.end - self.start)

    def marks(self):
        return ticks(self.low, self.high, self.logarithmic)


def text(x, y, words, anchor="middle", extra=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" {extra}>{escape(words)}</text>'


def line(x1, y1, x2, y2, colour, extra=""):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" {extra}/>'


def curve(points, colour):
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    dots = [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.5" fill="{colour}"/>' for x, y in points]
    return [f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>', *dots]


def chart(title, x_name, y_name, series, logarithmic=False):
    """`series` maps a name to (x, y) pairs; both axes are logarithmic or none is. Returns the file's text."""
    pairs = [pair for points in series.values() for pair in points]
    zero = [] if logarithmic else [0]
    xs = Axis([x for x, _ in pairs] + zero, LEFT, WIDTH - RIGHT, logarithmic)
    ys = Axis([y for _, y in pairs] + zero, HEIGHT - BOTTOM, TOP, logarithmic)
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="12">',
        '<rect width="100%" height="100%" fill="white"/>',
        text(WIDTH / 2, 22, title, extra='font-size="15"'),
        text(WIDTH / 2, HEIGHT - 14, x_name),
        text(16, HEIGHT / 2, y_name, extra=f'transform="rotate(-90 16 {HEIGHT / 2})"'),
    ]
    for mark in ys.marks():
        y = ys.place(mark)
        parts += [line(LEFT, y, WIDTH - RIGHT, y, "#ddd"), text(LEFT - 6, y + 4, f"{mark:g}", "end")]
    for mark in xs.marks():
        x = xs.place(mark)
        parts += [line(x, TOP, x, HEIGHT - BOTTOM, "#eee"), text(x, HEIGHT - BOTTOM + 16, f"{mark:g}")]
    for number, (name, points) in enumerate(series.items()):
        colour = COLOURS[number % len(COLOURS)]
        parts += curve([(xs.place(x), ys.place(y)) for x, y in sorted(points)], colour)
        if len(series) > 1:
            parts.append(text(LEFT + 12, TOP + 16 + 16 * number, name, "start", f'fill="{colour}"'))
    return "\n".join([*parts, "</svg>", ""])


def dots(title, x_name, rows, limits, logarithmic=False):
    """One row of dots for each name in `rows`, which maps it to {series: x}; a dashed line stands at the limit of
    each row that has one."""
    height = TOP + 22 * len(rows) + BOTTOM
    values = [x for row in rows.values() for x in row.values()] + [*limits.values(), 1.0]
    # A margin of a twentieth; on a logarithmic axis, which has no place for 0 or less, one of a tenth of the value.
    if logarithmic:
        values += [0.9 * min(values), 1.1 * max(values)]
    xs = Axis(values, 170, WIDTH - RIGHT, logarithmic, 0 if logarithmic else 0.05)
    names = list(dict.fromkeys(name for row in rows.values() for name in row))
    bottom = height - BOTTOM
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" font-family="sans-serif" font-size="12">',
        '<rect width="100%" height="100%" fill="white"/>',
        text(WIDTH / 2, 22, title, extra='font-size="15"'),
        text(WIDTH / 2, height - 14, x_name),
    ]
    for mark in xs.marks():
        x = xs.place(mark)
        parts += [line(x, TOP, x, bottom, "#eee"), text(x, bottom + 16, f"{mark:g}")]
    for number, (name, row) in enumerate(rows.items()):
        y = TOP + 22 * number + 11
        parts.append(text(160, y + 4, name, "end"))
        if name in limits:
            limit = xs.place(limits[name])
            parts.append(line(limit, y - 11, limit, y + 11, "#b00", 'stroke-dasharray="5 4"'))
        for series, x in row.items():
            colour = COLOURS[names.index(series)]
            parts.append(f'<circle cx="{xs.place(x):.1f}" cy="{y:.1f}" r="4" fill="{colour}" fill-opacity="0.8"/>')
    for number, name in enumerate(names):
        parts.append(text(176 + 110 * number, bottom + 32, "● " + name, "start", f'fill="{COLOURS[number]}"'))
    return "\n".join([*parts, "</svg>", ""])
