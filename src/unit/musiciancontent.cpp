#include "unit/musiciancontent.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view bankNames[] = {
    "OPENING SET", "CAFÉ BLEU",    "NIGHT BUS",   "ÜBER DEN DÄCHERN", "SALT AND SMOKE", "SLOW RIVER",   "PAPER KITES",
    "ŻÓŁTY DOM",   "LAST TRAIN",   "GLASHÄUSER",  "COPPER SKY",       "DÉJÀ VU",        "HARBOUR",      "TWO SUITCASES",
    "MAÑANA",      "WINTER RADIO", "ORANGE TREE", "FIRE ESCAPE",      "SUNDAY MARKET",  "STRASSENBAHN", "BLUE HOUR",
    "LONG SHADOW", "KNEE DEEP",    "ÉTÉ INDIEN",  "RAIN ON TIN",      "ACOUSTIC SET",   "DUO SET",      "WEDDING SET",
    "REHEARSAL",   "STUDIO",       "ENCORE",
};

struct PresetPlan
{
    std::string_view name;
    FootswitchType function;
    std::string_view loops;     ///< the buffer and loops 1 to 6: + on, - off, ~ toggle, . inactive
    std::string_view switches;  ///< switches 1 to 6
};

// A modifier leaves alone what it does not toggle.
constexpr PresetPlan presetPlans[presetCount] = {
    {"CLEAN", FootswitchType::Preset, "+-----+", "+-----"},
    {"CRUNCH", FootswitchType::Preset, "++-----", "-+----"},
    {"RHYTHM", FootswitchType::Preset, "+++----", "-+-+--"},
    {"SOLO", FootswitchType::Preset, "-+++-+-", "--+--+"},
    {"AMBIENT", FootswitchType::Preset, "+---+++", "+---+-"},
    {"BOOST", FootswitchType::LoopModifier, ".~.....", "......"},
    {"DELAY", FootswitchType::LoopModifier, "....~~.", "......"},
    {"CHANNEL", FootswitchType::SwitchModifier, ".......", "~....."},
    {"RÊVERIE", FootswitchType::MidiModifier, ".......", "......"},
    {"TAP + FREEZE", FootswitchType::MidiModifier, ".......", "......"},
};

struct ControllerPlan
{
    std::string_view name;
    std::uint8_t number;
};

struct DevicePlan
{
    std::string_view name;
    std::uint8_t channel;
    bool ccFirst;
    MidiDeviceTapTempo tap;
    TapTempoNote note;
    std::array<ControllerPlan, 5> controllers;  ///< a plan without a name leaves the slot undefined
};

constexpr DevicePlan devicePlans[] = {
    {"DELAY",
     1,
     false,
     MidiDeviceTapTempo::TapCtrl,
     TapTempoNote::On,
     {{{"BYPASS", 102}, {"TAP", 93}, {"MIX", 14}, {"FEEDBACK", 15}, {"FREEZE", 80}}}},
    {"HALLRÄUME",
     2,
     false,
     MidiDeviceTapTempo::Unused,
     TapTempoNote::Off,
     {{{"BYPASS", 26}, {"DECAY", 17}, {"HÖHEN", 18}, {"MIX", 19}, {"INFINITE", 97}}}},
    {"AMP",
     3,
     true,
     MidiDeviceTapTempo::Unused,
     TapTempoNote::Off,
     {{{"CHANNEL", 31}, {"LOOP", 32}, {"MASTER", 7}, {"GAIN", 20}, {}}}},
    {"LOOPER",
     5,
     false,
     MidiDeviceTapTempo::TapTempoNote,
     TapTempoNote::Toggle,
     {{{"REC/PLAY", 36}, {"STOP", 37}, {"REVERSE", 38}, {"LEVEL", 39}, {}}}},
    {"LUMIÈRES",
     10,
     true,
     MidiDeviceTapTempo::TapTempoNote,
     TapTempoNote::On,
     {{{"SCENE", 70}, {"DIMMER", 71}, {"STROBE", 72}, {}, {}}}},
    {"PITCH",
     12,
     false,
     MidiDeviceTapTempo::Unused,
     TapTempoNote::Off,
     {{{"BYPASS", 0}, {"INTERVAL", 1}, {"GLIDE", 127}, {}, {}}}},
    {"MODULATION",
     16,
     false,
     MidiDeviceTapTempo::TapCtrl,
     TapTempoNote::Off,
     {{{"BYPASS", 102}, {"SPEED", 22}, {"DEPTH", 23}, {"TAP", 64}, {"SHAPE", 24}}}},
};

template <typename Type>
Type stateOf(char sign)
{
    return sign == '+' ? Type::On : sign == '-' ? Type::Off : sign == '~' ? Type::Toggle : Type::Inactive;
}

