#pragma once

class QComboBox;

/// The assessment years that the master lists exist for, by their first calendar year, both inclusive.
constexpr int firstMasterYear = 2006;
constexpr int lastMasterYear = 2010;

/// Fills a combo with the years, "2006-07" to "2010-11". Nothing is selected and nothing is raised.
void FillYears(QComboBox *combo);

/// The year selected, 2006 for "2006-07"; 0 when none is.
int SelectedYear(const QComboBox *combo);

/// Selects a year by its first calendar year.
void SelectYear(QComboBox *combo, int year);
