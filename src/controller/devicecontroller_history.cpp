#include "controller/devicecontroller.h"
#include "controller/recordslots.h"
#include "device/kora.h"

void DeviceController::tellRead(const RecordId &id, const AnyRecord &before, const AnyRecord &after, bool isConfirmed)
{
    emit recordChanged({id, {before, after}, {before, after}, isConfirmed});
}

void DeviceController::tellSent(const RecordId &id, const AnyRecord &before, const AnyRecord &after, bool isConfirmed)
{
    RecordChange change{id, {before, after}, {before, after}, isConfirmed};
    if (const auto *const preset = std::get_if<Shared<PresetData>>(&before)) {
        const auto &changed = std::get<Shared<PresetData>>(after);
        change.merged = mergedVersions(id, *preset, changed);
        if (isConfirmed) mergedPresets[id] = {changed, std::get<Shared<PresetData>>(change.merged.after)};
    }
    emit recordChanged(change);
}

RecordChange::Versions DeviceController::mergedVersions(const RecordId &id, const Shared<PresetData> &before,
                                                        const Shared<PresetData> &after)
{
    const auto known = mergedPresets.find(id);
    const bool isKnown = known != mergedPresets.end() && known->second.stored == before;
    const Shared<PresetData> held = isKnown ? known->second.merged : before;  // else read: the unit holds just that
    PresetData result = *after;
    result.controlChanges = before->controlChanges == after->controlChanges
                                ? held->controlChanges
                                : merged(held->controlChanges, after->controlChanges);
    return {held, sharedOr(after, result)};
}

void DeviceController::makeStep(const StepOrder &order)
{
    StepReport report;
    std::set<RecordId> records;
    for (const RecordChange &change : order)
        records.insert(change.id);
    conduct(report, [&] {
        UnitPart part;
        const auto compose = [&](const UnitPart &present) { return composeStep(order, present.content, report); };
        Transfer::Outcome outcome = remake(part, records, compose);
        publish(part, records);
        return outcome;
    });
    emit stepMade(report);
    if (!report.failure.isEmpty()) tellFailure(report.failure);
}

UnitContent DeviceController::composeStep(const StepOrder &order, const UnitContent &present, StepReport &report)
{
    UnitContent wanted = present;
    for (const RecordChange &change : order) {
        learnHandling(change, present);
        const auto &[from, to] = listHandling == ListHandling::Merges ? change.merged : change.replaced;
        visitBoth(from, to, [&]<typename Record>(const Record &before, const Record &after) {
            Record &record = recordOf<Record>(wanted, change.id);
            report.found.emplace_back(std::make_shared<const Record>(record));
            takeOver(change.id, record, before, after, report.stayed);
        });
    }
    return wanted;
}

void DeviceController::learnHandling(const RecordChange &change, const UnitContent &content)
{
    if (change.id.kind != RecordId::Kind::Preset) return;
    const auto isHeld = [&](const AnyRecord &record) {
        return living(recordOf<PresetData>(content, change.id).controlChanges) ==
               living(std::get<Shared<PresetData>>(record)->controlChanges);
    };
    // What was not made, or is taken back already, tells nothing.
    if (isHeld(change.replaced.after) || isHeld(change.merged.after)) return;
    const bool isReplaced = isHeld(change.replaced.before);
    if (isReplaced != isHeld(change.merged.before))
        listHandling = isReplaced ? ListHandling::Replaces : ListHandling::Merges;
}
