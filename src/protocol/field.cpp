#include "protocol/field.h"

#include "protocol/number.h"

#include <array>
#include <boost/algorithm/string.hpp>
#include <stdexcept>

const std::map<FieldLevel, char> Field::separatorMap{{Level0, '\x1D'}, {Level1, '\x1E'}, {Level2, '\x1F'}};

Field::Field(char fieldDescriptor, FieldLevel fieldLevel) : descriptor(fieldDescriptor), level(fieldLevel) {}

Field::Field(char fieldDescriptor, std::string fieldValue, FieldLevel fieldLevel)
    : descriptor(fieldDescriptor), value(std::move(fieldValue)), level(fieldLevel)
{}

Field::Field(char fieldDescriptor, int number, FieldLevel fieldLevel) : Field(fieldDescriptor, fieldLevel)
{
    insertIntValue(number);
}

Field::Field(char fieldDescriptor, double number, FieldLevel fieldLevel) : Field(fieldDescriptor, fieldLevel)
{
    insertDoubleValue(number);
}

Field::Field(char fieldDescriptor, Field subfield, FieldLevel fieldLevel) : Field(fieldDescriptor, fieldLevel)
{
    insertSubField(std::move(subfield));
}

Field::Field(FieldLevel fieldLevel, const std::string &text) : descriptor(text.front()), level(fieldLevel)
{
    if (hasSubfield(text))
        addSubfieldFromParsedField(text.substr(1));
    else
        setValueFromParsed(text);
}

void Field::requireSublevel() const
{
    if (level >= Level2) throw std::invalid_argument("za glebokie pole");
}

void Field::insertSubField(Field subfield)
{
    requireSublevel();
    if (subfield.level != sublevel()) throw std::invalid_argument("Niepoprawny poziom pola");
    subfields.push_back(std::move(subfield));
}

void Field::insertSubField(char subDescriptor) { insertSubField(Field(subDescriptor, sublevel())); }

void Field::insertSubField(char subDescriptor, const std::string &subValue)
{
    insertSubField(Field(subDescriptor, subValue, sublevel()));
}

void Field::insertSubField(char subDescriptor, int subValue)
{
    insertSubField(Field(subDescriptor, subValue, sublevel()));
}

void Field::insertSubField(char subDescriptor, double subValue)
{
    insertSubField(Field(subDescriptor, subValue, sublevel()));
}

void Field::insertSubField(const std::string &text) { insertSubField(Field(sublevel(), text)); }

Field &Field::operator+=(const Field &subfield)
{
    insertSubField(subfield);
    return *this;
}

void Field::insertIntValue(int number) { value = std::to_string(number); }

void Field::insertDoubleValue(double number)
{
    std::array<char, 400> text{};  // the largest double has 309 digits before its point
    const auto [end, problem] =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 2);
    value.assign(text.data(), end);
    if (const auto point = value.find('.'); point != std::string::npos) value[point] = ',';
}

void Field::setDescriptor(const std::string &text)
{
    if (!text.empty()) descriptor = text.front();
}

void Field::setValueFromParsed(const std::string &text) { value = text.empty() ? text : text.substr(1); }

std::string Field::toString() const
{
    std::string text(1, descriptor);
    appendValuePart(text);
    return text;
}

std::string Field::getValuePart() const
{
    std::string text;
    appendValuePart(text);
    return text;
}

std::string Field::parseSubField() const { return subfields.empty() ? std::string() : getValuePart(); }

void Field::appendValuePart(std::string &text) const
{
    if (subfields.empty())
        text += value;
    else
        appendJoined(text, subfields, separatorMap.at(sublevel()));
}

void Field::appendJoined(std::string &text, const std::vector<Field> &fields, char separator)
{
    for (const Field &field : fields) {
        if (&field != &fields.front()) text += separator;
        text += field.descriptor;
        field.appendValuePart(text);
    }
}

int Field::intValue() const { return parseInteger<int>(value); }

double Field::doubleValue() const
{
    const std::string text = boost::replace_all_copy(value, ",", ".");
    // The lexical cast reads numbers by the global locale; it is left its own spellings of infinity and not-a-number.
    if (text.find_first_not_of("+-.0123456789eE") != std::string::npos) return boost::lexical_cast<double>(text);
    const char *const start = text.data() + (text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    double number = 0;
    const auto [end, problem] = std::from_chars(start, text.data() + text.size(), number);
    if (problem != std::errc{} || end != text.data() + text.size())
        throw boost::bad_lexical_cast(typeid(std::string), typeid(double));
    return number;
}

boost::optional<const Field &> Field::operator[](const char &subDescriptor) const
{
    return findField(subfields, subDescriptor);
}

boost::optional<Field &> Field::operator[](const char &subDescriptor)
{
    const auto found = findField(subfields, subDescriptor);
    if (!found) return boost::none;
    return const_cast<Field &>(*found);
}

boost::optional<const Field &> Field::getSubfieldByDescriptorOrNull(char subDescriptor) const
{
    return (*this)[subDescriptor];
}

bool Field::doesContain(char subDescriptor) const { return (*this)[subDescriptor].has_value(); }

bool Field::hasSubfield(const std::string &text) const
{
    return level < Level2 && text.find(separatorMap.at(sublevel())) != std::string::npos;
}

void Field::addSubfieldFromParsedField(const std::string &text)
{
    requireSublevel();
    std::vector<std::string> pieces;
    boost::split(pieces, text, boost::is_any_of(std::string(1, separatorMap.at(sublevel()))));
    for (const std::string &piece : pieces)
        if (!piece.empty()) insertSubField(piece);
}

boost::optional<const Field &> findField(const std::vector<Field> &fields, char descriptor)
{
    for (const Field &field : fields)
        if (field.getDescriptor() == descriptor) return field;
    return boost::none;
}

std::string joinFields(const std::vector<Field> &fields, char separator)
{
    std::string text;
    Field::appendJoined(text, fields, separator);
    return text;
}
