"""The pages of form ITR-8: acknowledgement, Part A, Part B with the verification, and the schedules FBI, FB and FBT.

The program writes its figures into cells by their table, row and column, counted from 1, as `returns/itr8cells.cpp` lists
them: a head stands in paragraphs so that it is no table, and a box to be filled is an empty cell of its own.
"""

from rtfform import P, R, Cell, Form, Gap, Row, Table

YEARS = (2007, 2008, 2009)

LABEL = 7.5
TEXT = 8.5


def label(text, **look):
    return Cell(text, size=LABEL, edges=look.pop("edges", "tlr"), **look)


def value(span=1, align="l", edges="lrb"):
    return Cell("", bold=True, size=8, span=span, align=align, edges=edges, valign="c")


def box():
    """A cell for a mark or a code."""
    return Cell("", bold=True, align="c", valign="c")


def amount(size=9):
    return Cell("", bold=True, align="r", valign="c", size=size)


def text(content, **look):
    return Cell(content, size=look.pop("size", TEXT), valign="c", **look)


def number(content, **look):
    return Cell(content, size=TEXT, bold=True, align="c", valign="c", **look)


def pairs(widths, labels, below, height=5):
    """A row of labels with the fields under them."""
    return Table(widths, [Row(labels), Row(below, height=height)])


def caption(content):
    return P(content, bold=True, size=9, before=5, after=2)


def head(part, year=True):
    return [
        P(
            [R("FORM ITR-8", bold=True, size=13), R("     INDIAN INCOME TAX RETURN", bold=True, size=13)],
            align="c",
        ),
        P(
            "[For persons who are not required to furnish the return of income but are required to furnish the return "
            "of fringe benefits]",
            align="c",
            size=8,
        ),
        P("(Please see Rule 12 of the Income-tax Rules, 1962)  (Also see attached instructions)", align="c", size=8),
        P([R("Assessment Year  ", bold=True), R("##ASYR##", bold=True)], align="c", size=11, before=2, after=3),
        P(part, bold=True, align="c", size=11, after=3),
    ]


def schedule_head(title):
    return [
        P([R(title, bold=True, size=10.5)], align="c", before=6),
        P([R("Assessment Year  ##ASYR##", size=8)], align="c", after=3),
    ]


# --- acknowledgement ---


def particulars(year):
    status = "Status (fill the code)" if year >= 2009 else ""
    return [
        Table(
            [105, 85],
            [
                Row([label("Name"), label("PAN")]),
                Row([value(), value()], height=6),
                Row([label("Flat/Door/Block No"), label("Name Of Premises/Building/Village")]),
                Row([value(), value()], height=6),
                Row([label("Road/Street/Post Office"), label("Area/Locality")]),
                Row([value(), value()], height=6),
            ],
        ),
        Gap(1),
        Table(
            [60, 60, 35, 35],
            [
                Row([label("Town/City/District"), label("State"), label("Pin"), label(status)]),
                Row([value(), value(), value(), value(align="c")], height=6),
                Row(
                    [
                        text("Designation of Assessing Officer (Ward/Circle)", size=LABEL),
                        value(edges="tlbr"),
                        text("Original or Revised", size=LABEL),
                        value(edges="tlbr"),
                    ],
                    height=7,
                ),
            ],
        ),
    ]


def income_lines(year):
    lines = [
        ("1", "", "Gross total income", "1"),
        ("2", "", "Deductions under Chapter VI-A", "2"),
        ("3", "", "Total Income", "3"),
    ]
    if year >= 2008:
        lines.append(("", "a", "Current Year loss, if any", "3a"))
    return lines + [
        ("4", "", "Net Tax Payable", "4"),
        ("5", "", "Interest Payable", "5"),
        ("6", "", "Total Tax and Interest Payable", "6"),
        ("7", "a", "Taxes Paid: Advance Tax", "7a"),
        ("", "b", "TDS", "7b"),
        ("", "c", "TCS", "7c"),
        ("", "d", "Self Assessment Tax", "7d"),
        ("", "e", "Total Taxes Paid (7a+7b+7c+7d)", "7e"),
        ("8", "", "Tax Payable (6-7e)", "8"),
        ("9", "", "Refund (7e-6)", "9"),
    ]


