#include "ui/tabwahpads.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace {

constexpr int padCount = 2;

const QVector<look::Column> &columns()
{
    static const QVector<look::Column> all{{"B", 35}, {"BANK NAME", 370}, {"", 35}, {"WAH PAD", 380}, {"PRESET", 370}};
    return all;
}

}  // namespace

TabWahPads::TabWahPads(QTableWidget *tableWidget) : BankTable(tableWidget, columns(), 52, padCount, 2)
{
    addBankNames(1);
    addNumbers(2, 1, tr("Wah pad number"));
    for (int number = 1; number <= padCount; ++number) {
        Pad &pad = pads[static_cast<std::size_t>(number - 1)];
        pad.action = look::makeComboBox(labels<WahPadAction>());
        pad.action->setAccessibleName(tr("Action of wah pad %1").arg(number));
        place(number - 1, 3, pad.action);
        pad.target = look::makeComboBox({});
        pad.target->setAccessibleName(tr("Preset of wah pad %1").arg(number));
        place(number - 1, 4, pad.target);
    }
    const auto changed = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(pads[0].action, changed, this, &TabWahPads::presetWahPad1Changed);
    connect(pads[0].target, changed, this, &TabWahPads::presetNumberWahPad1Changed);
    connect(pads[1].action, changed, this, &TabWahPads::presetWahPad2Changed);
    connect(pads[1].target, changed, this, &TabWahPads::presetNumberWahPad2Changed);
    look::orderTabs(table);
}

void TabWahPads::refreshEditors()
{
    changePresetNames();
    changeWahPadSettings();
}

void TabWahPads::changePresetNames()
{
    if (!data) return;
    QStringList targets;
    for (int preset = 0; preset < presetCount; ++preset) {
        const auto record = presetRecord(preset);  // unread: the number alone, so that a row stays its preset's number
        targets << QString::number(preset) + ": " + (record ? QString::fromStdString(record->name) : QString());
    }
    for (const Pad &pad : pads) {
        const QSignalBlocker blocker(pad.target);
        pad.target->clear();
        pad.target->addItems(targets);
    }
}

void TabWahPads::changeWahPadSettings()
{
    const auto record = bankRecord();
    if (!record) return;
    for (const Pad &pad : pads) {
        look::showIndex(pad.target, (*record).*pad.storedTarget);
        look::showIndex(pad.action, toIndex((*record).*pad.storedAction));
    }
}

void TabWahPads::presetWahPad1Changed(int index) { chooseAction(pads[0], index); }

void TabWahPads::presetWahPad2Changed(int index) { chooseAction(pads[1], index); }

void TabWahPads::presetNumberWahPad1Changed(int index) { chooseTarget(pads[0], index); }

void TabWahPads::presetNumberWahPad2Changed(int index) { chooseTarget(pads[1], index); }

void TabWahPads::chooseAction(const Pad &pad, int index)
{
    if (!data) {
        pad.action->setCurrentIndex(0);
        return;
    }
    const auto record = bankRecord();
    if (!record || index < 0 || toIndex((*record).*pad.storedAction) == index) return;
    emit(this->*pad.changeAction)(currentBank(), fromIndex<WahPadAction>(index));
}

void TabWahPads::chooseTarget(const Pad &pad, int index)
{
    if (!data) {
        pad.target->setCurrentIndex(0);
        return;
    }
    const auto record = bankRecord();
    if (!record || index < 0 || (*record).*pad.storedTarget == index) return;
    emit(this->*pad.changeTarget)(currentBank(), index);
}
