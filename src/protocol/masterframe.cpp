#include "protocol/masterframe.h"

MasterFrame::MasterFrame() : Frame(nullptr, std::make_shared<Header>()), command(std::make_shared<MasterData>())
{
    data = command;
}

void MasterFrame::setCommandDescriptor(const std::string &descriptor) { command->setDescriptor(descriptor); }

const std::string &MasterFrame::getCommandDescriptor() const { return command->getDescriptor(); }

void MasterFrame::setData(const std::string &) {}
