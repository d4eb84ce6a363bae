#pragma once

#include "platform/offer.h"
#include "records/clientrow.h"
#include "suite/clientinfo/rowpanel.h"

/// The forms of the return that the additional information serves.
enum class ReturnForm {
    Form3B, ///< assessment year 2006-07
    Itr8,   ///< from assessment year 2007-08 on
};

/// The columns of `FBT_AddInfo` that a form needs, in groups.
FBT_OFFERED std::vector<FieldGroup> AddInfoGroups(ReturnForm form);

/// The columns of `FBT_MiscInf`, all of them, in groups.
FBT_OFFERED std::vector<FieldGroup> MiscInfGroups();
