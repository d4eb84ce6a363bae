#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QCryptographicHash>
#include <QIODevice>
#include <QString>

/// A backup file: a mark, then compressed pieces each with its length in front - a table's definition, a batch of rows,
/// or the end with the number of rows - and at last a checksum over all pieces. A piece is held in memory at a time.

/// One piece of a backup.
struct BackupPiece
{
    enum class Kind : quint8 { Table = 1, Rows = 2, End = 3 };

    Kind kind = Kind::End;
    QString table;         ///< Table: its name
    QString definition;    ///< Table: the statement that creates it
    quint32 columns = 0;   ///< Table: number of its columns
    QByteArrayList values; ///< Rows: the values row by row, a null array for `Null`
    quint64 totalRows = 0; ///< End: rows of all tables
};

/// Writes a backup to a device. After a failure of the device all further calls fail.
class BackupWriter
{
public:
    explicit BackupWriter(QIODevice &device);

    bool table(const QString &name, const QString &definition, int columns);
    /// Adds one row with as many values as the table has columns.
    bool row(const QByteArrayList &values);
    bool finish();

    [[nodiscard]] quint64 rows() const { return m_rows; }
    [[nodiscard]] QByteArray checksum() const { return m_hash.result(); }

private:
    bool flushRows();
    bool piece(const QByteArray &payload);
    bool put(const QByteArray &bytes);

    QIODevice &m_device;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    QByteArrayList m_batch;
    qsizetype m_batchBytes = 0;
    quint64 m_rows = 0;
    bool m_ok = true;
};

/// Reads a backup from a device, from its start.
class BackupReader
{
public:
    enum class Step { Piece, Finished, Damaged };

    explicit BackupReader(QIODevice &device);

    /// Reads the next piece. Finished after the last one, when count and checksum agree; Damaged at the first thing
    /// that is not as it was written.
    Step next(BackupPiece &piece);

    [[nodiscard]] quint64 rows() const { return m_rows; }
    [[nodiscard]] QByteArray checksum() const { return m_hash.result(); }

private:
    bool readPayload(QByteArray &payload);
    bool decode(const QByteArray &payload, BackupPiece &piece);
    bool endsWell(quint64 totalRows);

    QIODevice &m_device;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    quint32 m_columns = 0;
    quint64 m_rows = 0;
    bool m_marked = false;
    bool m_ended = false;
};
