#pragma once

#include "bench/bareclient.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <functional>

/// What a computation for one client costs among many others.

constexpr int fewClients = 10;
constexpr int manyClients = 10000;
constexpr int measuredYear = 2008;
constexpr const char *measuredClient = "A1"; // a private company

/// Fills an empty database with the measured client and others, so many in all.
using FillClients = std::function<void(Connection &, int clients)>;

struct MeasuredWork
{
    FillClients fill;
    std::function<void()> prepare; ///< is run before each time, and not measured
    std::function<void()> work;    ///< for the client and year in hand
};

/// Measures the work for the one client among `state.range(0)`. Beside it, in turns so that all see the same load of the
/// machine, the same queries through the C client, and the same work among few clients: the counters `ratio_to_bare` and
/// `ratio_to_few_clients`, and `queries`. Afterwards the measured client is in hand.
void MeasureAmongClients(benchmark::State &state, const MeasuredWork &measured);
