#include "simulator/musiciancontent.h"
#include "simulator/statefile.h"

#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

namespace {

TEST(StateFile, RestoresEverything)
{
    UnitMemory full = musicianContent();
    full.banks[1].name = "A<B>C << <GS> \\";
    full.banks[2].name.clear();
    full.presets[3][4].controlChanges.assign(maxControlChanges, {10, 20, toggleValue});
    full.presets[3][4].expressionPedal = {none, none, ExpressionPedalCharacteristic::FastSlow, 1, 2};
    full.firmware.assign(1025, 0x3C);
    const auto file = std::filesystem::temp_directory_path() / ("unit-state-" + std::to_string(::getpid()));
    for (const UnitMemory &memory : {full, UnitMemory()}) {
        saveState(file, memory);
        EXPECT_EQ(loadState(file), memory);
    }
    std::filesystem::remove(file);
}

TEST(StateFile, NamesTheLineThatItCannotTake)
{
    const std::pair<const char *, const char *> table[] = {
        {"# ok\n\nWOS<GS>A1\nWOS<GS>A9\n", "line 4: Value out of range"},
        {"WOS<GS>A1<", "line 1: Malformed frame"},
        {"WOS<0x1D>A1", "line 1: Malformed frame"},
        {"ROS", "line 1: Unknown command"},
        {"CAL<GS>G1<GS>H2<GS>I0", "line 1: Field missing"},
        {"CAL<GS>G4096<GS>H2<GS>I0<GS>L0", "line 1: Value out of range"},
        {"IMG<GS>A3c", "line 1: Firmware data not hexadecimal"},
    };
    for (const auto &[text, message] : table) {
        try {
            fromStateText(text);
            ADD_FAILURE() << text;
        } catch (const std::runtime_error &error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
    EXPECT_THROW(loadState("/nowhere/state"), std::runtime_error);
    EXPECT_THROW(saveState("/nowhere/state", UnitMemory()), std::runtime_error);
}

}  // namespace
