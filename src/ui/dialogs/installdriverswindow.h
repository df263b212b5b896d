#pragma once

#include "ui/dialogs/framelessdialog.h"

#include <array>

/// Offers help when no unit can be found.
class InstallDriversWindow : public FramelessDialog
{
    Q_OBJECT

public:
    explicit InstallDriversWindow(QWidget *parent = nullptr);

public slots:
    /// There is no driver to install where the editor runs: shows the command that gives access to the port.
    void on_pushButton_installDrivers_clicked();

private:
    void makeCommand();

    std::array<QWidget *, 3> commandParts{};
};
