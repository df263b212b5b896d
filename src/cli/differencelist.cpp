#include "cli/differencelist.h"

#include <QJsonObject>

using namespace cli;

DifferenceList::DifferenceList(const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records)
{
    for (Difference &difference : differences(from, to, records))
        (difference.setOnUnit ? setOnUnit : counted).push_back(std::move(difference));
}

QString cli::lineOf(const Difference &difference)
{
    return QStringLiteral("%1: %2 -> %3").arg(difference.place, difference.from, difference.to);
}

QJsonArray cli::toJson(const std::vector<Difference> &differences)
{
    QJsonArray list;
    for (const Difference &difference : differences)
        list.append(QJsonObject{{"place", difference.place}, {"from", difference.from}, {"to", difference.to}});
    return list;
}

QString cli::summaryOfAll(std::vector<Difference> differences)
{
    for (Difference &difference : differences)
        difference.writable = true;
    return summaryOf(differences);
}
