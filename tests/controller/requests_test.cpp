#include "controller/connected.h"
#include "controller/requestqueue.h"

using Requests = Connected;

TEST_F(Requests, ReadsStoreAndAnnounce)
{
    const std::tuple<std::function<void()>, Events, Events> reads[] = {
        {[this] { controller.getDeviceInfo(); }, {"RDI"}, {}},
        {[this] { controller.getBankName(7); }, {"RBB|A7"}, {"gotBankName ŻÓŁTY DOM"}},
        {[this] { controller.getPresetName(4, 2); }, {"RBP|A4|B2"}, {"gotPresetName RHYTHM 2"}},
        {[this] { controller.getFootswitchFunction(4, 9); }, {"RBP|A4|B9"}, {"gotFootswitchFunction 3 9"}},
        {[this] { controller.getBankAndPresetData(99); },
         {"RBB|A99", "RBP|A99|B0", "RBP|A99|B1", "RBP|A99|B2", "RBP|A99|B3", "RBP|A99|B4", "RBP|A99|B5", "RBP|A99|B6",
          "RBP|A99|B7", "RBP|A99|B8", "RBP|A99|B9"},
         {"gotBankAndPresetData 99"}},
        {[this] { controller.getMidiDevicesData(); },
         {"RMD|A1", "RMD|A2", "RMD|A3", "RMD|A4", "RMD|A5", "RMD|A6", "RMD|A7", "RMD|A8", "RMD|A9", "RMD|A10"},
         {"gotMidiDevicesData"}},
        {[this] { controller.getSettings(); }, {"ROS"}, {"gotSettings"}},
        {[this] { controller.getMidiIn(); }, {"RMI"}, {"gotMidiIn"}},
        {[this] { controller.getExpressionPedal(); }, {"REP"}, {"gotExpressionPedal"}},
        {[this] { controller.getSwitchOut(); }, {"RSO"}, {"gotSwitchOut"}},
        {[this] { controller.getExpressionPedalData(); }, {}, {}},
    };
    for (const auto &[read, sent, announced] : reads) {
        read();
        EXPECT_EQ(requests(), sent);
        EXPECT_EQ(recorder.take(), announced);
    }
    EXPECT_TRUE(modelled() == unit.memory());
    EXPECT_TRUE(data->presetData[99][9].load() && data->midiDevices[9].load() && data->switchOutData.load());
}

TEST_F(Requests, ATransferAnnouncesEachKindOfItsRecords)
{
    const std::pair<RecordId, Events> records[] = {
        {{RecordId::Kind::Settings}, {"gotSettings"}},
        {{RecordId::Kind::MidiIn}, {"gotMidiIn"}},
        {{RecordId::Kind::ExpressionPedal}, {"gotExpressionPedal"}},
        {{RecordId::Kind::SwitchOuts}, {"gotSwitchOut"}},
        {{RecordId::Kind::MidiDevice, 3}, {"gotMidiDevicesData"}},
        {{RecordId::Kind::Preset, 4, 2}, {"gotBankAndPresetData 4"}},
    };
    for (auto [record, announced] : records) {
        controller.readRecords({record});
        announced.insert(announced.end(), {"transferProgress 1 1", "transferred"});
        EXPECT_EQ(recorder.take(), announced);
    }
}

TEST_F(Requests, WithoutAUnitNothingIsTakenBack)
{
    controller.closeDevice();
    QString failure;
    QObject::connect(&controller, &DeviceController::stepMade,
                     [&](const StepReport &report) { failure = report.failure; });
    controller.makeStep({});
    EXPECT_EQ(failure, "No unit is connected");
}

TEST_F(Requests, ABankThatFailsHalfWayKeepsWhatArrived)
{
    unit.queueFault(Fault::errorStatus(5, "Broken"), 3);
    controller.getBankAndPresetData(4);
    EXPECT_EQ(recorder.take(), Events{"error Broken"});
    EXPECT_TRUE(data->bankData[4].load() && data->presetData[4][1].load());
    EXPECT_EQ(data->presetData[4][2].load(), nullptr);
}

TEST_F(Requests, AChangeThatCannotBeMadeAnyMoreIsGivenUpAndHoldsNothingUp)
{
    RequestQueue queue(controller);
    queue.found("unit", [] {});
    QStringList givenUp;
    QObject::connect(&queue, &RequestQueue::undelivered, [&](const QStringList &words) { givenUp << words; });
    queue.change({"UNDO", [] { return false; }});
    EXPECT_TRUE(queue.isIdle());
    EXPECT_EQ(givenUp, QStringList("UNDO"));
}

TEST_F(Requests, OutOfRangeOrIncompleteSendNothing)
{
    readAll();
    const std::function<void()> misuses[] = {
        [this] { controller.getBankName(100); },
        [this] { controller.getPresetName(4, -1); },
        [this] { controller.getFootswitchFunction(-1, 0); },
        [this] { controller.getBankAndPresetData(100); },
        [this] { controller.changeBankName("X", -1); },
        [this] { controller.changePresetWahPad1(100, WahPadAction::Add); },
        [this] { controller.changePresetName("X", 4, 10); },
        [this] { controller.changeLoopType(LoopType::On, 4, 2, 6); },
        [this] { controller.changeSwitchType(SwitchType::On, 4, 2, -1); },
        [this] { controller.changeProgramChangeNumber(4, 2, 10, 1); },
        [this] { controller.changeMidiDeviceChannel(1, 0); },
        [this] { controller.changeNoteNumber(1, 11); },
        [this] { controller.changeSwitchOut(SwitchOutSetting::Pulse, 7); },
        [this] { controller.changeSwitchOut(SwitchOutSetting::Pulse, 0); },
    };
    for (const auto &misuse : misuses) {
        misuse();
        EXPECT_EQ(recorder.take(), Events{"error Error in communication"}) << "row " << &misuse - misuses;
    }
    controller.controllersNamesOrNumberChanged(1, QVector<QString>(19), QVector<int>(20));
    EXPECT_EQ(recorder.take().size(), 1u);
    EXPECT_EQ(requests(), Events{});
    EXPECT_TRUE(modelled() == unit.memory());
}
