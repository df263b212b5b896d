#include "model/datafromdevice.h"

#include <gtest/gtest.h>

TEST(Model, CountsFromTheFirstValueOfAnEnumeration)
{
    EXPECT_EQ(toIndex(FootswitchType::MidiModifier), 3);
    EXPECT_EQ(fromIndex<WahPadSetting>(6), WahPadSetting::Inactive);
}
