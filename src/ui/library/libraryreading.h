#pragma once

#include "model/datafromdevice.h"
#include "model/unitcontent.h"

#include <QObject>

#include <set>

/// Reads what is not known yet of the MIDI devices and of all banks, in portions of one bank, so that other requests
/// get in between.
class LibraryReading : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    static constexpr int portionCount = 1 + bankCount;  ///< the MIDI devices come first

    /// Begins anew with the next unit; null without one.
    void setUnit(DataFromDevice *newUnit);
    /// Goes on with the first portion that is not known.
    void start();
    /// Nothing more is asked for.
    void stop();
    bool isRunning() const { return running; }
    /// How many portions are known from the first one on.
    int done() const { return portion; }
    bool isComplete() const { return portion == portionCount; }

    /// Something has been read, by whomever.
    void announced();

signals:
    /// Asks for records.
    void wanted(const std::set<RecordId> &records);
    /// It has gone on, begun or ended.
    void changed();

private:
    /// The records of a portion that are not known.
    std::set<RecordId> unknown(int number) const;
    void goOn();

    DataFromDevice *unit = nullptr;
    int portion = 0;
    bool running = false;
};
