#include "device/kora.h"

#include "link/connection.h"
#include "protocol/converter.h"
#include "protocol/failure.h"

#include <QThread>

#include <algorithm>
#include <stdexcept>

KORA::KORA(std::shared_ptr<Connection> sharedConnection) : connection(std::move(sharedConnection)) {}

KORA::~KORA() { connection->closeConnection(); }

SlaveFrame KORA::listen()
{
    std::string text;
    *connection >> text;
    return SlaveFrame(Converter::stringToVector(text));
}

SlaveFrame KORA::getFrame(unsigned long long id)
{
    SlaveFrame response = listen();
    if (response.getFrameID() != id) throw std::runtime_error("Nieprawidlowy numer ramki");
    return response;
}

void KORA::checkError(const SlaveFrame &response)
{
    lastErrorNumber = response.status();
    if (frameFactory.isError(response)) fail(getErrorDescription(response));
}

std::string KORA::getErrorDescription(const SlaveFrame &response)
{
    // Sent and heard without a check of its own, so that an error about an error ends here.
    *connection << frameFactory.readErrorDescription(response.status());
    return translator.fromReadErrorDescription_getErrorDescription(listen());
}

SlaveFrame KORA::exchange(const MasterFrame &command)
{
    ++unanswered;
    *connection << command;
    SlaveFrame response = listen();
    --unanswered;
    checkError(response);
    return response;
}

template <typename Insert, typename... Values>
void KORA::write(MasterFrame command, Insert insert, const Values &...values)
{
    (decorator.*insert)(command, values...);
    exchange(command);
}

void KORA::changeProgramValue(int bank, int preset, int slot, int value, FootswitchType function)
{
    MasterFrame command = frameFactory.writePresetSettings(bank, preset);
    decorator.insertIntoWritePresetSettings_MidiProgramValue(command, slot, value);
    write(command, &Decorator::insertIntoWritePresetSettings_FootswitchType, function);
}

void KORA::changeControllersNamesAndNumbers(const std::vector<std::string> &names, const std::vector<int> &numbers,
                                            int device)
{
    write(frameFactory.writeMidiDeviceSettings(device),
          &Decorator::insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers, names, numbers);
}

void KORA::changeSwitchOut(SwitchOutSetting setting, int number)
{
    write(frameFactory.writeSwitchOutSettings(), &Decorator::insertIntoWriteSwitchOutSettings_SwitchOutSetting,
          static_cast<std::uint8_t>(number), setting);
}

void KORA::installFirmware(const std::vector<unsigned char> &image, const UploadProgress &progress)
{
    if (image.size() > maxFirmwareSize) fail("The firmware image is too large");
    const auto total = static_cast<int>((image.size() + firmwareChunkSize - 1) / firmwareChunkSize);
    for (int chunk = 0; chunk < total; ++chunk) {
        if (QThread::currentThread()->isInterruptionRequested()) fail("The firmware upload was stopped");
        const std::size_t start = static_cast<std::size_t>(chunk) * firmwareChunkSize;
        const std::size_t length = std::min(firmwareChunkSize, image.size() - start);
        const auto first = image.begin() + static_cast<std::ptrdiff_t>(start);
        write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_FirmwareData, chunk + 1,
              std::vector<unsigned char>(first, first + static_cast<std::ptrdiff_t>(length)));
        if (progress) progress(chunk + 1, total);
    }
    write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_AllDataSentFlag);
    write(frameFactory.writeFirmware(), &Decorator::insertIntoWriteFirmware_RestartDevice);
}
