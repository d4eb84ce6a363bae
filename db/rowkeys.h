#pragma once

class UpdateRun;

/// Gives the hidden key (records/rowkey.h) to those tables of the module that lack it, and makes the table of locks.
void ADDROWKEYS(UpdateRun &run);
