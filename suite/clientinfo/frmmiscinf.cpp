#include "suite/clientinfo/frmmiscinf.h"

#include "controls/yearcombo.h"
#include "platform/dates.h"
#include "platform/recordset.h"
#include "suite/clientinfo/panelrules.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

frmmiscinf::frmmiscinf(BaseObject &base, QWidget *parent)
    : Screen(QStringLiteral("frmmiscinf"), parent)
    , m_base(base)
    , m_key{miscInfTable, QString(), 0}
    , cboclient(new QComboBox)
    , cboyear(new QComboBox)
    , m_panel(new RowPanel(MiscInfGroups(), 2, RulesOf(base)))
    , cmdsave(new QPushButton(QStringLiteral("&Save")))
    , cmdback(new QPushButton(QStringLiteral("&Back")))
{
    setWindowTitle(QStringLiteral("Miscellaneous Information"));
    drawScreen();
    m_panel->installChecks(this);
    connect(cboclient, &QComboBox::activated, this, &frmmiscinf::CHOICE_CLICK);
    connect(cboyear, &QComboBox::activated, this, &frmmiscinf::CHOICE_CLICK);
    connect(cmdsave, &QPushButton::clicked, this, &frmmiscinf::CMDSAVE_CLICK);
    connect(cmdback, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmmiscinf::drawScreen()
{
    cboclient->setObjectName(QStringLiteral("cboclient"));
    cboyear->setObjectName(QStringLiteral("cboyear"));
    cmdsave->setObjectName(QStringLiteral("cmdsave"));
    cmdback->setObjectName(QStringLiteral("cmdback"));
    cmdback->setProperty("causesCheck", false);
    auto *lblclient = new QLabel(QStringLiteral("C&lient"));
    lblclient->setBuddy(cboclient);
    auto *lblyear = new QLabel(QStringLiteral("Assessment &Year"));
    lblyear->setBuddy(cboyear);
    auto *choice = new QHBoxLayout;
    choice->addWidget(lblclient);
    choice->addWidget(cboclient, 1);
    choice->addWidget(lblyear);
    choice->addWidget(cboyear);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdsave);
    buttons->addWidget(cmdback);
    auto *all = new QVBoxLayout(this);
    all->addLayout(choice);
    all->addWidget(m_panel, 1);
    all->addLayout(buttons);
}

void frmmiscinf::FORM_LOAD()
{
    m_base.Resize_For_Resolution(this);
    LoadYears(cboyear, m_base.TYear);
    LOADCLIENTS();
    m_key.code = chosenClient();
    m_key.year = cboyear->currentData().toInt();
    LOADDATA();
    cboclient->setFocus();
}

QString frmmiscinf::chosenClient() const
{
    return cboclient->currentData().toString();
}

void frmmiscinf::LOADCLIENTS()
{
    Recordset clients;
    clients.Open(QStringLiteral("Select Code_no, Name from FBT_Info Order by Name, Code_no"), m_base.CnnObj);
    for (; !clients.Eof(); clients.MoveNext())
        cboclient->addItem(Joined(clients.Fields(1).text(), "  (", clients.Fields(0).text(), ")"),
                           clients.Fields(0).text());
    cboclient->setMinimumContentsLength(30);
    cboclient->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmdsave->setEnabled(cboclient->count() > 0);
}

void frmmiscinf::LOADDATA()
{
    m_panel->load(ReadRow(m_base.CnnObj, m_key).value_or(RowValues()));
}

void frmmiscinf::CHOICE_CLICK()
{
    const QString code = chosenClient();
    const int year = cboyear->currentData().toInt();
    if (code == m_key.code && year == m_key.year)
        return;
    if (m_panel->changed() &&
        MsgBox(this, QStringLiteral("Do you want to Save Changes?"), Buttons::YesNo, Icon::Question,
               QStringLiteral("Confirmation")) == Reply::Yes &&
        !CMDSAVE_CLICK()) {
        cboclient->setCurrentIndex(cboclient->findData(m_key.code));
        cboyear->setCurrentIndex(cboyear->findData(m_key.year));
        return;
    }
    m_key.code = code;
    m_key.year = year;
    LOADDATA();
}

bool frmmiscinf::CMDSAVE_CLICK()
{
    if (!m_panel->allRight())
        return false;
    if (!SaveRow(m_base.CnnObj, m_key, m_panel->values(), {})) {
        MsgBox(this, QStringLiteral("The miscellaneous information could not be saved."), Buttons::Ok,
               Icon::Exclamation);
        return false;
    }
    m_panel->keep();
    return true;
}

bool frmmiscinf::FORM_UNLOAD()
{
    return !m_panel->changed() ||
           MsgBox(this, QStringLiteral("Do you want to Cancel the Entry?"), Buttons::YesNo) == Reply::Yes;
}
