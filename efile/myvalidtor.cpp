#include "efile/myvalidtor.h"

#include "context/errortail.h"
#include "controls/grid.h"
#include "efile/itr8.h"

MyValidtor::MyValidtor(Grid *vsf)
    : m_vsf(vsf)
{
}

void MyValidtor::error(const XmlPlace &place, const QString &message, int code)
{
    WRITEERROR(message, code, place.line, place.column);
}

void MyValidtor::fatalError(const XmlPlace &place, const QString &message, int code)
{
    m_fatal = true;
    WRITEERROR(message, code, place.line, place.column);
}

void MyValidtor::ignorableWarning(const XmlPlace &place, const QString &message, int code)
{
    WRITEERROR(message, code, place.line, place.column);
}

/// The namespace of nearly all elements would hide their names.
void MyValidtor::WRITEERROR(const QString &Message, int Code, int Line, int Column)
{
    ErrorTail tail(QStringLiteral("MYVALIDATOR"));
    static const QString space = u'{' + QString::fromLatin1(efilingNamespace) + QStringLiteral("/Corpmaster}");
    tail([&] {
        m_vsf->AddItem({QString::number(m_vsf->Rows() - m_vsf->FixedRows() + 1), QString(), QString(),
                        QString::number(Code), QString(Message).remove(space), QString(), QString::number(Line),
                        QString::number(Column), QString()});
    });
}
