#include "link/connection.h"

#include "link/innerline.h"
#include "link/trafficlog.h"
#include "protocol/converter.h"
#include "protocol/failure.h"
#include "protocol/frame.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QThread>

std::atomic<bool> Connection::enableLog = false;

constexpr int maxSlowNoise = 64;  // bytes before a frame's start, once they have taken a timeout in all

static std::shared_ptr<QIODevice> portAt(const QString &location)
{
    if (auto line = InnerLine::deviceAt(location)) return line;
    auto port = std::make_shared<QSerialPort>();
    port->setPortName(location);
    return port;
}

Connection::Connection(const QSerialPortInfo &info, unsigned int milliseconds)
    : Connection(std::make_shared<QSerialPort>(info), milliseconds)
{}

Connection::Connection(const QString &location, unsigned int milliseconds) : Connection(portAt(location), milliseconds)
{}

Connection::Connection(std::shared_ptr<QIODevice> device, unsigned int milliseconds)
    : port(std::move(device)), timeout(milliseconds)
{}

Connection::~Connection() { closeConnection(); }

QSerialPort *Connection::serialPort() const { return qobject_cast<QSerialPort *>(port.get()); }

QIODevice &Connection::existingPort() const
{
    if (!port) fail("Buffer hasn't been initialized");
    return *port;
}

void Connection::openConnection()
{
    if (!existingPort().open(QIODevice::ReadWrite)) fail(receivingTimeout);
    if (QSerialPort *const serial = serialPort()) serial->flush();
    dropInput();
}

/// An answer that came after its timeout still lies in the system's buffer; it must not pass for the next one. False
/// when the line has broken.
bool Connection::dropInput()
{
    if (QSerialPort *const serial = serialPort()) return serial->clear(QSerialPort::Input);
    port->readAll();
    return true;
}

void Connection::closeConnection()
{
    if (port && port->isOpen()) port->close();
}

void Connection::closeAndFail(const char *message)
{
    closeConnection();
    fail(message);
}

Connection::Hold::Hold(Connection &heldConnection) : connection(heldConnection)
{
    if (connection.holds++ == 0) connection.closeConnection();  // a sending timeout may have left it open
    TrafficLog::instance().hold();
}

Connection::Hold::~Hold()
{
    TrafficLog::instance().release();
    --connection.holds;
    connection.endExchange();
}

void Connection::beginExchange()
{
    if (holds > 0 && port->isOpen()) {
        if (dropInput()) return;
        closeConnection();
    }
    openConnection();
}

void Connection::endExchange()
{
    if (holds == 0) closeConnection();
}

void Connection::putDataToStream(const std::vector<unsigned char> &data)
{
    QIODevice &device = existingPort();
    beginExchange();
    const std::string text = Converter::vectorToString(data);
    device.write(text.c_str());
    do {
        if (!device.waitForBytesWritten(static_cast<int>(timeout))) {
            if (holds > 0) closeConnection();
            fail("Sending timeout");
        }
    } while (device.bytesToWrite() > 0);
    log(FrameDirection::Sent, text);
}

Connection &Connection::operator<<(const std::vector<unsigned char> &data)
{
    putDataToStream(data);
    return *this;
}

Connection &Connection::operator<<(const Frame &frame) { return *this << frame.toByteArray(); }

Connection &Connection::operator<<(const std::string &text) { return *this << Converter::stringToVector(text); }

std::string Connection::getFrameFromStream()
{
    QIODevice &device = existingPort();
    if (device.bytesAvailable() == 0 && !device.waitForReadyRead(static_cast<int>(timeout))) closeAndFail();

    std::string frame;
    // A device of another kind may talk without an end; a few bytes of noise may come slowly.
    const QDeadlineTimer huntDeadline(timeout);
    char first = getCharWithTimeout();
    for (int noise = 1; first != Frame::startByte && first != '\0'; ++noise) {
        const bool stop = QThread::currentThread()->isInterruptionRequested();
        if (stop || (huntDeadline.hasExpired() && noise > maxSlowNoise)) closeAndFail();
        first = getCharWithTimeout();
    }
    if (first == Frame::startByte) frame += first;
    for (char byte = getCharWithTimeout(); byte != '\0'; byte = getCharWithTimeout()) {
        if (frame.size() == maxFrameLength) closeAndFail("The unit's answer is too long");
        frame += byte;
        if (byte == Frame::endByte) break;
    }
    log(FrameDirection::Received, frame);
    endExchange();
    return frame;
}

Connection &Connection::operator>>(std::string &frame)
{
    frame = getFrameFromStream();
    return *this;
}

signed char Connection::getCharWithTimeout()
{
    QIODevice &device = existingPort();
    char byte = 0;
    if (device.getChar(&byte)) return static_cast<signed char>(byte);
    const QDeadlineTimer deadline(timeout);
    while (!device.getChar(&byte)) {
        if (deadline.hasExpired() || QThread::currentThread()->isInterruptionRequested()) closeAndFail();
        const bool arrived = device.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
        if (!arrived && !mayStillArrive()) closeAndFail();  // waiting on would spin until the deadline
    }
    return static_cast<signed char>(byte);
}

/// Whether a byte that has not come in time may come later: not when the unit was unplugged, nor from within the
/// program.
bool Connection::mayStillArrive() const
{
    const int error = getError();
    return serialPort() && (error == QSerialPort::NoError || error == QSerialPort::TimeoutError);
}

int Connection::getError() const { return serialPort() ? serialPort()->error() : QSerialPort::NoError; }

void Connection::log(FrameDirection direction, const std::string &data)
{
    if (!enableLog) return;
    const char *const mark = direction == FrameDirection::Sent ? "PC >> " : "PC << ";
    TrafficLog::instance().write("[" + currentDateTimeString() + "]: " + mark + Converter::toLogString(data));
}

std::string Connection::currentDateTimeString()
{
    // The text costs more than the rest of a log line, so it is made once a second.
    thread_local qint64 second = -1;
    thread_local std::string text;
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    if (now != second) text = QDateTime::fromSecsSinceEpoch(now).toString(Qt::TextDate).toStdString();
    second = now;
    return text;
}
