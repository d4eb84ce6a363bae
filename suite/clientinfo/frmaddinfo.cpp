#include "suite/clientinfo/frmaddinfo.h"

#include "platform/text.h"
#include "records/addinfo.h"
#include "suite/clientinfo/frmbankdet.h"
#include "suite/clientinfo/panelrules.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

frmaddinfo::frmaddinfo(BaseObject &base, QWidget *parent)
    : frmaddinfo(QStringLiteral("frmaddinfo"), ReturnForm::Form3B, base, parent)
{
}

frmaddinfo1::frmaddinfo1(BaseObject &base, QWidget *parent)
    : frmaddinfo(QStringLiteral("frmaddinfo1"), ReturnForm::Itr8, base, parent)
{
}

frmaddinfo::frmaddinfo(const QString &name, ReturnForm form, BaseObject &base, QWidget *parent)
    : Screen(name, parent)
    , m_base(base)
    , m_client{base.code, base.TYear}
    , m_panel(new RowPanel(AddInfoGroups(form), 2, RulesOf(base)))
    , cmdbank(new QPushButton(QStringLiteral("&Bank Accounts")))
    , cmdsave(new QPushButton(QStringLiteral("Sa&ve")))
    , cmdback(new QPushButton(QStringLiteral("Bac&k")))
{
    setWindowTitle(QStringLiteral("Additional Information") + base.Cap);
    drawButtons();
    m_panel->installChecks(this);
    connect(cmdbank, &QPushButton::clicked, this, &frmaddinfo::CMDBANK_CLICK);
    connect(cmdsave, &QPushButton::clicked, this, &frmaddinfo::CMDSAVE_CLICK);
    connect(cmdback, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmaddinfo::drawButtons()
{
    cmdbank->setObjectName(QStringLiteral("cmdbank"));
    cmdsave->setObjectName(QStringLiteral("cmdsave"));
    cmdback->setObjectName(QStringLiteral("cmdback"));
    cmdback->setProperty("causesCheck", false);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdbank);
    buttons->addStretch();
    buttons->addWidget(cmdsave);
    buttons->addWidget(cmdback);
    auto *all = new QVBoxLayout(this);
    all->addWidget(m_panel, 1);
    all->addLayout(buttons);
}

void frmaddinfo::FORM_LOAD()
{
    RowValues defaults;
    for (const auto &[column, value] : AddInfoDefaults())
        defaults.insert(column.toLower(), value);
    const Reading<RowValues> row = ReadRow(m_base.CnnObj, addInfoTable, m_client);
    noteReading(tr("additional information"), !row.failed());
    m_panel->load(row.valueOr(defaults));
    m_panel->setEnabled(couldRead());
    cmdsave->setEnabled(couldRead());
    m_base.Resize_For_Resolution(this);
    m_panel->setFocusTo(QStringLiteral("Ward"));
}

bool frmaddinfo::FORM_UNLOAD()
{
    return !m_panel->changed() ||
           MsgBox(this, QStringLiteral("Do you want to Cancel the Entry?"), Buttons::YesNo) == Reply::Yes;
}

bool frmaddinfo::employeesRight()
{
    const double india = Val(m_panel->value(QStringLiteral("IndiaEmp")));
    const double total = Val(m_panel->value(QStringLiteral("TotalEmp")));
    if (Val(m_panel->value(QStringLiteral("EmpBoth"))) == 0 || india <= total)
        return true;
    MsgBox(this, QStringLiteral("Employees based in India cannot be more than the total employees."), Buttons::Ok,
           Icon::Exclamation);
    m_panel->setFocusTo(QStringLiteral("IndiaEmp"));
    return false;
}

void frmaddinfo::CMDSAVE_CLICK()
{
    if (!couldRead() || !m_panel->allRight() || !employeesRight())
        return;
    if (!SaveRow(m_base.CnnObj, addInfoTable, m_client, m_panel->values(), AddInfoDefaults()))
        return; // what was typed stays
    m_panel->keep();
    Unload();
}

void frmaddinfo::CMDBANK_CLICK()
{
    frmbankdet banks(m_base, this);
    banks.showModal();
}
