#pragma once

#include "model/values.h"

#include <random>

/// Some of each kind.
inline const std::set<RecordId> someRecords = [] {
    std::set<RecordId> records = recordsOfBank(0);
    records.merge(recordsOfBank(99));
    records.insert({{RecordId::Kind::Settings},
                    {RecordId::Kind::MidiIn},
                    {RecordId::Kind::ExpressionPedal},
                    {RecordId::Kind::SwitchOuts}});
    records.insert({{RecordId::Kind::MidiDevice, 1}, {RecordId::Kind::MidiDevice, 10}});
    return records;
}();

/// Makes contents at random, for tests that must hold with any.
class RandomContent
{
public:
    /// What a unit takes, or also what only a strange one would tell: any numbers, texts of any bytes.
    enum class Values { Valid, Any };

    explicit RandomContent(unsigned seed, Values which = Values::Any) : random(seed), values(which) {}

    UnitContent content()
    {
        UnitContent made;
        for (const RecordId &id : allRecords())
            alter(made, id, 1);
        return made;
    }

    /// Gives a `share` (0 to 1) of the record's values new ones.
    void alter(UnitContent &content, const RecordId &id, double share)
    {
        const auto change = [&](const ValuePlace &, const auto &row, auto &value) {
            if (chance() < share) pick(value, row.range);
        };
        if (id.kind == RecordId::Kind::Preset && chance() < share)
            pickList(content.presets.at(static_cast<std::size_t>(id.number)).at(static_cast<std::size_t>(id.preset)));
        visitRecord(content, id, [&](auto &record) { forEachValue(change, record); });
    }

    int number(int low, int high) { return std::uniform_int_distribution(low, high)(random); }
    double chance() { return std::uniform_real_distribution<double>()(random); }

private:
    bool isOdd() { return values == Values::Any && number(0, 9) == 0; }

    void pick(std::string &text, const Range &)
    {
        static const std::string plain[] = {"", "CLEAN", "Süß & <b>", " \"\\x\" ", "日本 \U0001F3B8", "[/]{}:,null"};
        static const std::string odd[] = {"\xFF\xFE"
                                          "A",
                                          "\xEF\xBB\xBF"
                                          "BOM",
                                          "a\x1D"
                                          "b",
                                          "\x01\x7F\t",
                                          std::string(1, '\0'),
                                          "\xED\xA0\x80"};
        text = isOdd() ? odd[number(0, 5)] : plain[number(0, 5)] + std::to_string(number(0, 99));
    }
    void pick(bool &flag, const Range &) { flag = number(0, 1) == 1; }
    template <typename Number>
    void pick(Number &value, const Range &range)
    {
        if constexpr (std::is_enum_v<Number>) {
            static constexpr int odd[] = {-1, 0, 99, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
            value = isOdd() ? static_cast<Number>(odd[number(0, 4)])
                            : fromIndex<Number>(number(0, static_cast<int>(labelTexts<Number>.size()) - 1));
        } else {
            const int special =
                range.also == Range::Also::ToggleAndInactive ? number(toggleValue, inactiveValue) : none;
            const bool isSpecial = range.also != Range::Also::NothingElse && number(0, 3) == 0;
            value = static_cast<Number>(isOdd()     ? number(0, none)
                                        : isSpecial ? special
                                                    : number(range.low, range.high));
        }
    }
    void pickList(PresetData &preset)
    {
        preset.controlChanges.resize(static_cast<std::size_t>(number(0, maxControlChanges)));
        for (ControlChangeData &change : preset.controlChanges)
            forEachField<ControlChangeData>([&](const auto &row) { pick(change.*row.member, row.range); });
    }

    std::mt19937 random;
    Values values;
};
