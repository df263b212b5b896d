#pragma once

#include "controller/history.h"
#include "controller/requestqueue.h"
#include "simulator/unitport.h"
#include "support/randomcontent.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

/// A user without a window: a queue that asks a unit on one and the same thread, and its history. The unit, which
/// handles lists as the parameter says, holds random values in some records.
class Windowless : public testing::TestWithParam<MidiLists>
{
protected:
    Windowless(unsigned seed, const std::set<RecordId> &records) : random(seed, RandomContent::Values::Valid)
    {
        unit.setMidiLists(GetParam());
        unit.alter([&](UnitMemory &memory) {
            for (const RecordId &id : records)
                random.alter(memory, id, 1);
            for (auto &bank : memory.presets)
                for (PresetData &preset : bank)
                    preset.controlChanges = merged({}, preset.controlChanges);  // what any unit may hold
        });
    }

    void settle()
    {
        while (!queue.isIdle())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    RandomContent random;
    UnitPort unit;
    DeviceController controller{[this] {
        unit.plugIn();  // it may have hung up, also while it was searched for
        return QStringList{QString::fromStdString(unit.location())};
    }};
    RequestQueue queue{controller};
    History history{controller, queue};
};
