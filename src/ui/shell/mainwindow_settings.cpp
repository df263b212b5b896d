#include "ui/shell/mainwindow.h"
#include "ui/shell/settingspage.h"

// --- The pages, made from the tables of the records

template <auto Member>
ComboBox *MainWindow::addSetting(SettingsPage &page, const char *objectName, const QString &help, SettingSlot changed)
{
    using Record = RecordOf<Member>;
    constexpr auto row = rowOf<Member>();
    ComboBox *const box = page.add(QLatin1String(row.name), QLatin1String(objectName), itemsOf<Member>(), help);
    settingBoxes.push_back({settingId<Member>(), box, [](const DataFromDevice &model) {
                                const auto record = (model.*globalSlot<Record>).load();
                                return record ? std::optional(itemOf<Member>(*record.*Member)) : std::nullopt;
                            }});
    const auto chosen = qOverload<int>(&QComboBox::currentIndexChanged);
    if (changed)
        connect(box, chosen, this, changed);
    else if (!row.readOnly)
        connect(box, chosen, this, [this](int index) {
            const auto work = requests.onWorker(&DeviceController::changeSetting, settingId<Member>(),
                                                static_cast<int>(valueOfItem<Member>(index)));
            requests.change({settingWords<Member>(), RequestQueue::made(work)});
        });
    return box;
}

void MainWindow::makeSettingsPages()
{
    makeSettingsPage();
    makeMidiInPage();
    makePedalPage();
    makeSwitchOutPage();
}

void MainWindow::makeSettingsPage()
{
    using Window = MainWindow;
    SettingsPage settings(ui.page(SettingsPageIndex), 5);
    addSetting<&Settings::loopsSplit>(settings, "comboBox_loopsSplit",
                                      tr("Whether the unit splits its six loops into two chains."),
                                      &Window::loopsSplitChanged);
    addSetting<&Settings::keyboardType>(settings, "comboBox_keyboardType",
                                        tr("The order in which the unit offers letters when a name is entered on it."),
                                        &Window::keyboardTypeChanged);
    addSetting<&Settings::clickProtection>(
        settings, "comboBox_clickProtection",
        tr("How gently loops and outputs switch: more protection makes less noise and takes a moment longer."),
        &Window::clickProtectionChanged);
    addSetting<&Settings::oneTimeMidiModeSend>(
        settings, "comboBox_oneTimeModeMidiSend",
        tr("Whether a preset's MIDI messages go out only once while it is stepped on again."),
        &Window::oneTimeModeMidiSendChanged);
    addSetting<&Settings::recallUserBanksOnly>(
        settings, "comboBox_recallUserBanksOnly",
        tr("Whether stepping through the banks passes over those that hold nothing."),
        &Window::recallUserBanksOnlyChanged);
    addSetting<&Settings::bankPresetChangeMode>(
        settings, "comboBox_bankPresetChangeMode",
        tr("Whether a new bank takes effect at once, or when a preset of it is chosen."),
        &Window::bankPresetChangeModeChanged);
    addSetting<&Settings::presetChangeName>(settings, "comboBox_presetChangeName",
                                            tr("Which names the display shows when a preset is chosen."),
                                            &Window::presetChangeNameChanged);
    addSetting<&Settings::wahPad1>(settings, "comboBox_wahPad1", tr("The loop that wah pad 1 switches."),
                                   &Window::wahPad1Changed);
    addSetting<&Settings::wahPad2>(settings, "comboBox_wahPad2", tr("The loop that wah pad 2 switches."),
                                   &Window::wahPad2Changed);
}

void MainWindow::makeMidiInPage()
{
    using Window = MainWindow;
    SettingsPage midiIn(ui.page(MidiInPageIndex), 5);
    addSetting<&MidiInData::channel>(midiIn, "comboBox_channel",
                                     tr("The MIDI channel on which the unit listens; INACTIVE listens on none."),
                                     &Window::channelChanged);
    addSetting<&MidiInData::pcFunction>(
        midiIn, "comboBox_PCFunction",
        tr("What a program change that comes in does: recall a bank, or a bank and preset."),
        &Window::pcFunctionChanged);
    addSetting<&MidiInData::ccFunction>(
        midiIn, "comboBox_CCFunction",
        tr("What a control change that comes in does: its number chooses the bank, its value the preset."),
        &Window::ccFunctionChanged);
}

