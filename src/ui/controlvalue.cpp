#include "ui/controlvalue.h"

#include "model/records.h"
#include "ui/look.h"

static const QString inactiveText = QStringLiteral("INACTIVE");

QStringList withInactive(const QStringList &items) { return QStringList{inactiveText} + items; }

int valueOrNone(int index) { return index == 0 ? none : index; }

int indexOrNone(int value) { return value == none ? 0 : value; }

const QStringList &controllerNumberTexts()
{
    static const QStringList texts = look::numberTexts(0, inactiveIndex - 1) << inactiveText;
    return texts;
}

const QStringList &controlValueTexts()
{
    static const QStringList texts = QStringList(controllerNumberTexts()) << QStringLiteral("TOGGLE");
    return texts;
}

int controlValueIndex(std::uint8_t value)
{
    if (value == inactiveValue) return inactiveIndex;
    if (value == toggleValue) return toggleIndex;
    return value < inactiveIndex ? value : -1;
}

std::uint8_t controlValueAt(int index)
{
    if (index == toggleIndex) return toggleValue;
    return index >= 0 && index < inactiveIndex ? static_cast<std::uint8_t>(index) : inactiveValue;
}
