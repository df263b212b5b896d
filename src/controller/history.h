#pragma once

#include "controller/devicecontroller.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <deque>
#include <map>
#include <optional>
#include <vector>

class RequestQueue;

/// What the user did to the connected unit, step by step: to be taken back and made again. One request that alters
/// values is one step, whatever it alters; what the unit refused is none. It lives on the thread of the queue, and as
/// long as units with the same identity are found.
///
/// A step is taken back or made by a request like any other: composed when its turn has come, from what the unit holds
/// then. A value that somebody else has changed meanwhile stays. A step of which something was refused stays where it
/// was, and so do those that were asked for after it.
class History : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QString words;      ///< "BANK 3, PRESET 4: LOOP 2  OFF -> TOGGLE"
        StepOrder changes;  ///< one for each record
    };

    // Beyond these the oldest steps are forgotten.
    static constexpr std::size_t maxSteps = 1000;
    static constexpr std::size_t maxRecords = 100'000;  ///< in all steps; some hundred bytes each

    History(DeviceController &unit, RequestQueue &queue, QObject *parent = nullptr);

    /// All steps, the oldest first.
    const std::deque<Step> &steps() const { return list; }
    /// How many of them are made; those that follow are taken back.
    std::size_t position() const { return made; }
    /// Whether there is something to take back, or will be once the changes have been made that wait.
    bool canUndo() const;
    bool canRedo() const;

    /// Takes the last step back: the last one that has been asked for, if changes wait.
    void undo() { ask(Direction::Back); }
    /// Makes the last step again that was taken back.
    void redo() { ask(Direction::Forward); }
    /// Goes back or forward, step by step, until so many are made, or one cannot be made.
    void goTo(std::size_t position);

signals:
    /// The steps or the position are others.
    void changed();
    /// A step is being made that alters so many records; `ended` follows.
    void began(int records);
    void ended();
    /// A step was taken back or made, which altered these values; of several that follow one another the last.
    void arrived(const std::vector<Difference> &values);
    /// The places of values that were to be altered, but somebody else has changed them meanwhile.
    void stayed(const QStringList &places);

private:
    enum class Direction { Back, Forward };

    void recordChanged(const RecordChange &change);
    void changeEnded(bool accepted);
    void arranged(const ArrangementReport &report) { arrangement = report.words; }
    void stepMade(const StepReport &report);
    void clear();

    void ask(Direction direction);
    bool send(Direction direction, int askedAfter);
    void add(Step step);
    /// Goes on after these changes, or after none if there was nothing to take back.
    void goOn(const StepOrder &changes);
    /// Gives up what was to follow.
    void halt();
    void tellStayed();

    RequestQueue &requests;
    std::deque<Step> list;
    std::size_t made = 0;
    std::size_t records = 0;                     ///< in all steps
    std::map<RecordId, RecordChange> collected;  ///< what the request that runs has changed
    QString arrangement;                         ///< the words of the arrangement that was made
    std::optional<Direction> running;            ///< while a step is being made
    std::optional<std::size_t> target;           ///< of `goTo`
    QStringList keptPlaces;                      ///< to be told
    int failures = 0;                            ///< changes and steps that failed
};
