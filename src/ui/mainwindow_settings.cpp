#include "controller/devicecontroller.h"
#include "ui/look.h"
#include "ui/mainwindow.h"
#include "ui/settingspage.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace {

/// The first item of a list of channels, devices or controllers stands for none.
int valueOrNone(int index) { return index == 0 ? none : index; }

int indexOrNone(int value) { return value == none ? 0 : value; }

QStringList withInactive(const QStringList &items) { return QStringList{QStringLiteral("INACTIVE")} + items; }

/// Replaces the box's items and keeps the shown index, without announcing anything.
void refill(QComboBox *box, const QStringList &items)
{
    const QSignalBlocker blocker(box);
    const int index = box->currentIndex();
    box->clear();
    box->addItems(items);
    box->setCurrentIndex(index);
}

}  // namespace

void MainWindow::makeSettingsPages()
{
    using Slot = void (MainWindow::*)(int);
    const auto add = [this](SettingsPage &page, const char *label, const char *name, const QStringList &items,
                            Slot slot = nullptr) {
        QComboBox *const box = page.add(QLatin1String(label), QLatin1String(name), items);
        if (slot) connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, slot);
        return box;
    };
    const QStringList sevenBits = look::numberTexts(0, 127);
    const QStringList twelveBits = look::numberTexts(0, 4095);
    const QStringList inactive = withInactive({});

    SettingsPage settings(ui.widget_settings, 5);
    ui.comboBox_loopsSplit =
        add(settings, "LOOP SPLIT", "comboBox_loopsSplit", labels<bool>(), &MainWindow::loopsSplitChanged);
    ui.comboBox_keyboardType = add(settings, "KEYBOARD TYPE", "comboBox_keyboardType", labels<KeyboardType>(),
                                   &MainWindow::keyboardTypeChanged);
    ui.comboBox_clickProtection = add(settings, "CLICK PROTECTION", "comboBox_clickProtection",
                                      labels<ClickProtection>(), &MainWindow::clickProtectionChanged);
    ui.comboBox_oneTimeModeMidiSend = add(settings, "ONE TIME MIDI SEND MODE", "comboBox_oneTimeModeMidiSend",
                                          labels<bool>(), &MainWindow::oneTimeModeMidiSendChanged);
    ui.comboBox_recallUserBanksOnly = add(settings, "RECALL USER BANKS ONLY", "comboBox_recallUserBanksOnly",
                                          labels<bool>(), &MainWindow::recallUserBanksOnlyChanged);
    ui.comboBox_bankPresetChangeMode = add(settings, "BANK/PRESET CHANGE MODE", "comboBox_bankPresetChangeMode",
                                           labels<BankPresetChangeMode>(), &MainWindow::bankPresetChangeModeChanged);
    ui.comboBox_presetChangeName = add(settings, "PRESET CHANGE NAME", "comboBox_presetChangeName",
                                       labels<PresetChangeName>(), &MainWindow::presetChangeNameChanged);
    ui.comboBox_wahPad1 =
        add(settings, "WAH PAD 1", "comboBox_wahPad1", labels<WahPadSetting>(), &MainWindow::wahPad1Changed);
    ui.comboBox_wahPad2 =
        add(settings, "WAH PAD 2", "comboBox_wahPad2", labels<WahPadSetting>(), &MainWindow::wahPad2Changed);

    SettingsPage midiIn(ui.widget_midiIn, 5);
    ui.comboBox_channel =
        add(midiIn, "CHANNEL", "comboBox_channel", withInactive(look::numberTexts(1, 16)), &MainWindow::channelChanged);
    ui.comboBox_PCFunction =
        add(midiIn, "PC FUNCTION", "comboBox_PCFunction", labels<MidiInPCFunction>(), &MainWindow::pcFunctionChanged);
    ui.comboBox_CCFunction =
        add(midiIn, "CC FUNCTION", "comboBox_CCFunction", labels<MidiInCCFunction>(), &MainWindow::ccFunctionChanged);

    SettingsPage pedal(ui.widget_expressionPedal, 5);
    ui.comboBox_period =
        add(pedal, "PERIOD", "comboBox_period", labels<ExpressionPedalPeriod>(), &MainWindow::periodChanged);
    ui.comboBox_characteristic = add(pedal, "CHARACTERISTIC", "comboBox_characteristic",
                                     labels<ExpressionPedalCharacteristic>(), &MainWindow::characteristicChanged);
    ui.comboBox_toeUpValue = add(pedal, "TOE UP VALUE", "comboBox_toeUpValue", sevenBits, &MainWindow::toeUpChanged);
    ui.comboBox_toeDownValue =
        add(pedal, "TOE DOWN VALUE", "comboBox_toeDownValue", sevenBits, &MainWindow::toeDownChanged);
    ui.comboBox_calibrationUpValue = add(pedal, "CALIBRATION UP VALUE", "comboBox_calibrationUpValue", twelveBits);
    ui.comboBox_calibrationDownValue =
        add(pedal, "CALIBRATION DOWN VALUE", "comboBox_calibrationDownValue", twelveBits);
    ui.comboBox_calibrationInversion =
        add(pedal, "CALIBRATION INVERSION", "comboBox_calibrationInversion", labels<bool>());
    ui.comboBox_onTheFlyMode = add(pedal, "ON THE FLY MODE", "comboBox_onTheFlyMode", labels<bool>());
    ui.comboBox_midiDeviceNumber =
        add(pedal, "MIDI DEVICE", "comboBox_midiDeviceNumber", inactive, &MainWindow::midiDeviceNumberChanged);
    ui.comboBox_controllerNumber =
        add(pedal, "CONTROLLER", "comboBox_controllerNumber", inactive, &MainWindow::controllerNumberChanged);
    for (QComboBox *const box :
         {ui.comboBox_calibrationUpValue, ui.comboBox_calibrationDownValue, ui.comboBox_onTheFlyMode})
        box->setEnabled(false);

    SettingsPage switchOut(ui.widget_switchOut, 3);
    constexpr Slot switchOutSlots[] = {&MainWindow::switchOut1Changed, &MainWindow::switchOut2Changed,
                                       &MainWindow::switchOut3Changed, &MainWindow::switchOut4Changed,
                                       &MainWindow::switchOut5Changed, &MainWindow::switchOut6Changed};
    for (int number = 1; number <= switchOutCount; ++number) {
        const std::string text = std::to_string(number);
        ui.comboBox_switchOut[number - 1] =
            add(switchOut, ("SWITCH OUT " + text).c_str(), ("comboBox_switchOut" + text).c_str(),
                labels<SwitchOutSetting>(), switchOutSlots[number - 1]);
    }
}

