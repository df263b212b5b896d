#include "protocol/frame.h"

#include "protocol/converter.h"
#include "protocol/crc16.h"

Frame::Frame(std::shared_ptr<Data> dataPart, std::shared_ptr<Header> frameHeader)
    : data(std::move(dataPart)), header(std::move(frameHeader))
{}

void Frame::setHeader(const std::string &frameText)
{
    header = std::make_shared<Header>(frameText.substr(1, frameText.find(headerEnd, 1) - 1));
}

Frame &Frame::operator+=(const Field &field)
{
    addField(field);
    return *this;
}

boost::optional<const Field &> Frame::operator[](const char &descriptor) const
{
    return data->getFieldByDescriptorOrNull(descriptor);
}

std::string Frame::checkedText() const { return header->toString() + headerEnd + data->toString(); }

std::string Frame::checksum() const { return toHex(Crc16::ofText(checkedText()), 4); }

std::string Frame::toString() const
{
    const std::string text = checkedText();
    return startByte + text + toHex(Crc16::ofText(text), 4) + endByte;
}

std::vector<std::uint8_t> Frame::toByteArray() const { return Converter::stringToVector(toString()); }

std::vector<std::size_t> Frame::getIndexListOfElement(const std::string &text, char c)
{
    std::vector<std::size_t> positions;
    for (auto found = text.find(c); found != std::string::npos; found = text.find(c, found + 1))
        positions.push_back(found);
    return positions;
}
