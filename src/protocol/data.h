#pragma once

#include "protocol/field.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class MasterFrame;

/// The data part of a frame: a descriptor (of the derived classes) and top-level fields in wire order.
class Data
{
public:
    virtual ~Data() = default;
    /// Descriptor and fields as they stand in the frame.
    virtual std::string toString() const = 0;

    /// Appends the field. Throws `std::invalid_argument` when the field is not at level 0.
    void insertField(Field field);
    void insertField(char descriptor, std::string value);
    bool doesContain(char descriptor) const;
    boost::optional<const Field &> getFieldByDescriptorOrNull(char descriptor) const;
    /// The fields' text, each field preceded by its separator.
    std::string parseSubListWithFirstSeparator() const;

    std::vector<Field> fieldList;

    /// A placeholder made when the program starts; it takes frame identifier 0, so the first command gets 1.
    static const std::shared_ptr<MasterFrame> lastSendFrame;

protected:
    /// `start`, then what `parseSubListWithFirstSeparator` returns.
    std::string withFields(std::string start) const;
};

/// The data part of a command: a three-letter command descriptor.
class MasterData : public Data
{
public:
    void setDescriptor(const std::string &text) { descriptor = text; }
    const std::string &getDescriptor() const { return descriptor; }
    std::string toString() const override;

    std::string descriptor;
};

/// The data part of a response: a status number, 0 for success, otherwise the unit's error number.
class SlaveData : public Data
{
public:
    SlaveData() = default;
    /// Throws as `setDescriptorAndFields`.
    explicit SlaveData(std::string_view dataText);

    /// Reads status and fields. Throws `boost::bad_lexical_cast` when the status is not a number.
    void setDescriptorAndFields(std::string_view dataText);
    std::string toString() const override;

    int descriptor = 0;
};
