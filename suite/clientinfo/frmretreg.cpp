#include "suite/clientinfo/frmretreg.h"

#include "controls/yearcombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>

frmretreg::frmretreg(int year, QWidget *parent)
    : Screen(QStringLiteral("frmretreg"), parent)
    , cboyear(new QComboBox)
{
    setWindowTitle(QStringLiteral("Returns"));
    cboyear->setObjectName(QStringLiteral("cboyear"));
    LoadYears(cboyear, year);
    auto *cmdshow = new QPushButton(QStringLiteral("&Show"));
    cmdshow->setObjectName(QStringLiteral("cmdshow"));
    auto *cmdback = new QPushButton(QStringLiteral("&Back"));
    cmdback->setObjectName(QStringLiteral("cmdback"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdshow);
    buttons->addWidget(cmdback);
    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Assessment Year"), cboyear);
    form->addRow(buttons);
    connect(cmdshow, &QPushButton::clicked, this, [this] {
        m_chosen = cboyear->currentData().toInt();
        Unload();
    });
    connect(cmdback, &QPushButton::clicked, this, [this] { Unload(); });
}
