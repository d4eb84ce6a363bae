#pragma once

#include "platform/offer.h"

#include <QString>

struct ReturnForm;

/// Prints form ITR-8: each page is a document of the year that is filled, saved in the working folder and appended to the
/// report in hand. A document that is missing or damaged costs what cannot be filled of it, is logged under the page's
/// procedure, and the next page is printed.

struct Itr8Job
{
    const ReturnForm &form;
    QString ITRDir;   ///< where the documents of the year lie
    QString TmpPath;  ///< where the filled ones are saved
    QString relation; ///< how the signatory stands to the father named, "Son of"
    bool blank = false;
    bool paymentsKnown = true; ///< the schedule of payments is whole; without it the page says nothing of payments
};

FBT_OFFERED void FORMITR_ACK(const Itr8Job &job);
FBT_OFFERED void FORMITR8_MAIN(const Itr8Job &job);
FBT_OFFERED void FORMITR_PARTC(const Itr8Job &job);
FBT_OFFERED void FORMITR_SCHFBI(const Itr8Job &job);
FBT_OFFERED void FORMITR_SCHFB(const Itr8Job &job);
FBT_OFFERED void FORMITR_SCHFBT(const Itr8Job &job);
