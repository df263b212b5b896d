#include "ui/preview/previewscene.h"

#include "model/midiuse.h"
#include "ui/look.h"

#include <algorithm>
#include <set>

namespace {

using Effect = PreviewScene::Effect;

const QString dash = QStringLiteral("–");

/// What a footswitch's function reaches.
struct Reach
{
    bool loops;
    bool switches;
    bool midi;
    const char *summary;
};

/// By the function's value.
constexpr Reach reaches[] = {
    {true, true, true,
     QT_TRANSLATE_NOOP("PreviewScene", "Sets the buffer, all loops and all switch outputs, and sends MIDI")},
    {false, true, false,
     QT_TRANSLATE_NOOP("PreviewScene", "Changes switch outputs only; loops and MIDI stay as they are")},
    {true, false, false,
     QT_TRANSLATE_NOOP("PreviewScene", "Changes loops only; switch outputs and MIDI stay as they are")},
    {false, false, true,
     QT_TRANSLATE_NOOP("PreviewScene", "Sends MIDI only; loops and switch outputs stay as they are")},
};
constexpr Reach unknownReach{false, false, false, QT_TRANSLATE_NOOP("PreviewScene", "This function is not known")};

/// A name from the unit on one line: whatever breaks a line or steers a terminal becomes a blank.
QString oneLine(const std::string &name)
{
    QString text = QString::fromStdString(name);
    const auto steers = [](QChar character) { return character.category() == QChar::Other_Control; };
    std::replace_if(text.begin(), text.end(), steers, QChar(' '));
    return text.simplified();
}

template <typename Type>
PreviewScene::Box box(const QString &label, Type state, bool reached)
{
    constexpr Effect effects[] = {Effect::On, Effect::Off, Effect::Toggle, Effect::Untouched};
    const int index = toIndex(state);
    if (!reached || index < 0 || index >= static_cast<int>(std::size(effects))) return {label, dash, Effect::Untouched};
    return {label, labels<Type>()[index], effects[index]};
}

/// Tells the messages of a preset with the names that the MIDI device definitions give to devices and controllers.
class MidiWords
{
    Q_DECLARE_TR_FUNCTIONS(PreviewScene)

public:
    explicit MidiWords(const DataFromDevice &data)
    {
        for (std::size_t slot = 0; slot < devices.size(); ++slot)
            devices[slot] = data.midiDevices[slot].load();
    }

    QStringList sentences(const PresetData &preset) const
    {
        std::set<int> numbers;
        for (int number = 1; number <= midiDeviceCount; ++number)
            if (programOf(preset, number) != none) numbers.insert(number);
        for (const ControlChangeData &change : preset.controlChanges)
            if (change.value != inactiveValue) numbers.insert(change.midiDeviceNumber);

        QStringList lines;
        for (const int number : numbers)
            lines << tr("%1: %2").arg(address(number), messages(preset, number).join(QStringLiteral("; ")));
        return lines;
    }

    /// "MIX of DELAY": what an expression pedal drives.
    QString target(int number, int position) const
    {
        return tr("%1 of %2").arg(controllerName(number, position), deviceName(number));
    }

private:
    static int programOf(const PresetData &preset, int number)
    {
        return number < 1 || number > midiDeviceCount ? none
                                                      : preset.programChanges[static_cast<std::size_t>(number - 1)];
    }

    /// Null when it has not been read, or for a number that no device has.
    const MidiDevice *device(int number) const
    {
        return number < 1 || number > midiDeviceCount ? nullptr : devices[static_cast<std::size_t>(number - 1)].get();
    }

    QString deviceName(int number) const
    {
        const MidiDevice *const found = device(number);
        const QString name = found ? oneLine(found->name) : QString();
        return name.isEmpty() ? tr("MIDI %1").arg(number) : name;
    }

    QString address(int number) const
    {
        const MidiDevice *const found = device(number);
        if (!found) return tr("%1, not read yet").arg(deviceName(number));
        if (found->channel == none) return tr("%1, no channel set").arg(deviceName(number));
        return tr("%1, channel %2").arg(deviceName(number), QString::number(found->channel));
    }

    QString controllerName(int number, int position) const
    {
        const MidiDevice *const found = device(number);
        if (!found) return tr("controller slot %1").arg(position);
        const bool exists = position >= 1 && position <= controllerCount;
        const Controller controller =
            exists ? found->controllers[static_cast<std::size_t>(position - 1)] : Controller();
        if (controller.number == none) return tr("controller slot %1 (undefined)").arg(position);
        const QString name = oneLine(controller.name);
        return name.isEmpty() ? tr("CC %1").arg(controller.number) : name;
    }

    /// What one device gets, in the order in which the unit sends it.
    QStringList messages(const PresetData &preset, int number) const
    {
        QStringList messages;
        for (const ControlChangeData &change : preset.controlChanges) {
            if (change.midiDeviceNumber != number || change.value == inactiveValue) continue;
            const QString name = controllerName(number, change.controllerNumber);
            messages << (change.value == toggleValue ? tr("%1 toggles").arg(name)
                                                     : tr("%1 = %2").arg(name, QString::number(change.value)));
        }
        const int program = programOf(preset, number);
        const MidiDevice *const found = device(number);
        if (program != none)
            messages.insert(found && found->sendCCFirst ? messages.size() : 0, tr("program %1").arg(program));
        return messages;
    }

