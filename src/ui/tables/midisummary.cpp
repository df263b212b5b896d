#include "ui/tables/midisummary.h"

#include <QObject>
#include <QStringList>

QString controllerName(const MidiDevice &definition, int position)
{
    const bool exists = position >= 1 && position <= controllerCount;
    const Controller controller =
        exists ? definition.controllers[static_cast<std::size_t>(position - 1)] : Controller();
    if (!controller.name.empty()) return QString::fromStdString(controller.name);
    return controller.number == none ? QObject::tr("controller %1").arg(position)
                                     : QStringLiteral("CC %1").arg(controller.number);
}

QString midiSummary(const PresetData &preset, int device, const MidiDevice &definition)
{
    QStringList parts;
    const int program = preset.programChanges.at(static_cast<std::size_t>(device - 1));
    if (program != none) parts << QStringLiteral("PC %1").arg(program);
    for (const ControlChangeData &change : preset.controlChanges) {
        if (change.midiDeviceNumber != device || change.value == inactiveValue) continue;
        const QString name = controllerName(definition, change.controllerNumber);
        parts << (change.value == toggleValue ? QObject::tr("%1 toggles").arg(name)
                                              : QStringLiteral("%1 = %2").arg(name, QString::number(change.value)));
    }
    const PresetExpressionPedal &pedal = preset.expressionPedal;
    if (pedal.midiDeviceNumber == device &&
        !rowOf<&PresetExpressionPedal::controllerNumber>().range.isNone(pedal.controllerNumber))
        parts << QObject::tr("PEDAL: %1 %2 to %3")
                     .arg(controllerName(definition, pedal.controllerNumber), QString::number(pedal.toeUp),
                          QString::number(pedal.toeDown));
    return parts.join(QStringLiteral(", "));
}
