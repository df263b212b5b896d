#pragma once

#include "model/records.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <map>
#include <memory>

/// A slot of the model: null until its record is read. A record that was stored is never written again, so a reader
/// loads the pointer once and works on what it holds, whatever the other thread stores meanwhile.
template <typename Record>
using Snapshot = std::atomic<std::shared_ptr<const Record>>;

/// Everything the editor knows about the connected unit. The controller's thread stores records, the user interface
/// loads them after the signal that announces them.
class DataFromDevice : public QObject
{
    Q_OBJECT

public:
    std::array<Snapshot<BankData>, bankCount> bankData;                               ///< by bank index
    std::array<std::array<Snapshot<PresetData>, presetCount>, bankCount> presetData;  ///< by bank, then preset index
    std::array<Snapshot<MidiDevice>, midiDeviceCount> midiDevices;                    ///< slot = device number - 1
    Snapshot<DeviceInfo> deviceInfo;
    Snapshot<Settings> settings;
    Snapshot<SwitchOutData> switchOutData;
    Snapshot<MidiInData> midiInData;
    Snapshot<ExpressionPedalData> expressionPedalData;

    static const QString fontFamily;
    static const QFont fontTabs;
    static const QFont fontTableHeader;
    static const QFont fontTableContent;
    static const QFont fontDeviceStatus;
    static const QFont fontSettingsLabel;
    static const QFont fontFirmwareVersion;
    static const std::map<FootswitchType, QColor> footswitchColors;
};
