#include "suite/clientinfo/frmmiscinf.h"

#include "controls/yearcombo.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "records/clients.h"
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
    LOADDATA({chosenClient(), cboyear->currentData().toInt()});
    cboclient->setFocus();
}

QString frmmiscinf::chosenClient() const
{
    return cboclient->currentData().toString();
}

void frmmiscinf::LOADCLIENTS()
{
    const RowsRead<NamedClient> clients = ClientNames(m_base.CnnObj);
    noteReading(tr("clients"), !clients.failed());
    cboclient->clear();
    for (const NamedClient &client : *clients)
        cboclient->addItem(Joined(client.name, "  (", client.code, ")"), client.code);
    cboclient->setMinimumContentsLength(30);
    cboclient->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void frmmiscinf::LOADDATA(const ClientYear &client)
{
    m_client = client;
    const Reading<RowValues> row = ReadRow(m_base.CnnObj, miscInfTable, m_client);
    noteReading(tr("miscellaneous information"), !row.failed());
    m_panel->load(*row);
    m_panel->setEnabled(!row.failed());
    cmdsave->setEnabled(!row.failed() && cboclient->count() > 0);
}

void frmmiscinf::CHOICE_CLICK()
{
    if (!couldRead(tr("clients")))
        LOADCLIENTS();
    const ClientYear chosen{chosenClient(), cboyear->currentData().toInt()};
    if (chosen == m_client && couldRead())
        return;
    if (m_panel->changed() &&
        MsgBox(this, QStringLiteral("Do you want to Save Changes?"), Buttons::YesNo, Icon::Question,
               QStringLiteral("Confirmation")) == Reply::Yes &&
        !CMDSAVE_CLICK()) {
        cboclient->setCurrentIndex(cboclient->findData(m_client.code));
        cboyear->setCurrentIndex(cboyear->findData(m_client.year));
        return;
    }
    LOADDATA(chosen);
}

bool frmmiscinf::CMDSAVE_CLICK()
{
    if (!cmdsave->isEnabled() || !m_panel->allRight())
        return false;
    if (!SaveRow(m_base.CnnObj, miscInfTable, m_client, m_panel->values(), {}))
        return false; // what was typed stays
    m_panel->keep();
    return true;
}

bool frmmiscinf::FORM_UNLOAD()
{
    return !m_panel->changed() ||
           MsgBox(this, QStringLiteral("Do you want to Cancel the Entry?"), Buttons::YesNo) == Reply::Yes;
}
