#include "ui/tables/tabwahpads.h"

#include "ui/combobox.h"

#include <QTableWidget>

namespace {

constexpr int padCount = 2;

}  // namespace

TabWahPads::TabWahPads(QTableWidget *tableWidget)
    : BankTable(tableWidget, {{"B", 35}, {"BANK NAME", 370}, {"", 35}, {"WAH PAD", 380}, {"PRESET", 370}}, 52, padCount,
                2)
{
    const auto changed = qOverload<int>(&QComboBox::currentIndexChanged);
    addBankNames(1);
    addNumbers(2, 1, tr("Wah pad number"));
    for (int number = 1; number <= padCount; ++number) {
        Pad &pad = pads[static_cast<std::size_t>(number - 1)];
        pad.action = look::makeComboBox(table->viewport(), labels<WahPadAction>());
        pad.action->setAccessibleName(tr("Action of wah pad %1").arg(number));
        connect(pad.action, changed, this, [this, &pad](int index) { presetWahPadChanged(pad, index); });
        place(number - 1, 3, pad.action);
        pad.target = look::makeComboBox(table->viewport(), {});
        pad.target->setAccessibleName(tr("Preset of wah pad %1").arg(number));
        connect(pad.target, changed, this, [this, &pad](int index) { presetNumberWahPadChanged(pad, index); });
        place(number - 1, 4, pad.target);
    }
    look::orderTabs(table);
}

void TabWahPads::refreshEditors()
{
    changePresetNames();
    changeWahPadSettings();
}

void TabWahPads::clearEditors(int preset)
{
    if (preset >= 0) return;
    for (const Pad &pad : pads) {
        pad.action->showStored(-1);
        pad.target->showStored(-1);
    }
}

void TabWahPads::changePresetNames()
{
    if (!shown.data()) return;
    QStringList targets;
    for (int preset = 0; preset < presetCount; ++preset) {
        const auto record = shown.preset(preset);  // unread: the number alone, so that a row stays its preset's number
        targets << QString::number(preset) + ": " + (record ? QString::fromStdString(record->name) : QString());
    }
    for (const Pad &pad : pads)
        pad.target->setItems(targets);
}

void TabWahPads::changeWahPadSettings()
{
    const auto record = shown.record();
    if (!record) return;
    for (const Pad &pad : pads) {
        pad.target->showStored((*record).*pad.storedTarget);
        pad.action->showStored(toIndex((*record).*pad.storedAction));
    }
}

void TabWahPads::presetWahPadChanged(const Pad &pad, int index)
{
    const auto record = shown.record();
    if (!record) return pad.action->takeBack();
    if (index >= 0 && toIndex((*record).*pad.storedAction) != index)
        emit(this->*pad.changeAction)(currentBank(), fromIndex<WahPadAction>(index));
}

void TabWahPads::presetNumberWahPadChanged(const Pad &pad, int index)
{
    const auto record = shown.record();
    if (!record) return pad.target->takeBack();
    if (index >= 0 && (*record).*pad.storedTarget != index) emit(this->*pad.changeTarget)(currentBank(), index);
}
