#pragma once

class QLineEdit;
class Screen;

/// Lets a field take amounts in rupees of up to 15 characters: what is no number keeps the user there with a message, a number gets two decimals
/// when the field is left.
void WatchAmount(Screen *screen, QLineEdit *field);

/// The same check and format at once. False, with the message shown and the focus on the field, when it holds no number.
bool TakeAmount(Screen *screen, QLineEdit *field);

/// Shows an amount with two decimals, none of its digits cut.
void ShowAmount(QLineEdit *field, double rupees);

/// The amount in a field, 0 when it is empty.
double AmountIn(const QLineEdit *field);