void MainWindow::connectSettings()
{
    DeviceController *const unit = controller.get();
    connect(this, &MainWindow::getSettings, unit, &DeviceController::getSettings);
    connect(this, &MainWindow::getMidiIn, unit, &DeviceController::getMidiIn);
    connect(this, &MainWindow::getExpressionPedal, unit, &DeviceController::getExpressionPedal);
    connect(this, &MainWindow::getMidiDevicesData, unit, &DeviceController::getMidiDevicesData);
    connect(this, &MainWindow::getSwitchOut, unit, &DeviceController::getSwitchOut);

    connect(unit, &DeviceController::gotSettings, this, &MainWindow::gotSettings);
    connect(unit, &DeviceController::gotMidiIn, this, &MainWindow::gotMidiIn);
    connect(unit, &DeviceController::gotExpressionPedal, this, &MainWindow::gotExpressionPedal);
    connect(unit, &DeviceController::gotMidiDevicesData, this, &MainWindow::gotMidiDevicesData);
    connect(unit, &DeviceController::gotSwitchOut, this, &MainWindow::gotSwitchOut);

    connect(this, &MainWindow::changeLoopsSplit, unit, &DeviceController::changeLoopsSplit);
    connect(this, &MainWindow::changeKeyboardType, unit, &DeviceController::changeKeyboardType);
    connect(this, &MainWindow::changeClickProtection, unit, &DeviceController::changeClickProtection);
    connect(this, &MainWindow::changeOneTimeMidiModeSend, unit, &DeviceController::changeOneTimeMidiModeSend);
    connect(this, &MainWindow::changeRecallUserBanksOnly, unit, &DeviceController::changeRecallUserBanksOnly);
    connect(this, &MainWindow::changeBankPresetChangeMode, unit, &DeviceController::changeBankPresetChangeMode);
    connect(this, &MainWindow::changePresetChangeName, unit, &DeviceController::changePresetChangeName);
    connect(this, &MainWindow::changeWahPad1, unit, &DeviceController::changeWahPad1);
    connect(this, &MainWindow::changeWahPad2, unit, &DeviceController::changeWahPad2);
    connect(this, &MainWindow::changeChannel, unit, &DeviceController::changeChannel);
    connect(this, &MainWindow::changePCFunction, unit, &DeviceController::changePCFunction);
    connect(this, &MainWindow::changeCCFunction, unit, &DeviceController::changeCCFunction);
    connect(this, &MainWindow::changePeriod, unit, &DeviceController::changePeriod);
    connect(this, &MainWindow::changeCharacteristic, unit, &DeviceController::changeCharacteristic);
    connect(this, &MainWindow::changeToeUp, unit, &DeviceController::changeToeUp);
    connect(this, &MainWindow::changeToeDown, unit, &DeviceController::changeToeDown);
    connect(this, &MainWindow::changeMidiDeviceNumber, unit, &DeviceController::changeMidiDeviceNumber);
    connect(this, &MainWindow::changeControllerNumber, unit, &DeviceController::changeControllerNumber);
    connect(this, &MainWindow::changeSwitchOut, unit, &DeviceController::changeSwitchOut);
}

