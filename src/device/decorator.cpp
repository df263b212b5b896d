#include "device/decorator.h"

#include "protocol/converter.h"
#include "protocol/failure.h"

void Decorator::insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers(MasterFrame &frame,
                                                                            const std::vector<std::string> &names,
                                                                            const std::vector<int> &numbers) const
{
    if (names.size() != controllerCount || numbers.size() != controllerCount)
        fail("A MIDI device has exactly 20 controllers");
    char letter = rowOf<&MidiDevice::controllers>().letter;
    for (std::size_t slot = 0; slot < controllerCount; ++slot) {
        Field controller(letter++, Level0);
        controller.insertSubField(rowOf<&Controller::name>().letter, names[slot]);
        controller.insertSubField(rowOf<&Controller::number>().letter, numbers[slot]);
        frame.addField(std::move(controller));
    }
}

void Decorator::insertIntoWriteFirmware_FirmwareData(MasterFrame &frame, int chunkNumber,
                                                     const std::vector<unsigned char> &bytes) const
{
    frame.addField('A', chunkNumber);
    frame.addField('B', Converter::vectorToHexString(bytes));
}