BENEFIT_LINES = [
    ("10", "", "Value of Fringe Benefits", "10"),
    ("11", "", "Total fringe benefit tax liability", "11"),
    ("12", "", "Total interest payable", "12"),
    ("13", "", "Total tax and interest payable", "13"),
    ("14", "a", "Taxes Paid: Advance Tax", "14a"),
    ("", "b", "Self Assessment Tax", "14b"),
    ("", "c", "Total Taxes Paid (14a+14b)", "14c"),
    ("15", "", "Tax Payable (13-14c)", "15"),
    ("16", "", "Refund (14c-13)", "16"),
]


def figures(lines):
    rows = [
        Row([number(no), number(sub), text(what), number(code), amount()], height=5.6) for no, sub, what, code in lines
    ]
    return Table([10, 8, 118, 14, 40], rows)


def acknowledgement(year):
    receipt = Table(
        [95, 95],
        [
            Row(
                [
                    Cell(
                        [P("Receipt No. ______________________", before=8), P("Date ______________________", before=8)]
                    ),
                    Cell([P("Seal", align="c", before=10), P("Signature of receiving official", align="c", before=14)]),
                ],
                height=24,
            )
        ],
    )
    return Form(
        [
            P("INDIAN INCOME TAX RETURN ACKNOWLEDGEMENT", bold=True, align="c", size=13),
            P("Assessment Year ##ASYR##", bold=True, align="c", size=11, before=3, after=6),
            P(
                [
                    "Received with thanks from ",
                    R("##FULLNM##", bold=True),
                    " a return of income and/or fringe benefits in Form No. ",
                    R("##FRM##", bold=True),
                    " for assessment year ",
                    R("##ASYR##", bold=True),
                    ", having the following particulars.",
                ],
                align="j",
                size=10,
                after=4,
            ),
            caption("PERSONAL INFORMATION"),
            *particulars(year),
            caption("COMPUTATION OF INCOME AND TAX THEREON (in Rs.)"),
            figures(income_lines(year)),
            caption("FRINGE BENEFITS AND TAX THEREON (in Rs.)"),
            figures(BENEFIT_LINES),
            Gap(6),
            receipt,
        ],
        title="ITR-8 acknowledgement %d" % year,
    )


# --- Part A ---


def personal(year):
    if year == 2007:
        codes = "Company - 1, Firm - 2, Others - 3"
        domestic = "If a company: domestic - 1, other than domestic - 2"
    else:
        codes = (
            "Firm - 1, Local authority - 2, Co-operative bank - 3, Other co-operative society - 4, AOP/BOI - 5, "
            "Public company - 6, Private company - 7, Others - 8"
        )
        domestic = "If a domestic company (Tick)"
    return [
        pairs(
            [88, 28, 59, 15],
            [
                label("Name"),
                label("PAN"),
                label("Is there any change in the company's name? If yes, please furnish the old name"),
                box(),
            ],
            [value(), value(), value(span=2)],
            7,
        ),
        Gap(1),
        pairs(
            [65, 75, 50],
            [
                label("Flat/Door/Block No"),
                label("Name Of Premises/Building/Village"),
                label("Date of formation/incorporation (DD/MM/YYYY)"),
            ],
            [value(), value(), value()],
        ),
        Gap(1),
        pairs(
            [65, 65, 45, 15],
            [label("Road/Street/Post Office"), label("Area/Locality"), label("Status (see codes below)"), box()],
            [value(), value(), Cell(codes, size=6.5, span=2, edges="lrb")],
        ),
        Gap(1),
        pairs(
            [60, 50, 25, 40, 15],
            [label("Town/City/District"), label("State"), label("Pin code"), label(domestic), box()],
            [value(), value(), value(), Cell("", span=2, edges="lrb")],
        ),
        Gap(1),
        pairs([130, 60], [label("Email Address"), label("(STD code)-Phone Number")], [value(), value()]),
    ]


