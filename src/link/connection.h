#pragma once

#include "protocol/frame.h"

#include <QSerialPort>
#include <QSerialPortInfo>
#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Moves whole frames over one serial port. An exchange is a send, which opens the port, followed by a receive, which
/// closes it. A connection belongs to one thread at a time.
///
/// Failures are thrown by the convention of protocol/failure.h: "Buffer hasn't been initialized" without a port,
/// "Receiving timeout", "Sending timeout".
class Connection
{
public:
    enum class FrameDirection { Sent = 0, Received = 1 };

    /// The timeout, in milliseconds, bounds each wait for written bytes, for an answer and for the next byte of it.
    Connection(const QSerialPortInfo &info, unsigned int milliseconds);
    /// The port at a system location such as "/dev/ttyACM0".
    Connection(const QString &systemLocation, unsigned int milliseconds);
    /// A port made elsewhere; null stands for no port.
    Connection(std::shared_ptr<QSerialPort> serialPort, unsigned int milliseconds);
    virtual ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the port for reading and writing and drops what an earlier exchange left unread. Fails with
    /// "Receiving timeout" when the port does not open.
    void openConnection();
    void closeConnection();
    void setTimeout(unsigned int milliseconds) { timeout = milliseconds; }

    /// Opens the port and writes the bytes up to the first zero byte. Fails with "Sending timeout", the port left open,
    /// when they are not written in time.
    void putDataToStream(const std::vector<unsigned char> &data);
    Connection &operator<<(const std::vector<unsigned char> &data);
    Connection &operator<<(const Frame &frame);
    Connection &operator<<(const std::string &text);

    /// Reads one frame, 0x02 through 0x03, and closes the port. Bytes before 0x02 are dropped. A zero byte ends the
    /// search for 0x02, or the frame, and is not part of it. Fails with "Receiving timeout" when no answer begins, the
    /// next byte does not come, the port breaks, more than 64 bytes before 0x02 have taken more than one timeout, the
    /// frame exceeds `maxFrameLength` bytes or the thread is asked to stop.
    std::string getFrameFromStream();
    Connection &operator>>(std::string &frame);

    /// The next byte. Fails with "Receiving timeout" when it does not come in time.
    signed char getCharWithTimeout();

    /// The port's `QSerialPort::SerialPortError`; 0 (no error) without a port.
    int getError() const;

    /// Writes one line to the debug output and to log.txt beside the program, while `enableLog` is set. A file that
    /// cannot be opened is left out silently, and so is a line that does not fit on the disk as a whole.
    static void log(FrameDirection direction, const std::string &data);
    static std::string currentDateTimeString();

    /// Process-wide switch of the traffic log; set by the user interface, read at every frame.
    static std::atomic<bool> enableLog;

    static constexpr std::size_t maxFrameLength = 65535;

private:
    QSerialPort &existingPort() const;
    [[noreturn]] void closeAndFail();

    std::shared_ptr<QSerialPort> port;
    std::uint32_t timeout;
};
