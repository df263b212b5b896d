#include "controller/requestqueue.h"

#include "protocol/failure.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int lossesUntilGivenUp = 2;
constexpr int longestFinish = 10000;  // ms; an answer that comes byte by byte has no end of its own

}  // namespace

RequestQueue::RequestQueue(DeviceController &unit, QObject *parent) : QObject(parent), controller(unit) {}

bool RequestQueue::isLoss(const QString &message) { return message == QLatin1String(receivingTimeout); }

void RequestQueue::read(const QString &key, Work work, Work failed)
{
    if (!connected || finishing) return;
    if (!showingFound)
        lostReads.erase(key);  // the user tries again
    else if (lostReads[key] >= lossesUntilGivenUp)
        return failed();
    std::erase_if(waiting, [&](const Request &other) { return other.kind == Kind::Read && other.words == key; });
    waiting.push_back({Kind::Read, key, made(std::move(work)), [] {}, std::move(failed)});
    startNext();
}

void RequestQueue::change(Change change)
{
    Request request{Kind::Change, std::move(change.words), std::move(change.work), std::move(change.settled)};
    if (!connected) {
        request.settled();
        emit dropped();
        return;
    }
    waiting.push_back(std::move(request));
    startNext();
}

bool RequestQueue::isChanging() const
{
    const auto isChange = [](const Request &request) { return request.kind == Kind::Change; };
    return (running && isChange(*running)) || std::ranges::any_of(waiting, isChange);
}

void RequestQueue::exclusive(Work work)
{
    if (!connected) return;
    waiting.push_back({Kind::Exclusive, {}, made(std::move(work))});
    startNext();
}

void RequestQueue::search(Work work)
{
    if (isSearchWaiting() || finishing) return;
    searching = true;
    unitIsLost();
    waiting.push_front({Kind::Search, {}, made(std::move(work))});
    startNext();
}

void RequestQueue::unitIsLost()
{
    connected = false;
    forgetReads();
    std::move(waiting.begin(), waiting.end(), std::back_inserter(held));
    waiting.clear();
    tellChanging();
}

void RequestQueue::found(const QString &identity, const Work &showIt)
{
    connected = true;
    searching = false;
    showingFound = true;
    showIt();
    showingFound = false;
    std::deque<Request> back = std::exchange(held, {});
    if (std::exchange(identityOfUnit, identity) != identity) {
        emit otherUnit();
        giveUp(std::exchange(back, {}));
    }
    for (Request &request : back) {
        request.isResumed = true;
        waiting.push_back(std::move(request));
    }
    startNext();
}

void RequestQueue::tellChanging()
{
    if (const bool isUnderWay = isChanging(); isUnderWay != std::exchange(wasChanging, isUnderWay))
        emit changing(isUnderWay);
}

void RequestQueue::startNext()
{
    tellChanging();
    if (running || waiting.empty()) return;
    running = std::move(waiting.front());
    waiting.pop_front();
    const bool readFirst = running->isResumed;
    QMetaObject::invokeMethod(
        &controller, [unit = &controller, readFirst] { unit->setReadingFirst(readFirst); }, Qt::QueuedConnection);
    if (!running->work()) {
        giveUp({*std::exchange(running, std::nullopt)});
        emit changeEnded(false);
        return startNext();
    }
    // The controller's slots run in the order of their calls, and so do the slots of their signals: when this comes
    // back, all that the request led to has been heard.
    QMetaObject::invokeMethod(
        &controller,
        [this, unit = &controller] {
            QMetaObject::invokeMethod(
                this, [this, failure = unit->takeFailure()] { finished(failure); }, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

void RequestQueue::finished(const QString &failure)
{
    const Request request = std::move(*running);
    running.reset();
    const bool lostUnit = isLoss(failure);
    if (request.kind == Kind::Change || request.kind == Kind::Exclusive) emit changeEnded(failure.isEmpty());
    if (request.kind == Kind::Read) {
        if (lostUnit)
            ++lostReads[request.words];
        else
            lostReads.erase(request.words);
        if (!failure.isEmpty()) request.failed();
    } else if (request.kind == Kind::Change) {
        if (finishing && !failure.isEmpty())
            lost << (lostUnit ? request.words : QStringLiteral("%1 (%2)").arg(request.words, failure));
        request.settled();
    }
    if (finishing && lostUnit) {
        connected = false;
        giveUp(std::exchange(waiting, {}));
    }
    startNext();
}

void RequestQueue::giveUp(const std::deque<Request> &requests)
{
    QStringList words;
    for (const Request &request : requests) {
        if (request.kind == Kind::Change) words << request.words;
        request.settled();
    }
    if (finishing)
        lost << words;
    else if (!words.isEmpty())
        emit undelivered(words);
}

void RequestQueue::forgetReads()
{
    std::erase_if(waiting, [](const Request &request) { return request.kind == Kind::Read; });
}

void RequestQueue::waitWhile(const std::function<bool()> &isBusy) const
{
    QElapsedTimer clock;
    clock.start();
    QTimer wakeUp;  // with a time limit of its own, processEvents() would not rest
    wakeUp.start(100);
    while (!searching && isBusy() && !clock.hasExpired(longestFinish))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

void RequestQueue::deliver()
{
    waitWhile([this] { return isChanging(); });
}

QStringList RequestQueue::finish()
{
    finishing = true;
    controller.skipReads();
    forgetReads();
    giveUp(std::exchange(held, {}));
    if (searching) giveUp(std::exchange(waiting, {}));
    waitWhile([this] { return !isIdle(); });
    giveUp(std::exchange(waiting, {}));
    return lost;
}