def filing():
    return [
        pairs(
            [60, 21, 20, 21, 20, 33, 15],
            [
                label("Designation of Assessing Officer"),
                label("Area Code"),
                label("AO Type"),
                label("Range Code"),
                label("AO No"),
                label("Return filed under section (Enter Code) [Please see instruction 9(i)]", edges="tlb"),
                box(),
            ],
            [value(), value(), value(), value(), value(), Cell("", span=2, edges="lrb")],
            6.5,
        ),
        Gap(1),
        Table(
            [105, 15, 55, 15],
            [
                Row(
                    [text("Whether original or revised return? (Tick)     Original"), box(), text("Revised"), box()],
                    height=6,
                )
            ],
        ),
        Gap(1),
        Table(
            [110, 45, 35],
            [
                Row(
                    [
                        text("If revised, Receipt No and date of filing original return (DD/MM/YYYY)"),
                        value(edges="tlbr"),
                        value(edges="tlbr"),
                    ],
                    height=6,
                )
            ],
        ),
        Gap(1),
        Table(
            [64, 12, 30, 12, 60, 12],
            [
                Row(
                    [
                        text("Residential Status (Tick)     Resident"),
                        box(),
                        text("Non-Resident"),
                        box(),
                        text("Resident but Not Ordinarily Resident"),
                        box(),
                    ],
                    height=6,
                )
            ],
        ),
        Gap(1),
        Table(
            [160, 30],
            [
                Row(
                    [
                        text("In the case of non-resident, is there a permanent establishment (PE) in India?"),
                        box(),
                    ],
                    height=6,
                )
            ],
        ),
        Gap(1),
        Table(
            [140, 12, 26, 12],
            [
                Row(
                    [
                        text("Whether this return is being filed by a representative assessee? (Tick)     Yes"),
                        box(),
                        text("No"),
                        box(),
                    ],
                    height=6,
                )
            ],
        ),
        P("If yes, please furnish following information -", size=TEXT, before=2, after=2),
        lettered(
            [
                "Name of the representative",
                "Address of the representative",
                "PAN of the representative",
            ]
        ),
    ]


def lettered(labels):
    rows = [
        Row([number("(%s)" % chr(ord("a") + i)), text(what), value(edges="tlbr")], height=6)
        for i, what in enumerate(labels)
    ]
    return Table([10, 62, 118], rows)


def audit():
    return [
        Table(
            [140, 12, 26, 12],
            [
                Row(
                    [
                        text("Are you liable to maintain accounts as per section 44AA? (Tick)     Yes"),
                        box(),
                        text("No"),
                        box(),
                    ],
                    height=6,
                ),
                Row(
                    [text("Are you liable to audit under section 44AB? (Tick)     Yes"), box(), text("No"), box()],
                    height=6,
                ),
            ],
        ),
        P("If yes, furnish following information -", size=TEXT, before=2, after=2),
        lettered(
            [
                "Name of the auditor signing the tax audit report",
                "Membership no. of the auditor",
                "Name of the auditor (proprietorship/firm)",
                "PAN of the proprietorship/firm",
                "Date of audit report",
            ]
        ),
    ]


