#pragma once

#include <array>
#include <boost/optional.hpp>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Depth of a field in a frame's tree.
enum FieldLevel { Level0 = 0, Level1 = 1, Level2 = 2 };

/// One node of a frame's field tree: a one-character descriptor and either a text value or ordered sub-fields.
///
/// The text of a field with exactly one sub-field is also the text of a field with a value; parsing yields the value,
/// and who knows the command decides which it was.
class Field
{
public:
    Field(char fieldDescriptor, FieldLevel fieldLevel);
    Field(char fieldDescriptor, std::string fieldValue, FieldLevel fieldLevel);
    Field(char fieldDescriptor, int number, FieldLevel fieldLevel);
    /// A number with exactly two decimals and a comma.
    Field(char fieldDescriptor, double number, FieldLevel fieldLevel);
    /// Throws as `insertSubField(Field)`.
    Field(char fieldDescriptor, Field subfield, FieldLevel fieldLevel);
    /// Parses the text of one field, descriptor first. The text must not be empty.
    Field(FieldLevel fieldLevel, std::string_view text);
    virtual ~Field() = default;
    Field(const Field &) = default;
    Field(Field &&) = default;
    Field &operator=(const Field &) = default;
    Field &operator=(Field &&) = default;

    /// Appends the field. Throws `std::invalid_argument` when this field is at level 2 or the new one is not one
    /// deeper.
    void insertSubField(Field subfield);
    void insertSubField(char subDescriptor);
    void insertSubField(char subDescriptor, std::string subValue);
    void insertSubField(char subDescriptor, int subValue);
    void insertSubField(char subDescriptor, double subValue);
    /// Parses the text of a field one level deeper and appends it.
    void insertSubField(std::string_view text);
    Field &operator+=(const Field &subfield);

    void insertIntValue(int number);
    /// Stores the number with exactly two decimals and a comma.
    void insertDoubleValue(double number);
    /// Takes the first character of the text; an empty text changes nothing.
    void setDescriptor(std::string_view text);
    /// Takes the text without its first character.
    void setValueFromParsed(std::string_view text);

    char getDescriptor() const { return descriptor; }
    FieldLevel getLevel() const { return level; }
    const std::vector<Field> &getSubfields() const { return subfields; }

    /// Descriptor and value part.
    std::string toString() const;
    /// Appends what `toString` returns.
    void appendTo(std::string &text) const;
    /// The value, or the sub-fields' texts if there are any; without this field's descriptor.
    std::string getValuePart() const;
    /// The sub-fields' texts, joined with the separator of their level.
    std::string parseSubField() const;

    /// The value as a signed 32-bit number. Throws `boost::bad_lexical_cast` when it is not one.
    int intValue() const;
    /// The value as a real number; a comma stands for the decimal point. Throws `boost::bad_lexical_cast`.
    double doubleValue() const;

    /// The first direct sub-field with that descriptor, if any.
    boost::optional<const Field &> operator[](const char &subDescriptor) const;
    boost::optional<Field &> operator[](const char &subDescriptor);
    boost::optional<const Field &> getSubfieldByDescriptorOrNull(char subDescriptor) const;
    bool doesContain(char subDescriptor) const;

    /// Whether a text parsed at this field's level has sub-fields.
    bool hasSubfield(std::string_view text) const;
    /// Splits a text into the texts of sub-fields, empty pieces left out, and appends each.
    void addSubfieldFromParsedField(std::string_view text);

    /// The separator written before (level 0) or between (levels 1 and 2) fields of a level.
    static constexpr std::array<char, 3> separators{'\x1D', '\x1E', '\x1F'};
    static const std::map<FieldLevel, char> separatorMap;

private:
    FieldLevel sublevel() const { return static_cast<FieldLevel>(level + 1); }
    /// Throws for a field of level 2, below which there is none.
    void requireSublevel() const;
    /// Appends a sub-field made of descriptor and value.
    template <typename... Content>
    void makeSubField(Content &&...content);
    void appendValuePart(std::string &text) const;

    std::vector<Field> subfields;
    char descriptor;
    std::string value;  // used only while there are no sub-fields
    FieldLevel level;
};

/// The first field with that descriptor, if any.
boost::optional<const Field &> findField(const std::vector<Field> &fields, char descriptor);
