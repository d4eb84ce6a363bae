#include "suite/miscinf.h"

#include "suite/clientinfo/frmmiscinf.h"

#include <QApplication>

MiscInf::MiscInf(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf)
    : m_base(context, std::move(shelf))
{
}

void MiscInf::InitMe(const QString &appPath, Connection *connection, const QString & /*logName*/, double ratioX,
                     double ratioY, double ratioFontSize)
{
    m_base.AppPath = appPath;
    m_base.CnnObj = connection;
    m_base.vScreenRatX = ratioX;
    m_base.vScreenRatY = ratioY;
    m_base.vScreenRatFS = ratioFontSize;
}

void MiscInf::ObjMain()
{
    frmmiscinf screen(m_base, QApplication::activeWindow());
    screen.showModal();
}
