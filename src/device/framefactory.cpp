#include "device/framefactory.h"

MasterFrame FrameFactory::command(const char *descriptor, std::initializer_list<int> address)
{
    MasterFrame frame;
    frame.setCommandDescriptor(descriptor);
    char field = 'A';
    for (const int number : address)
        frame.addField(field++, number);
    return frame;
}
