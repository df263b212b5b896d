#pragma once

#include "model/records.h"
#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/look.h"

#include <QString>
#include <QStringList>

class QGridLayout;

/// Lays out one page of global settings: labels and combo boxes in aligned columns.
class SettingsPage
{
public:
    /// Fills `page` column by column, `rowsPerColumn` settings in each.
    SettingsPage(QWidget *page, int rowsPerColumn);

    /// Adds a setting; its box holds `items` and shows none. `help` says in one sentence what it is for.
    ComboBox *add(const QString &text, const QString &objectName, const QStringList &items, const QString &help);

private:
    QGridLayout *grid;
    int rows;
    int count = 0;
};

// How a box offers the values of a setting, worked out from its row.

/// Whether the first item stands for none.
template <auto Member>
constexpr bool offersNone()
{
    return rowOf<Member>().range.also == Range::Also::None;
}

/// What a number is more than its item's index.
template <auto Member>
constexpr int valueBeforeItems()
{
    return rowOf<Member>().range.low - (offersNone<Member>() ? 1 : 0);
}

/// The items of its box.
template <auto Member>
QStringList itemsOf()
{
    if constexpr (std::is_same_v<ValueOf<Member>, bool> || std::is_enum_v<ValueOf<Member>>) {
        return labels<ValueOf<Member>>();
    } else {
        constexpr Range range = rowOf<Member>().range;
        const QStringList numbers = look::numberTexts(range.low, range.high);
        return offersNone<Member>() ? withInactive(numbers) : numbers;
    }
}

/// The item that shows a value.
template <auto Member>
int itemOf(ValueOf<Member> value)
{
    if constexpr (std::is_same_v<ValueOf<Member>, bool> || std::is_enum_v<ValueOf<Member>>)
        return toIndex(value);
    else
        return offersNone<Member>() && value == none ? 0 : value - valueBeforeItems<Member>();
}

/// The value that an item stands for.
template <auto Member>
ValueOf<Member> valueOfItem(int index)
{
    if constexpr (std::is_same_v<ValueOf<Member>, bool> || std::is_enum_v<ValueOf<Member>>)
        return fromIndex<ValueOf<Member>>(index);
    else
        return static_cast<ValueOf<Member>>(offersNone<Member>() && index == 0 ? none
                                                                               : index + valueBeforeItems<Member>());
}
