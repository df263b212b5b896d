#include "device/translator.h"

#include "protocol/failure.h"

#include <type_traits>

namespace {

/// Reads the fields of one response, or the sub-fields of one of its fields, and knows where it is when one is missing.
class Reader
{
public:
    Reader(const char *commandName, const SlaveFrame &response) : command(commandName), fields(&response.fields()) {}

    bool has(char descriptor) const { return findField(*fields, descriptor).has_value(); }

    std::string text(char descriptor) const { return require(descriptor).getValuePart(); }

    /// A number as the type says: enumeration, flag (not 0), or the low bits of an integer.
    template <typename Value>
    Value value(char descriptor) const
    {
        const int number = require(descriptor).intValue();
        if constexpr (std::is_same_v<Value, bool>)
            return number != 0;
        else
            return static_cast<Value>(number);
    }

    template <typename Value>
    void read(Value &member, char descriptor) const
    {
        if constexpr (std::is_same_v<Value, std::string>)
            member = text(descriptor);
        else
            member = value<Value>(descriptor);
    }

    /// One value per array slot, from consecutive descriptors.
    template <typename Value, std::size_t Count>
    void read(std::array<Value, Count> &members, char firstDescriptor) const
    {
        for (Value &member : members)
            read(member, firstDescriptor++);
    }

    Reader in(char descriptor) const { return Reader(*this, require(descriptor)); }

private:
    Reader(const Reader &parent, const Field &field)
        : command(parent.command), path(parent.path + field.getDescriptor() + '/'), fields(&field.getSubfields())
    {
        if (!fields->empty() || field.getValuePart().empty()) return;
        // The wire cannot tell a single sub-field from a value, so the tree holds it as the value.
        compound = std::make_shared<Field>(field);
        compound->insertSubField(field.getValuePart());
        fields = &compound->getSubfields();
    }

    const Field &require(char descriptor) const
    {
        const auto found = findField(*fields, descriptor);
        if (!found) fail(std::string("the answer to ") + command + " lacks field " + path + descriptor);
        return *found;
    }

    const char *command;
    std::string path;  // of the field read from, "G/n/"; empty for the response itself
    std::shared_ptr<Field> compound;
    const std::vector<Field> *fields;  // the response's, or those of `compound`
};

}  // namespace

DeviceInfo Translator::fromReadDeviceInfo_getDeviceInfo(const SlaveFrame &response) const
{
    const Reader answer("RDI", response);
    DeviceInfo info;
    answer.read(info.firstText, 'A');
    answer.read(info.secondText, 'B');
    answer.read(info.firmwareMajor, 'C');
    answer.read(info.firmwareMinor, 'D');
    answer.read(info.thirdNumber, 'E');
    answer.read(info.fourthNumber, 'F');
    return info;
}

std::string Translator::fromReadBankSettings_getBankName(const SlaveFrame &response) const
{
    return Reader("RBB", response).text('B');
}

std::unique_ptr<BankData> Translator::fromReadBankSettings_getBankData(const SlaveFrame &response) const
{
    const Reader answer("RBB", response);
    auto bank = std::make_unique<BankData>();
    answer.read(bank->name, 'B');
    answer.read(bank->wahPad1Action, 'C');
    answer.read(bank->wahPad1PresetNumber, 'D');
    answer.read(bank->wahPad2Action, 'E');
    answer.read(bank->wahPad2PresetNumber, 'F');
    return bank;
}

std::string Translator::fromReadPresetSettings_getPresetName(const SlaveFrame &response) const
{
    return Reader("RBP", response).text('C');
}

FootswitchType Translator::fromReadPresetSettings_getFootswitchFunction(const SlaveFrame &response) const
{
    return Reader("RBP", response).value<FootswitchType>('D');
}

