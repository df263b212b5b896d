#include "protocol/field.h"

#include "protocol/number.h"
#include "protocol/pieces.h"

#include <algorithm>
#include <stdexcept>

const std::map<FieldLevel, char> Field::separatorMap{
    {Level0, separators[Level0]}, {Level1, separators[Level1]}, {Level2, separators[Level2]}};

Field::Field(char fieldDescriptor, FieldLevel fieldLevel) : descriptor(fieldDescriptor), level(fieldLevel) {}

Field::Field(char fieldDescriptor, std::string fieldValue, FieldLevel fieldLevel)
    : descriptor(fieldDescriptor), value(std::move(fieldValue)), level(fieldLevel)
{}

Field::Field(char fieldDescriptor, int number, FieldLevel fieldLevel)
    : Field(fieldDescriptor, std::to_string(number), fieldLevel)
{}

Field::Field(char fieldDescriptor, double number, FieldLevel fieldLevel) : Field(fieldDescriptor, fieldLevel)
{
    insertDoubleValue(number);
}

Field::Field(char fieldDescriptor, Field subfield, FieldLevel fieldLevel) : Field(fieldDescriptor, fieldLevel)
{
    insertSubField(std::move(subfield));
}

Field::Field(FieldLevel fieldLevel, std::string_view text) : descriptor(text.front()), level(fieldLevel)
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

template <typename... Content>
void Field::makeSubField(Content &&...content)
{
    requireSublevel();
    if (subfields.empty()) subfields.reserve(4);  // what most fields need: no growing step by step
    subfields.emplace_back(std::forward<Content>(content)..., sublevel());
}

void Field::insertSubField(char subDescriptor) { makeSubField(subDescriptor); }

void Field::insertSubField(char subDescriptor, std::string subValue)
{
    makeSubField(subDescriptor, std::move(subValue));
}

void Field::insertSubField(char subDescriptor, int subValue) { makeSubField(subDescriptor, subValue); }

void Field::insertSubField(char subDescriptor, double subValue) { makeSubField(subDescriptor, subValue); }

void Field::insertSubField(std::string_view text) { insertSubField(Field(sublevel(), text)); }

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

void Field::setDescriptor(std::string_view text)
{
    if (!text.empty()) descriptor = text.front();
}

void Field::setValueFromParsed(std::string_view text) { value = text.substr(text.empty() ? 0 : 1); }

std::string Field::toString() const
{
    std::string text;
    appendTo(text);
    return text;
}

void Field::appendTo(std::string &text) const
{
    text += descriptor;
    appendValuePart(text);
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
    if (subfields.empty()) text += value;
    for (const Field &subfield : subfields) {
        if (&subfield != &subfields.front()) text += separators[sublevel()];
        subfield.appendTo(text);
    }
}

int Field::intValue() const { return parseInteger<int>(value); }

double Field::doubleValue() const
{
    std::string text = value;
    std::ranges::replace(text, ',', '.');
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

bool Field::hasSubfield(std::string_view text) const
{
    return level < Level2 && text.find(separators[sublevel()]) != std::string_view::npos;
}

void Field::addSubfieldFromParsedField(std::string_view text)
{
    requireSublevel();
    const char separator = separators[sublevel()];
    subfields.reserve(subfields.size() + pieceCount(text, separator));
    forEachPiece(text, separator, [this](std::string_view piece) {
        if (!piece.empty()) subfields.emplace_back(sublevel(), piece);
    });
}

boost::optional<const Field &> findField(const std::vector<Field> &fields, char descriptor)
{
    for (const Field &field : fields)
        if (field.getDescriptor() == descriptor) return field;
    return boost::none;
}
