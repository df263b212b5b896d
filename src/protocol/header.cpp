#include "protocol/header.h"

#include "protocol/number.h"
#include "protocol/pieces.h"

#include <array>

unsigned long long Header::nextFrameNumber = 0;

Header::Header() : frameID(nextFrameNumber++) {}

Header::Header(unsigned long long id) : frameID(id) {}

Header::Header(std::string_view text) : frameID(0) { deparseHeader(text); }

void Header::deparseHeader(std::string_view text)
{
    const auto number = [](std::string_view piece) {
        return piece.empty() ? 0 : parseInteger<unsigned long long>(piece);
    };
    int element = 0;
    forEachPiece(text, separator, [&](std::string_view piece) {
        switch (element++) {
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
            break;
        }
    });
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