def main(year):
    office = Table(
        [95, 95],
        [
            Row(
                [
                    Cell(
                        [
                            P("For Office Use Only", bold=True, size=8),
                            P("Receipt No", size=8, before=2),
                            P("Date", size=8, before=4),
                        ]
                    ),
                    Cell(
                        [
                            P("For Office Use Only", bold=True, size=8),
                            P("Seal and Signature of receiving official", size=8, before=20),
                        ]
                    ),
                ],
                height=15,
            )
        ],
    )
    return Form(
        [
            *head("PART A - GENERAL"),
            caption("PERSONAL INFORMATION"),
            *personal(year),
            caption("FILING STATUS"),
            *filing(),
            caption("AUDIT INFORMATION"),
            *audit(),
            Gap(8),
            office,
        ],
        title="ITR-8 Part A %d" % year,
    )


# --- Part B ---

LINE = 5.4


def benefits():
    quarters = ["first", "second", "third", "fourth"]
    rows = []
    for i, quarter in enumerate(quarters):
        letter = "abcd"[i]
        rows.append(
            Row(
                [
                    number("1" if i == 0 else "", down="first" if i == 0 else "more"),
                    number(letter),
                    text("Value of fringe benefits for %s quarter" % quarter),
                    number("1" + letter),
                    amount(),
                ],
                height=LINE,
            )
        )
    total = Row(
        [
            number(""),
            number("e"),
            text("Total value of fringe benefits (1a + 1b + 1c + 1d) (also as per Schedule FB)"),
            number("1e"),
            amount(),
        ],
        height=LINE,
    )
    widths = [10, 8, 118, 14, 40]
    return [Table(widths, rows), Gap(1), Table(widths, [total])]


def single(lines):
    return Table(
        [10, 126, 14, 40],
        [Row([number(no), text(what), number(no), amount()], height=LINE) for no, what in lines],
    )


def inner(no, first, second, total):
    """Two amounts in an inner column and their total in the outer one."""

    def line(i, what):
        letter = "ab"[i]
        return Row(
            [
                number(no if i == 0 else "", down="first" if i == 0 else "more"),
                number(letter),
                text(what),
                number(no + letter),
                amount(),
                Cell("", span=2, shade=True),
            ],
            height=LINE,
        )

    last = Row(
        [
            number("", down="more"),
            number("c"),
            text(total),
            Cell("", shade=True),
            Cell("", shade=True),
            number(no + "c"),
            amount(),
        ],
        height=LINE,
    )
    return Table([10, 8, 68, 14, 36, 14, 40], [line(0, first), line(1, second), last])


def tax(year):
    cess = "Education cess, including secondary and higher education cess" if year >= 2008 else "Education cess"
    return [
        single(
            [
                ("2", "Fringe benefit tax payable"),
                ("3", "Surcharge on 2"),
                ("4", "%s on (2 + 3)" % cess),
                ("5", "Total fringe benefit tax liability (2 + 3 + 4)"),
            ]
        ),
        Gap(1),
        inner(
            "6",
            "Interest for default in payment (section 115WJ)",
            "Interest for default in furnishing return (section 115WK)",
            "Total interest payable (6a + 6b)",
        ),
        Gap(1),
        single([("7", "Aggregate liability (5 + 6c)")]),
        Gap(1),
        inner("8", "Advance fringe benefit tax", "On self-assessment", "Total taxes paid (8a + 8b)"),
        Gap(1),
        single(
            [
                ("9", "Tax payable (enter if 7 is greater than 8c, else enter 0)"),
                ("10", "Refund (enter if 8c is greater than 7, else enter 0) also give the bank account details below"),
            ]
        ),
    ]


def refund():
    return [
        Table(
            [10, 110, 70],
            [
                Row(
                    [
                        number("11"),
                        text("Enter your bank account number (mandatory in case of refund)"),
                        value(edges="tlbr"),
                    ],
                    height=LINE,
                )
            ],
        ),
        Gap(1),
        Table(
            [10, 78, 12, 78, 12],
            [
                Row(
                    [
                        number("12"),
                        text("Do you want your refund by   cheque, or"),
                        box(),
                        text("deposited directly into your bank account? (Tick)"),
                        box(),
                    ],
                    height=LINE,
                )
            ],
        ),
        P(
            "13   In case of direct deposit to your bank account give additional details",
            size=TEXT,
            bold=True,
            before=2,
            after=1,
        ),
        Table(
            [24, 50, 64, 12, 28, 12],
            [
                Row(
                    [
                        text("MICR Code"),
                        value(edges="tlbr"),
                        text("Type of Account (Tick)     Savings"),
                        box(),
                        text("Current"),
                        box(),
                    ],
                    height=LINE,
                )
            ],
        ),
    ]


