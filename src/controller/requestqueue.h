#pragma once

#include "controller/devicecontroller.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <optional>

/// All that the user interface asks of the unit, one request at a time and in its order. It lives on the thread of the
/// user interface; the controller's slots run on the worker thread.
///
/// Of the reads with one key at most one runs and one waits, the newest. Changes are never dropped without a word:
/// those that wait when the unit is lost are made when the same unit comes back, else `undelivered` tells of them.
class RequestQueue : public QObject
{
    Q_OBJECT

public:
    /// Runs on the thread of the queue; what it makes the controller do is one request.
    using Work = std::function<void()>;

    struct Change
    {
        QString words;               ///< for people: what it changes
        std::function<bool()> work;  ///< false when it cannot be made any more
        Work settled = [] {};        ///< called once, when the change is done, refused or given up
    };

    explicit RequestQueue(DeviceController &unit, QObject *parent = nullptr);

    /// Whether an error of the controller means that the unit is lost.
    static bool isLoss(const QString &message);

    /// `failed` is called when the read fails, but not when it gives way to a newer one or the unit is searched for.
    void read(
        const QString &key, Work work, Work failed = [] {});
    /// Without a unit the change is dropped, which `dropped` tells.
    void change(Change change);
    /// Something long that is neither, such as an upload; it is dropped without a unit.
    void exclusive(Work work);
    /// The unit is lost: `work` finds the next one before anything else. Reads that wait are forgotten, since what is
    /// shown is read again then.
    void search(Work work);
    /// A unit was found. While `showIt` runs, reads are not made that have lost the unit twice in a row.
    void found(const QString &identity, const Work &showIt);

    /// Whether there is a unit to ask.
    bool isConnected() const { return connected; }
    /// Whether nothing runs and nothing waits.
    bool isIdle() const { return !running && waiting.empty(); }
    /// Whether a change runs or waits.
    bool isChanging() const;
    /// Whether no unit has been found since the last one was lost.
    bool isSearching() const { return searching; }
    /// Whether another search comes before anything else, so that what is found now will not stay.
    bool isSearchWaiting() const { return !waiting.empty() && waiting.front().kind == Kind::Search; }

    /// Waits for the changes that wait, if the unit is there and answers within ten seconds. The user can do nothing
    /// meanwhile.
    void deliver();
    /// Makes the changes that wait, without reading or searching any more, and returns those that did not reach the
    /// unit. With a unit that does not answer it takes one timeout.
    QStringList finish();

    /// Connects a signal that asks for a read to the controller's slot; `failed` is given its arguments.
    template <typename Sender, typename Base, typename... Arguments, typename Slot, typename Failed>
    void connectRead(Sender *sender, void (Base::*signal)(Arguments...), Slot slot, const QString &key, Failed failed)
    {
        connect(sender, signal, this, [this, slot, key, failed](Arguments... arguments) {
            read(key, onWorker(slot, arguments...), [failed, arguments...] { failed(arguments...); });
        });
    }
    /// Connects a signal that asks for a change; `wordsOf` tells of its arguments what it changes.
    template <typename Sender, typename Base, typename... Arguments, typename Slot, typename Words>
    void connectChange(Sender *sender, void (Base::*signal)(Arguments...), Slot slot, Words wordsOf)
    {
        connect(sender, signal, this, [this, slot, wordsOf](Arguments... arguments) {
            change({wordsOf(arguments...), made(onWorker(slot, arguments...))});
        });
    }
    /// A call of a controller's slot on the worker thread.
    template <typename Slot, typename... Arguments>
    Work onWorker(Slot slot, Arguments... arguments)
    {
        return [this, slot, arguments...] {
            QMetaObject::invokeMethod(
                &controller, [unit = &controller, slot, arguments...] { (unit->*slot)(arguments...); },
                Qt::QueuedConnection);
        };
    }

    /// The work of a change that can always be made.
    static std::function<bool()> made(Work work)
    {
        return [work = std::move(work)] {
            work();
            return true;
        };
    }

signals:
    /// A change was asked for without a unit.
    void dropped();
    void undelivered(const QStringList &changes);
    /// A change or something exclusive is done, after all that it led to has been heard, or could not be made.
    void changeEnded(bool accepted);
    /// The first of several changes waits or runs, or none does any more.
    void changing(bool isUnderWay);
    /// A unit was found that is not the last one.
    void otherUnit();

private:
    enum class Kind { Read, Change, Exclusive, Search };
    struct Request
    {
        Kind kind;
        QString words;  ///< of a change; the key of a read
        std::function<bool()> work;
        Work settled = [] {};
        Work failed = [] {};
        bool isResumed = false;  ///< its record may not have been read from the unit that came back
    };

    /// Lets the answers in while `isBusy`, but no input of the user.
    void waitWhile(const std::function<bool()> &isBusy) const;
    void startNext();
    void finished(const QString &failure);
    void unitIsLost();
    /// Tells of changes that did not reach the unit.
    void giveUp(const std::deque<Request> &requests);
    void forgetReads();
    /// Emits `changing` if that is news.
    void tellChanging();

    DeviceController &controller;
    std::optional<Request> running;
    std::deque<Request> waiting;
    std::deque<Request> held;          ///< changes that wait for the unit to come back
    std::map<QString, int> lostReads;  ///< how often in a row a read with this key lost the unit
    QString identityOfUnit;
    QStringList lost;  ///< while finishing: changes that did not reach the unit
    bool connected = false;
    bool wasChanging = false;  ///< as told last
    bool searching = false;
    bool showingFound = false;
    bool finishing = false;
};
