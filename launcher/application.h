#pragma once

#include "platform/offer.h"

#include <QApplication>

/// The program's application object. Its `notify` is the last net: what an event handler throws is logged, and the
/// program goes on.
class FBT_OFFERED Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;
};

/// Names the program, which also decides where its files lie. The application object does it by itself.
FBT_OFFERED void NameProgram();

/// Lets an interrupted or terminated program leave its event loop in order.
FBT_OFFERED void QuitOnSignals();
