#include "support/frames.h"
#include "unit/musiciancontent.h"
#include "unit/virtualunit.h"

#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// The words of a text that blanks separate.
std::vector<std::string> words(const std::string &text)
{
    std::istringstream input(text);
    return {std::istream_iterator<std::string>(input), {}};
}

/// The status and fields with which the unit answers a data part, each time under another identifier.
std::string reply(VirtualUnit &unit, const std::string &data)
{
    static int id = 0;
    return parseFrame(unit.answer(buildFrame(std::to_string(++id), wire(data))).value_or("")).data;
}

/// Controllers 2 to 20 of a MIDI device, of which only the last is defined.
const std::string otherControllers =
    "|GA;B255|HA;B255|IA;B255|JA;B255|KA;B255|LA;B255|MA;B255|NA;B255|OA;B255|PA;B255|QA;B255|RA;B255|SA;B255|TA;B255"
    "|UA;B255|VA;B255|WA;B255|XA;B255|YAÖ;B0";

/// A memory in which no two neighbouring fields are alike.
UnitMemory sample()
{
    VirtualUnit unit{UnitMemory()};
    const std::string writes[] = {
        "WBB|A4|BCAFÉ|C3|D9|E1|F0",
        "WBP|A4|B2|CSOLO|D2|EA1;B1;C2;D3;E4;F1;G2|FA2;B1;C3;D4;E2;F1|GAA1,B2,C64;BA10,B20,C254;a1;j128;nA3,B4,C3,D5,"
        "E127",
        "WMD|A10|BAMP|C16|D1|E2|FAGAIN;B20" + otherControllers + "|a3|b254|c60|d3",
        "WMI|B3|C2",
        "WSO|A1|B2|C3|D1|E2|F3",
        "WOS|A2|B1|D6|E7|F3|G1|J2|K2",
    };
    for (const std::string &write : writes)
        EXPECT_EQ(reply(unit, write), "0") << write;
    unit.memory().deviceInfo = {"KORA", "BENCH", 2, 7, 3, 99};
    unit.memory().expressionPedal = {
        ExpressionPedalCharacteristic::SlowFast, ExpressionPedalPeriod::Ms64, 1, 127, 12, 4095, true, 10, 20, true};
    return unit.memory();
}

TEST(Commands, AnswerByteForByte)
{
    const std::pair<const char *, std::string> table[] = {
        {"1^RDI7329", "1^0|AKORA|BBENCH|C2|D7|E3|F995A0B"},
        {"7^RET|A33DAF", "7^0|A3|BUnknown command82CC"},
        {"12^RBB|A4D9C6", "12^0|A4|BCAFÉ|C3|D9|E1|F006AE"},
        {"3^RBP|A4|B2A011", "3^0|A4|B2|CSOLO|D2|EA1;B1;C2;D3;E4;F1;G2|FA2;B1;C3;D4;E2;F1|"
                            "GAA1,B2,C64;BA10,B20,C254;a1;j128;nA3,B4,C3,D5,E127CD62"},
        {"18446744073709551615^RBP|A99|B945E4",
         "18446744073709551615^0|A99|B9|C|D0|EA2;B2;C2;D2;E2;F2;G2|FA2;B2;C2;D2;E2;F2FEE0"},
        {"8^RMD|A1073FD", "8^0|A10|BAMP|C16|D1|E2|FAGAIN;B20" + otherControllers + "|a3|b254|c60|d3BDAD"},
        {"9^RMIE2CE", "9^0|A255|B3|C234D5"},
        {"10^REPC8D0", "10^0|C3|D5|E1|F127|G12|H4095|I1|J10|K20311B"},
        {"11^RSOA0A2", "11^0|A1|B2|C3|D1|E2|F370B5"},
        {"11^WOS|J15769", "11^137BE7"},  // the identifier of the last command
        {"13^WBB|A0|BFIRST9DB8", "13^027F6"},
        {"14^WSOA17E", "14^0E647"},
        {"5^WFD|A1|B00FF5A90", "5^0DA18"},
        {"6^WFD|C6F3C", "6^0DAE8"},
        {"4^WOS|J33871", "4^1072DA"},
    };
    VirtualUnit unit(sample());
    for (const auto &[command, answer] : table)
        EXPECT_EQ(unit.answer(frame(command)), frame(answer)) << command;
}

TEST(Commands, BadFramesGetAStatusAndTheirIdentifier)
{
    const struct
    {
        std::string bytes;
        const char *id, *status;
    } table[] = {
        {"", "0", "2"},
        {"\x02\x1C\x03", "0", "2"},
        {"X1\x1CRDI7329\x03", "0", "2"},
        {"\x02" + wire("1^RDI7329X"), "0", "2"},
        {frame("1^RDI7328"), "1", "1"},
        {frame("12^RBB|A4d9c6"), "12", "1"},  // checksum digits are upper case
        {frame("02^RDI8368"), "0", "2"},
        {frame("^RDIB754"), "0", "2"},
        {frame("2|All^RDI2211"), "0", "2"},
        {frame("18446744073709551616^RDIF4EC"), "0", "2"},
        {frame("2^RDIX17B3"), "2", "2"},
        {frame("2^RDI|E472"), "2", "2"},
        {frame("2^rDIB96C"), "2", "2"},
        {frame("2^RDI|A^11B72"), "2", "2"},
        {frame(std::string("2^RET|A\0003C916", 13)), "2", "2"},
    };
    VirtualUnit unit{UnitMemory()};
    for (const auto &row : table)
        EXPECT_EQ(unit.answer(row.bytes), buildFrame(row.id, row.status)) << testing::PrintToString(row.bytes);
}

