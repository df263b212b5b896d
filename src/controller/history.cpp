#include "controller/history.h"

#include "controller/requestqueue.h"

#include <algorithm>

namespace {

std::vector<Difference> valuesOf(const StepOrder &changes)
{
    std::vector<Difference> values;
    for (const RecordChange &change : changes) {
        std::vector<Difference> some = writableDifferences(change);
        values.insert(values.end(), std::make_move_iterator(some.begin()), std::make_move_iterator(some.end()));
    }
    return values;
}

bool isConfirmed(const StepOrder &changes)
{
    return std::ranges::all_of(changes, [](const RecordChange &change) { return change.isConfirmed; });
}

/// What a step does, for people: the words of an arrangement, or what it altered.
QString wordsOf(const StepOrder &changes, const QString &arrangement = QString())
{
    const QString words = arrangement.isEmpty() ? changeWords(valuesOf(changes)) : arrangement;
    return isConfirmed(changes) ? words : words + QStringLiteral(" (NO ANSWER)");
}

/// A step whose answer was lost learns from what the unit held before it is taken back whether it had been made.
void confirm(StepOrder &changes, const std::vector<AnyRecord> &found)
{
    for (std::size_t index = 0; index < changes.size(); ++index)
        if (RecordChange &change = changes[index]; !std::exchange(change.isConfirmed, true))
            change.replaced.after = change.merged.after = found[index];
}

}  // namespace

History::History(DeviceController &unit, RequestQueue &queue, QObject *parent) : QObject(parent), requests(queue)
{
    connect(&unit, &DeviceController::recordChanged, this, &History::recordChanged);
    connect(&unit, &DeviceController::stepMade, this, &History::stepMade);
    connect(&unit, &DeviceController::arranged, this, &History::arranged);
    connect(&queue, &RequestQueue::changeEnded, this, &History::changeEnded);
    connect(&queue, &RequestQueue::otherUnit, this, &History::clear);
}

bool History::canUndo() const { return made > 0 || requests.isChanging(); }

bool History::canRedo() const { return made < list.size() || requests.isChanging(); }

// --- What the user does

void History::recordChanged(const RecordChange &change)
{
    const auto [place, isNew] = collected.try_emplace(change.id, change);
    if (!isNew) append(place->second, change);
}

void History::changeEnded(bool accepted)
{
    if (!accepted) halt();
    StepOrder changes;
    for (auto &[id, change] : std::exchange(collected, {}))
        if (!writableDifferences(change).empty()) changes.push_back(std::move(change));
    const QString words = std::exchange(arrangement, {});
    if (!changes.empty()) add({wordsOf(changes, words), std::move(changes)});
    emit changed();
}

void History::add(Step step)
{
    target.reset();
    for (; list.size() > made; list.pop_back())
        records -= list.back().changes.size();
    records += step.changes.size();
    list.push_back(std::move(step));
    for (; list.size() > maxSteps || (records > maxRecords && list.size() > 1); list.pop_front())
        records -= list.front().changes.size();
    made = list.size();
}

void History::clear()
{
    list.clear();
    collected.clear();
    made = records = 0;
    halt();
    emit changed();
}

void History::halt()
{
    ++failures;
    target.reset();
}

// --- Back and forward

void History::goTo(std::size_t position)
{
    if (position == made || position > list.size()) return;
    target = position;
    ask(position < made ? Direction::Back : Direction::Forward);
}

void History::ask(Direction direction)
{
    const QString words = direction == Direction::Back ? QStringLiteral("UNDO") : QStringLiteral("REDO");
    requests.change({words, [this, direction, askedAfter = failures] { return send(direction, askedAfter); }});
    emit changed();
}

bool History::send(Direction direction, int askedAfter)
{
    if (askedAfter != failures) return false;
    const bool isBack = direction == Direction::Back;
    if (made == (isBack ? 0 : list.size())) return true;
    StepOrder order = list[isBack ? made - 1 : made].changes;
    if (isBack)
        for (RecordChange &change : order)
            change = reversed(change);
    running = direction;
    emit began(static_cast<int>(order.size()));
    requests.onWorker(&DeviceController::makeStep, std::move(order))();
    return true;
}

void History::stepMade(const StepReport &report)
{
    if (!running) return;
    const bool isBack = *std::exchange(running, std::nullopt) == Direction::Back;
    emit ended();
    keptPlaces << report.stayed;
    const auto place = list.begin() + static_cast<std::ptrdiff_t>(isBack ? made - 1 : made);
    Step &step = *place;
    if (!report.found.empty() && !isConfirmed(step.changes)) {
        confirm(step.changes, report.found);
        if (valuesOf(step.changes).empty()) {
            records -= step.changes.size();
            list.erase(place);
            --made;
            return goOn({});
        }
        step.words = wordsOf(step.changes);
    }
    if (report.stopped || !report.failure.isEmpty()) {
        halt();
        return tellStayed();
    }
    made = isBack ? made - 1 : made + 1;
    goOn(step.changes);
}

void History::goOn(const StepOrder &changes)
{
    emit changed();
    const bool isThere = target ? *target == made : !changes.empty();
    if (!isThere) return ask(target && *target > made ? Direction::Forward : Direction::Back);
    target.reset();
    emit arrived(valuesOf(changes));
    tellStayed();
}

void History::tellStayed()
{
    if (!keptPlaces.isEmpty()) emit stayed(std::exchange(keptPlaces, {}));
}
