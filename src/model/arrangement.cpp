#include "model/arrangement.h"

#include "model/places.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using Kind = RecordId::Kind;

/// A record, and where it is to stand.
struct Placed
{
    RecordId from;
    RecordId to;
};

struct Placement
{
    std::vector<Placed> records;
    int leftOut = 0;  ///< banks, or presets where no whole bank is among them
};

/// Banks of which all or some presets are selected, and whether one of them is selected as a whole.
std::pair<std::set<int>, bool> banksOf(const std::set<RecordId> &selection)
{
    std::set<int> banks;
    bool hasWhole = false;
    for (const RecordId &id : selection) {
        if (id.kind == Kind::Bank || id.kind == Kind::Preset) banks.insert(id.number);
        hasWhole = hasWhole || id.kind == Kind::Bank;
    }
    return {banks, hasWhole};
}

/// Whole banks go to banks, and presets that are selected beside them to their places in the next ones; presets alone
/// go one behind the other.
Placement placed(const std::set<RecordId> &selection, const RecordId &target)
{
    Placement placement;
    const auto [banks, hasWhole] = banksOf(selection);
    if (hasWhole) {
        int to = target.number;
        for (const int bank : banks) {
            if (to >= bankCount) {
                ++placement.leftOut;
                continue;
            }
            for (RecordId id : recordsOfBank(bank))
                if (selection.contains(id)) placement.records.push_back({id, {id.kind, to, id.preset}});
            ++to;
        }
        return placement;
    }
    int to = target.number * presetCount + target.preset;
    for (const RecordId &id : selection) {
        if (id.kind != Kind::Preset) continue;
        if (to < bankCount * presetCount)
            placement.records.push_back({id, {Kind::Preset, to / presetCount, to % presetCount}});
        else
            ++placement.leftOut;
        ++to;
    }
    return placement;
}

/// Calls `visit` with two records of banks or presets.
template <typename Other, typename Visit>
void visitPair(UnitContent &content, const RecordId &id, Other &other, const RecordId &otherId, const Visit &visit)
{
    visitRecord(content, id, [&]<typename Record>(Record &record) {
        visitRecord(other, otherId, [&]<typename Same>(Same &same) {
            if constexpr (std::is_same_v<Record, std::remove_const_t<Same>>) visit(record, same);
        });
    });
}

void assign(UnitContent &content, const RecordId &to, const UnitContent &source, const RecordId &from)
{
    visitPair(content, to, source, from, [](auto &record, const auto &other) { record = other; });
}

void makeEmpty(UnitContent &content, const std::set<RecordId> &records)
{
    static const UnitContent empty = emptyContent();
    for (const RecordId &id : records)
        assign(content, id, empty, id);
}

/// "TO BANK 7": where the first of a selection goes.
QString wordsFor(const std::set<RecordId> &selection, const RecordId &target)
{
    return banksOf(selection).second ? places::bank(target.number) : places::record(target);
}

using Order = std::vector<std::optional<int>>;  ///< by bank: which one comes there; none for an empty one

Arrangement reordered(const QString &words, Order order)
{
    Arrangement arrangement{words, {}, {}};
    for (int bank = 0; bank < bankCount; ++bank)
        if (order[static_cast<std::size_t>(bank)] != bank) arrangement.records.merge(recordsOfBank(bank));
    arrangement.alter = [order = std::move(order), records = arrangement.records](UnitContent &content) {
        const UnitContent before = content;
        for (const RecordId &id : records) {
            const std::optional<int> from = order[static_cast<std::size_t>(id.number)];
            if (from)
                assign(content, id, before, {id.kind, *from, id.preset});
            else
                makeEmpty(content, {id});
        }
    };
    return arrangement;
}

void requireBank(int bank)
{
    if (bank < 0 || bank >= bankCount) throw std::out_of_range("bank");
}

/// All banks but these, in their order.
Order banksWithout(const std::set<int> &banks)
{
    Order order;
    for (int bank = 0; bank < bankCount; ++bank)
        if (!banks.contains(bank)) order.emplace_back(bank);
    return order;
}

QString wordsFor(const std::set<int> &banks)
{
    return banks.size() == 1 ? places::bank(*banks.begin()) : QStringLiteral("%1 BANKS").arg(banks.size());
}