MidiDevice midiDevice(std::size_t slot)
{
    MidiDevice device;
    if (slot >= std::size(devicePlans)) {
        device.name = "MIDI " + std::to_string(slot + 1);
        return device;
    }
    const DevicePlan &plan = devicePlans[slot];
    device.name = plan.name;
    device.channel = plan.channel;
    device.sendCCFirst = plan.ccFirst;
    device.tapTempo = plan.tap;
    device.noteType = plan.note;
    device.noteNumber = static_cast<std::uint8_t>(60 + slot);
    if (plan.tap == MidiDeviceTapTempo::TapCtrl) {
        const auto *tap = std::ranges::find(plan.controllers, "TAP", &ControllerPlan::name);
        device.tapController = static_cast<std::uint8_t>(tap - plan.controllers.begin() + 1);
        device.tapControllerValue = 127;
    }
    for (std::size_t i = 0; i < plan.controllers.size(); ++i)
        if (!plan.controllers[i].name.empty())
            device.controllers[i] = {std::string(plan.controllers[i].name), plan.controllers[i].number};
    return device;
}

BankData bank(std::size_t index)
{
    BankData data;
    data.name = index < std::size(bankNames) ? bankNames[index] : "BANK " + std::to_string(index);
    data.wahPad1Action = fromIndex<WahPadAction>(static_cast<int>(index % 3));
    data.wahPad1PresetNumber = static_cast<std::uint8_t>(index % presetCount);
    data.wahPad2Action = fromIndex<WahPadAction>(static_cast<int>((index + 1) % 3));
    data.wahPad2PresetNumber = static_cast<std::uint8_t>((index + 3) % presetCount);
    return data;
}

void addMidi(PresetData &preset, std::size_t bankIndex, std::size_t slot)
{
    // The values differ from song to song, so that no two presets with MIDI are alike by accident.
    const auto varied = [&](std::size_t factor) {
        return static_cast<std::uint8_t>((bankIndex * presetCount + slot) * factor % 128);
    };
    if (preset.footswitchFunction == FootswitchType::Preset) {
        preset.programChanges[0] = static_cast<std::uint8_t>(varied(1) + 1);
        preset.programChanges[1] = static_cast<std::uint8_t>(varied(3) + 1);
        preset.controlChanges = {{1, 3, varied(5)}, {3, 1, static_cast<std::uint8_t>(slot == 0 ? 0 : 127)}};
        if (slot == 3) preset.expressionPedal = {1, 4, ExpressionPedalCharacteristic::Linear, 0, 127};
        if (slot == 4) preset.expressionPedal = {2, 2, ExpressionPedalCharacteristic::SlowFast, 20, varied(7)};
    } else if (preset.footswitchFunction == FootswitchType::MidiModifier) {
        preset.controlChanges = {{1, 5, toggleValue}, {2, 5, toggleValue}, {7, 2, varied(9)}};
        preset.programChanges[4] = static_cast<std::uint8_t>(bankIndex + 1);
    }
}

PresetData preset(std::size_t bankIndex, std::size_t slot)
{
    const PresetPlan &plan = presetPlans[slot];
    PresetData data;
    data.name = plan.name;
    data.footswitchFunction = plan.function;
    data.bufferLoop = stateOf<LoopType>(plan.loops.front());
    for (std::size_t i = 0; i < data.loops.size(); ++i)
        data.loops[i] = stateOf<LoopType>(plan.loops[i + 1]);
    for (std::size_t i = 0; i < data.switches.size(); ++i)
        data.switches[i] = stateOf<SwitchType>(plan.switches[i]);
    addMidi(data, bankIndex, slot);
    return data;
}

}  // namespace

UnitMemory musicianContent()
{
    UnitMemory memory;
    memory.deviceInfo = {"KORA", "VIRTUAL UNIT", 1, 4, 2, 1017};
    for (std::size_t index = 0; index < memory.banks.size(); ++index) {
        memory.banks[index] = bank(index);
        for (std::size_t slot = 0; slot < memory.presets[index].size(); ++slot)
            memory.presets[index][slot] = preset(index, slot);
    }
    for (std::size_t slot = 0; slot < memory.midiDevices.size(); ++slot)
        memory.midiDevices[slot] = midiDevice(slot);
    memory.midiIn = {11, MidiInPCFunction::BankAndPreset, MidiInCCFunction::NumberBankValuePreset};
    memory.expressionPedal = {
        ExpressionPedalCharacteristic::SlowFast, ExpressionPedalPeriod::Ms16, 0, 127, 212, 3871, false, 1, 4, true};
    memory.switchOuts.switchOuts = {SwitchOutSetting::Latching,  SwitchOutSetting::Latching, SwitchOutSetting::Pulse,
                                    SwitchOutSetting::Momentary, SwitchOutSetting::Latching, SwitchOutSetting::Pulse};
    memory.settings.bankPresetChangeMode = BankPresetChangeMode::Indirect;
    memory.settings.recallUserBanksOnly = true;
    memory.settings.wahPad1 = WahPadSetting::Loop1;
    memory.settings.clickProtection = ClickProtection::Mid;
    return memory;
}
