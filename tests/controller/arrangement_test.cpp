#include "controller/windowless.h"

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
