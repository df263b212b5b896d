#include "protocol/masterframe.h"
#include "protocol/slaveframe.h"
#include "support/commalocale.h"
#include "support/outcome.h"
#include "support/wire.h"

#include <boost/lexical_cast.hpp>
#include <gtest/gtest.h>

namespace {

MasterFrame command(unsigned long long id, const std::string &descriptor)
{
    MasterFrame frame;
    frame.setFrameID(id);
    frame.setCommandDescriptor(descriptor);
    return frame;
}

}  // namespace

TEST(Header, ReadsElementsAndWritesNoneAfterTheLastThatIsNotDefault)
{
    const CommaLocale locale;
    const std::array<const char *, 2> cases[] = {
        {"", "0"},
        {"1742|All|1|1|NDT||", "1742"},
        {"17|Me|1", "17|Me"},
        {"17||2", "17||2"},
        {"17|||5", "17||0|5"},
        {"17|All|1|1|", "17|All|1|1|"},
        {"17|All|1|1|NDT|D", "17|All|1|1|NDT|D"},
        {"18446744073709551615|All|1|1|NDT||S|more", "18446744073709551615|All|1|1|NDT||S"},
    };
    for (const auto &[text, written] : cases)
        EXPECT_EQ(visible(Header(wire(text)).toString()), written) << text;
    for (const char *text : {"x1", "1 ", "1|All|x", "1|All|1|2.000", "18446744073709551616"})
        EXPECT_THROW(Header{wire(text)}, boost::bad_lexical_cast) << text;
}

TEST(Header, TakesItsIdentifierFromTheCounter)
{
    const Header first;
    const Header given(7);
    EXPECT_EQ(Header().frameID, first.frameID + 1);
    // The first of all went to the placeholder that is made while the program starts.
    EXPECT_EQ(Data::lastSendFrame->toByteArray(), hexBytes("02 30 1C 43 39 31 35 03"));
}

TEST(MasterFrame, SerialisesByteForByte)
{
    EXPECT_EQ(command(1, "RDI").toByteArray(), hexBytes("02 31 1C 52 44 49 37 33 32 39 03"));
    EXPECT_EQ(command(42, "RDI").toByteArray(), hexBytes("02 34 32 1C 52 44 49 30 37 36 39 03"));
    EXPECT_EQ(command(1, "").toByteArray(), hexBytes("02 31 1C 35 39 31 34 03"));
    EXPECT_EQ(Frame::getIndexListOfElement("|a||", '|'), (std::vector<std::size_t>{0, 2, 3}));
    MasterFrame error = command(7, "RET");
    error.addField('A', 3);
    EXPECT_EQ(error.toByteArray(), hexBytes("02 37 1C 52 45 54 1D 41 33 33 44 41 46 03"));
    MasterFrame preset = command(3, "RBP");
    preset += Field('A', "2", Level0);
    preset.addField('B', "5");
    EXPECT_EQ(preset.toByteArray(), hexBytes("02 33 1C 52 42 50 1D 41 32 1D 42 35 45 41 35 30 03"));
}

TEST(MasterFrame, CopiesShareIdentifierAndFields)
{
    MasterFrame frame = command(5, "");
    MasterFrame copy = frame;
    EXPECT_TRUE(frame.isEmpty());
    copy.addField('A', 1);
    copy.addField('A', 2);
    copy.setFrameID(6);
    EXPECT_EQ(visible(frame.parseField()), "|A1|A2");
    EXPECT_EQ(frame['A']->getValuePart(), "1");
    EXPECT_EQ(frame.getFrameID(), 6u);
    EXPECT_THROW(copy.addField(Field('A', Level1)), std::invalid_argument);
    EXPECT_EQ(frame.getFieldList().size(), 2u);
}

TEST(SlaveFrame, ReadsTheExamples)
{
    const std::tuple<const char *, unsigned long long, int, const char *> examples[] = {
        {"02 37 1C 30 31 41 42 39 03", 7, 0, "0"},
        {"02 37 1C 30 31 61 62 39 03", 7, 0, "0"},  // checksum digits in lower case
        {"02 37 1C 35 31 39 37 39 03", 7, 5, "5"},
        {"02 31 1C 30 1D 41 31 32 41 36 41 30 03", 1, 0, "0|A12"},
        {"02 31 1C 30 1D 50 61 31 1E 62 32 30 46 30 33 39 03", 1, 0, "0|Pa1;b20"},
        {"02 37 1C 30 1D 41 1C 31 46 37 39 42 03", 7, 0, "0|A^1"},  // only the first 1C ends the header
    };
    for (const auto &[bytes, id, status, data] : examples) {
        const SlaveFrame frame(hexBytes(bytes));
        EXPECT_EQ(frame.getFrameID(), id);
        EXPECT_EQ(frame.status(), status);
        EXPECT_EQ(visible(frame.parseField()), data);
    }
}

TEST(SlaveFrame, RefusesEveryAlteredByteButTheFirstAndTheLast)
{
    const auto frame = hexBytes("02 31 1C 30 1D 41 31 32 41 36 41 30 03");
    for (std::size_t position = 0; position < frame.size(); ++position) {
        auto altered = frame;
        altered[position] ^= 0x01;
        const bool outside = position == 0 || position == frame.size() - 1;
        EXPECT_EQ(failureOf([&] { SlaveFrame{altered}; }), outside ? "" : "Incorrect Checksum") << position;
    }
}

TEST(SlaveFrame, RefusesWhatIsNoFrame)
{
    for (const char *tooShort : {"", "02 30 30 30 03"})
        EXPECT_EQ(failureOf([&] { SlaveFrame{hexBytes(tooShort)}; }), "Incorrect Checksum");
    for (const char *noHeaderEnd : {"02 30 30 30 30 03", "02 31 44 41 33 31 35 03", "02 31 44 41 33 31 35 1C"})
        EXPECT_EQ(failureOf([&] { SlaveFrame{hexBytes(noHeaderEnd)}; }), "Frame without header end");
    for (const char *numberIsX : {"02 78 1C 30 43 44 38 38 03", "02 37 1C 78 32 43 42 39 03"})
        EXPECT_THROW(SlaveFrame{hexBytes(numberIsX)}, boost::bad_lexical_cast) << numberIsX;
}

TEST(SlaveData, ReadsStatusAndFields)
{
    const CommaLocale locale;
    for (const char *text : {"1234", "-3", "7|A1", "0|A|Bx1,y2;z3"})
        EXPECT_EQ(visible(SlaveData(wire(text)).toString()), text);
    EXPECT_EQ(visible(SlaveData("").toString()), "0");
    EXPECT_EQ(visible(SlaveData(wire("|A1||B2|")).toString()), "0|A1|B2");
    for (const char *text : {"x", " 0", "0 |A1", "1.234"})
        EXPECT_THROW(SlaveData{wire(text)}, boost::bad_lexical_cast) << text;
}
