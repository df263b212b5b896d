#pragma once

#include "controller/devicecontroller.h"
#include "controller/history.h"
#include "controller/requestqueue.h"
#include "ui/dialogs/aboutwindow.h"
#include "ui/dialogs/guidewindow.h"
#include "ui/dialogs/installdriverswindow.h"
#include "ui/shell/mainwindowform.h"
#include "ui/shell/workfile.h"
#include "ui/windowdrag.h"

#include <QIcon>
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QThread>
#include <QTimer>
#include <QVector>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class Arranging;
class BankTable;
class ComboBox;
class DeviceArranging;
class LibraryWidget;
class PresetChanging;
class PreviewWidget;
class QMenu;
class SettingsPage;
class TabFootswitchFunction;
class TabLoops;
class TabMidi;
class TabMidiDevices;
class TabSwitch;
class TabWahPads;
class UnitFiles;

/// The editor's one window. It owns the worker thread and the device controller on it, the tabs and the dialogs, and
/// wires them together; it shows the pages, the connection, errors and the menu.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Starts the search for a unit on the ports that `listPorts` names (called on the worker thread). Without
    /// `makeUnit` no file can be worked on.
    explicit MainWindow(PortLister listPorts = systemPortLocations, QWidget *parent = nullptr,
                        DeviceController::Timeouts timeouts = {}, InnerUnitMaker makeUnit = {});
    ~MainWindow() override;

    /// Works on this `.kora` file instead of a unit; tells why it cannot be.
    void workOn(const QString &path) { workFile->open(path); }

    // Most of them lead to the slot of the controller that has the same name.
signals:
    /// A unit was found, and everything shows this model from now on.
    void connected(DataFromDevice *data);
    void searchForDevice();
    void getMidiDevicesData();
    void getSettings();
    void getMidiIn();
    void getExpressionPedal();
    void getSwitchOut();

    void changeLoopsSplit(bool on);
    void changeKeyboardType(KeyboardType type);
    void changeClickProtection(ClickProtection level);
    void changeOneTimeMidiModeSend(bool on);
    void changeRecallUserBanksOnly(bool on);
    void changeBankPresetChangeMode(BankPresetChangeMode mode);
    void changePresetChangeName(PresetChangeName when);
    void changeWahPad1(WahPadSetting setting);
    void changeWahPad2(WahPadSetting setting);

    void changeChannel(int channel);
    void changePCFunction(MidiInPCFunction function);
    void changeCCFunction(MidiInCCFunction function);

    void changePeriod(ExpressionPedalPeriod period);
    void changeCharacteristic(ExpressionPedalCharacteristic characteristic);
    void changeToeUp(int value);
    void changeToeDown(int value);
    void changeMidiDeviceNumber(int number);
    void changeControllerNumber(int controller);

    void changeSwitchOut(SwitchOutSetting setting, int number);

    void updateFirmwareSignal(const QString &path);

