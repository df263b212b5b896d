#pragma once

#include "model/differences.h"

#include <QJsonArray>

namespace cli {

/// What differs in some records: what counts, and apart from it what is set on the unit itself.
struct DifferenceList
{
    DifferenceList(const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records);

    std::vector<Difference> counted;
    std::vector<Difference> setOnUnit;
};

/// "BANK 3, PRESET 4: LOOP 2: OFF -> ON"
QString lineOf(const Difference &difference);
/// Objects with place, from and to.
QJsonArray toJson(const std::vector<Difference> &differences);
/// As `summaryOf`, of all that is told.
QString summaryOfAll(std::vector<Difference> differences);

}  // namespace cli
