#include "model/recordchange.h"

namespace {

void append(const RecordId &id, AnyRecord &after, const RecordChange::Versions &next)
{
    if (after == next.before) {
        after = next.after;
        return;
    }
    visitBoth(next.before, next.after, [&]<typename Record>(const Record &from, const Record &to) {
        auto both = std::make_shared<Record>(*std::get<Shared<Record>>(after));
        QStringList stayed;
        takeOver(id, *both, from, to, stayed);
        after = Shared<Record>(both);
    });
}

}  // namespace

void append(RecordChange &whole, const RecordChange &next)
{
    append(whole.id, whole.replaced.after, next.replaced);
    append(whole.id, whole.merged.after, next.merged);
    whole.isConfirmed = whole.isConfirmed && next.isConfirmed;
}

std::vector<Difference> writableDifferences(const RecordChange &change)
{
    std::vector<Difference> found;
    visitBoth(change.replaced.before, change.replaced.after,
              [&](const auto &held, const auto &wanted) { compare(change.id, held, wanted, found); });
    return writable(std::move(found));
}

RecordChange reversed(const RecordChange &change)
{
    return {change.id,
            {change.replaced.after, change.replaced.before},
            {change.merged.after, change.merged.before},
            change.isConfirmed};
}
