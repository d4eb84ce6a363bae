"""Writes forms as RTF from a description: paragraphs, and tables of rows of cells.

Lengths are in millimetres, sizes of letters in points. A description is a list of `P`, `Table` and `Gap`; `write` makes one
file of it. Python's standard library is all that is needed.
"""

from dataclasses import dataclass, field
from pathlib import Path

TWIPS = 1440 / 25.4  # a millimetre


def twips(mm):
    return round(mm * TWIPS)


@dataclass
class R:
    """A run of letters of one look."""

    text: str
    bold: bool = False
    italic: bool = False
    underline: bool = False
    size: float = None
    font: int = None


@dataclass
class P:
    """A paragraph: a text, or a list of texts and runs. `align` is one of l, c, r, j."""

    content: object = ""
    align: str = "l"
    bold: bool = False
    italic: bool = False
    size: float = None
    before: float = 0  # points
    after: float = 0
    indent: float = 0  # millimetres
    page_break: bool = False

    def runs(self):
        parts = self.content if isinstance(self.content, list) else [self.content]
        return [part if isinstance(part, R) else R(part) for part in parts]


@dataclass
class Cell:
    """A cell over `span` columns. `edges` names its ruled edges out of t, l, b, r; None: as the table has it.
    `down` is "first" for a cell that goes on below and "more" for one that continues it."""

    content: object = ""
    span: int = 1
    align: str = "l"
    bold: bool = False
    size: float = None
    edges: str = None
    valign: str = "t"
    shade: bool = False
    down: str = ""

    def paragraphs(self):
        parts = self.content if isinstance(self.content, list) else [self.content]
        return [
            part if isinstance(part, P) else P(part, align=self.align, bold=self.bold, size=self.size)
            for part in parts
        ]


@dataclass
class Row:
    cells: list
    height: float = 0  # millimetres, at least
    header: bool = False  # comes again on each further page


@dataclass
class Table:
    """`widths` of the columns; `edges` of cells that do not say their own."""

    widths: list
    rows: list
    edges: str = "tlbr"
    padding: float = 1
    line: float = 0.5  # points

    def columns(self, row):
        return sum(cell.span for cell in row.cells)


@dataclass
class Gap:
    """Room between two tables, which would be one otherwise."""

    points: float = 4


@dataclass
class Form:
    blocks: list
    title: str = ""
    paper: tuple = (210, 297)
    margins: tuple = (10, 8, 10, 8)  # left, top, right, bottom
    fonts: list = field(default_factory=lambda: ["Arial", "Times New Roman"])
    size: float = 9


def escape(text):
    out = []
    for unit in text:
        code = ord(unit)
        if unit in "\\{}":
            out.append("\\" + unit)
        elif unit == "\n":
            out.append("\\line ")
        elif unit == "\t":
            out.append("\\tab ")
        elif code < 0x80:
            out.append(unit)
        else:
            units = unit.encode("utf-16-le")
            for i in range(0, len(units), 2):
                value = int.from_bytes(units[i : i + 2], "little")
                out.append("\\u%d?" % (value if value < 0x8000 else value - 0x10000))
    return "".join(out)


class Writer:
    def __init__(self, form):
        self.form = form
        self.lines = []

    def rtf(self):
        form = self.form
        left, top, right, bottom = form.margins
        fonts = "".join("{\\f%d\\fswiss\\fcharset0 %s;}" % (i, name) for i, name in enumerate(form.fonts))
        self.lines = [
            "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1",
            "{\\fonttbl%s}" % fonts,
            "{\\colortbl;\\red0\\green0\\blue0;\\red224\\green224\\blue224;}",
            "{\\info{\\title %s}}" % escape(form.title),
            "\\paperw%d\\paperh%d" % (twips(form.paper[0]), twips(form.paper[1])),
            "\\margl%d\\margr%d\\margt%d\\margb%d" % (twips(left), twips(right), twips(top), twips(bottom)),
        ]
        for block in form.blocks:
            self.block(block)
        self.lines.append("}")
        return "\n".join(self.lines) + "\n"

    def block(self, block):
        if isinstance(block, Table):
            for row in block.rows:
                self.row(block, row)
        elif isinstance(block, Gap):
            self.lines.append("\\pard\\plain\\f0\\fs2\\sl-%d\\slmult0\\par" % max(2, round(block.points * 20)))
        else:
            self.lines.append(self.paragraph(block, False) + "\\par")

    def paragraph(self, p, in_table):
        form = ["\\pard\\plain", "\\q" + p.align]
        if in_table:
            form.append("\\intbl")
        if p.page_break:
            form.append("\\pagebb")
        if p.indent:
            form.append("\\li%d" % twips(p.indent))
        if p.before:
            form.append("\\sb%d" % round(p.before * 20))
        if p.after:
            form.append("\\sa%d" % round(p.after * 20))
        form.append("\\f0\\fs%d" % round((p.size or self.form.size) * 2))
        return "".join(form) + "".join(self.run(p, run) for run in p.runs())

    def run(self, p, run):
        look = ""
        if run.bold or p.bold:
            look += "\\b"
        if run.italic or p.italic:
            look += "\\i"
        if run.underline:
            look += "\\ul"
        if run.font is not None:
            look += "\\f%d" % run.font
        if run.size:
            look += "\\fs%d" % round(run.size * 2)
        return "{%s%s}" % (look + " " if look else "", escape(run.text))

    def row(self, table, row):
        if table.columns(row) != len(table.widths):
            raise ValueError("a row of %d columns in a table of %d" % (table.columns(row), len(table.widths)))
        gap = twips(table.padding)
        out = ["\\trowd\\trgaph%d\\trleft0" % gap]
        out.append("\\trpaddl%d\\trpaddr%d\\trpaddt20\\trpaddb20" % (gap, gap))
        out.append("\\trpaddfl3\\trpaddfr3\\trpaddft3\\trpaddfb3")
        if row.height:
            out.append("\\trrh%d" % twips(row.height))
        if row.header:
            out.append("\\trhdr")
        column = 0
        for cell in row.cells:
            out.append(self.cell_form(table, cell))
            column += cell.span
            out.append("\\cellx%d" % twips(sum(table.widths[:column])))
        self.lines.append("".join(out))
        for cell in row.cells:
            paragraphs = [self.paragraph(p, True) for p in cell.paragraphs()]
            self.lines.append("\\par\n".join(paragraphs) + "\\cell")
        self.lines.append("\\row")

    def cell_form(self, table, cell):
        edges = table.edges if cell.edges is None else cell.edges
        out = {"first": "\\clvmgf", "more": "\\clvmrg"}.get(cell.down, "")
        out += {"c": "\\clvertalc", "b": "\\clvertalb"}.get(cell.valign, "\\clvertalt")
        for edge in "tlbr":
            if edge in edges:
                out += "\\clbrdr%s\\brdrs\\brdrw%d" % (edge, round(table.line * 20))
        if cell.shade:
            out += "\\clcbpat2"
        return out


def write(form, path):
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(Writer(form).rtf().encode("ascii"))
    print("wrote", path)
