#include "protocol/converter.h"
#include "protocol/crc16.h"
#include "support/outcome.h"
#include "support/wire.h"

#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

TEST(Crc16, IsTheArcVariant)
{
    EXPECT_EQ(Crc16::calculate({}), 0);
    EXPECT_EQ(Crc16::calculate(hexBytes("31 32 33 34 35 36 37 38 39")), 0xBB3D);
    EXPECT_EQ(Crc16::calculate(hexBytes("34 32 1C 52 44 49")), 0x0769);
}

TEST(Converter, WritesHexadecimal)
{
    EXPECT_EQ(toHex(std::uint16_t{0x0769}), "0769");
    EXPECT_EQ(toHex(std::uint8_t{0xAB}, 4), "00AB");
    EXPECT_EQ(toHex(std::uint32_t{0xDEADBEEF}, 4), "DEADBEEF");
    EXPECT_EQ(Converter::vectorToHexString({0x00, 0x9F, 0xA0, 0x0A, 0x7F, 0xFF}), "009FA00A7FFF");
}

TEST(Converter, KeepsEveryByteBetweenTextAndVector)
{
    const std::vector<std::uint8_t> bytes{0x61, 0x00, 0xFF, 0x80};
    EXPECT_EQ(Converter::stringToVector("a\0\xFF\x80"s), bytes);
    EXPECT_EQ(Converter::vectorToString(bytes), "a\0\xFF\x80"s);
}

TEST(Converter, ShowsControlBytesInTheLog)
{
    EXPECT_EQ(Converter::toLogString("plain ~\x7F"), "plain ~\x7F");
    EXPECT_EQ(Converter::toLogString("\x02\x31\x1CRDI\x1D\x1E\x1F\x03"), "<STX>1<FS>RDI<GS><RS><US><ETX>");
    EXPECT_EQ(Converter::toLogString("\x01\0\x80\xFF"s), "<0x01><0x00><0x80><0xFF>");
}

TEST(Converter, ErasesAPatternUntilNoneIsLeft)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string text(12, 'a');
        const std::string pattern = std::string("abaab").substr(random() % 5, random() % 4);
        for (char &character : text)
            character = "ab"[random() % 2];
        std::string erased = text, left = text;
        Converter::eraseAllSubStr(erased, pattern);
        // The definition: the first occurrence goes, then the search starts over.
        for (std::size_t found; !pattern.empty() && (found = left.find(pattern)) != std::string::npos;)
            left.erase(found, pattern.size());
        EXPECT_EQ(erased, left) << pattern << " in " << text;
    }
    std::string nested = std::string(32000, '%') + std::string(32000, 's');
    EXPECT_LT(millisecondsOf([&nested] { Converter::eraseAllSubStr(nested, "%s"); }), 1500);
    EXPECT_EQ(nested, "");
}
