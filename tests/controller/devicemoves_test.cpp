#include "model/devicemoves.h"
#include "connected.h"
#include "controller/history.h"
#include "controller/requestqueue.h"
#include "link/connection.h"
#include "support/outgoing.h"
#include "support/randomcontent.h"

#include <QCoreApplication>

namespace {

/// A user who moves MIDI devices and controllers of a unit with any content.
class Moves : public Connected, public testing::WithParamInterface<MidiLists>
{
protected:
    Moves()
    {
        Connection::enableLog = false;
        unit.setMidiLists(GetParam());
        unit.alter([&](UnitMemory &memory) {
            for (const RecordId &id : allRecords())
                random.alter(memory, id, id.number % 9 == 0 ? 1 : 0.1);
            for (auto &bank : memory.presets)
                for (PresetData &preset : bank)
                    preset.controlChanges = merged({}, preset.controlChanges);  // what any unit may hold
        });
        queue.found("KORA", [] {});
    }
    ~Moves() override { Connection::enableLog = true; }

    void settle()
    {
        while (!queue.isIdle())
            QCoreApplication::processEvents();
    }
    void make(const Arrangement &arrangement)
    {
        queue.change({arrangement.words, RequestQueue::made(queue.onWorker(&DeviceController::arrange, arrangement))});
        settle();
    }

    RandomContent random{3, RandomContent::Values::Valid};
    RequestQueue queue{controller};
    History history{controller, queue};
};

INSTANTIATE_TEST_SUITE_P(Lists, Moves, testing::Values(MidiLists::Replace, MidiLists::Merge));

}  // namespace

TEST_P(Moves, SendWhatWasSentAndAreTakenBackToTheByte)
{
    const UnitMemory start = unit.memory();
    const Outgoing sent = outgoing(start);
    ControllerOrder order = sameOrder;
    std::rotate(order.begin() + 2, order.begin() + 3, order.begin() + 17);
    make(arrange::swapDevices(1, 10, true));
    make(arrange::reorderControllers(10, {}, order, true));
    EXPECT_EQ(outgoing(unit.memory()), sent);
    EXPECT_NE(unit.memory().presets, start.presets);

    UnitContent pasted = unit.memory();
    const Arrangement paste = arrange::pasteDevice(pasted.midiDevices[9], 4, 10);
    paste.alter(pasted);
    make(paste);
    EXPECT_TRUE(differences(unit.memory(), pasted, allRecords()).empty());

    ASSERT_EQ(history.steps().size(), 3U);
    while (history.position() > 0) {
        history.undo();
        settle();
    }
    EXPECT_TRUE(unit.memory() == start);
}