def verification(year):
    blocks = [
        P("VERIFICATION", bold=True, align="c", size=10, before=6, after=2),
        P(
            [
                "I, ",
                R("##SIGNNM##", bold=True),
                " (full name in block letters), son/daughter of ",
                R("##SIGNFNM##", bold=True),
                ", holding permanent account number ",
                R("##SIGNPAN##", bold=True),
                ", solemnly declare that to the best of my knowledge and belief, the information given in the return "
                "and the schedules thereto is correct and complete and that the amount of total fringe benefits and "
                "other particulars shown therein are truly stated and are in accordance with the provisions of the "
                "Income-tax Act, 1961, in respect of fringe benefits chargeable to tax for the previous year relevant "
                "to the assessment year ",
                R("##ASYR##", bold=True),
                ". I further declare that I am making this return in my capacity as ",
                R("##SIGNDESIG##", bold=True),
                " and I am also competent to make this return and verify it.",
            ],
            align="j",
            size=8.5,
            after=3,
        ),
    ]
    if year == 2007:
        blocks += [
            Table(
                [10, 80, 50, 16, 34],
                [
                    Row(
                        [
                            number("14"),
                            text("If the return has been furnished electronically: acknowledgement no."),
                            value(edges="tlbr"),
                            text("Date"),
                            value(edges="tlbr"),
                        ],
                        height=LINE,
                    )
                ],
            ),
            Gap(1),
        ]
    return blocks + [
        Table(
            [16, 60, 14, 36, 64],
            [
                Row(
                    [
                        text("Place"),
                        value(edges="tlbr"),
                        text("Date"),
                        value(edges="tlbr"),
                        Cell("Sign here  ->", size=8, valign="b"),
                    ],
                    height=10,
                )
            ],
        )
    ]


def part_b(year):
    return Form(
        [
            *schedule_head("Part B     Computation of Fringe Benefits and fringe benefit tax"),
            *benefits(),
            Gap(1),
            *tax(year),
            Gap(1),
            *refund(),
            *verification(year),
        ],
        title="ITR-8 Part B %d" % year,
    )


# --- schedules ---


def schedule_fbi(year):
    return Form(
        [
            *schedule_head("Schedule FBI     Information regarding calculation of value of fringe benefits"),
            Table(
                [10, 165, 15],
                [
                    Row(
                        [
                            number("1"),
                            text(
                                "Are you having employees based both in and outside India? (If yes write 1, and if no write 2)"
                            ),
                            box(),
                        ],
                        height=6,
                    ),
                    Row(
                        [
                            number("2"),
                            text(
                                "If yes, are you maintaining separate books of account for Indian and foreign "
                                "operations? (If yes write 1, and if no write 2)"
                            ),
                            box(),
                        ],
                        height=6,
                    ),
                ],
            ),
            Gap(1),
            Table(
                [10, 8, 142, 30],
                [
                    Row(
                        [number("3", down="first"), number("a"), text("Number of employees based in India"), amount()],
                        height=6,
                    ),
                    Row(
                        [
                            number("", down="more"),
                            number("b"),
                            text("Number of employees based outside India"),
                            amount(),
                        ],
                        height=6,
                    ),
                    Row(
                        [number("", down="more"), number("c"), text("Total number of employees (3a + 3b)"), amount()],
                        height=6,
                    ),
                ],
            ),
        ],
        title="ITR-8 Schedule FBI %d" % year,
    )


