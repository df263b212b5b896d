#include "device/framefactory.h"

#include <initializer_list>

namespace {

MasterFrame command(const char *descriptor, std::initializer_list<int> address = {})
{
    MasterFrame frame;
    frame.setCommandDescriptor(descriptor);
    char field = 'A';
    for (const int number : address)
        frame.addField(field++, number);
    return frame;
}

}  // namespace

MasterFrame FrameFactory::readDeviceInfo() const { return command("RDI"); }
MasterFrame FrameFactory::readErrorDescription(int error) const { return command("RET", {error}); }
MasterFrame FrameFactory::readBankSettings(int bank) const { return command("RBB", {bank}); }
MasterFrame FrameFactory::writeBankSettings(int bank) const { return command("WBB", {bank}); }
MasterFrame FrameFactory::readPresetSettings(int bank, int preset) const { return command("RBP", {bank, preset}); }
MasterFrame FrameFactory::writePresetSettings(int bank, int preset) const { return command("WBP", {bank, preset}); }
MasterFrame FrameFactory::readMidiDeviceSettings(int device) const { return command("RMD", {device}); }
MasterFrame FrameFactory::writeMidiDeviceSettings(int device) const { return command("WMD", {device}); }
MasterFrame FrameFactory::readMidiInSettings() const { return command("RMI"); }
MasterFrame FrameFactory::writeMidiInSettings() const { return command("WMI"); }
MasterFrame FrameFactory::readExpressionPedalSettings() const { return command("REP"); }
MasterFrame FrameFactory::writeExpressionPedalSettings() const { return command("WEP"); }
MasterFrame FrameFactory::readSwitchOutSettings() const { return command("RSO"); }
MasterFrame FrameFactory::writeSwitchOutSettings() const { return command("WSO"); }
MasterFrame FrameFactory::readOtherSettings() const { return command("ROS"); }
MasterFrame FrameFactory::writeOtherSettings() const { return command("WOS"); }
MasterFrame FrameFactory::writeFirmware() const { return command("WFD"); }

bool FrameFactory::isError(const SlaveFrame &response) const { return response.status() != 0; }
