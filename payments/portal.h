#pragma once

#include "platform/offer.h"
#include "records/payer.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

/// The tax authority's payment portal: what tells its pages apart and how its challan form is filled. Its pages may change
/// at any time; all that is known of them stands here.

/// A page of the browser as it stands. The texts come from outside.
struct FBT_OFFERED PortalPage
{
    bool complete = false;
    QString title;
    QString location;
    bool hasForm = false; ///< the form of the challan, with its last element

    /// The server was not reached: a page of the portal's or of the browser's own says so.
    [[nodiscard]] bool isFailure() const;
};

/// Whether a text can be the address of the portal, which a browser can go to.
FBT_OFFERED bool IsPortalAddress(const QString &portal);

/// Address of the start page.
FBT_OFFERED QString StartAddress(const QString &portal);

/// What the address of the page with the form begins with.
FBT_OFFERED QString ChallanAddress(const QString &portal);

FBT_OFFERED bool IsStartPage(const PortalPage &page, const QString &portal);
FBT_OFFERED bool IsChallanPage(const PortalPage &page, const QString &portal);

/// Scripts to be run in a page, and what their answers say.
FBT_OFFERED QString PageScript();
FBT_OFFERED PortalPage PageFrom(const QJsonValue &answer);
FBT_OFFERED QString OpenChallanScript(); ///< answers true when the element was there
FBT_OFFERED QString FocusScript();
/// Fills the form by the arguments of `ChallanValues` and answers the names of the elements that it could not fill.
FBT_OFFERED QString FillScript();

/// Party and heads of a challan, as the form names them. Amounts, bank and number are left to the user.
/// @param typeIndex place in the list of payment types, -1 when none is chosen: no minor head is then marked
FBT_OFFERED QJsonArray ChallanValues(const PayerDetails &payer, int year, int typeIndex);
