#pragma once

class QComboBox;
class QLabel;
class QMainWindow;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QWidget;

/// The widgets of the main window under their object names, and where they stand. The settings pages fill in their
/// combo boxes themselves.
class MainWindowForm
{
public:
    explicit MainWindowForm(QMainWindow *window);

    // Top band
    QPushButton *pushButton_logo;
    QPushButton *pushButton_connection;
    QLabel *label_deviceStatus;
    QLabel *label_deviceFirmware;
    QPushButton *pushButton_menu;
    QPushButton *pushButton_minimizeWindow;
    QPushButton *pushButton_closeWindow;

    // Page bar
    QPushButton *pushButton_settingsTab;
    QPushButton *pushButton_presetsTab;
    QPushButton *pushButton_midiDevicesTab;
    QPushButton *pushButton_midiMidiIn;
    QPushButton *pushButton_midiExpressionPedal;
    QPushButton *pushButton_midiSwitchOut;
    QPushButton *pushButton_previewTab;

    // Pages
    QWidget *widget_settings;
    QWidget *widget_presets;
    QTableWidget *tableWidget_midiDevices;
    QWidget *widget_midiIn;
    QWidget *widget_expressionPedal;
    QWidget *widget_switchOut;
    QWidget *widget_preview;

    // Presets page
    QPushButton *pushButton_footswitchFunctionTab;
    QPushButton *pushButton_loopsTab;
    QPushButton *pushButton_switchTab;
    QPushButton *pushButton_midiTab;
    QPushButton *pushButton_wahPads;
    QTableWidget *tableWidget_footswitchFunction;
    QTableWidget *tableWidget_loops;
    QTableWidget *tableWidget_switch;
    QTableWidget *tableWidget_midi;
    QTableWidget *tableWidget_wahPads;

    // Firmware upload
    QLabel *label_loading;
    QLabel *label_loadingText;
    QProgressBar *progressBar_loading;

    // Settings pages
    QComboBox *comboBox_loopsSplit;
    QComboBox *comboBox_keyboardType;
    QComboBox *comboBox_clickProtection;
    QComboBox *comboBox_oneTimeModeMidiSend;
    QComboBox *comboBox_recallUserBanksOnly;
    QComboBox *comboBox_bankPresetChangeMode;
    QComboBox *comboBox_presetChangeName;
    QComboBox *comboBox_wahPad1;
    QComboBox *comboBox_wahPad2;
    QComboBox *comboBox_channel;
    QComboBox *comboBox_PCFunction;
    QComboBox *comboBox_CCFunction;
    QComboBox *comboBox_period;
    QComboBox *comboBox_characteristic;
    QComboBox *comboBox_toeUpValue;
    QComboBox *comboBox_toeDownValue;
    QComboBox *comboBox_calibrationUpValue;
    QComboBox *comboBox_calibrationDownValue;
    QComboBox *comboBox_calibrationInversion;
    QComboBox *comboBox_onTheFlyMode;
    QComboBox *comboBox_midiDeviceNumber;
    QComboBox *comboBox_controllerNumber;
    QComboBox *comboBox_switchOut[6];

private:
    void makeTopBand();
    void makePageBar();
    void makePages();
    void makePresetsPage();
    void makeBusyDisplay();

    QWidget *body;  // the central widget: everything stands on it
};
