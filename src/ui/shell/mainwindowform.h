#pragma once

#include <QRect>
#include <QSize>

#include <array>

class QString;
class QLabel;
class QMainWindow;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QWidget;

enum PageIndex {
    SettingsPageIndex,
    PresetsPageIndex,
    MidiDevicesPageIndex,
    MidiInPageIndex,
    ExpressionPedalPageIndex,
    SwitchOutPageIndex,
    PreviewPageIndex,
    LibraryPageIndex,
    PageCount
};

enum SubTabIndex { FootswitchFunctionTab, LoopsTab, SwitchTab, MidiTab, WahPadsTab, SubTabCount };

struct Page
{
    QPushButton *button;
    QWidget *widget;
};

struct SubTab
{
    QPushButton *button;
    QTableWidget *table;
};

/// The widgets of the main window under their object names, and where they stand. The settings pages are laid
/// out elsewhere.
class MainWindowForm
{
public:
    static constexpr QSize windowSize{1322, 709};  ///< on a screen that has room for it

    explicit MainWindowForm(QMainWindow *window);

    // Top band
    QPushButton *pushButton_logo;
    QPushButton *pushButton_undo;
    QPushButton *pushButton_redo;
    QPushButton *pushButton_connection;
    QLabel *label_deviceStatus;
    QLabel *label_deviceFirmware;
    QLabel *label_pending;  ///< while a change takes long
    QLabel *label_noUnit;   ///< over the page
    QPushButton *pushButton_menu;
    QPushButton *pushButton_minimizeWindow;
    QPushButton *pushButton_closeWindow;

    // In the order of the page bar, and of the column on the presets page
    std::array<Page, PageCount> pages;
    std::array<SubTab, SubTabCount> subTabs;

    QWidget *page(PageIndex index) const { return pages[index].widget; }
    QTableWidget *table(SubTabIndex index) const { return subTabs[index].table; }

    // Firmware upload
    QLabel *label_loading;
    QLabel *label_loadingText;
    QProgressBar *progressBar_loading;

    // Transfer of a unit or a part of it, under the same veil
    QLabel *label_transfer;
    QProgressBar *progressBar_transfer;
    QPushButton *pushButton_cancelTransfer;

private:
    void makeTopBand();
    void makePages();
    QWidget *makePage(const char *name);
    /// This page is a table, as yet without rows.
    QWidget *makeDevicesPage(const char *name);
    void makeNoUnitStrip();
    void makePresetsPage();
    void makeBusyDisplay();
    QProgressBar *makeProgress(const char *name, const QRect &place, const QString &accessibleName);

    int lack;  ///< pixels that the screen has too few: the right edges are so much nearer
    QSize size;
    QRect pageArea;
    QWidget *body;  // the central widget: everything stands on it
};