std::set<RecordId> recordsOf(const Placement &placement, bool withSources)
{
    std::set<RecordId> records;
    for (const auto &[from, to] : placement.records) {
        records.insert(to);
        if (withSources) records.insert(from);
    }
    return records;
}

}  // namespace

QString arrange::nameOf(const std::set<RecordId> &selection)
{
    const auto [banks, hasWhole] = banksOf(selection);
    if (hasWhole)
        return banks.size() == 1 ? places::bank(*banks.begin()) : QStringLiteral("%1 BANKS").arg(banks.size());
    return selection.size() == 1 ? places::record(*selection.begin())
                                 : QStringLiteral("%1 PRESETS").arg(selection.size());
}

Arrangement arrange::clear(const std::set<RecordId> &selection)
{
    return {QStringLiteral("CLEAR %1").arg(nameOf(selection)), selection,
            [selection](UnitContent &content) { makeEmpty(content, selection); }};
}

Arrangement arrange::paste(const UnitPart &copied, const RecordId &target, const std::set<RecordId> &cut)
{
    const Placement placement = placed(copied.records, target);
    std::set<RecordId> records = recordsOf(placement, false);
    records.insert(cut.begin(), cut.end());
    const QString words = cut.empty() ? QStringLiteral("PASTE %1 TO %2") : QStringLiteral("MOVE %1 TO %2");
    return {words.arg(nameOf(copied.records), wordsFor(copied.records, target)), std::move(records),
            [placement, cut, source = copied.content](UnitContent &content) {
                makeEmpty(content, cut);
                for (const auto &[from, to] : placement.records)
                    assign(content, to, source, from);
            }};
}

int arrange::leftOut(const std::set<RecordId> &copied, const RecordId &target)
{
    return placed(copied, target).leftOut;
}

Arrangement arrange::swap(const std::set<RecordId> &selection, const RecordId &target)
{
    const Placement placement = placed(selection, target);
    return {QStringLiteral("SWAP %1 WITH %2").arg(nameOf(selection), wordsFor(selection, target)),
            recordsOf(placement, true), [placement](UnitContent &content) {
                for (const auto &[from, to] : placement.records)
                    visitPair(content, from, content, to, [](auto &record, auto &other) { std::swap(record, other); });
            }};
}

bool arrange::canSwap(const std::set<RecordId> &selection, const RecordId &target)
{
    const Placement placement = placed(selection, target);
    const auto isFree = [&](const Placed &record) { return !selection.contains(record.to); };
    const bool isSameKind = banksOf(selection).second == (target.kind == Kind::Bank);
    return isSameKind && placement.leftOut == 0 && !placement.records.empty() &&
           std::ranges::all_of(placement.records, isFree);
}

Arrangement arrange::copy(const std::set<RecordId> &selection, const RecordId &target)
{
    const Placement placement = placed(selection, target);
    return {QStringLiteral("COPY %1 TO %2").arg(nameOf(selection), wordsFor(selection, target)),
            recordsOf(placement, true), [placement](UnitContent &content) {
                const UnitContent before = content;
                for (const auto &[from, to] : placement.records)
                    assign(content, to, before, from);
            }};
}

Arrangement arrange::moveBanks(const std::set<int> &banks, int to)
{
    std::ranges::for_each(banks, requireBank);
    requireBank(to);
    Order order = banksWithout(banks);
    const auto at = std::min(static_cast<std::size_t>(to), order.size());
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(at), banks.begin(), banks.end());
    return reordered(QStringLiteral("MOVE %1 TO %2").arg(wordsFor(banks), places::bank(static_cast<int>(at))), order);
}

Arrangement arrange::insertEmptyBank(int at)
{
    requireBank(at);
    Order order = banksWithout({bankCount - 1});
    order.insert(order.begin() + at, std::nullopt);
    return reordered(QStringLiteral("INSERT EMPTY %1").arg(places::bank(at)), order);
}

Arrangement arrange::removeBanks(const std::set<int> &banks)
{
    std::ranges::for_each(banks, requireBank);
    Order order = banksWithout(banks);
    order.resize(bankCount);
    return reordered(QStringLiteral("REMOVE %1").arg(wordsFor(banks)), order);
}
