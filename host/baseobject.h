#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QString>

class Connection;
class QComboBox;
class QWidget;

/// The base object (`WexaBase.ClsMain`): the client and year in hand, settings, data care and the suite's own screens.
class FBT_OFFERED BaseObject : public SuiteObject
{
public:
    QString AppPath;              ///< application folder, without a slash at the end
    QString vTmpPath;             ///< temporary folder
    Connection *CnnObj = nullptr; ///< the one shared connection
    QString code;                 ///< current client's `Code_No`
    int TYear = 0;                ///< current assessment year by its first calendar year, 0 before the first choice
    int status = 0;               ///< current client's `ClStatus`, -1 when it is `Null`
    QString Cap;                  ///< caption tail of screens: " of NAME for the Assessment Year 2008-2009"
    double vScreenRatX = 1;       ///< width of the screen in units of 1024 pixels
    double vScreenRatY = 1;       ///< height of the screen in units of 768 pixels
    double vScreenRatFS = 1;      ///< ratio of the font size

    /// Reads the screen size into the three ratios.
    virtual void GetScreenReso() = 0;
    /// Fits a form to the screen: never larger than what is free, its remembered size if it has one.
    virtual void Resize_For_Resolution(QWidget *form) = 0;

    [[nodiscard]] virtual QString GetSettingINI(const QString &section, const QString &key,
                                                const QString &defaultValue) const = 0;
    /// False when the file could not be written.
    virtual bool SaveSettingINI(const QString &section, const QString &key, const QString &value) = 0;

    /// Writes one dated, compressed, verified file with all rows of all tables.
    virtual void BackUp() = 0;
    /// Restores such a file, all or nothing. True when the data was replaced.
    virtual bool Restoration() = 0;
    /// Checks and repairs the tables and reports what it did; deletes no row.
    virtual void RepairData(QWidget *form) = 0;

    virtual void ShowClDet() = 0;    ///< report of the client list
    virtual void ShowReturn() = 0;   ///< return register of a year
    virtual void ShowAddInfo() = 0;  ///< additional information, form of A.Y. 2006-07
    virtual void ShowAddInfo1() = 0; ///< additional information, later form
    virtual void ShowBankMas() = 0;  ///< the user's list of banks

    /// A typed date as `dd/mm/yyyy`, or empty when it is no date.
    [[nodiscard]] virtual QString ConvertDate(const QString &text) const = 0;
    /// Whole rupees in words on the Indian scale.
    [[nodiscard]] virtual QString ConvertToWord(double rupees) const = 0;
    /// Five letters, four digits, one letter, upper case; the empty text is accepted (a PAN may still be missing).
    [[nodiscard]] virtual bool ValidPan(const QString &text) const = 0;
    /// Fills a combo with the states of `Data/StateCodes.txt`, in the order of that file.
    virtual void LoadStateList(QComboBox *combo) const = 0;
    /// Rewrites a client code in all client tables but `FBT_Info`.
    virtual void ChangeCode(const QString &oldCode, const QString &newCode) = 0;
    /// Removes a client from all client tables, `FBT_Info` included.
    virtual void DeleteClient(const QString &clientCode) = 0;
};