def nature(no, what, percent):
    return Row(
        [
            number(no),
            text(what, size=7),
            code(no + "ii"),
            amount(8),
            code(no + "iii"),
            Cell(percent, size=8, align="c", valign="c"),
            code(no + "iv"),
            amount(8),
        ],
        height=4.6,
    )


def code(content):
    return Cell(content, size=6.5, align="c", valign="c")


def natures(lines):
    return Table([8, 88, 11, 27, 12, 10, 11, 23], [nature(*line) for line in lines])


def divided(groups):
    """Heads that are divided by the kind of business."""
    rows = []
    for no, lines in groups:
        for i, (what, percent) in enumerate(lines):
            letter = "abcde"[i]
            rows.append(
                Row(
                    [
                        number(no if i == 0 else "", down="first" if i == 0 else "more"),
                        number(letter),
                        text(what, size=7),
                        code(no + letter + "ii"),
                        amount(8),
                        code(no + letter + "iii"),
                        Cell(percent, size=8, align="c", valign="c"),
                        code(no + letter + "iv"),
                        amount(8),
                    ],
                    height=4.6,
                )
            )
    return Table([8, 7, 81, 11, 27, 12, 10, 11, 23], rows)


def schedule_fb(year):
    aircraft = "in the business of carriage of passengers or goods by aircraft"
    ship = "in the business of carriage of passengers or goods by ship"
    pharma = "in the business of manufacture or production of pharmaceuticals"
    software = "in the business of manufacture or production of computer software"
    festival = "20" if year >= 2009 else "50"
    captions = Table(
        [8, 88, 38, 22, 34],
        [
            Row(
                [
                    Cell(what, bold=True, size=8, align="c", shade=True)
                    for what in (
                        "Sl. No.",
                        "Nature of expenditure (i)",
                        "Amount/value of expenditure (ii)",
                        "Percentage (iii)",
                        "Value of fringe benefits (iv) = (ii) x (iii) ÷ 100",
                    )
                ]
            )
        ],
    )
    closing = [
        ("20", "Value of fringe benefits (total of column iv)"),
        ("21", "Value of fringe benefits (enter if the answer to 1 of Schedule FBI is no)"),
        ("22", "Value of fringe benefits (enter if the answer to 2 of Schedule FBI is yes)"),
        (
            "23",
            "Value of fringe benefits (20 x 3a ÷ 3c of Schedule FBI) (enter if the answer to 2 of Schedule FBI is no)",
        ),
        ("24", "Total value of fringe benefits (21, 22 or 23) (enter in 1e of Part B)"),
    ]
    return Form(
        [
            *schedule_head("Schedule FB     Computation of value of fringe benefits"),
            captions,
            Gap(1),
            natures(
                [
                    (
                        "1",
                        "Free or concessional tickets provided for private journeys of employees or their family members",
                        "100",
                    ),
                    (
                        "2",
                        "Contribution to an approved superannuation fund for employees (in excess of the limit for each employee)",
                        "100",
                    ),
                    ("3", "Entertainment", "20"),
                ]
            ),
            Gap(1),
            divided(
                [
                    (
                        "4",
                        [
                            ("Hospitality in the business other than the business referred to in 4b, 4c or 4d", "20"),
                            ("Hospitality in the business of hotel", "5"),
                            ("Hospitality " + aircraft, "5"),
                            ("Hospitality " + ship, "5"),
                        ],
                    )
                ]
            ),
            Gap(1),
            natures(
                [
                    ("5", "Conference (other than fee for participation by the employees in any conference)", "20"),
                    ("6", "Sales promotion including publicity", "20"),
                    ("7", "Employees welfare", "20"),
                ]
            ),
            Gap(1),
            divided(
                [
                    (
                        "8",
                        [
                            ("Conveyance in the business other than the business referred to in 8b, 8c or 8d", "20"),
                            ("Conveyance in the business of construction", "5"),
                            ("Conveyance " + pharma, "5"),
                            ("Conveyance " + software, "5"),
                        ],
                    ),
                    (
                        "9",
                        [
                            (
                                "Use of hotel, boarding and lodging facilities in the business other than the business referred to in 9b, 9c, 9d or 9e",
                                "20",
                            ),
                            ("Use of hotel, boarding and lodging facilities " + pharma, "5"),
                            ("Use of hotel, boarding and lodging facilities " + software, "5"),
                            ("Use of hotel, boarding and lodging facilities " + aircraft, "5"),
                            ("Use of hotel, boarding and lodging facilities " + ship, "5"),
                        ],
                    ),
                    (
                        "10",
                        [
                            (
                                "Repair, running (including fuel), maintenance of motor cars and depreciation thereon in the business other than the carriage of passengers or goods by motor car",
                                "20",
                            ),
                            (
                                "Repair, running (including fuel), maintenance of motor cars and depreciation thereon in the business of carriage of passengers or goods by motor car",
                                "5",
                            ),
                        ],
                    ),
                ]
            ),
            Gap(1),
            natures(
                [
                    (
                        "11",
                        "Repair, running (including fuel), maintenance of aircraft and depreciation thereon in the business other than the carriage of passengers or goods by aircraft",
                        "20",
                    ),
                    (
                        "12",
                        "Use of telephone (including mobile phone) other than expenditure on leased telephone lines",
                        "20",
                    ),
                    (
                        "13",
                        "Maintenance of any accommodation in the nature of guest house other than accommodation used for training purposes",
                        "20",
                    ),
                    ("14", "Festival celebrations", festival),
                    ("15", "Use of health club and similar facilities", "50"),
                    ("16", "Use of any other club facilities", "50"),
                    ("17", "Gifts", "50"),
                    ("18", "Scholarships", "50"),
                    ("19", "Tour and travel (including foreign travel)", "5"),
                ]
            ),
            Gap(1),
            Table(
                [8, 137, 11, 34],
                [Row([number(no), text(what, size=8), number(no), amount()], height=4.8) for no, what in closing],
            ),
        ],
        title="ITR-8 Schedule FB %d" % year,
    )


