#include "suite/datacare/backup.h"

#include "platform/clock.h"
#include "platform/ownfiles.h"
#include "platform/recordset.h"
#include "platform/rowstream.h"
#include "suite/datacare/backupfile.h"
#include "suite/datacare/scratchtables.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace {

const QString damaged = QStringLiteral("The file is not a whole backup of this program. Nothing was changed.");

QString cannotWrite(const QIODevice &device)
{
    return QStringLiteral("The backup could not be written: %1.").arg(device.errorString());
}

struct TableInfo
{
    QString name;
    qint64 rows = 0; // about
};

QList<TableInfo> tablesOf(RowStream &stream)
{
    QList<TableInfo> tables;
    stream.open(QStringLiteral("Select TABLE_NAME, TABLE_ROWS from information_schema.TABLES"
                               " Where TABLE_SCHEMA=Database() and TABLE_TYPE='BASE TABLE' Order by TABLE_NAME"));
    while (stream.next()) {
        const QString name = QString::fromUtf8(stream.value(0));
        if (!IsScratchTable(name))
            tables.append({name, stream.value(1).toLongLong()});
    }
    return tables;
}

/// Copies tables from the server to the backup, row by row.
class TableCopier
{
public:
    TableCopier(RowStream &stream, BackupWriter &writer, const Progress &progress)
        : m_stream(stream)
        , m_writer(writer)
        , m_progress(progress)
    {
    }

    bool copyAll()
    {
        const QList<TableInfo> tables = tablesOf(m_stream);
        for (const TableInfo &table : tables)
            m_total += table.rows;
        for (const TableInfo &table : tables) {
            if (!copy(table.name))
                return false;
        }
        m_tables = static_cast<int>(tables.size());
        return m_stream.error().isEmpty();
    }
    [[nodiscard]] int tables() const { return m_tables; }

private:
    bool copy(const QString &table)
    {
        if (!m_stream.open(Sql("Show Create Table `", table, "`")) || !m_stream.next())
            return false;
        const QString definition = QString::fromUtf8(m_stream.value(1));
        if (!m_stream.open(Sql("Select * from `", table, "`")) ||
            !m_writer.table(table, definition, m_stream.columns()))
            return false;
        while (m_stream.next()) {
            if (!copyRow())
                return false;
        }
        return m_stream.error().isEmpty();
    }

    bool copyRow()
    {
        constexpr quint64 seldom = 2000;
        QByteArrayList values;
        values.reserve(m_stream.columns());
        for (int column = 0; column < m_stream.columns(); ++column)
            values.append(m_stream.value(column));
        if (m_writer.rows() % seldom == 0)
            m_progress(static_cast<qint64>(m_writer.rows()), m_total);
        return m_writer.row(values);
    }

    RowStream &m_stream;
    BackupWriter &m_writer;
    const Progress &m_progress;
    qint64 m_total = 0;
    int m_tables = 0;
};

/// A name in the folder that no backup has yet, from the present moment.
QString freshName(const QDir &folder)
{
    const QString stem = QStringLiteral("FBT-") + Now().toString(QStringLiteral("yyyy-MM-dd-HHmmss"));
    QString name = stem + QStringLiteral(".fbtbak");
    for (int i = 2; folder.exists(name); ++i)
        name = QStringLiteral("%1-%2.fbtbak").arg(stem).arg(i);
    return folder.filePath(name);
}

Trouble writeFile(Connection *cnn, const QString &path, BackupSummary &summary, const Progress &progress)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return cannotWrite(file);
    KeepPrivate(path);
    Trouble trouble = WriteBackup(cnn, file, summary, progress);
    if (!trouble.isEmpty())
        return trouble;
    if (!file.flush() || ::fsync(file.handle()) != 0)
        return cannotWrite(file);
    return {};
}

Trouble readBack(const QString &path, const BackupSummary &written, const Progress &progress)
{
    QFile file(path);
    BackupSummary found;
    if (!file.open(QIODevice::ReadOnly) || !VerifyBackup(file, found, progress).isEmpty() || found != written)
        return QStringLiteral("The backup could not be read back as it was written. It was not kept.");
    return {};
}

} // namespace

Trouble WriteBackup(Connection *cnn, QIODevice &device, BackupSummary &summary, const Progress &progress)
{
    RowStream stream;
    if (!stream.connect(cnn->address()))
        return QStringLiteral("The database could not be read: %1.").arg(stream.error());
    BackupWriter writer(device);
    TableCopier copier(stream, writer, progress);
    if (!copier.copyAll())
        return stream.error().isEmpty() ? cannotWrite(device)
                                        : QStringLiteral("The database could not be read: %1.").arg(stream.error());
    if (!writer.finish())
        return cannotWrite(device);
    summary = {copier.tables(), writer.rows(), writer.checksum()};
    return {};
}

Trouble VerifyBackup(QIODevice &device, BackupSummary &summary, const Progress &progress)
{
    BackupReader reader(device);
    BackupPiece piece;
    int tables = 0;
    while (true) {
        const BackupReader::Step step = reader.next(piece);
        if (step == BackupReader::Step::Damaged)
            return damaged;
        if (step == BackupReader::Step::Finished)
            break;
        tables += piece.kind == BackupPiece::Kind::Table ? 1 : 0;
        progress(device.pos(), device.size());
    }
    summary = {tables, reader.rows(), reader.checksum()};
    return {};
}

Trouble BackUpToFolder(Connection *cnn, const QString &folder, QString &file, const Progress &progress)
{
    const QString path = freshName(QDir(folder));
    const QString unfinished = path + QStringLiteral(".part");
    BackupSummary written;
    Trouble trouble = writeFile(cnn, unfinished, written, progress);
    if (trouble.isEmpty())
        trouble = readBack(unfinished, written, progress);
    if (trouble.isEmpty() && !QFile::rename(unfinished, path)) // never replaces a file
        trouble = QStringLiteral("The backup could not be given its name %1.").arg(path);
    if (!trouble.isEmpty())
        QFile::remove(unfinished);
    else
        file = path;
    return trouble;
}

Trouble RestoreBackup(Connection *cnn, QIODevice &device, const Progress &progress)
{
    ScratchTables scratch(cnn);
    BackupReader reader(device);
    BackupPiece piece;
    while (true) {
        const BackupReader::Step step = reader.next(piece);
        if (step == BackupReader::Step::Finished)
            break;
        if (step == BackupReader::Step::Damaged)
            return damaged;
        const bool taken = piece.kind == BackupPiece::Kind::Table
                               ? scratch.create(piece.table, piece.definition, static_cast<int>(piece.columns))
                               : scratch.insert(piece.values);
        if (!taken)
            return QStringLiteral("The database did not take the rows of the backup. Nothing was changed.");
        progress(device.pos(), device.size());
    }
    if (!scratch.swap())
        return QStringLiteral("The restored tables could not be put in place. Nothing was changed.");
    return {};
}
