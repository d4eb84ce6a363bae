#include "entry/natures.h"

#include "context/modbase.h"
#include "controls/screen.h"
#include "platform/recordset.h"

#include <QComboBox>

#include <algorithm>

std::vector<Nature> ClientNatures(const QString &code)
{
    std::vector<Nature> natures;
    const QString busnat = [&code] {
        Recordset client;
        client.Open(Sql("select * from FBT_Info Where Code_No='", code, "'"), Cnn);
        return client.Eof() ? QString() : client.Fields(u"busnat").text();
    }();
    if (busnat.isEmpty())
        return natures;
    Recordset rs;
    rs.Open(Sql("Select * from FBT_Nature Where SrNo in (", busnat, ") Order by SrNo"), Cnn);
    for (; !rs.Eof(); rs.MoveNext())
        natures.push_back({rs.Fields(u"SrNo").whole(), rs.Fields(u"NatDesc").text()});
    return natures;
}

void FillNatures(QComboBox *combo, const std::vector<Nature> &natures, int selected)
{
    combo->clear();
    for (const Nature &nature : natures)
        combo->addItem(nature.text, nature.srNo);
    if (natures.size() > 1)
        combo->addItem(QStringLiteral("Consolidated Expenses"), consolidatedNature);
    combo->setCurrentIndex(std::max(0, combo->findData(selected)));
}

bool NatureChosen(Screen *screen, QComboBox *combo)
{
    if (combo->currentData().toInt() != 0)
        return true;
    MsgBox(screen, QStringLiteral("Select a Nature of Business."), Buttons::Ok, Icon::Exclamation);
    combo->setFocus(Qt::OtherFocusReason);
    return false;
}