void MainWindow::makePedalPage()
{
    using Window = MainWindow;
    using Pedal = ExpressionPedalData;
    SettingsPage pedal(ui.page(ExpressionPedalPageIndex), 5);
    addSetting<&Pedal::period>(pedal, "comboBox_period",
                               tr("How often the unit reads the pedal; a longer time sends fewer messages."),
                               &Window::periodChanged);
    addSetting<&Pedal::characteristic>(
        pedal, "comboBox_characteristic",
        tr("How the value follows the pedal: fast at first, evenly, or slowly at first."),
        &Window::characteristicChanged);
    addSetting<&Pedal::toeUp>(pedal, "comboBox_toeUpValue", tr("The value that is sent while the toe is up."),
                              &Window::toeUpChanged);
    addSetting<&Pedal::toeDown>(pedal, "comboBox_toeDownValue", tr("The value that is sent while the toe is down."),
                                &Window::toeDownChanged);
    ComboBox *const calibrationUp =
        addSetting<&Pedal::calibrationUp>(pedal, "comboBox_calibrationUpValue",
                                          tr("Where the unit found the pedal with the toe up; it is set on the unit."));
    ComboBox *const calibrationDown = addSetting<&Pedal::calibrationDown>(
        pedal, "comboBox_calibrationDownValue",
        tr("Where the unit found the pedal with the toe down; it is set on the unit."));
    addSetting<&Pedal::calibrationInversion>(pedal, "comboBox_calibrationInversion",
                                             tr("Whether the pedal works the other way round; it is set on the unit."));
    ComboBox *const onTheFly = pedal.add(QStringLiteral("ON THE FLY MODE"), QStringLiteral("comboBox_onTheFlyMode"),
                                         labels<bool>(), tr("The unit does not report this."));
    pedalDevice = addSetting<&Pedal::midiDeviceNumber>(
        pedal, "comboBox_midiDeviceNumber", tr("The MIDI device that the pedal drives while no preset says otherwise."),
        &Window::midiDeviceNumberChanged);
    pedalController = addSetting<&Pedal::controllerNumber>(pedal, "comboBox_controllerNumber",
                                                           tr("The controller of that device which the pedal moves."),
                                                           &Window::controllerNumberChanged);
    for (ComboBox *const list : {pedalDevice, pedalController})  // the unit's names take the place of numbers
        list->setItems(withInactive({}));
    for (ComboBox *const box : {calibrationUp, calibrationDown, onTheFly})
        box->setEnabled(false);
}

void MainWindow::makeSwitchOutPage()
{
    using Window = MainWindow;
    SettingsPage switchOut(ui.page(SwitchOutPageIndex), 3);
    constexpr SettingSlot switchOutSlots[] = {&Window::switchOut1Changed, &Window::switchOut2Changed,
                                              &Window::switchOut3Changed, &Window::switchOut4Changed,
                                              &Window::switchOut5Changed, &Window::switchOut6Changed};
    for (int number = 1; number <= switchOutCount; ++number) {
        ComboBox *const box = switchOut.add(
            QStringLiteral("%1 %2").arg(rowOf<&SwitchOutData::switchOuts>().name).arg(number),
            QStringLiteral("comboBox_switchOut%1").arg(number), labels<SwitchOutSetting>(),
            tr("How this output answers a footswitch: it stays, gives a pulse, or holds while the foot is down."));
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, switchOutSlots[number - 1]);
        switchOutBoxes << box;
    }
}

