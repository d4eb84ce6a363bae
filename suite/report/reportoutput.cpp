#include "suite/report/reportoutput.h"

#include "suite/report/reportlayout.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

bool WritePdf(ReportLayout &layout, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    {
        QPdfWriter writer(&file);
        QPageLayout whole = layout.page();
        whole.setMode(QPageLayout::FullPageMode);
        writer.setPageLayout(whole);
        writer.setResolution(ReportLayout::unitsPerInch);
        writer.setCreator(QStringLiteral("Pelk FBT"));
        QPainter painter(&writer);
        for (int page = 0; layout.hasPage(page); ++page) {
            if (page > 0)
                writer.newPage();
            layout.drawPage(painter, page);
        }
    }
    return file.commit();
}

bool PrintPages(ReportLayout &layout, QPrinter &printer, int from, int to)
{
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const double scale = static_cast<double>(printer.resolution()) / ReportLayout::unitsPerInch;
    painter.scale(scale, scale);
    for (int page = from; page <= to && layout.hasPage(page - 1); ++page) {
        if (page > from)
            printer.newPage();
        layout.drawPage(painter, page - 1);
    }
    return painter.end();
}
