#pragma once

class Connection;

/// The steps of the updater that bring the tables of the clients up to date, in the order in which they run.

void AddInfoColumns(Connection *connection);    ///< columns of `FBT_Info` that later versions added
void ConvertSurcharge(Connection *connection);  ///< old status codes, and the surcharge by year, where none is stored
void MoveSignatories(Connection *connection);   ///< signatories from `FBT_Info` to `FBT_SignDet`, once
void AddChallanColumns(Connection *connection); ///< columns of `FBT_Challan`
void ClearQuarters(Connection *connection);     ///< only advance tax has a quarter
void AddAddInfoColumns(Connection *connection); ///< columns of `FBT_AddInfo`