/// A new model holds no settings yet, and a choice on a page without them would be dropped.
void MainWindow::requestShownSettings()
{
    if (!ui.widget_settings->isHidden()) emit getSettings();
    if (!ui.widget_midiIn->isHidden()) emit getMidiIn();
    if (!ui.widget_expressionPedal->isHidden()) emit getExpressionPedal();
    if (!ui.widget_switchOut->isHidden()) emit getSwitchOut();
}

// --- The user chose: one box, one change

void MainWindow::loopsSplitChanged(int index) { emit changeLoopsSplit(index != 0); }
void MainWindow::keyboardTypeChanged(int index) { emit changeKeyboardType(fromIndex<KeyboardType>(index)); }
void MainWindow::clickProtectionChanged(int index) { emit changeClickProtection(fromIndex<ClickProtection>(index)); }
void MainWindow::oneTimeModeMidiSendChanged(int index) { emit changeOneTimeMidiModeSend(index != 0); }
void MainWindow::recallUserBanksOnlyChanged(int index) { emit changeRecallUserBanksOnly(index != 0); }
void MainWindow::bankPresetChangeModeChanged(int index)
{
    emit changeBankPresetChangeMode(fromIndex<BankPresetChangeMode>(index));
}
void MainWindow::presetChangeNameChanged(int index) { emit changePresetChangeName(fromIndex<PresetChangeName>(index)); }
void MainWindow::wahPad1Changed(int index) { emit changeWahPad1(fromIndex<WahPadSetting>(index)); }
void MainWindow::wahPad2Changed(int index) { emit changeWahPad2(fromIndex<WahPadSetting>(index)); }

void MainWindow::channelChanged(int index) { emit changeChannel(valueOrNone(index)); }
void MainWindow::pcFunctionChanged(int index) { emit changePCFunction(fromIndex<MidiInPCFunction>(index)); }
void MainWindow::ccFunctionChanged(int index) { emit changeCCFunction(fromIndex<MidiInCCFunction>(index)); }

void MainWindow::periodChanged(int index) { emit changePeriod(fromIndex<ExpressionPedalPeriod>(index)); }
void MainWindow::characteristicChanged(int index)
{
    emit changeCharacteristic(fromIndex<ExpressionPedalCharacteristic>(index));
}
void MainWindow::toeUpChanged(int index) { emit changeToeUp(index); }
void MainWindow::toeDownChanged(int index) { emit changeToeDown(index); }
void MainWindow::midiDeviceNumberChanged(int index)
{
    emit changeMidiDeviceNumber(valueOrNone(index));
    fillControllers(index);
}
void MainWindow::controllerNumberChanged(int index) { emit changeControllerNumber(valueOrNone(index)); }

