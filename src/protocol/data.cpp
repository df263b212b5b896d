#include "protocol/data.h"

#include "protocol/masterframe.h"
#include "protocol/number.h"

#include <boost/algorithm/string.hpp>
#include <stdexcept>

const std::shared_ptr<MasterFrame> Data::lastSendFrame = std::make_shared<MasterFrame>();

void Data::insertField(Field field)
{
    if (field.getLevel() != Level0) throw std::invalid_argument("incorrect field level");
    fieldList.push_back(std::move(field));
}

void Data::insertField(char descriptor, const std::string &value) { insertField(Field(descriptor, value, Level0)); }

bool Data::doesContain(char descriptor) const { return getFieldByDescriptorOrNull(descriptor).has_value(); }

boost::optional<const Field &> Data::getFieldByDescriptorOrNull(char descriptor) const
{
    return findField(fieldList, descriptor);
}

std::string Data::parseSubListWithFirstSeparator() const
{
    const char separator = Field::separatorMap.at(Level0);
    return fieldList.empty() ? std::string() : separator + joinFields(fieldList, separator);
}

std::string MasterData::toString() const { return descriptor + parseSubListWithFirstSeparator(); }

SlaveData::SlaveData(const std::string &dataText) { setDescriptorAndFields(dataText); }

void SlaveData::setDescriptorAndFields(const std::string &dataText)
{
    std::vector<std::string> pieces;
    boost::split(pieces, dataText, boost::is_any_of(std::string(1, Field::separatorMap.at(Level0))));
    if (!pieces.front().empty()) descriptor = parseInteger<int>(pieces.front());
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece)
        if (!piece->empty()) insertField(Field(Level0, *piece));
}

std::string SlaveData::toString() const { return std::to_string(descriptor) + parseSubListWithFirstSeparator(); }
