#include "protocol/header.h"

#include "protocol/number.h"

#include <array>
#include <boost/algorithm/string.hpp>
#include <vector>

unsigned long long Header::nextFrameNumber = 0;

Header::Header() : frameID(nextFrameNumber++) {}

Header::Header(unsigned long long id) : frameID(id) {}

Header::Header(const std::string &text) : frameID(0) { deparseHeader(text); }

void Header::deparseHeader(const std::string &text)
{
    const auto number = [](const std::string &piece) {
        return piece.empty() ? 0 : parseInteger<unsigned long long>(piece);
    };
    std::vector<std::string> pieces;
    boost::split(pieces, text, boost::is_any_of(std::string(1, separator)));
    for (std::size_t element = 0; element < pieces.size(); ++element) {
        const std::string &piece = pieces[element];
        switch (element) {
        case 0:
            frameID = number(piece);
            break;
        case 1:
            receiverStatus = piece;
            break;
        case 2:
            frameNumber = number(piece);
            break;
        case 3:
            maxFrameNumber = number(piece);
            break;
        case 4:
            dataTransformation = piece;
            break;
        case 5:
            direction = piece;
            break;
        case 6:
            sender = piece;
            break;
        default:
            return;
        }
    }
}

int Header::lastNonDefaultElement() const
{
    if (sender != defaultSender) return 6;
    if (direction != defaultDirection) return 5;
    if (dataTransformation != defaultDataTransformation) return 4;
    if (maxFrameNumber != defaultMaxFrameNumber) return 3;
    if (frameNumber != defaultFrameNumber) return 2;
    if (receiverStatus != defaultRecriverStatus) return 1;
    return 0;
}

std::string Header::toString() const
{
    std::string text = std::to_string(frameID);
    const int last = lastNonDefaultElement();
    if (last == 0) return text;  // the usual case: no further element is even formatted

    const std::array elements{
        receiverStatus, std::to_string(frameNumber), std::to_string(maxFrameNumber), dataTransformation, direction,
        sender};
    for (int element = 1; element <= last; ++element)
        text += separator + elements[static_cast<std::size_t>(element - 1)];
    return text;
}
