#include "protocol/data.h"

#include "protocol/masterframe.h"
#include "protocol/number.h"
#include "protocol/pieces.h"

#include <stdexcept>

const std::shared_ptr<MasterFrame> Data::lastSendFrame = std::make_shared<MasterFrame>();

void Data::insertField(Field field)
{
    if (field.getLevel() != Level0) throw std::invalid_argument("incorrect field level");
    fieldList.push_back(std::move(field));
}

void Data::insertField(char descriptor, std::string value) { insertField(Field(descriptor, std::move(value), Level0)); }

bool Data::doesContain(char descriptor) const { return getFieldByDescriptorOrNull(descriptor).has_value(); }

boost::optional<const Field &> Data::getFieldByDescriptorOrNull(char descriptor) const
{
    return findField(fieldList, descriptor);
}

std::string Data::parseSubListWithFirstSeparator() const { return withFields({}); }

std::string Data::withFields(std::string start) const
{
    for (const Field &field : fieldList) {
        start += Field::separators[Level0];
        field.appendTo(start);
    }
    return start;
}

std::string MasterData::toString() const { return withFields(descriptor); }

SlaveData::SlaveData(std::string_view dataText) { setDescriptorAndFields(dataText); }

void SlaveData::setDescriptorAndFields(std::string_view dataText)
{
    const char separator = Field::separators[Level0];
    const std::string_view status = dataText.substr(0, dataText.find(separator));
    if (!status.empty()) descriptor = parseInteger<int>(status);

    const std::string_view fields = dataText.substr(status.size());
    fieldList.reserve(fieldList.size() + pieceCount(fields, separator));
    forEachPiece(fields, separator, [this](std::string_view piece) {
        if (!piece.empty()) fieldList.emplace_back(Level0, piece);
    });
}

std::string SlaveData::toString() const { return withFields(std::to_string(descriptor)); }
