#pragma once

#include "model/recordchange.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <set>

/// Many records to be written: from what the unit holds to what is wanted.
struct TransferOrder
{
    std::shared_ptr<const UnitPart> present;
    std::shared_ptr<const UnitContent> wanted;
    std::set<RecordId> records;  ///< those in which the two differ
};

/// What became of reading or writing many records.
struct TransferReport
{
    std::shared_ptr<const UnitPart> unit;  ///< what it holds now, as far as that was read
    std::set<RecordId> written;
    QString failure;       ///< why the transfer ended early; empty when it did not fail
    bool stopped = false;  ///< whether the user ended it
};

/// Changes to be made again or taken back: from what each left to what is wanted.
using StepOrder = std::vector<RecordChange>;

/// What became of a step.
struct StepReport
{
    QString failure;               ///< why it was not made, or not as a whole
    bool stopped = false;          ///< whether the user ended it
    std::vector<AnyRecord> found;  ///< what the unit held before, in the order of the changes; empty if not read
    QStringList stayed;            ///< the places of values that somebody else has changed meanwhile
};

/// What became of an arrangement.
struct ArrangementReport
{
    QString words;                      ///< the arrangement's
    QString failure;                    ///< why it was not made, or not as a whole
    bool stopped = false;               ///< whether the user ended it
    int values = 0;                     ///< how many were to be altered
    std::vector<Difference> remaining;  ///< those that the unit holds otherwise still
};