std::unique_ptr<PresetData> Translator::fromReadPresetSettings_getPresetData(const SlaveFrame &response) const
{
    const Reader answer("RBP", response);
    auto preset = std::make_unique<PresetData>();
    answer.read(preset->name, 'C');
    answer.read(preset->footswitchFunction, 'D');
    if (answer.has('E')) {
        const Reader loops = answer.in('E');
        loops.read(preset->bufferLoop, 'A');
        loops.read(preset->loops, 'B');
    }
    if (answer.has('F')) answer.in('F').read(preset->switches, 'A');
    if (!answer.has('G')) return preset;

    const Reader midi = answer.in('G');
    for (char entry = 'A'; entry <= 'T'; ++entry) {
        if (!midi.has(entry)) continue;
        const Reader message = midi.in(entry);
        ControlChangeData &change = preset->controlChanges.emplace_back();
        message.read(change.midiDeviceNumber, 'A');
        message.read(change.controllerNumber, 'B');
        message.read(change.value, 'C');
    }
    char device = 'a';
    for (std::uint8_t &program : preset->programChanges) {
        if (midi.has(device)) midi.read(program, device);
        ++device;
    }
    if (midi.has('n')) {
        const Reader pedal = midi.in('n');
        pedal.read(preset->expressionPedal.midiDeviceNumber, 'A');
        pedal.read(preset->expressionPedal.controllerNumber, 'B');
        pedal.read(preset->expressionPedal.characteristic, 'C');
        pedal.read(preset->expressionPedal.toeUp, 'D');
        pedal.read(preset->expressionPedal.toeDown, 'E');
    }
    return preset;
}

std::unique_ptr<MidiDevice> Translator::fromReadMidiDeviceSettings_getMidiDevice(const SlaveFrame &response) const
{
    const Reader answer("RMD", response);
    auto device = std::make_unique<MidiDevice>();
    answer.read(device->name, 'B');
    answer.read(device->channel, 'C');
    answer.read(device->sendCCFirst, 'D');
    answer.read(device->tapTempo, 'E');
    char slot = 'F';
    for (Controller &controller : device->controllers) {
        const Reader fields = answer.in(slot++);
        fields.read(controller.name, 'A');
        fields.read(controller.number, 'B');
    }
    answer.read(device->tapController, 'a');
    answer.read(device->tapControllerValue, 'b');
    answer.read(device->noteNumber, 'c');
    answer.read(device->noteType, 'd');
    return device;
}

std::unique_ptr<Settings> Translator::fromReadOtherSettings_getSettings(const SlaveFrame &response) const
{
    const Reader answer("ROS", response);
    auto settings = std::make_unique<Settings>();
    answer.read(settings->bankPresetChangeMode, 'A');
    answer.read(settings->recallUserBanksOnly, 'B');
    answer.read(settings->oneTimeMidiModeSend, 'C');
    answer.read(settings->wahPad1, 'D');
    answer.read(settings->wahPad2, 'E');
    answer.read(settings->clickProtection, 'F');
    answer.read(settings->loopsSplit, 'G');
    answer.read(settings->keyboardType, 'J');
    answer.read(settings->presetChangeName, 'K');
    return settings;
}

std::unique_ptr<SwitchOutData> Translator::fromReadSwitchOutSettings_getSwitchOutData(const SlaveFrame &response) const
{
    const Reader answer("RSO", response);
    auto data = std::make_unique<SwitchOutData>();
    answer.read(data->switchOuts, 'A');
    return data;
}

std::unique_ptr<MidiInData> Translator::fromReadMidiInSettings_getMidiInData(const SlaveFrame &response) const
{
    const Reader answer("RMI", response);
    auto data = std::make_unique<MidiInData>();
    answer.read(data->channel, 'A');
    answer.read(data->pcFunction, 'B');
    answer.read(data->ccFunction, 'C');
    return data;
}

std::unique_ptr<ExpressionPedalData>
Translator::fromReadExpressionPedalSettings_getExpressionPedalData(const SlaveFrame &response) const
{
    const Reader answer("REP", response);
    auto pedal = std::make_unique<ExpressionPedalData>();
    answer.read(pedal->characteristic, 'C');
    answer.read(pedal->period, 'D');
    answer.read(pedal->toeUp, 'E');
    answer.read(pedal->toeDown, 'F');
    answer.read(pedal->calibrationUp, 'G');
    answer.read(pedal->calibrationDown, 'H');
    answer.read(pedal->calibrationInversion, 'I');
    answer.read(pedal->midiDeviceNumber, 'J');
    answer.read(pedal->controllerNumber, 'K');
    return pedal;
}

std::string Translator::fromReadErrorDescription_getErrorDescription(const SlaveFrame &response) const
{
    return Reader("RET", response).text('B');
}
