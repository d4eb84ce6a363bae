#pragma once

class Grid;
class QLineEdit;
class QString;

/// Shows long texts on several lines: each row gets the height that its cells need.
void WrapRows(Grid *grid);

/// A running number in column 0.
void SetUpNumberColumn(Grid *grid);

/// Sets a text, which may be longer than its field, and shows its beginning.
void ShowFromStart(QLineEdit *field, const QString &text);

/// The width in pixels at which a caption takes four lines at most; never below a column of figures.
int CaptionWidth(const Grid *grid, const QString &caption);
