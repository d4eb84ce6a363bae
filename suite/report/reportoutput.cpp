#include "suite/report/reportoutput.h"

#include "suite/report/reportlayout.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

bool WritePdf(const ReportDocument &document, const QPageLayout &page, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const ReportLayout layout(document, page);
    {
        QPdfWriter writer(&file);
        QPageLayout whole = page;
        whole.setMode(QPageLayout::FullPageMode);
        writer.setPageLayout(whole);
        writer.setResolution(ReportLayout::unitsPerInch);
        writer.setCreator(QStringLiteral("Pelk FBT"));
        QPainter painter(&writer);
        for (int i = 0; i < layout.pageCount(); ++i) {
            if (i > 0)
                writer.newPage();
            layout.drawPage(painter, i);
        }
    }
    return file.commit();
}

bool PrintPages(const ReportLayout &layout, QPrinter &printer, int from, int to)
{
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const double scale = static_cast<double>(printer.resolution()) / ReportLayout::unitsPerInch;
    painter.scale(scale, scale);
    for (int page = from; page <= to; ++page) {
        if (page > from)
            printer.newPage();
        layout.drawPage(painter, page - 1);
    }
    return painter.end();
}