    std::array<std::shared_ptr<const MidiDevice>, midiDeviceCount> devices;
};

PreviewScene::Pedal pedal(const PresetExpressionPedal &assignment, bool reached, const MidiWords &words)
{
    PreviewScene::Pedal pedal;
    if (!reached) {
        pedal.text = PreviewScene::tr("The pedal stays as it is");
        return pedal;
    }
    if (!drivesController(assignment)) {
        pedal.text = PreviewScene::tr("No controller is assigned");
        return pedal;
    }
    pedal.assigned = true;
    pedal.text = words.target(assignment.midiDeviceNumber, assignment.controllerNumber);
    pedal.curve = labels<ExpressionPedalCharacteristic>().value(toIndex(assignment.characteristic), dash);
    pedal.characteristic = assignment.characteristic;
    pedal.toeUp = assignment.toeUp;
    pedal.toeDown = assignment.toeDown;
    return pedal;
}

PreviewScene::Footswitch footswitch(const PresetData &preset, const MidiWords &words)
{
    const int function = toIndex(preset.footswitchFunction);
    const Reach &reach =
        function < 0 || function >= static_cast<int>(std::size(reaches)) ? unknownReach : reaches[function];
    PreviewScene::Footswitch result;
    result.read = true;
    result.name = oneLine(preset.name);
    result.function = labels<FootswitchType>().value(function, dash);
    result.color = QColor(look::functionColor(preset.footswitchFunction));
    result.summary = PreviewScene::tr(reach.summary);
    result.path << box(PreviewScene::tr("BUFFER"), preset.bufferLoop, reach.loops);
    for (const LoopType loop : preset.loops)
        result.path << box(PreviewScene::tr("LOOP %1").arg(result.path.size()), loop, reach.loops);
    for (const SwitchType output : preset.switches)
        result.outputs << box(PreviewScene::tr("SWITCH %1").arg(result.outputs.size() + 1), output, reach.switches);
    if (reach.midi) result.midi = words.sentences(preset);
    if (result.midi.isEmpty())
        result.midiNote = reach.midi ? PreviewScene::tr("Sends no MIDI messages")
                                     : PreviewScene::tr("MIDI stays as it is: nothing is sent");
    result.pedal = pedal(preset.expressionPedal, reach.midi, words);
    return result;
}

PreviewScene::WahPad wahPad(WahPadAction action, int target, const PreviewScene &scene)
{
    PreviewScene::WahPad pad{labels<WahPadAction>().value(toIndex(action), dash), QString::number(target), {}};
    if (target >= presetCount) return pad;
    const PreviewScene::Footswitch &aimed = scene.footswitches[static_cast<std::size_t>(target)];
    if (aimed.read) pad.target += QStringLiteral(": ") + aimed.name;
    pad.color = aimed.color;
    return pad;
}

}  // namespace

double PreviewScene::Pedal::valueAt(double travel) const
{
    double part = travel;
    if (characteristic == ExpressionPedalCharacteristic::FastSlow) part = 1 - (1 - travel) * (1 - travel);
    if (characteristic == ExpressionPedalCharacteristic::SlowFast) part = travel * travel;
    return toeUp + (toeDown - toeUp) * part;
}

PreviewScene PreviewScene::of(const DataFromDevice *data, int bank, int chosen)
{
    PreviewScene scene;
    scene.bank = bank;
    scene.chosen = chosen;
    if (!data) {
        scene.bankName = tr("no unit found yet");
        scene.notice = tr("No unit has been found yet. Its banks show here when it is connected.");
        return scene;
    }
    const MidiWords words(*data);
    const auto index = static_cast<std::size_t>(bank);
    for (std::size_t preset = 0; preset < scene.footswitches.size(); ++preset)
        if (const auto record = data->presetData[index][preset].load())
            scene.footswitches[preset] = footswitch(*record, words);

    const auto record = data->bankData[index].load();
    scene.bankName = record ? oneLine(record->name) : tr("not read yet");
    if (record)
        scene.wahPads = {wahPad(record->wahPad1Action, record->wahPad1PresetNumber, scene),
                         wahPad(record->wahPad2Action, record->wahPad2PresetNumber, scene)};
    if (!scene.chosenFootswitch().read)
        scene.notice = record ? tr("Preset %1 of bank %2 has not been read yet.").arg(chosen).arg(bank)
                              : tr("Bank %1 has not been read yet.").arg(bank);
    return scene;
}

QString PreviewScene::description() const
{
    QStringList sentences{tr("Bank %1: %2").arg(QString::number(bank), bankName)};
    if (!notice.isEmpty()) return (sentences << notice).join(QStringLiteral(". "));
    const Footswitch &told = chosenFootswitch();
    sentences << tr("Footswitch %1: %2, %3").arg(QString::number(chosen), told.name, told.function) << told.summary;
    for (const Box &state : told.path + told.outputs)
        sentences << tr("%1 %2").arg(state.label, state.text);
    sentences << told.midi;
    if (!told.midiNote.isEmpty()) sentences << told.midiNote;
    sentences << (told.pedal.assigned ? tr("Expression pedal: %1, %2 to %3, %4")
                                            .arg(told.pedal.text, QString::number(told.pedal.toeUp),
                                                 QString::number(told.pedal.toeDown), told.pedal.curve)
                                      : told.pedal.text);
    for (std::size_t pad = 0; pad < wahPads.size(); ++pad)
        if (!wahPads[pad].action.isEmpty())
            sentences << tr("Wah pad %1: %2, preset %3")
                             .arg(QString::number(pad + 1), wahPads[pad].action, wahPads[pad].target);
    return sentences.join(QStringLiteral(". "));
}
