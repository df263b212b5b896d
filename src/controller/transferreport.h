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

/// How a transfer ended.
struct TransferEnd
{
    QString failure;       ///< why it ended early; empty when it did not fail
    bool stopped = false;  ///< whether the user ended it
};

/// What became of reading or writing many records.
struct TransferReport : TransferEnd
{
    std::shared_ptr<const UnitPart> unit;  ///< what it holds now, as far as that was read
    std::set<RecordId> written;
};

/// Changes to be made again or taken back: from what each left to what is wanted.
using StepOrder = std::vector<RecordChange>;

/// What became of a step.
struct StepReport : TransferEnd
{
    std::vector<AnyRecord> found;  ///< what the unit held before, in the order of the changes; empty if not read
    QStringList stayed;            ///< the places of values that somebody else has changed meanwhile
};

/// What became of an arrangement.
struct ArrangementReport : TransferEnd
{
    QString words;                      ///< the arrangement's
    int values = 0;                     ///< how many were to be altered
    std::vector<Difference> remaining;  ///< those that the unit holds otherwise still
};
