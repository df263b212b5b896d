#pragma once

#include "model/datafromdevice.h"

#include <memory>

/// The model and the bank of it that a table or the preview shows.
class ShownBank
{
public:
    /// 0 to 99
    int number() const { return bank; }
    /// Goes to a bank; false when it is shown already or there is none of that number.
    bool goTo(int wanted);

    void setModel(const DataFromDevice *newModel) { model = newModel; }
    const DataFromDevice *data() const { return model; }

    // Null without a model and until the record has been read
    std::shared_ptr<const BankData> record() const;
    std::shared_ptr<const PresetData> preset(int index) const;
    /// Whether the bank and all of its presets have been read.
    bool isRead() const;

private:
    const DataFromDevice *model = nullptr;
    int bank = 0;
};
