#include "ui/controlvalue.h"

#include "model/records.h"
#include "ui/look.h"

const QStringList &controllerNumberTexts()
{
    static const QStringList texts = look::numberTexts(0, inactiveIndex - 1) << QStringLiteral("INACTIVE");
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
