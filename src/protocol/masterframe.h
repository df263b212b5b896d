#pragma once

#include "protocol/frame.h"

/// A command frame, host to unit. It takes the next frame identifier when it is made.
class MasterFrame : public Frame
{
public:
    MasterFrame();

    void setCommandDescriptor(const std::string &descriptor);
    const std::string &getCommandDescriptor() const;

    /// Does nothing: a command is built field by field.
    void setData(const std::string &frameText) override;

private:
    std::shared_ptr<MasterData> command;  // the same object as `data`
};
