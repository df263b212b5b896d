#pragma once

#include "model/unitcontent.h"

#include <QString>

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
