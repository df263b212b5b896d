#pragma once

#include "ui/dialogs/framelessdialog.h"

/// Offers help when no unit can be found.
class InstallDriversWindow : public FramelessDialog
{
    Q_OBJECT

public:
    explicit InstallDriversWindow(QWidget *parent = nullptr);

public slots:
    /// There is no driver to install where the editor runs; the dialog says so.
    void on_pushButton_installDrivers_clicked();
};
