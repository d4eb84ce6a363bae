#pragma once

class UpdateRun;

/// The steps of the updater that bring the tables of the clients up to date, in the order in which they run.

void AddInfoColumns(UpdateRun &run);    ///< columns of `FBT_Info` that later versions added
void ConvertSurcharge(UpdateRun &run);  ///< old status codes, and the surcharge by year, where none is stored
void MoveSignatories(UpdateRun &run);   ///< signatories from `FBT_Info` to `FBT_SignDet`, once
void AddChallanColumns(UpdateRun &run); ///< columns of `FBT_Challan`
void ClearQuarters(UpdateRun &run);     ///< only advance tax has a quarter
void AddAddInfoColumns(UpdateRun &run); ///< columns of `FBT_AddInfo`
