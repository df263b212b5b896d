#include "model/datafromdevice.h"

const QString DataFromDevice::fontFamily = "Open Sans";
const QFont DataFromDevice::fontTabs{fontFamily, 13, QFont::Normal};
const QFont DataFromDevice::fontTableHeader{fontFamily, 12, QFont::Bold};
const QFont DataFromDevice::fontTableContent{fontFamily, 12, QFont::Normal};
const QFont DataFromDevice::fontDeviceStatus{fontFamily, 15, QFont::Normal};
const QFont DataFromDevice::fontSettingsLabel{fontFamily, 14, QFont::Normal};
const QFont DataFromDevice::fontFirmwareVersion{fontFamily, 11, QFont::Normal};

const std::map<FootswitchType, QColor> DataFromDevice::footswitchColors{
    {FootswitchType::Preset, QColor(139, 0, 0)},
    {FootswitchType::SwitchModifier, QColor(92, 119, 40)},
    {FootswitchType::LoopModifier, QColor(0, 5, 243)},
    {FootswitchType::MidiModifier, QColor(250, 131, 15)},
};
