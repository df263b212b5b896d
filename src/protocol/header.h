#pragma once

#include <string>
#include <string_view>

/// The header of a frame: its identifier and six further elements, of which only those up to the last one that differs
/// from its default are written.
class Header
{
public:
    /// All defaults and the next identifier of the process-wide counter.
    Header();
    explicit Header(unsigned long long id);
    /// Identifier 0 and all defaults, then what the text sets. Throws as `deparseHeader`.
    explicit Header(std::string_view text);
    virtual ~Header() = default;

    /// Sets the elements that the text holds; an empty number is 0, elements beyond the seventh are ignored. Throws
    /// `boost::bad_lexical_cast` when a numeric element is not a number.
    void deparseHeader(std::string_view text);

    /// The highest element number, 1 to 6, whose value differs from its default; 0 if none does.
    int lastNonDefaultElement() const;
    std::string toString() const;

    static constexpr char separator = '\x1D';
    // Defined here, so that they exist before any header that is made while the program starts.
    inline static const std::string defaultRecriverStatus = "All";
    static constexpr unsigned long long defaultFrameNumber = 1;
    static constexpr unsigned long long defaultMaxFrameNumber = 1;
    inline static const std::string defaultDataTransformation = "NDT";
    inline static const std::string defaultDirection;
    inline static const std::string defaultSender;
    /// The identifier of the next command frame. Frames are built on one thread at a time.
    static unsigned long long nextFrameNumber;

    unsigned long long frameID;                                  // element 0
    std::string receiverStatus = defaultRecriverStatus;          // element 1
    unsigned long long frameNumber = defaultFrameNumber;         // element 2
    unsigned long long maxFrameNumber = defaultMaxFrameNumber;   // element 3
    std::string dataTransformation = defaultDataTransformation;  // element 4
    std::string direction = defaultDirection;                    // element 5
    std::string sender = defaultSender;                          // element 6
};
