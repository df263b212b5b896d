#pragma once

#include "model/datafromdevice.h"

#include <QColor>
#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

/// What the preview page's picture says of one bank: plain values, made from the model whenever it changes, so that
/// painting looks nothing up. Every text is plain and of one line.
struct PreviewScene
{
    Q_DECLARE_TR_FUNCTIONS(PreviewScene)

public:
    /// What pressing a footswitch does to a loop or a switch output.
    enum class Effect { On, Off, Toggle, Untouched };

    struct Box
    {
        bool operator==(const Box &) const = default;

        QString label;  ///< "BUFFER", "LOOP 1", "SWITCH 1"
        QString text;   ///< the state's label; a dash for what the footswitch's function does not reach
        Effect effect = Effect::Untouched;
    };

    struct Pedal
    {
        bool assigned = false;
        QString text;   ///< "MIX of DELAY", or why there is no curve
        QString curve;  ///< the characteristic's label
        ExpressionPedalCharacteristic characteristic = ExpressionPedalCharacteristic::Linear;
        int toeUp = 0;    ///< 0 to 127
        int toeDown = 0;  ///< 0 to 127

        /// The value sent at a travel from 0 (toe up) to 1 (toe down): "FAST/SLOW" changes most at the start of it,
        /// "SLOW/FAST" at the end.
        double valueAt(double travel) const;
    };

    struct Footswitch
    {
        bool read = false;  ///< without it nothing below is known
        QString name;
        QString function;      ///< the function's label
        QColor color;          ///< of its function
        QString summary;       ///< what such a footswitch reaches and what it leaves alone
        QVector<Box> path;     ///< the buffer, then loops 1 to 6
        QVector<Box> outputs;  ///< switch outputs 1 to 6
        QStringList midi;      ///< a sentence for each MIDI device it sends to, in the order of the devices
        QString midiNote;      ///< why there is no sentence
        Pedal pedal;
    };

    struct WahPad
    {
        bool operator==(const WahPad &) const = default;

        QString action;  ///< the action's label; empty while the bank has not been read
        QString target;  ///< "4: SOLO"
        QColor color;    ///< of the target's function; invalid while that is not known
    };

    int bank = 0;      ///< 0 to 99
    int chosen = 0;    ///< the footswitch that is told in full, 0 to 9
    QString bankName;  ///< or why it has none
    QString notice;    ///< why the chosen footswitch cannot be told; empty when it can
    std::array<Footswitch, presetCount> footswitches;
    std::array<WahPad, 2> wahPads;

    /// The picture of `bank` (0 to 99) with `chosen` (0 to 9) told in full. `data` may be null: no unit was found yet.
    static PreviewScene of(const DataFromDevice *data, int bank, int chosen);

    const Footswitch &chosenFootswitch() const { return footswitches[static_cast<std::size_t>(chosen)]; }
    /// The bank and its chosen footswitch in a few sentences, for those who cannot see the picture.
    QString description() const;
};
