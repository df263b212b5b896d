#include "protocol/field.h"
#include "support/commalocale.h"
#include "support/wire.h"

#include <boost/lexical_cast.hpp>
#include <gtest/gtest.h>

TEST(Field, WritesItsTree)
{
    Field nested('c', Level1);
    nested.insertSubField('x', 1);
    nested += Field('y', "2", Level2);
    Field tree('M', nested, Level0);
    EXPECT_EQ(visible(tree.toString()), "Mcx1,y2");
    tree.insertSubField('d', 0.5);
    tree.insertSubField('e');
    EXPECT_EQ(visible(tree.toString()), "Mcx1,y2;d0,50;e");
}

TEST(Field, ParsesEachLevelAtItsOwnSeparator)
{
    Field tree(Level0, wire("Mcx1,y2;;d5;d6"));
    ASSERT_EQ(tree.getSubfields().size(), 3u);
    EXPECT_EQ((*tree['c'])['y']->intValue(), 2);
    EXPECT_EQ(tree.getSubfieldByDescriptorOrNull('d')->getValuePart(), "5");
    EXPECT_FALSE(tree.doesContain('x'));
    tree['d']->insertIntValue(9);
    EXPECT_EQ(visible(tree.toString()), "Mcx1,y2;d9;d6");
    // Separators of other levels stay in the value; so does a sub-field that stands alone.
    for (const Field &plain : {Field(Level2, wire("Aa;b,c|d")), Field(Level0, wire("Aa,b")), Field(Level0, "Aa5")})
        EXPECT_TRUE(plain.getSubfields().empty()) << visible(plain.toString());
    EXPECT_EQ(visible(Field(Level2, wire("Aa;b,c|d")).getValuePart()), "a;b,c|d");
}

TEST(Field, RefusesWrongLevelsAndStaysAsItWas)
{
    const auto refusal = [](FieldLevel level, FieldLevel subLevel) -> std::string {
        Field parent('A', level);
        try {
            parent.insertSubField(Field('B', subLevel));
        } catch (const std::invalid_argument &refused) {
            return refused.what() + parent.getValuePart();
        }
        return "accepted";
    };
    EXPECT_EQ(refusal(Level2, Level2), "za glebokie pole");
    Field deepest('A', Level2);
    EXPECT_THROW(deepest.insertSubField('a', 5), std::invalid_argument);
    EXPECT_THROW(deepest.insertSubField(std::string("a5")), std::invalid_argument);
    EXPECT_THROW(deepest.addSubfieldFromParsedField("a5"), std::invalid_argument);
    EXPECT_EQ(refusal(Level0, Level2), "Niepoprawny poziom pola");
    EXPECT_EQ(refusal(Level1, Level1), "Niepoprawny poziom pola");
}

TEST(Field, TakesDescriptorAndValueFromParsedText)
{
    Field field('A', "1", Level0);
    field.setDescriptor("");
    EXPECT_EQ(field.toString(), "A1");
    field.setDescriptor("Zz");
    field.setValueFromParsed("Qvalue");
    EXPECT_EQ(field.toString(), "Zvalue");
}

TEST(Field, ReadsAndWritesNumbersAlikeUnderEveryLocale)
{
    const CommaLocale locale;
    EXPECT_EQ(Field('A', 1234567, Level0).getValuePart(), "1234567");
    EXPECT_EQ(Field('A', -7, Level0).getValuePart(), "-7");
    const std::pair<double, const char *> written[] = {{3.14159, "3,14"}, {-0.5, "-0,50"}, {1234567, "1234567,00"}};
    for (const auto &[number, text] : written)
        EXPECT_EQ(Field('A', number, Level0).getValuePart(), text);

    const std::pair<const char *, int> integers[] = {
        {"+7", 7}, {"-7", -7}, {"007", 7}, {"2147483647", 2147483647}, {"-2147483648", -2147483647 - 1}};
    for (const auto &[text, number] : integers)
        EXPECT_EQ(Field('A', text, Level0).intValue(), number) << text;
    for (const char *text : {"", "-", "7a", " 7", "7 ", "1,5", "1.234", "--7", "+-7", "2147483648", "0x1F"})
        EXPECT_THROW(Field('A', text, Level0).intValue(), boost::bad_lexical_cast) << text;

    const std::pair<const char *, double> reals[] = {
        {"3,14", 3.14}, {"3.14", 3.14}, {"+2,5", 2.5}, {"1e3", 1000}, {"INFINITY", HUGE_VAL}};
    for (const auto &[text, number] : reals)
        EXPECT_EQ(Field('A', text, Level0).doubleValue(), number) << text;
    for (const char *text : {"", "1,5 ", "1.234,5", "x", "1e", "+-1"})
        EXPECT_THROW(Field('A', text, Level0).doubleValue(), boost::bad_lexical_cast) << text;
}
