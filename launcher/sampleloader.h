#pragma once

#include "launcher/sample.h"

class Connection;

/// Stores a sample employer with all its years by the statements of the screens. The tables must be there.
/// @return false when a statement failed; the connection's fault handler was told why
bool StoreSample(Connection &connection, const SampleEmployer &employer);
