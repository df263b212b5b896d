#include "device/translator.h"

#include "fuzzing.h"
#include "unit/commandframe.h"

// Every decoder, on a response with a right checksum whose data part is the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string whole = buildFrame("1", textOf(bytes, size));
    SlaveFrame response;
    if (!succeeds([&] { response = SlaveFrame({whole.begin(), whole.end()}); })) return 0;

    const Translator translator;
    const auto decode = [&](auto decoder) { return succeeds([&] { (translator.*decoder)(response); }); };
    decode(&Translator::fromReadDeviceInfo_getDeviceInfo);
    decode(&Translator::fromReadBankSettings_getBankName);
    decode(&Translator::fromReadBankSettings_getBankData);
    decode(&Translator::fromReadPresetSettings_getPresetName);
    decode(&Translator::fromReadPresetSettings_getFootswitchFunction);
    decode(&Translator::fromReadMidiDeviceSettings_getMidiDevice);
    decode(&Translator::fromReadOtherSettings_getSettings);
    decode(&Translator::fromReadSwitchOutSettings_getSwitchOutData);
    decode(&Translator::fromReadMidiInSettings_getMidiInData);
    decode(&Translator::fromReadExpressionPedalSettings_getExpressionPedalData);
    decode(&Translator::fromReadErrorDescription_getErrorDescription);
    succeeds([&] {
        const auto preset = translator.fromReadPresetSettings_getPresetData(response);
        require(preset->controlChanges.size() <= maxControlChanges, "no more control changes than a preset holds");
    });
    return 0;
}