TEST(Commands, RefusedCommandsChangeNothing)
{
    const struct
    {
        const char *status, *start;
        std::string rests;
    } table[] = {
        {"3", "", "RXX WDI|A1 IDN"},
        {"4", "", "RBB WBB|BX RBP|A1 RMD WMD|C1 RET WFD|B00 WFD"},
        {"5", "", "RBB|A100 RBB|A-1 RBP|A0|B10 RMD|A0 RMD|A11 WBP|A100|B0|CX RBB|A99999999999"},
        {"6", "", "RDI|A1 RBB|A0|B1 WBB|A0|BX|GY WEP|G1 WEP|H1 WEP|I1 WEP|A1 WOS|H0 WOS|I0 WSO|G1 WMD|A1|Z1"},
        {"6", "", "WBP|A0|B0|H1 WBP|A0|B0|D0|GU1 WBP|A0|B0|D0|Gk1 WFD|C|D WFD|A1|B00|C"},
        {"7", "", "RBB|A1|A1 WBB|A0|BX|BY WBP|A0|B0|D0|EA1;A1;B1;C1;D1;E1;F1;G1 WBP|A0|B0|D0|Ga1;a2"},
        {"8", "", "WBB|A0 WBP|A0|B0 WMD|A1 WMI WEP WOS WFD|A1"},
        {"8", "WMD|A1|", "FAX;B1 FAX" + otherControllers},
        {"8", "WBP|A0|B0|", "EA1;B1;C1;D1;E1;F1;G1 CX|FA1;B1;C1;D1;E1;F1 G Ga1"},  // without D
        {"8", "WBP|A0|B0|D0|", "EA1;B1;C1;D1;E1;F1 FA1 GAA1,B1 GnA1,B1,C1,D1"},
        {"9", "", "RBB|A RBB|A01 RBB|A+1 RBB|A1x WOS|A WOS|A1.0 WOS|A-0 WOS|A1;B1"},
        {"10", "WBB|A0|", "C0 C4 D10 D-1"},
        {"10", "WBP|A0|B0|D0|", "EA0;B1;C1;D1;E1;F1;G1 EA1;B1;C1;D1;E1;F1;G5 FA1;B1;C1;D1;E1;F5"},
        {"10", "WBP|A0|B0|D0|G", "a0 a129 j254 AA0,B1,C1 AA11,B1,C1 AA255,B1,C1 AA1,B21,C1 AA1,B0,C254 AA1,B1,C128"},
        {"10", "WBP|A0|B0|D0|GnA", "0,B1,C1,D1,E1 1,B21,C1,D1,E1 1,B1,C4,D1,E1 1,B1,C1,D128,E1 1,B1,C1,D1,E255"},
        {"10", "WMD|A1|", "C0 C17 D2 E0 E4 a0 a21 b253 c128 d4 FAX;B128" + otherControllers},
        {"10", "WMI|", "A254 B4 C3"},
        {"10", "WEP|", "C0 D6 E128 F255 J11 J0 K21"},
        {"10", "WSO|", "A0 F4"},
        {"10", "WOS|", "A3 B2 D8 E0 F4 G-1 J0 K3"},
        {"10", "WFD|", "C1"},
        {"11", "", "WBB|A0|BA\x7F WBP|A0|B0|C\x1B WBB|A0|BX;Y WMD|A1|FAX\x01;B1" + otherControllers},
        {"12", "", "RBP|B0|A0 WBB|BX|A0 WBP|A0|CX|B0 WBP|D0|A0|B0 WMD|C1|A1 WFD|B00|A1"},
        {"12", "WBP|A0|B0|D0|", "EB1;A1;C1;D1;E1;F1;G1 FA1;B1;C1;D1;F1;E1 GBA1,B1,C1;AA1,B1,C1 Gb1;a1 Ga1;AA1,B1,C1"},
        {"12", "WBP|A0|B0|D0|", "GnA1,B1,C1,D1,E1;a1 GAB1,A1,C1 GnA1,B1,C1,E1,D1"},
        {"12", "WMD|A1", otherControllers + "|FAX;B1 |FB1;AX" + otherControllers + " |FAX;B1|BX" + otherControllers},
        {"2", "WBP|A0|B0|D0|", "EA1;;B1 GAA1,,B1 Ga1;"},
        // A good value does not get in when a later one is refused.
        {"10", "", "WBB|A0|BNEW|C9 WOS|A2|K9 WBP|A0|B0|GAA1,B1,C1|D4 WMD|A1|BNEW|d0"},
    };
    VirtualUnit unit(musicianContent());
    for (const auto &row : table)
        for (const std::string &rest : words(row.rests))
            EXPECT_EQ(reply(unit, row.start + rest), row.status) << row.start << rest;
    EXPECT_EQ(unit.memory(), musicianContent());
}

