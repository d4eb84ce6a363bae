#include "suite/datacare/backupfile.h"

#include <QDataStream>
#include <QtEndian>

namespace {

const QByteArray mark = QByteArrayLiteral("PELKFBT-BACKUP-1\n");
constexpr qsizetype batchBytes = 262144; // of values in one piece
constexpr quint32 largestPiece = 536870912;
constexpr qsizetype checksumBytes = 32;

/// Length that a compressed piece says it has when it is unpacked.
quint32 unpackedLength(const QByteArray &packed)
{
    return packed.size() < 4 ? largestPiece + 1 : qFromBigEndian<quint32>(packed.constData());
}

} // namespace

BackupWriter::BackupWriter(QIODevice &device)
    : m_device(device)
{
    put(mark);
}

bool BackupWriter::put(const QByteArray &bytes)
{
    m_ok = m_ok && m_device.write(bytes) == bytes.size();
    return m_ok;
}

bool BackupWriter::piece(const QByteArray &payload)
{
    constexpr int quick = 1;
    m_hash.addData(payload);
    const QByteArray packed = qCompress(payload, quick);
    QByteArray length(sizeof(quint32), '\0');
    qToBigEndian(static_cast<quint32>(packed.size()), length.data());
    return put(length) && put(packed);
}

bool BackupWriter::table(const QString &name, const QString &definition, int columns)
{
    if (!flushRows())
        return false;
    QByteArray payload;
    QDataStream(&payload, QIODevice::WriteOnly)
        << static_cast<quint8>(BackupPiece::Kind::Table) << name << definition << static_cast<quint32>(columns);
    return piece(payload);
}

bool BackupWriter::row(const QByteArrayList &values)
{
    m_batch += values;
    for (const QByteArray &value : values)
        m_batchBytes += value.size() + 4;
    ++m_rows;
    return m_batchBytes < batchBytes ? m_ok : flushRows();
}

bool BackupWriter::flushRows()
{
    if (m_batch.isEmpty())
        return m_ok;
    QByteArray payload;
    QDataStream(&payload, QIODevice::WriteOnly) << static_cast<quint8>(BackupPiece::Kind::Rows) << m_batch;
    m_batch.clear();
    m_batchBytes = 0;
    return piece(payload);
}

bool BackupWriter::finish()
{
    if (!flushRows())
        return false;
    QByteArray payload;
    QDataStream(&payload, QIODevice::WriteOnly)
        << static_cast<quint8>(BackupPiece::Kind::End) << static_cast<quint64>(m_rows);
    return piece(payload) && put(m_hash.result());
}

BackupReader::BackupReader(QIODevice &device)
    : m_device(device)
{
}

BackupReader::Step BackupReader::next(BackupPiece &piece)
{
    if (m_ended)
        return Step::Finished;
    if (!m_marked && m_device.read(mark.size()) != mark)
        return Step::Damaged;
    m_marked = true;
    QByteArray payload;
    if (!readPayload(payload) || !decode(payload, piece))
        return Step::Damaged;
    if (piece.kind != BackupPiece::Kind::End)
        return Step::Piece;
    m_ended = endsWell(piece.totalRows);
    return m_ended ? Step::Finished : Step::Damaged;
}

bool BackupReader::readPayload(QByteArray &payload)
{
    const QByteArray length = m_device.read(sizeof(quint32));
    if (length.size() != sizeof(quint32))
        return false;
    const quint32 size = qFromBigEndian<quint32>(length.constData());
    if (size > largestPiece)
        return false;
    const QByteArray packed = m_device.read(size);
    if (packed.size() != static_cast<qsizetype>(size) || unpackedLength(packed) > largestPiece)
        return false;
    payload = qUncompress(packed);
    m_hash.addData(payload);
    return !payload.isEmpty();
}

bool BackupReader::decode(const QByteArray &payload, BackupPiece &piece)
{
    QDataStream stream(payload);
    quint8 kind = 0;
    stream >> kind;
    piece = BackupPiece();
    piece.kind = static_cast<BackupPiece::Kind>(kind);
    if (piece.kind == BackupPiece::Kind::Table) {
        stream >> piece.table >> piece.definition >> piece.columns;
        m_columns = piece.columns;
        return stream.status() == QDataStream::Ok && m_columns > 0;
    }
    if (piece.kind == BackupPiece::Kind::End) {
        stream >> piece.totalRows;
        return stream.status() == QDataStream::Ok;
    }
    if (piece.kind != BackupPiece::Kind::Rows || m_columns == 0)
        return false;
    stream >> piece.values;
    const quint64 values = static_cast<quint64>(piece.values.size());
    m_rows += values / m_columns;
    return stream.status() == QDataStream::Ok && values % m_columns == 0;
}

bool BackupReader::endsWell(quint64 totalRows)
{
    const QByteArray sum = m_device.read(checksumBytes);
    return totalRows == m_rows && sum == m_hash.result() && m_device.atEnd();
}
