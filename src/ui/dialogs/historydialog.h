#pragma once

#include "ui/dialogs/framelessdialog.h"

#include <QStringList>

class QListWidget;

/// What the user did, newest first, down to the beginning: each line is a state of the unit. The present one is marked;
/// what was taken back stands above it, greyed. exec() answers Accepted when the unit is to go to the chosen one.
class HistoryDialog : public FramelessDialog
{
    Q_OBJECT

public:
    /// `steps` in words, the oldest first; `position` of them are made.
    HistoryDialog(const QStringList &steps, int position, QWidget *parent);

    /// How many steps are made in the chosen state.
    int chosen() const;

public slots:
    void on_pushButton_goTo_clicked();
    void on_pushButton_cancel_clicked();

private:
    QListWidget *list;
};