PAYMENT = [12, 66, 26, 28, 28, 30]


def schedule_fbt(year):
    captions = [
        "Sl. No.",
        "Name of Bank and Branch",
        "BSR Code",
        "Date of Deposit (DD/MM/YYYY)",
        "Serial Number of Challan",
        "Amount (Rs)",
    ]
    entry = [
        number(""),
        value(edges="tlbr"),
        value(edges="tlbr", align="c"),
        value(edges="tlbr", align="c"),
        value(edges="tlbr", align="c"),
        amount(),
    ]
    return Form(
        [
            *schedule_head("Schedule FBT     Details of payment of Fringe Benefit Tax"),
            Table(
                PAYMENT, [Row([Cell(what, bold=True, size=8, align="c", shade=True) for what in captions], header=True)]
            ),
            Gap(1),
            Table(
                PAYMENT,
                [
                    Row(
                        [
                            Cell(
                                "Advance tax and self-assessment tax, each in the order of the dates of deposit",
                                size=8,
                                span=6,
                            )
                        ],
                        height=5,
                    ),
                    Row(entry, height=6),
                ],
            ),
            Gap(1),
            Table(
                [190],
                [
                    Row(
                        [
                            Cell(
                                "NOTE: Enter the totals of advance tax and self-assessment tax in 8a and 8b of Part B",
                                size=8,
                                bold=True,
                            )
                        ]
                    ),
                ],
            ),
        ],
        title="ITR-8 Schedule FBT %d" % year,
    )


DOCUMENTS = {
    "Ack": acknowledgement,
    "Main": main,
    "PartB": part_b,
    "Sch-FBI": schedule_fbi,
    "Sch-FB": schedule_fb,
    "Sch-FBT": schedule_fbt,
}
