"""The challan ITNS 283 with the taxpayer's counterfoil, for fringe benefits tax."""

from rtfform import P, R, Cell, Form, Gap, Row, Table


def tick(label, mark, size=9):
    return [R(label + "  ", size=size), R("[" + mark + "]", bold=True, size=size)]


def boxed(label, value, **look):
    return [P([R(label, size=7.5)]), P([R(value, bold=True)], **look)]


def head():
    return [
        Table(
            [50, 90, 50],
            [
                Row(
                    [
                        Cell("* Important : Please see notes overleaf before filling up the challan", size=7),
                        Cell("CHALLAN NO./ITNS 283", align="c", bold=True, size=12, valign="c"),
                        Cell("Single Copy (to be sent to the ZAO)", align="r", size=7),
                    ]
                )
            ],
            edges="",
        ),
        Gap(2),
        Table(
            [104, 43, 43],
            [
                Row(
                    [
                        Cell(
                            [
                                P("Tax Applicable (Tick One)*", bold=True),
                                P(tick("(0036) BANKING CASH TRANSACTION TAX", "##1##"), before=2),
                                P(tick("(0026) FRINGE BENEFITS TAX", "##2##"), before=2),
                            ]
                        ),
                        Cell(boxed("Financial Year", "##3##", size=11, align="c", before=6)),
                        Cell(boxed("Assessment Year", "##4##", size=11, align="c", before=6)),
                    ]
                )
            ],
        ),
    ]


def taxpayer():
    return [
        Gap(3),
        Table(
            [50, 60, 80],
            [
                Row(
                    [
                        Cell("Permanent Account Number", valign="c"),
                        Cell("##5##", bold=True, size=12, align="c", valign="c"),
                        Cell("", edges=""),
                    ],
                    height=8,
                )
            ],
        ),
        Gap(3),
        Table(
            [126, 64],
            [
                Row([Cell(boxed("Full Name", "##6##"), span=2)], height=9),
                Row([Cell(boxed("Complete Address with City & State", "##7##"), span=2, edges="tlr")]),
                Row([Cell("##8##", bold=True, span=2, edges="lrb")], height=5),
                Row(
                    [
                        Cell([P(["Tel. No.  ", R("##9##", bold=True)])], valign="c"),
                        Cell([P(["Pin  ", R("##10##", bold=True)])], valign="c"),
                    ],
                    height=6,
                ),
            ],
        ),
    ]


def kind_of_payment():
    return [
        Gap(3),
        Table(
            [42, 40, 48, 60],
            [
                Row(
                    [
                        Cell("Type of Payment (Tick One)", bold=True, valign="c", size=8.5),
                        Cell([P(tick("Advance Tax (100)", "##11##", 8.5))], valign="c"),
                        Cell([P(tick("Self Assessment Tax (300)", "##12##", 8.5))], valign="c"),
                        Cell([P(tick("Tax on Regular Assessment (400)", "##13##", 8.5))], valign="c"),
                    ],
                    height=7,
                )
            ],
        ),
    ]


def amounts():
    heads = [
        ("Income Tax / Fringe Benefits Tax", "##14##"),
        ("Surcharge", "##15##"),
        (["Education Cess  ", R("(E.C. ##16A##,  S. & H.E.C. ##16B##)", size=7.5)], "##16##"),
        ("Interest", "##17##"),
        ("Penalty", "##18##"),
        ("Others", "##19##"),
    ]
    bank = [
        P("FOR USE IN RECEIVING BANK", bold=True, align="c"),
        P("Debit to A/c / Cheque credited on", before=8, align="c"),
        P("____  ____  ____", before=14, align="c"),
        P("DD      MM      YY", align="c", size=7.5),
        P("SPACE FOR BANK SEAL", before=36, align="c"),
    ]
    rows = [
        Row(
            [
                Cell("DETAILS OF PAYMENTS", bold=True, shade=True),
                Cell("Amount (in Rs. only)", bold=True, align="c", shade=True),
                Cell(bank, down="first"),
            ]
        )
    ]
    for label, mark in heads:
        rows.append(
            Row(
                [
                    Cell([P(label)], valign="c"),
                    Cell(mark, bold=True, align="r", valign="c"),
                    Cell("", down="more"),
                ],
                height=6.5,
            )
        )
    rows.append(
        Row(
            [
                Cell("Total", bold=True, valign="c"),
                Cell("##20##", bold=True, align="r", valign="c"),
                Cell("", down="more"),
            ],
            height=6.5,
        )
    )
    return [Gap(3), Table([80, 44, 66], rows)]


def words():
    places = ["CRORES", "LACS", "THOUSANDS", "HUNDREDS", "TENS", "UNITS"]
    return [
        Gap(3),
        Table(
            [30, 32, 32, 32, 32, 16, 16],
            [
                Row(
                    [Cell("Total (in words)", down="first", valign="c", bold=True)]
                    + [Cell(place, align="c", size=7.5) for place in places]
                ),
                Row(
                    [Cell("", down="more")]
                    + [Cell("##%d##" % (21 + i), align="c", bold=True, size=8, valign="c") for i in range(6)],
                    height=9,
                ),
            ],
        ),
    ]


def payment():
    return [
        Gap(3),
        Table(
            [95, 47, 48],
            [
                Row(
                    [
                        Cell([P([R("##27A##  "), R("##27##", bold=True)])], valign="c"),
                        Cell([P(["Dated  ", R("##28##", bold=True)])], valign="c"),
                        Cell([P(["Rs.  ", R("##20##", bold=True)])], valign="c"),
                    ],
                    height=7,
                ),
                Row(
                    [
                        Cell(
                            [
                                P(["Drawn on  ", R("##29##", bold=True)]),
                                P("(Name of the Bank and Branch)", size=7, indent=16),
                            ],
                            span=3,
                        )
                    ],
                    height=10,
                ),
                Row(
                    [
                        Cell([P(["Date :  ", R("##30##", bold=True)])], valign="b"),
                        Cell("Signature of person making payment", span=2, align="r", valign="b", size=8),
                    ],
                    height=14,
                ),
            ],
        ),
    ]


def counterfoil():
    seal = [P("SPACE FOR BANK SEAL", align="c", before=50)]

    def line(label, mark, after=""):
        return Cell([P([label, R(mark, bold=True), after])], valign="c")

    lines = [
        line("PAN  ", "##5##"),
        line("Received from  ", "##31##"),
        Cell([P(["##32A##  ", R("##32##", bold=True)])], valign="c"),
        line("For Rs.  ", "##33##"),
        line("Rs. (in words)  ", "##34##"),
        line("Drawn on  ", "##35##"),
        line("on account of Fringe Benefits Tax  ", "##36##", after=" ##37##"),
        line("for the Assessment Year  ", "##38##"),
    ]
    rows = []
    for i, cell in enumerate(lines):
        last = Cell(seal, down="first") if i == 0 else Cell("", down="more")
        rows.append(Row([cell, last], height=7.2))
    return [
        P("- " * 96, size=8, align="c", before=10),
        P("Taxpayers Counterfoil (To be filled up by tax payer)", bold=True, align="c", before=2, after=3),
        Table([130, 60], rows),
    ]


def form():
    blocks = head() + taxpayer() + kind_of_payment() + amounts() + words() + payment() + counterfoil()
    return Form(blocks, title="Challan ITNS 283")
