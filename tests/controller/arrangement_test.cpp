#include "controller/windowless.h"
#include "model/presetchange.h"

namespace {

using Kind = RecordId::Kind;

/// What the unit is to hold, as plain arrays: every arrangement again, in the simplest way.
struct Plain
{
    struct Bank
    {
        BankData record;
        std::array<PresetData, presetCount> presets;
    };

    explicit Plain(const UnitContent &content)
    {
        for (std::size_t bank = 0; bank < banks.size(); ++bank)
            banks[bank] = {content.banks[bank], content.presets[bank]};
    }
    PresetData &preset(int flat) { return banks.at(flat / 10).presets.at(flat % 10); }
    void insert(int at, const Bank &bank)
    {
        for (int to = bankCount - 1; to > at; --to)
            banks.at(to) = banks.at(to - 1);
        banks.at(at) = bank;
    }
    void remove(int at)
    {
        for (int bank = at; bank + 1 < bankCount; ++bank)
            banks.at(bank) = banks.at(bank + 1);
        banks.back() = {};
    }

    std::vector<Bank> banks = std::vector<Bank>(bankCount);
};

/// A user who arranges banks and presets at random.
class Arranger : public Windowless
{
protected:
    Arranger() : Windowless(2, recordsOfBanks({0, 95, 97, 98, 99}))
    {
        QObject::connect(&controller, &DeviceController::found, [this] { queue.found("KORA", [] {}); });
        QObject::connect(&controller, &DeviceController::arranged, [this](const ArrangementReport &report) {
            isWhole = report.failure.isEmpty() && report.remaining.empty();
        });
        controller.searchDevice();
    }

    /// Whether all of it was made.
    bool make(const Arrangement &arrangement)
    {
        queue.change({arrangement.words, RequestQueue::made(queue.onWorker(&DeviceController::arrange, arrangement))});
        settle();
        return isWhole;
    }
    /// Undoes until so many steps are made; a refusal does not keep it.
    void goBack(std::size_t steps)
    {
        while (history.position() > steps) {
            history.undo();
            settle();
        }
    }
    /// What differs between the unit and what it should hold.
    std::vector<Difference> wrong() const
    {
        const UnitMemory held = unit.memory();
        UnitContent wanted = held;
        for (std::size_t bank = 0; bank < plain.banks.size(); ++bank) {
            wanted.banks[bank] = plain.banks[bank].record;
            wanted.presets[bank] = plain.banks[bank].presets;
        }
        return differences(held, wanted, allRecords());
    }
    /// One arrangement, and the same on the plain arrays.
    Arrangement choose(Plain &then);
    /// A change of presets, often of a message that this one sends.
    PresetChange anyChange(const PresetData &preset);

    /// A bank near the others that have content.
    int bank() { return std::array{0, 95, 96, 97, 98, 99}.at(static_cast<std::size_t>(random.number(0, 5))); }