TEST(Commands, ControlChangesAreReplacedMergedDroppedClearedOrLeft)
{
    const auto replace = MidiLists::Replace, merge = MidiLists::Merge;
    const std::string pedal = "nA2,B2,C2,D2,E2";
    const std::tuple<MidiLists, std::string, std::string> table[] = {
        // what is written, "G" of the answer afterwards
        {replace, "GAA1,B1,C0;BA10,B20,C127;TA2,B3,C254", "AA1,B1,C0;BA10,B20,C127;CA2,B3,C254"},
        {replace, "Gc7|GnA2,B2,C2,D2,E2", "AA1,B1,C0;BA10,B20,C127;CA2,B3,C254;c7;" + pedal},
        {replace, "GAA99,B0,C255;BA4,B4,C4;CA1,B1,C255", "AA4,B4,C4;c7;" + pedal},
        {replace, "Gc255|GAA5,B5,C5", "AA5,B5,C5;" + pedal},
        {replace, "Ga128;j1;nA255,B255,C3,D127,E0", "AA5,B5,C5;a128;j1;nA255,B255,C3,D127,E0"},
        {merge, "Ga255;j255;nA2,B2,C2,D2,E2", "AA5,B5,C5;" + pedal},
        {merge, "GAA5,B4,C1;BA4,B5,C2", "AA5,B5,C5;BA5,B4,C1;CA4,B5,C2;" + pedal},
        {merge, "GAA99,B0,C255;BA5,B4,C3;CA5,B5,C255;DA261,B4,C255", "AA5,B4,C3;BA4,B5,C2;" + pedal},
        {merge, "G", "AA5,B4,C3;BA4,B5,C2;" + pedal},
        {replace, "G", pedal},
        {replace, "GAA20,B1,C255", pedal},
        {replace, "GAA1,B1,C1;BA1,B1,C2", "AA1,B1,C1;BA1,B1,C2;" + pedal},
        {merge, "GAA1,B1,C255", pedal},
    };
    VirtualUnit unit{UnitMemory()};
    for (const auto &[lists, fields, midi] : table) {
        unit.setMidiLists(lists);
        EXPECT_EQ(reply(unit, "WBP|A0|B0|D0|" + fields), "0") << fields;
        const std::string answer = reply(unit, "RBP|A0|B0");
        EXPECT_EQ(answer.substr(std::min(answer.find("\x1DG"), answer.size())), wire("|G" + midi)) << fields;
    }
    unit.memory().presets[0][0].controlChanges.assign(20, {1, 1, 0});
    EXPECT_EQ(reply(unit, "WBP|A0|B0|D0|GAA2,B1,C1"), "14");
    EXPECT_EQ(reply(unit, "WBP|A0|B0|D0|GAA2,B1,C1;BA1,B1,C255"), "0");
}

TEST(Firmware, IsTakenInOrderAndInstalledByTheRestart)
{
    const std::string full(1024, 'A');
    const std::pair<std::string, const char *> table[] = {
        {"D", "24"},          {"A2|B00", "20"}, {"A0|B00", "20"}, {"A1|B" + full + "AA", "22"},
        {"A1|B0", "21"},      {"A1|Baa", "21"}, {"A1|B", "21"},   {"A1|B" + full, "0"},
        {"C", "0"},           {"A2|B00", "20"},  // the image was complete
        {"A1|BFF", "0"},                         // a new one
        {"A2|B00", "20"},                        // only the last chunk may be short
        {"A1|B" + full, "0"},                    // begins again
        {"D", "24"},          {"A3|B00", "20"}, {"A2|BAB", "0"},  {"A3|B00", "20"},
        {"C", "0"},           {"A3|B00", "20"}, {"D", "0"},
    };
    VirtualUnit unit(sample(), 1s);
    for (int number = 1; number <= 1920; ++number)
        ASSERT_EQ(reply(unit, "WFD|A" + std::to_string(number) + "|B" + full), "0");
    EXPECT_EQ(reply(unit, "WFD|A1921|B00"), "23");
    for (const auto &[fields, status] : table)
        EXPECT_EQ(reply(unit, "WFD|" + fields), status) << fields;

    EXPECT_TRUE(unit.isSilent());
    EXPECT_EQ(unit.answer(frame("1^RDI7329")), std::nullopt);
    while (unit.isSilent())
        std::this_thread::sleep_for(5ms);
    std::vector<std::uint8_t> image(512, 0xAA);
    image.push_back(0xAB);
    EXPECT_EQ(unit.memory().firmware, image);
    EXPECT_EQ(reply(unit, "RDI"), wire("0|AKORA|BBENCH|C159|D25|E3|F99"));
    EXPECT_EQ(reply(unit, "WFD|D"), "24");
    EXPECT_EQ(reply(unit, "WFD|C"), "0");
    EXPECT_EQ(reply(unit, "WFD|D"), "0");  // without data it only restarts
    EXPECT_EQ(unit.memory().firmware, image);
}

}  // namespace
