#pragma once

#include "protocol/data.h"
#include "protocol/header.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// One message of the protocol. On the wire: 0x02, header text, 0x1C, data text, four checksum digits, 0x03.
///
/// Copies of a frame share its header and data part: a field added through one shows in all.
class Frame
{
public:
    virtual ~Frame() = default;
    /// Takes the data part from the text of a whole frame.
    virtual void setData(const std::string &frameText) = 0;
    /// Takes the header from the text of a whole frame: what stands between its first character and its first 0x1C.
    virtual void setHeader(const std::string &frameText);

    Frame(const Frame &) = default;
    Frame(Frame &&) = default;
    Frame &operator=(const Frame &) = default;
    Frame &operator=(Frame &&) = default;

    unsigned long long getFrameID() const { return header->frameID; }
    void setFrameID(unsigned long long id) { header->frameID = id; }

    /// Appends a top-level field. Throws `std::invalid_argument` when the field is not at level 0.
    void addField(Field field) { data->insertField(std::move(field)); }
    void addField(char descriptor, std::string value) { data->insertField(descriptor, std::move(value)); }
    void addField(char descriptor, int value) { data->insertField(Field(descriptor, value, Level0)); }
    Frame &operator+=(const Field &field);

    bool doesContain(char descriptor) const { return data->doesContain(descriptor); }
    bool hasSubField(char descriptor) const { return doesContain(descriptor); }
    /// The first top-level field with that descriptor, if any.
    boost::optional<const Field &> operator[](const char &descriptor) const;
    boost::optional<const Field &> getFieldByDescriptor(char descriptor) const { return (*this)[descriptor]; }
    /// A copy of the top-level fields.
    std::vector<Field> getFieldList() const { return data->fieldList; }
    const std::vector<Field> &fields() const { return data->fieldList; }
    void setFieldList(const std::vector<Field> &fields) { data->fieldList = fields; }

    /// The data part's text.
    std::string parseField() const { return data->toString(); }
    /// Four uppercase hexadecimal digits over header, 0x1C and data.
    std::string checksum() const;
    std::string toString() const;
    std::vector<std::uint8_t> toByteArray() const;
    bool isEmpty() const { return data->toString().empty(); }

    /// The positions of every `c` in `text`, from 0, ascending.
    static std::vector<std::size_t> getIndexListOfElement(const std::string &text, char c);

    static constexpr char startByte = '\x02';
    static constexpr char headerEnd = '\x1C';
    static constexpr char endByte = '\x03';

protected:
    Frame() = default;
    Frame(std::shared_ptr<Data> dataPart, std::shared_ptr<Header> frameHeader);

    std::shared_ptr<Data> data;
    std::shared_ptr<Header> header;

private:
    std::string checkedText() const;
};
