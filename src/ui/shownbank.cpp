#include "ui/shownbank.h"

bool ShownBank::goTo(int wanted)
{
    if (wanted == bank || wanted < 0 || wanted >= bankCount) return false;
    bank = wanted;
    return true;
}

std::shared_ptr<const BankData> ShownBank::record() const
{
    return model ? model->bankData.at(static_cast<std::size_t>(bank)).load() : nullptr;
}

std::shared_ptr<const PresetData> ShownBank::preset(int index) const
{
    return model ? model->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(index)).load()
                 : nullptr;
}

bool ShownBank::isRead() const
{
    bool read = record() != nullptr;
    for (int index = 0; index < presetCount; ++index)
        read = read && preset(index);
    return read;
}
