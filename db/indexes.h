#pragma once

#include "platform/offer.h"

class UpdateRun;

/// Adds the indexes that large databases need to those tables that are there and lack them. They refuse nothing and
/// change no answer: none is unique, and each leads from a whole key to its rows in the order in which they were written,
/// the order that a reading of the whole table gives.
FBT_OFFERED void CREATEINDEXES(UpdateRun &run);