void MainWindow::connectSettings()
{
    using Unit = DeviceController;
    using Window = MainWindow;
    const auto reads = [this](void (Window::*signal)(), void (Unit::*slot)(), const char *key,
                              void (Unit::*announcement)(), void (Window::*refresh)()) {
        requests.connectRead(this, signal, slot, QLatin1String(key), [] {});
        connect(controller.get(), announcement, this, refresh);
    };
    reads(&Window::getSettings, &Unit::getSettings, "settings", &Unit::gotSettings, &Window::gotSettings);
    reads(&Window::getMidiIn, &Unit::getMidiIn, "midiIn", &Unit::gotMidiIn, &Window::gotMidiIn);
    reads(&Window::getExpressionPedal, &Unit::getExpressionPedal, "expressionPedal", &Unit::gotExpressionPedal,
          &Window::gotExpressionPedal);
    reads(&Window::getSwitchOut, &Unit::getSwitchOut, "switchOut", &Unit::gotSwitchOut, &Window::gotSwitchOut);
    reads(&Window::getMidiDevicesData, &Unit::getMidiDevicesData, "midiDevices", &Unit::gotMidiDevicesData,
          &Window::gotMidiDevicesData);

    const auto changes = [this](auto signal, auto slot, const QString &words) {
        requests.connectChange(this, signal, slot, [words](auto...) { return words; });
    };
    changes(&Window::changeLoopsSplit, &Unit::changeLoopsSplit, settingWords<&Settings::loopsSplit>());
    changes(&Window::changeKeyboardType, &Unit::changeKeyboardType, settingWords<&Settings::keyboardType>());
    changes(&Window::changeClickProtection, &Unit::changeClickProtection, settingWords<&Settings::clickProtection>());
    changes(&Window::changeOneTimeMidiModeSend, &Unit::changeOneTimeMidiModeSend,
            settingWords<&Settings::oneTimeMidiModeSend>());
    changes(&Window::changeRecallUserBanksOnly, &Unit::changeRecallUserBanksOnly,
            settingWords<&Settings::recallUserBanksOnly>());
    changes(&Window::changeBankPresetChangeMode, &Unit::changeBankPresetChangeMode,
            settingWords<&Settings::bankPresetChangeMode>());
    changes(&Window::changePresetChangeName, &Unit::changePresetChangeName,
            settingWords<&Settings::presetChangeName>());
    changes(&Window::changeWahPad1, &Unit::changeWahPad1, settingWords<&Settings::wahPad1>());
    changes(&Window::changeWahPad2, &Unit::changeWahPad2, settingWords<&Settings::wahPad2>());
    changes(&Window::changeChannel, &Unit::changeChannel, settingWords<&MidiInData::channel>());
    changes(&Window::changePCFunction, &Unit::changePCFunction, settingWords<&MidiInData::pcFunction>());
    changes(&Window::changeCCFunction, &Unit::changeCCFunction, settingWords<&MidiInData::ccFunction>());
    using Pedal = ExpressionPedalData;
    changes(&Window::changePeriod, &Unit::changePeriod, settingWords<&Pedal::period>());
    changes(&Window::changeCharacteristic, &Unit::changeCharacteristic, settingWords<&Pedal::characteristic>());
    changes(&Window::changeToeUp, &Unit::changeToeUp, settingWords<&Pedal::toeUp>());
    changes(&Window::changeToeDown, &Unit::changeToeDown, settingWords<&Pedal::toeDown>());
    changes(&Window::changeMidiDeviceNumber, &Unit::changeMidiDeviceNumber, settingWords<&Pedal::midiDeviceNumber>());
    changes(&Window::changeControllerNumber, &Unit::changeControllerNumber, settingWords<&Pedal::controllerNumber>());
    requests.connectChange(this, &Window::changeSwitchOut, &Unit::changeSwitchOut,
                           [](SwitchOutSetting, int number) { return QStringLiteral("SWITCH OUT %1").arg(number); });
}

void MainWindow::requestShownSettings()
{
    if (!ui.page(SettingsPageIndex)->isHidden()) emit getSettings();
    if (!ui.page(MidiInPageIndex)->isHidden()) emit getMidiIn();
    if (!ui.page(ExpressionPedalPageIndex)->isHidden()) emit getExpressionPedal();
    if (!ui.page(SwitchOutPageIndex)->isHidden()) emit getSwitchOut();
}

// --- The user chose: one box, one change

void MainWindow::loopsSplitChanged(int index) { emit changeLoopsSplit(valueOfItem<&Settings::loopsSplit>(index)); }
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

template <typename Record>
void MainWindow::showGlobal()
{
    if (!data) return;
    for (const SettingBox &setting : settingBoxes)
        if (setting.id.record == indexOf<Record, GlobalRecords>())
            if (const auto item = setting.shownItem(*data)) setting.box->showStored(*item);
}

void MainWindow::gotSettings() { showGlobal<Settings>(); }

void MainWindow::gotMidiIn() { showGlobal<MidiInData>(); }

void MainWindow::gotExpressionPedal()
{
    const auto pedal = data ? data->expressionPedalData.load() : nullptr;
    if (!pedal) return;
    fillControllers(indexOrNone(pedal->midiDeviceNumber));  // another device than before may be shown
    showGlobal<ExpressionPedalData>();
}

void MainWindow::gotSwitchOut()
{
    const auto switchOut = data ? data->switchOutData.load() : nullptr;
    if (!switchOut) return;
    for (int slot = 0; slot < switchOutBoxes.size(); ++slot)
        switchOutBoxes[slot]->showStored(toIndex(switchOut->switchOuts[static_cast<std::size_t>(slot)]));
}

void MainWindow::gotMidiDevicesData()
{
    if (!data) return;
    QStringList names;
    for (const auto &slot : data->midiDevices) {
        const auto device = slot.load();
        names << (device ? QString::fromStdString(device->name) : QString());
    }
    pedalDevice->setItems(withInactive(names));
    fillControllers(pedalDevice->currentIndex());
}

void MainWindow::fillControllers(int deviceIndex)
{
    const bool chosen = data && deviceIndex >= 1 && deviceIndex <= midiDeviceCount;
    const auto device = chosen ? data->midiDevices[static_cast<std::size_t>(deviceIndex - 1)].load() : nullptr;
    QStringList names;
    if (device)
        for (const Controller &controllerRecord : device->controllers)
            names << QString::fromStdString(controllerRecord.name);
    pedalController->setItems(withInactive(names));
}
