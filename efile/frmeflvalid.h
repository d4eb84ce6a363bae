#pragma once

#include "controls/screen.h"
#include "efile/errorplace.h"
#include "efile/filedreturn.h"
#include "platform/offer.h"

#include <functional>
#include <memory>

namespace Ui {
class frmeflvalid;
}

struct LocatedError;
struct XmlSchema;

/// What became of a validation.
enum class Validation { Failed = 0, Errors = 1, Valid = 2 };

/// The errors of a file for the department: the list with the place of each in the form, the file with its bad lines
/// marked, the way to the screen where a value is typed, and the replacement of special characters.
///
/// It is loaded hidden, validates, and is shown modally when there are errors. One of three frames shows: `fam1` (errors),
/// `famview` (file) and `fam2` (characters).
class FBT_OFFERED frmeflvalid : public Screen
{
    Q_OBJECT

public:
    explicit frmeflvalid(QWidget *parent = nullptr);
    ~frmeflvalid() override;

    /// Validates a file.
    /// @param Xsd for form 3B the file of the schema, for ITR-8 the folder of the schemas with a slash at its end
    /// @param Form empty for form 3B, else "ITR-8"; its schemas are those of the year in hand
    Validation VALIDFILE(const QString &Xsd, const QString &FileName, const QString &Form);
    [[nodiscard]] Validation lastValidation() const { return m_last; }

    /// For a file that nobody keeps: characters cannot be replaced in it, and no return screen waits for it.
    void setForCheckOnly();
    /// What was written to the file: it names the payment or account of an error.
    void setFiled(const FiledReturn &filed);
    /// How the file is written anew after a value was corrected on another screen; false when it could not be.
    void setWriteAgain(std::function<bool()> write) { m_writeAgain = std::move(write); }
    /// The control of the return screen that the user asked for; empty without one.
    [[nodiscard]] QString wantedField() const { return m_wantedField; }
    [[nodiscard]] int errorCount() const;

    void FORM_LOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;
    bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers) override;

private:
    void setUpGrids();
    void setUpDescription();
    void connectControls();
    void showFrame(QWidget *frame, QWidget *focus);
    void clearErrors();
    void setChecks();
    [[nodiscard]] FileForm fileForm() const;
    [[nodiscard]] std::vector<XmlSchema> schemas() const;
    void readFile();
    void tellSource(int row, const LocatedError &error);
    void markLines();
    void fitGrids();
    void fitFile();
    void CHECK1_CLICK(int Index);
    void VSF_ROWCOLCHANGE();
    void VSF_DBLCLICK();
    void VSF_KEYPRESS(int KeyAscii);
    void CMDGOTO_CLICK();
    void CMDVIEW_CLICK();
    void CMDNEXTERR_CLICK();
    void CMDPREVERR_CLICK();
    void CMDPREVIEW_CLICK();
    void ERRORREPORT();
    void CMDREMSPCH_CLICK();
    void CMDADD_CLICK();
    void CMDDEL_CLICK();
    bool editReplacement();
    void CMDOK_CLICK();
    void selectLine(int row);
    [[nodiscard]] bool isMarked(int row) const;
    void validateAgain();
    void tellFailure();

    std::unique_ptr<Ui::frmeflvalid> ui;
    QString ValidXsd;
    QString ValidFileName;
    QString ValidForm;
    std::function<bool()> m_writeAgain;
    std::vector<ReturnPlace> m_places; // by the data of the rows of vsf, from 1 on
    FiledReturn m_filed;
    bool m_checkOnly = false;
    QString m_wantedField;
    bool m_cut = false;    // the parser could not read on after the last error
    int m_longestLine = 0; // characters, of the file that vsfv shows
    Validation m_last = Validation::Failed;
};
