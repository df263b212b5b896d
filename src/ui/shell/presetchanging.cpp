#include "ui/shell/presetchanging.h"

#include "controller/recordslots.h"
#include "controller/requestqueue.h"
#include "model/presetchange.h"
#include "ui/dialogs/changedialog.h"
#include "ui/shell/arranging.h"
#include "ui/shell/unitfiles.h"

PresetChanging::PresetChanging(RequestQueue &queue, Arranging &arranger, UnitFiles &unitFiles, Window owner)
    : requests(queue), arranging(arranger), files(unitFiles), window(std::move(owner))
{}

void PresetChanging::offer(const std::set<RecordId> &selection)
{
    if (!data || selection.empty()) return;
    std::set<RecordId> needed = allMidiDevices();  // the dialog tells their names
    needed.insert(selection.begin(), selection.end());
    files.readUnknown(needed, [this, selection] { ask(selection); });
}

void PresetChanging::ask(const std::set<RecordId> &selection)
{
    const auto count = [this, &selection](const PresetChange &change) {
        return arrange::countOf(change, selection, data ? knownPart(*data, selection) : UnitPart());
    };
    ChangeDialog dialog(arrange::nameOf(selection), knownPart(*data, allMidiDevices()).content.midiDevices, count,
                        window.widget);
    dialog.setObstacle(window.obstacle);
    connect(&requests, &RequestQueue::otherUnit, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted) return;
    if (const auto change = dialog.change()) arranging.make(arrange::change(selection, *change));
}
