#pragma once

#include "simulator/unitport.h"

#include <QDir>
#include <QString>

#include <functional>

class MainWindow;
class QWidget;

/// Drives the real main window as a user would, by clicks, choices and typing. After each step it asks the virtual
/// unit's memory whether it holds the value, and prints one line; every page and dialog is saved as a picture.
class Tour
{
public:
    /// Pictures go to `directory`, which is made if it is missing.
    Tour(MainWindow &editor, UnitPort &virtualUnit, const QString &directory);

    /// Ends the program with EXIT_FAILURE at the first step that fails, since the later ones build upon it.
    void run();

private:
    void connection();
    void settingsPage();
    void midiInPage();
    void expressionPedalPage();
    void switchOutPage();
    void footswitchTable();
    void loopsTable();
    void switchTable();
    void wahPadsTable();
    void midiDevicesTable();
    void midiTable();
    void previewPage();
    void refusedChange();
    void lostUnit();
    void informationWindows();
    void firmwareUpload();

    /// One step is done when `reached` holds; it fails when that takes longer than a few seconds.
    void check(const QString &step, const std::function<bool()> &reached);
    [[noreturn]] void fail(const QString &step);
    /// The same, for what the unit holds.
    void checkUnit(const QString &step, const std::function<bool(const UnitMemory &)> &holds);
    void picture(const QString &name, QWidget *widget = nullptr);
    /// Runs `open` and, once a modal dialog is there, `act` on it.
    void withDialog(const std::function<void()> &open, const std::function<void(QWidget &dialog)> &act);

    /// The first preset of bank 0 with that function.
    int presetWith(FootswitchType function) const;
    void click(const char *button);
    void choose(const char *box, const QString &item);

    MainWindow &window;
    UnitPort &unit;
    QDir pictures;
    int pictureCount = 0;
    int passedSteps = 0;
};
