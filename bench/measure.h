#pragma once

#include "platform/connection.h"
#include "platform/recordset.h"

#include <QByteArray>

#include <chrono>
#include <thread>
#include <vector>

/// What the benchmarks measure with.

template<typename Work>
double SecondsOf(Work work)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The statements that a piece of work sends.
template<typename Work>
std::vector<QByteArray> StatementsOf(Connection &connection, Work work)
{
    std::vector<QByteArray> statements;
    connection.setObserver([&](const QString &text) { statements.push_back(text.toUtf8()); });
    work();
    connection.setObserver({});
    return statements;
}

/// Waits until the server has written new rows to disk, so that this is not measured with the work.
inline void Settle(Connection &connection)
{
    connection.Execute(QStringLiteral("Set Global innodb_max_dirty_pages_pct=0"));
    const QString dirty = QStringLiteral("Select Variable_Value from information_schema.GLOBAL_STATUS Where "
                                         "Variable_Name='Innodb_buffer_pool_pages_dirty'");
    for (int tries = 0; tries < 600 && FirstField(&connection, dirty).num() > 0; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
}
