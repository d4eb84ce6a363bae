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
const QString notTaken = QStringLiteral("The database did not take the rows of the backup. Nothing was changed.");

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

bool writeFile(Connection *cnn, const QString &path, BackupSummary &summary, const Progress &progress, QString *why)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::WriteOnly);
    KeepPrivate(path);
    if (opened && !WriteBackup(cnn, file, summary, progress, why))
        return false;
    if (opened && file.flush() && ::fsync(file.handle()) == 0)
        return true;
    *why = cannotWrite(file);
    return false;
}

bool readBack(const QString &path, const BackupSummary &written, const Progress &progress, QString *why)
{
    QFile file(path);
    BackupSummary found;
    if (file.open(QIODevice::ReadOnly) && VerifyBackup(file, found, progress, why) && found == written)
        return true;
    *why = QStringLiteral("The backup could not be read back as it was written. It was not kept.");
    return false;
}

/// Gives a backup its name; never replaces a file.
bool nameIt(const QString &unfinished, const QString &path, QString *why)
{
    if (QFile::rename(unfinished, path))
        return true;
    *why = QStringLiteral("The backup could not be given its name %1.").arg(path);
    return false;
}

/// Loads all rows of a backup into the scratch tables.
bool load(BackupReader &reader, ScratchTables &scratch, const std::function<void()> &progress, QString *why)
{
    BackupPiece piece;
    while (true) {
        const BackupReader::Step step = reader.next(piece);
        if (step == BackupReader::Step::Finished)
            return true;
        const bool whole = step == BackupReader::Step::Piece;
        const bool taken =
            whole && (piece.kind == BackupPiece::Kind::Table
                          ? scratch.create(piece.table, piece.definition, static_cast<int>(piece.columns))
                          : scratch.insert(piece.values));
        if (!taken) {
            *why = damaged;
            if (whole)
                *why = scratch.refusal().isEmpty() ? notTaken : scratch.refusal();
            return false;
        }
        progress();
    }
}

} // namespace

bool WriteBackup(Connection *cnn, QIODevice &device, BackupSummary &summary, const Progress &progress, QString *why)
{
    RowStream stream;
    const bool connected = stream.connect(cnn->address());
    BackupWriter writer(device);
    TableCopier copier(stream, writer, progress);
    if (connected && copier.copyAll() && writer.finish()) {
        summary = {copier.tables(), writer.rows(), writer.checksum()};
        return true;
    }
    *why = stream.error().isEmpty() ? cannotWrite(device)
                                    : QStringLiteral("The database could not be read: %1.").arg(stream.error());
    return false;
}

bool VerifyBackup(QIODevice &device, BackupSummary &summary, const Progress &progress, QString *why)
{
    BackupReader reader(device);
    BackupPiece piece;
    int tables = 0;
    while (true) {
        const BackupReader::Step step = reader.next(piece);
        if (step == BackupReader::Step::Finished)
            break;
        if (step == BackupReader::Step::Damaged) {
            *why = damaged;
            return false;
        }
        tables += piece.kind == BackupPiece::Kind::Table ? 1 : 0;
        progress(device.pos(), device.size());
    }
    summary = {tables, reader.rows(), reader.checksum()};
    return true;
}

bool BackUpToFolder(Connection *cnn, const QString &folder, QString &file, const Progress &progress, QString *why)
{
    const QString path = freshName(QDir(folder));
    const QString unfinished = path + QStringLiteral(".part");
    BackupSummary written;
    const bool done = writeFile(cnn, unfinished, written, progress, why) &&
                      readBack(unfinished, written, progress, why) && nameIt(unfinished, path, why);
    if (done)
        file = path;
    else
        QFile::remove(unfinished);
    return done;
}

bool RestoreBackup(Connection *cnn, QIODevice &device, const Progress &progress, QString *why)
{
    ScratchTables scratch(cnn);
    BackupReader reader(device);
    if (!load(
            reader, scratch, [&] { progress(device.pos(), device.size()); }, why))
        return false;
    if (scratch.swap())
        return true;
    *why = QStringLiteral("The restored tables could not be put in place. Nothing was changed.");
    return false;
}
