#pragma once

#include "simulator/unitport.h"

#include <QDir>
#include <QString>

#include <functional>
#include <vector>

class LibraryView;
class MainWindow;
class QWidget;

/// Drives the real main window as a user would, by clicks, choices and typing. After each step it asks the virtual
/// unit's memory whether it holds the value, and prints one line; every page and dialog is saved as a picture.
class Tour
{
public:
    /// Pictures go to `directory`, which is made if it is missing. Where `documented`, a folder, has one of the same
    /// name but without its number, both must show the same.
    Tour(MainWindow &editor, UnitPort &virtualUnit, const QString &directory, const QString &documented = {});

    /// Ends the program with EXIT_FAILURE at the first step that fails, since the later ones build upon it.
    void run();

private:
    void connection();
    // tour_pages.cpp
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
    // tour_library.cpp
    void libraryPage();
    void arrangePresets(LibraryView &table);
    /// Selects a cell and takes an entry of the library's menu.
    void chooseInLibrary(LibraryView &table, int bank, int column, const char *entry);
    void changeInSelection(LibraryView &table);
    void copyBankByFile(LibraryView &table);
    /// Undoes the last step.
    void takeBack();
    void saveSheets();
    void moveDevices();
    // tour_files.cpp
    void files();
    // tour_workfile.cpp
    void workOnAFile();
    void changeEveryPage(UnitContent &expected);
    void changePresets(UnitContent &expected);
    // tour_events.cpp
    void refusedChange();
    void informationWindows();
    void firmwareUpload();
    void lostUnit();

    /// One step is done when `reached` holds; it fails when that takes longer than a few seconds.
    void check(const QString &step, const std::function<bool()> &reached);
    [[noreturn]] void fail(const QString &step);
    /// The same, for what the unit holds.
    void checkUnit(const QString &step, const std::function<bool(const UnitMemory &)> &holds);
    /// Waits until what was asked for is read and changed.
    void awaitAnswers();
    void picture(const QString &name, QWidget *widget = nullptr);
    using Act = std::function<void(QWidget &dialog)>;
    /// Runs `open` and, on each modal dialog that comes, the next of `acts`.
    void withDialogs(const std::function<void()> &open, const std::vector<Act> &acts);
    void withDialog(const std::function<void()> &open, const Act &act) { withDialogs(open, {act}); }

    /// The first preset of bank 0 with that function.
    int presetWith(FootswitchType function) const;
    void click(const char *button);
    void choose(const char *box, const QString &item);
    /// Chooses an entry of the menu.
    void trigger(const char *entry);
    static Act chooseFile(const QString &path);
    /// Takes a picture of the dialog of differences and clicks on a button of it. Its summary begins with `summary`.
    Act answerDifferences(const QString &name, const char *button, const QString &summary = QString());
    Act closeBox(const QString &title);

    MainWindow &window;
    UnitPort &unit;
    QDir pictures;
    QString documents;
    int pictureCount = 0;
    int passedSteps = 0;
};