void MainWindow::switchOut1Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 1); }
void MainWindow::switchOut2Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 2); }
void MainWindow::switchOut3Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 3); }
void MainWindow::switchOut4Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 4); }
void MainWindow::switchOut5Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 5); }
void MainWindow::switchOut6Changed(int index) { emit changeSwitchOut(fromIndex<SwitchOutSetting>(index), 6); }

// --- The unit's values arrived: shown without announcing a choice

void MainWindow::gotSettings()
{
    const auto settings = data ? data->settings.load() : nullptr;
    if (!settings) return;
    look::showIndex(ui.comboBox_loopsSplit, toIndex(settings->loopsSplit));
    look::showIndex(ui.comboBox_keyboardType, toIndex(settings->keyboardType));
    look::showIndex(ui.comboBox_clickProtection, toIndex(settings->clickProtection));
    look::showIndex(ui.comboBox_oneTimeModeMidiSend, toIndex(settings->oneTimeMidiModeSend));
    look::showIndex(ui.comboBox_recallUserBanksOnly, toIndex(settings->recallUserBanksOnly));
    look::showIndex(ui.comboBox_bankPresetChangeMode, toIndex(settings->bankPresetChangeMode));
    look::showIndex(ui.comboBox_presetChangeName, toIndex(settings->presetChangeName));
    look::showIndex(ui.comboBox_wahPad1, toIndex(settings->wahPad1));
    look::showIndex(ui.comboBox_wahPad2, toIndex(settings->wahPad2));
}

void MainWindow::gotMidiIn()
{
    const auto midiIn = data ? data->midiInData.load() : nullptr;
    if (!midiIn) return;
    look::showIndex(ui.comboBox_channel, indexOrNone(midiIn->channel));
    look::showIndex(ui.comboBox_PCFunction, toIndex(midiIn->pcFunction));
    look::showIndex(ui.comboBox_CCFunction, toIndex(midiIn->ccFunction));
}

void MainWindow::gotExpressionPedal()
{
    const auto pedal = data ? data->expressionPedalData.load() : nullptr;
    if (!pedal) return;
    look::showIndex(ui.comboBox_period, toIndex(pedal->period));
    look::showIndex(ui.comboBox_characteristic, toIndex(pedal->characteristic));
    look::showIndex(ui.comboBox_toeUpValue, pedal->toeUp);
    look::showIndex(ui.comboBox_toeDownValue, pedal->toeDown);
    look::showIndex(ui.comboBox_calibrationUpValue, pedal->calibrationUp);
    look::showIndex(ui.comboBox_calibrationDownValue, pedal->calibrationDown);
    look::showIndex(ui.comboBox_calibrationInversion, toIndex(pedal->calibrationInversion));
    look::showIndex(ui.comboBox_midiDeviceNumber, indexOrNone(pedal->midiDeviceNumber));
    fillControllers(ui.comboBox_midiDeviceNumber->currentIndex());  // the device shown may be another than before
    look::showIndex(ui.comboBox_controllerNumber, indexOrNone(pedal->controllerNumber));
}

void MainWindow::gotSwitchOut()
{
    const auto switchOut = data ? data->switchOutData.load() : nullptr;
    if (!switchOut) return;
    for (std::size_t slot = 0; slot < switchOutCount; ++slot)
        look::showIndex(ui.comboBox_switchOut[slot], toIndex(switchOut->switchOuts[slot]));
}

void MainWindow::gotMidiDevicesData()
{
    if (!data) return;
    QStringList names;
    for (const auto &slot : data->midiDevices) {
        const auto device = slot.load();
        names << (device ? QString::fromStdString(device->name) : QString());
    }
    refill(ui.comboBox_midiDeviceNumber, withInactive(names));
    fillControllers(ui.comboBox_midiDeviceNumber->currentIndex());
}

void MainWindow::fillControllers(int deviceIndex)
{
    const bool chosen = data && deviceIndex >= 1 && deviceIndex <= midiDeviceCount;
    const auto device = chosen ? data->midiDevices[static_cast<std::size_t>(deviceIndex - 1)].load() : nullptr;
    QStringList names;
    if (device)
        for (const Controller &controllerRecord : device->controllers)
            names << QString::fromStdString(controllerRecord.name);
    refill(ui.comboBox_controllerNumber, withInactive(names));
}
