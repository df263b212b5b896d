#pragma once

#include "protocol/failure.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Frame;
class QIODevice;
class QSerialPort;
class QSerialPortInfo;
class QString;

/// Moves whole frames over one serial port, or over one line within the program (link/innerline.h). An exchange is a
/// send, which opens the port, followed by a receive, which closes it, except during a hold. A connection belongs to
/// one thread at a time.
///
/// Failures are thrown by the convention of protocol/failure.h: "Buffer hasn't been initialized" without a port,
/// "Receiving timeout", "Sending timeout".
class Connection
{
public:
    enum class FrameDirection { Sent = 0, Received = 1 };

    /// The timeout, in milliseconds, bounds each wait for written bytes, for an answer and for the next byte of it.
    Connection(const QSerialPortInfo &info, unsigned int milliseconds);
    /// The port at a system location such as "/dev/ttyACM0", or the line within the program at its location.
    Connection(const QString &location, unsigned int milliseconds);
    /// A port or line made elsewhere; null stands for no port.
    Connection(std::shared_ptr<QIODevice> device, unsigned int milliseconds);
    virtual ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the port for reading and writing and drops what an earlier exchange left unread. Fails with
    /// "Receiving timeout" when the port does not open.
    void openConnection();
    void closeConnection();
    void setTimeout(unsigned int milliseconds) { timeout = milliseconds; }

    /// What `hold` returns; it must not outlive its connection.
    class [[nodiscard]] Hold
    {
    public:
        explicit Hold(Connection &heldConnection);
        ~Hold();
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;

    private:
        Connection &connection;
    };
    /// While the result lives, exchanges leave the port open between them, and the traffic log its file. The first one
    /// opens it; a failure closes it at once, and the next exchange opens it again. Holds may nest: the port is closed
    /// when the first begins and when the last has ended.
    Hold hold() { return Hold(*this); }

    /// Opens the port and writes the bytes up to the first zero byte. Fails with "Sending timeout" when they are not
    /// written in time, the port left open except during a hold.
    void putDataToStream(const std::vector<unsigned char> &data);
    Connection &operator<<(const std::vector<unsigned char> &data);
    Connection &operator<<(const Frame &frame);
    Connection &operator<<(const std::string &text);

    /// Reads one frame, 0x02 through 0x03, and ends the exchange. Bytes before 0x02 are dropped. A zero byte ends the
    /// search for 0x02, or the frame, and is not part of it. Fails with "Receiving timeout" when no answer begins, the
    /// next byte does not come, the port breaks, more than 64 bytes before 0x02 have taken more than one timeout or the
    /// thread is asked to stop; with another message when the frame exceeds `maxFrameLength` bytes, since the unit is
    /// there.
    std::string getFrameFromStream();
    Connection &operator>>(std::string &frame);

    /// The next byte. Fails with "Receiving timeout" when it does not come in time.
    signed char getCharWithTimeout();

    /// The port's `QSerialPort::SerialPortError`; 0 (no error) without one.
    int getError() const;

    /// Writes one line to the traffic log (link/trafficlog.h) while `enableLog` is set.
    static void log(FrameDirection direction, const std::string &data);
    static std::string currentDateTimeString();

    /// Process-wide switch of the traffic log; set by the user interface, read at every frame.
    static std::atomic<bool> enableLog;

    static constexpr std::size_t maxFrameLength = 65535;

private:
    QSerialPort *serialPort() const;  ///< null without a port, and for a line within the program
    QIODevice &existingPort() const;
    bool dropInput();
    bool mayStillArrive() const;
    void beginExchange();
    void endExchange();
    [[noreturn]] void closeAndFail(const char *message = receivingTimeout);

    std::shared_ptr<QIODevice> port;
    std::uint32_t timeout;
    int holds = 0;
};