    Plain plain{unit.memory()};
    bool isWhole = false;
};

Arrangement Arranger::choose(Plain &then)
{
    const int one = bank() * 10 + random.number(0, 9), other = bank() * 10 + random.number(0, 9);
    const auto preset = [](int flat) { return RecordId{Kind::Preset, flat / 10, flat % 10}; };
    const int from = one / 10, to = other / 10;
    switch (random.number(0, 8)) {
    case 0:
        then.preset(one) = {};
        return arrange::clear({preset(one)});
    case 1: {
        if (one == other) return choose(then);
        std::swap(then.preset(one), then.preset(other));
        return arrange::swap({preset(one)}, preset(other));
    }
    case 2:
        then.preset(other) = then.preset(one);
        return arrange::copy({preset(one)}, preset(other));
    case 3: {  // scattered presets, pasted in reading order
        const UnitContent held = unit.memory();
        std::set<int> places;
        for (int count = 0; count < 4; ++count)
            places.insert(bank() * 10 + random.number(0, 9));
        UnitPart copied{held, {}};
        std::vector<PresetData> presets;
        for (const int place : places) {
            copied.records.insert(preset(place));
            presets.push_back(then.preset(place));
        }
        const bool isCut = random.number(0, 1) == 1;
        for (const int place : isCut ? places : std::set<int>())
            then.preset(place) = {};
        for (std::size_t index = 0; index < presets.size(); ++index)
            if (other + static_cast<int>(index) < 1000) then.preset(other + static_cast<int>(index)) = presets[index];
        EXPECT_EQ(arrange::leftOut(copied.records, preset(other)),
                  std::max(0, other + static_cast<int>(presets.size()) - 1000));
        return arrange::paste(copied, preset(other), isCut ? copied.records : std::set<RecordId>());
    }
    case 4: {  // a whole bank over another
        const UnitPart copied{unit.memory(), recordsOfBank(from)};
        then.banks.at(to) = then.banks.at(from);
        return arrange::paste(copied, {Kind::Bank, to});
    }
    case 5:
        if (from == to) return choose(then);
        std::swap(then.banks.at(from), then.banks.at(to));
        return arrange::swap(recordsOfBank(from), {Kind::Bank, to});
    case 6: {
        const Plain::Bank moved = then.banks.at(from);
        then.remove(from);
        then.insert(to, moved);
        return arrange::moveBanks({from}, to);
    }
    case 7:
        then.insert(to, {});
        return arrange::insertEmptyBank(to);
    default:
        then.remove(from);
        return arrange::removeBanks({from});
    }
}

PresetChange Arranger::anyChange(const PresetData &preset)
{
    const auto any = [this](int low, int high) { return static_cast<std::uint8_t>(random.number(low, high)); };
    const auto maybe = [this](auto value) { return random.number(0, 1) == 0 ? std::nullopt : std::optional(value); };
    const std::uint8_t device = any(1, 10), position = any(1, 20);
    switch (random.number(0, 9)) {
    case 0:
        return FunctionChange{FootswitchType(any(0, 3))};
    case 1:
        return LoopChange{any(0, 6), LoopType(any(1, 4))};
    case 2:
        return SwitchChange{any(1, 6), SwitchType(any(1, 4))};
    case 3:
        return ProgramChange{device, any(0, 3) == 0 ? none : any(1, 128)};
    case 4: {
        PedalChange change{
            {}, {}, maybe(ExpressionPedalCharacteristic::FastSlow), maybe(any(0, 127)), maybe(any(0, 127))};
        if (const int which = any(0, 2); which > 0) change.controller = which == 1 ? none : position;
        if (change.controller == position) change.device = device;
        return change;
    }
    case 5:
        return NameChange{std::array{"CLEAN", "ü", "1", "nowhere"}.at(any(0, 3)),
                          std::array{"", "Süß", "11"}.at(any(0, 2))};
    default: {  // most often
        const std::uint8_t value = any(0, 2) == 0 ? any(toggleValue, inactiveValue) : any(0, 127);
        if (preset.controlChanges.empty() || any(0, 1) == 0)
            return ControlChange{device, position, value, std::nullopt};
        const ControlChangeData &sent = preset.controlChanges.back();
        return ControlChange{sent.midiDeviceNumber, sent.controllerNumber, value, maybe(sent.value)};
    }
    }
}

/// The same change once more, by plain words.
void changePlainly(PresetData &preset, const PresetChange &change, arrange::ChangeCount &count)
{
    const char function = "PSLM"[static_cast<int>(preset.footswitchFunction)];
    const bool sends = function == 'P' || function == 'M';
    const auto set = [&](auto &value, auto wanted, bool isAllowed, int values = 1) {
        if (value == wanted) return;
        ++(isAllowed ? count.presets : count.notAllowed);
        if (!isAllowed) return;
        value = wanted;
        count.values += values;
    };
    const auto isState = [&](auto state, char modifier) {
        return function == modifier || (function == 'P' && static_cast<int>(state) <= 2);
    };
    if (const auto *const kind = std::get_if<FunctionChange>(&change)) {
        set(preset.footswitchFunction, kind->function, true);
    } else if (const auto *const loop = std::get_if<LoopChange>(&change)) {
        set(loop->loop == 0 ? preset.bufferLoop : preset.loops[loop->loop - 1], loop->state, isState(loop->state, 'L'));
    } else if (const auto *const output = std::get_if<SwitchChange>(&change)) {
        set(preset.switches[output->number - 1], output->state, isState(output->state, 'S'));
    } else if (const auto *const program = std::get_if<ProgramChange>(&change)) {
        set(preset.programChanges[program->device - 1], program->program, sends);
    } else if (const auto *const control = std::get_if<ControlChange>(&change)) {
        Messages messages = messagesOf(preset.controlChanges), wanted = messages;
        const auto place = std::pair(control->device, control->controller);
        const int held = messages.contains(place) ? messages[place] : inactiveValue;
        if (control->where && *control->where != held) return;
        wanted.erase(place);
        if (control->value != inactiveValue) wanted[place] = control->value;
        if (sends && wanted.size() > 20) return void(++count.noRoom);
        set(messages, wanted, sends);
        preset.controlChanges.clear();
        for (const auto &[name, value] : messages)
            preset.controlChanges.emplace_back(name.first, name.second, value);
    } else if (const auto *const asked = std::get_if<PedalChange>(&change)) {
        PresetExpressionPedal wanted = preset.expressionPedal, &held = preset.expressionPedal;
        const auto drives = [](const auto &pedal) {
            return pedal.midiDeviceNumber <= 10 && pedal.controllerNumber - 1U < 20;
        };
        const bool drove = drives(held);
        if (asked->device) wanted.midiDeviceNumber = *asked->device;
        if (asked->controller && (drove || *asked->controller != none)) wanted.controllerNumber = *asked->controller;
        if (drives(wanted)) {
            if (!drove)
                wanted.characteristic = ExpressionPedalCharacteristic::Linear, wanted.toeUp = 0, wanted.toeDown = 127;
            if (asked->characteristic) wanted.characteristic = *asked->characteristic;
            if (asked->toeUp) wanted.toeUp = *asked->toeUp;
            if (asked->toeDown) wanted.toeDown = *asked->toeDown;
        }
        set(held, wanted, sends,
            (held.midiDeviceNumber != wanted.midiDeviceNumber) + (held.controllerNumber != wanted.controllerNumber) +
                (held.characteristic != wanted.characteristic) + (held.toeUp != wanted.toeUp) +
                (held.toeDown != wanted.toeDown));
    } else if (const auto *const names = std::get_if<NameChange>(&change)) {
        std::string wanted = preset.name;
        for (auto at = wanted.find(names->text); at != std::string::npos;
             at = wanted.find(names->text, at + names->replacement.size()))
            wanted.replace(at, names->text.size(), names->replacement);
        set(preset.name, wanted, true);
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, Arranger, testing::Values(MidiLists::Replace, MidiLists::Merge));

}  // namespace

TEST_P(Arranger, MakesWhatThePlainArraysSayAndTakesAllOfItBack)
{
    const UnitMemory start = unit.memory();
    for (int count = 0; count < 20; ++count) {
        Plain then = plain;
        const Arrangement arrangement = choose(then);
        const UnitMemory before = unit.memory();
        const std::size_t steps = history.position();
        if (random.number(0, 3) == 0)
            unit.queueFault(Fault::errorStatus(), static_cast<std::size_t>(random.number(30, 90)));
        if (!make(arrangement)) {  // refused in the middle: undo takes back what was made of it, and once more
            goBack(steps);
            ASSERT_TRUE(unit.memory() == before) << arrangement.words.toStdString();
            while (!make(arrangement))
                goBack(steps);
        }
        plain = std::move(then);
        const auto left = wrong();
        ASSERT_TRUE(left.empty()) << arrangement.words.toStdString() << ": " << left.front().place.toStdString();
        ASSERT_TRUE(history.position() == steps || history.steps().back().words == arrangement.words);
    }
    goBack(0);
    EXPECT_TRUE(unit.memory() == start);
}

TEST_P(Arranger, ChangesASelectionAsAPlainLoopDoesAndTakesAllOfItBack)
{
    unit.alter([](UnitMemory &memory) {
        for (const std::size_t bank : {97U, 98U, 99U})
            for (PresetData &preset : memory.presets[bank])  // there is no room
                for (std::uint8_t position = 1; preset.controlChanges.size() < 20; ++position)
                    setMessage(preset.controlChanges, {2, position, 64});
    });
    plain = Plain(unit.memory());
    const UnitMemory start = unit.memory();
    arrange::ChangeCount all;
    for (int count = 0; count < 100; ++count) {
        std::set<RecordId> selection = recordsOfBank(bank());  // and some more presets
        for (int more = 0; more < 3; ++more)
            selection.insert({Kind::Preset, bank(), random.number(0, 9)});
        const PresetChange change =
            anyChange(plain.preset(selection.rbegin()->number * 10 + selection.rbegin()->preset));
        arrange::ChangeCount wanted;
        for (const RecordId &id : selection)
            if (id.kind == Kind::Preset) changePlainly(plain.preset(id.number * 10 + id.preset), change, wanted);
        EXPECT_EQ(arrange::countOf(change, selection, {unit.memory(), allRecords()}), wanted);
        const Arrangement arrangement = arrange::change(selection, change);
        ASSERT_TRUE(make(arrangement));
        ASSERT_EQ(wrong().size(), 0U) << arrangement.words.toStdString();
        all = {all.presets + wanted.presets, all.values, all.notAllowed + wanted.notAllowed,
               all.noRoom + wanted.noRoom};
    }
    EXPECT_TRUE(all.presets > 200 && all.notAllowed > 100 && all.noRoom > 0) << all.presets << ' ' << all.notAllowed;
    goBack(0);
    EXPECT_TRUE(unit.memory() == start);
}