public slots:
    // What the controller has told
    void deviceFound(DataFromDevice *newData);
    void gotError(const QString &text);

    void gotSettings();
    void gotMidiDevicesData();
    void gotMidiIn();
    void gotExpressionPedal();
    void gotSwitchOut();

    /// Asks for a firmware image, makes a safety copy and uploads it.
    void updateFirmware();
    void updateComplete();
    void updateFailed();

    void on_pushButton_settingsTab_clicked();
    void on_pushButton_presetsTab_clicked();
    void on_pushButton_midiDevicesTab_clicked();
    void on_pushButton_midiMidiIn_clicked();
    void on_pushButton_midiExpressionPedal_clicked();
    void on_pushButton_midiSwitchOut_clicked();
    void on_pushButton_previewTab_clicked();
    void on_pushButton_libraryTab_clicked();
    void on_pushButton_footswitchFunctionTab_clicked();
    void on_pushButton_loopsTab_clicked();
    void on_pushButton_switchTab_clicked();
    void on_pushButton_midiTab_clicked();
    void on_pushButton_wahPads_clicked();
    void on_pushButton_connection_clicked();
    void on_pushButton_logo_clicked();
    void on_pushButton_menu_clicked();
    void on_pushButton_minimizeWindow_clicked();
    void on_pushButton_closeWindow_clicked();
    /// Switches the traffic log off and on.
    void toggleLog();
    void showGuide();

    // The user has chosen an item of a setting's box.
    void loopsSplitChanged(int index);
    void keyboardTypeChanged(int index);
    void clickProtectionChanged(int index);
    void oneTimeModeMidiSendChanged(int index);
    void recallUserBanksOnlyChanged(int index);
    void bankPresetChangeModeChanged(int index);
    void presetChangeNameChanged(int index);
    void wahPad1Changed(int index);
    void wahPad2Changed(int index);

    void channelChanged(int index);
    void pcFunctionChanged(int index);
    void ccFunctionChanged(int index);

    void periodChanged(int index);
    void characteristicChanged(int index);
    void toeUpChanged(int index);
    void toeDownChanged(int index);
    void midiDeviceNumberChanged(int index);
    void controllerNumberChanged(int index);

    void switchOut1Changed(int index);
    void switchOut2Changed(int index);
    void switchOut3Changed(int index);
    void switchOut4Changed(int index);
    void switchOut5Changed(int index);
    void switchOut6Changed(int index);

    /// Keys for undo and redo are the window's, except in a text edit that is being changed. The words DEVICE
    /// DISCONNECTED open the same help as the plug.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    /// A box of a global setting, and how it shows what the model holds.
    struct SettingBox
    {
        SettingId id;
        ComboBox *box;
        std::optional<int> (*shownItem)(const DataFromDevice &model);  ///< nothing until the record is read
    };
    using SettingSlot = void (MainWindow::*)(int index);

    // mainwindow.cpp: the shell
    void connectButtons();
    void makeMenu();
    void makeController();
    void stopWorker();
    bool isConnected() const;
    void showDisconnected();
    /// Why nothing can be sent now; empty when it can.
    QString obstacle() const;
    void tellUndelivered(const QStringList &changes);
    /// Brings back what the model holds, wherever a choice was made that could not be sent.
    void showStored();
    /// Of the presets page, also while another page covers it.
    std::size_t shownSubTab() const;
    void showPage(PageIndex index);
    void tabButtonClicked(PageIndex index);
    void showSubTab(SubTabIndex index);

    // mainwindow_keys.cpp: what the keyboard does anywhere in the window
    void makeKeys();
    void focusFirstEditor();
    /// Counts on from the first one behind the last; nothing while another page is shown.
    void goToSubTab(std::size_t index);
    /// Does what the Menu key does.
    void askForMenu();

    // mainwindow_settings.cpp: the global settings pages
    void makeSettingsPages();
    void makeSettingsPage();
    void makeMidiInPage();
    void makePedalPage();
    void makeSwitchOutPage();
    /// Adds a setting's box. Without a slot of its own a choice goes straight to the controller, as the row says.
    template <auto Member>
    ComboBox *addSetting(SettingsPage &page, const char *objectName, const QString &help,
                         SettingSlot changed = nullptr);
    template <auto Member>
    static QString settingWords()
    {
        return QStringLiteral("%1: %2").arg(QLatin1String(Table<RecordOf<Member>>::place),
                                            QLatin1String(rowOf<Member>().name));
    }
    void connectSettings();
    template <typename Record>
    void showGlobal();
    void fillControllers(int deviceIndex);
    void requestShownSettings();

    // mainwindow_tabs.cpp: the preset editor's tabs and the preview
    void makeTabs();
    void connectTabs();
    void connectBanks();
    void connectPreview();
    void connectBankChanges();
    void connectMidi();
    /// Names of banks and presets that are edited there are changes.
    template <typename View>
    void connectNames(View *view);
    void requestOtherBanks();
    void bankReadFailed(int bank);
    /// A table or the preview that comes up shows the bank that was chosen last in another.
    template <typename View>
    void showChosenBank(View &view)
    {
        view.follow(chosenBank);
        view.retry();
    }

    // mainwindow_library.cpp: the library
    void makeLibrary();
    void connectLibrary();
    /// Shows where these values stand in the library if that is shown, and none of them stands elsewhere.
    bool showInLibrary(const std::vector<Difference> &values);
    /// Goes to a bank on the presets page.
    void openBank(int bank);
    /// All tables and the preview go to a bank.
    void jumpTo(int bank);

    // mainwindow_firmware.cpp: the firmware upload
    void connectFirmware();
    bool confirmsEmptyImage(const QString &path);
    void showBusy();
    void hideBusy();
    /// The veil keeps the mouse away, this the keyboard.
    void setVeiled(bool veiled);

    // mainwindow_transfer.cpp: what reads and writes many records, and its veil
    /// Makes the parts that do so, and fills the three submenus.
    void makeUnitFiles(QMenu &backup, QMenu &restore, QMenu &reset);
    QString unitName() const;
    /// A file of a unit that is dropped anywhere on the window is restored from; true for an event of such a drag.
    bool takesFile(QEvent *event);
    void showTransfer(const QString &text);
    void hideTransfer();

    // mainwindow_workfile.cpp: work without the unit
    std::unique_ptr<WorkFile> makeWorkFile(PortLister listUnits, InnerUnitMaker makeUnit);
    /// Shows what is connected: a unit, or the file that is worked on.
    void showConnected();

    // mainwindow_history.cpp: undo and redo
    void connectHistory();
    /// Whether the user may undo and redo now.
    bool canChange() const { return isConnected() && !isVeiled; }
    void showHistory();
    /// The button for undo or redo, if it has the focus.
    QPushButton *focusedButton() const;
    void openHistory();
    /// Shows the page, sub-tab and bank of the first value, and lights up where it and those beside it stand.
    void showValues(const std::vector<Difference> &values);
    /// Where a value is edited.
    struct EditorPlace
    {
        PageIndex page;
        SubTabIndex subTab;  ///< of the presets page
        int bank;            ///< of the presets page
        QWidget *editor;
    };
    EditorPlace placeOf(const Difference &value) const;
    EditorPlace placeOfBank(const Difference &value) const;
    std::pair<SubTabIndex, int> columnOfPreset(const Difference &value) const;
    void tellStayed(const QStringList &places);

    QThread workerThread{this};
    std::unique_ptr<WorkFile> workFile;
    std::unique_ptr<DeviceController> controller;  // lives on the worker thread
    RequestQueue requests;
    History history;
    AboutWindow aboutWindow;
    GuideWindow guideWindow;
    InstallDriversWindow installDriversWindow;
    MainWindowForm ui;
    WindowDrag drag;
    QMenu *menu = nullptr;
    QAction *firmwareEntry = nullptr;
    QTimer slowChange;  ///< runs out when a change takes long
    const QIcon plugGreen{QStringLiteral(":/images/usb-green.png")};
    const QIcon plugRed{QStringLiteral(":/images/usb-red.png")};
    const QIcon fileBlue{QStringLiteral(":/images/file-blue.png")};
    const QIcon fileOrange{QStringLiteral(":/images/file-orange.png")};
    std::unique_ptr<TabFootswitchFunction> tabFootswitchFunction;
    std::unique_ptr<TabLoops> tabLoops;
    std::unique_ptr<TabSwitch> tabSwitch;
    std::unique_ptr<TabWahPads> tabWahPads;
    std::unique_ptr<TabMidi> tabMidi;
    std::unique_ptr<TabMidiDevices> tabMidiDevices;
    std::array<BankTable *, SubTabCount> bankTables{};
    std::unique_ptr<UnitFiles> files;
    std::unique_ptr<Arranging> arranging;
    std::unique_ptr<DeviceArranging> deviceArranging;
    std::unique_ptr<PresetChanging> presetChanging;
    PreviewWidget *preview = nullptr;  // a child of its page
    LibraryWidget *library = nullptr;  // as well
    std::vector<SettingBox> settingBoxes;
    QVector<ComboBox *> switchOutBoxes;
    ComboBox *pedalDevice = nullptr;
    ComboBox *pedalController = nullptr;
    int chosenBank = 0;
    DataFromDevice *data = nullptr;  // the controller's; null until a unit was found
    QPointer<QWidget> focusBeforeVeil;
    bool isUploading = false;
    bool isVeiled = false;
    bool isStepVeiled = false;  // by a step of the history
    bool isClosing = false;
};
