#include "controller/windowless.h"

namespace {

using Unit = DeviceController;
using Names = QVector<QString>;
using Numbers = QVector<int>;

/// Changes some records at random, and finds the unit again when it is lost.
class Walk : public Windowless
{
protected:
    Walk() : Windowless(1, someRecords)
    {
        controller.setTimeouts({100, 100, 1});
        QObject::connect(&controller, &Unit::found, [this](DataFromDevice *found) {
            data = found;
            if (!queue.isSearchWaiting()) queue.found("KORA", [] {});
            queue.exclusive(queue.onWorker(&Unit::readRecords, someRecords));
        });
        QObject::connect(&controller, &Unit::error, [this](const QString &message) {
            hasFailed = true;
            if (RequestQueue::isLoss(message)) queue.search([this] { controller.searchDevice(); });
        });
        QObject::connect(&history, &History::stayed, [this](const QStringList &places) { stayed << places; });
        controller.searchDevice();
        settle();
    }

    /// Spoils one of the next exchanges, now and then.
    void disturb()
    {
        static const Fault faults[] = {Fault::errorStatus(), Fault::errorStatus(), Fault::silence(), Fault::hangUp()};
        if (number(0, 59) == 0) unit.queueFault(faults[number(0, 3)], static_cast<std::size_t>(number(0, 3)));
    }
    template <typename Slot, typename... Arguments>
    void ask(Slot slot, Arguments... arguments)
    {
        queue.change({"", RequestQueue::made(queue.onWorker(slot, arguments...))});
    }
    int number(int low, int high) { return random.number(low, high); }

    void change();
    void editMidi(int bank, int preset);
    void restore();

    /// Takes steps until so many are made; what the unit holds then is what it held then, byte for byte.
    void go(void (History::*step)(), std::size_t end)
    {
        while (history.position() != end) {
            disturb();
            hasFailed = false;
            (history.*step)();
            settle();
            while (remembered.size() > history.steps().size() + 1)  // a step that turned out not to have been made
                remembered.erase(remembered.begin() + static_cast<std::ptrdiff_t>(history.position()) + 1);
            const auto &then = remembered[history.position()];
            ASSERT_TRUE(hasFailed || !then || unit.memory() == *then) << history.position();
        }
    }

    DataFromDevice *data = nullptr;
    std::deque<std::optional<UnitMemory>> remembered;  // what the unit held after every tenth step or so
    QStringList stayed;
    bool hasFailed = false;
};

void Walk::change()
{
    const int bank = number(0, 1) * 99, preset = number(0, 9), device = number(0, 1) * 9 + 1;
    const QString name = "NAME " + QString::number(number(0, 99));
    const std::function<void()> changes[] = {
        [&] { ask(&Unit::changeBankName, name, bank); },
        [&] { ask(&Unit::changeFootswitchFunction, FootswitchType{number(0, 3)}, bank, preset); },
        [&] { ask(&Unit::changeLoopType, LoopType{number(1, 4)}, bank, preset, number(0, 5)); },
        [&] { ask(&Unit::changePresetNumberWahPad2, bank, number(0, 9)); },
        [&] { ask(&Unit::changeTapControllerValue, number(0, 127), device); },
        [&] { ask(&Unit::controllersNamesOrNumberChanged, device, Names(20, name), Numbers(20, number(0, 127))); },
        [&] { ask(&Unit::changeSetting, settingId<&Settings::keyboardType>(), number(1, 2)); },
        [&] { ask(&Unit::changeSwitchOut, SwitchOutSetting{number(1, 2)}, number(1, 6)); },
        [&] { editMidi(bank, preset); },
        [&] { editMidi(bank, preset); },
        [&] { restore(); },
    };
    changes[number(0, static_cast<int>(std::size(changes)) - 1)]();
}

/// One OK of the MIDI dialog.
void Walk::editMidi(int bank, int preset)
{
    const auto stored = data->presetData[static_cast<std::size_t>(bank)][static_cast<std::size_t>(preset)].load();
    if (!stored || stored->controlChanges.empty()) return restore();
    auto list = stored->controlChanges;
    list.front().value = inactiveValue;
    // Not the one that goes: put back, it stands elsewhere in a list that is merged, and how lists are handled is
    // unknown once the unit has come back at another port.
    const int picked = number(1, 9);
    const auto position = static_cast<std::uint8_t>(picked == list.front().controllerNumber ? 10 : picked);
    setMessage(list, {1, position, static_cast<std::uint8_t>(number(0, 127))});
    list.insert(list.begin(), stored->controlChanges.front());
    list.front().value = inactiveValue;
    fillUp(list);
    queue.change({"", [=, this] {
                      controller.changeProgramChangeNumber(bank, preset, 1, number(1, 128));
                      controller.changeControlChangeData(bank, preset, {list.begin(), list.end()});
                      controller.changePresetExpressionPedal(bank, preset, {1, 2, {}, 0, 127});
                      return true;
                  }});
}

void Walk::restore()
{
    const auto present = std::make_shared<UnitPart>(UnitPart{unit.memory(), someRecords});
    const auto wanted = std::make_shared<UnitContent>(present->content);
    for (const RecordId &id : someRecords)
        random.alter(*wanted, id, number(0, 9) == 0 ? 0.2 : 0);
    queue.exclusive(queue.onWorker(&Unit::writeRecords, TransferOrder{present, wanted, someRecords}));
}

INSTANTIATE_TEST_SUITE_P(Lists, Walk, testing::Values(MidiLists::Replace, MidiLists::Merge));

}  // namespace

TEST_P(Walk, LeadsBackToTheStartAndForthToTheEnd)
{
    remembered.emplace_back(unit.memory());
    const void *last = nullptr;
    for (int changes = 0; changes < 1200 || (history.steps().size() < History::maxSteps && changes < 2000); ++changes) {
        disturb();
        change();
        settle();
        const auto &steps = history.steps();
        if (steps.empty() || std::exchange(last, steps.back().changes.data()) == steps.back().changes.data()) continue;
        remembered.emplace_back(changes % 10 == 0 ? std::optional(unit.memory()) : std::nullopt);
        if (remembered.size() > steps.size() + 1) remembered.pop_front();
    }
    EXPECT_EQ(history.steps().size(), History::maxSteps);
    ASSERT_NO_FATAL_FAILURE(go(&History::undo, 0));
    ASSERT_NO_FATAL_FAILURE(go(&History::redo, history.steps().size()));
    EXPECT_TRUE(stayed.isEmpty()) << stayed.join("; ").toStdString();
}
