#include "link/innerline.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>

namespace {

/// The far end of a line, shared by the line and its devices.
struct FarEnd
{
    std::mutex mutex;
    InnerLine::OtherEnd answer;  ///< empty once the line has hung up
};

/// All lines of the program by their locations.
struct Lines
{
    std::mutex mutex;
    std::map<QString, std::shared_ptr<FarEnd>> byLocation;
    int count = 0;  ///< of the lines so far
};

Lines &lines()
{
    static Lines all;
    return all;
}

/// The editor's end. What has not been read when it is closed is lost, as on a serial line.
class NearEnd : public QIODevice
{
public:
    explicit NearEnd(std::shared_ptr<FarEnd> otherEnd) : farEnd(std::move(otherEnd)) {}

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return arrived.size() + QIODevice::bytesAvailable(); }
    // What is written is answered before the write returns, so there is nothing to wait for.
    bool waitForReadyRead(int) override { return bytesAvailable() > 0; }
    bool waitForBytesWritten(int) override { return true; }
    void close() override
    {
        QIODevice::close();
        arrived.clear();
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 size = std::min<qint64>(maxSize, arrived.size());
        std::memcpy(data, arrived.constData(), static_cast<std::size_t>(size));
        arrived.remove(0, static_cast<int>(size));
        return size;
    }
    qint64 writeData(const char *data, qint64 size) override
    {
        const std::lock_guard lock(farEnd->mutex);
        if (farEnd->answer) arrived += farEnd->answer(QByteArray(data, static_cast<int>(size)));
        return size;
    }

private:
    const std::shared_ptr<FarEnd> farEnd;
    QByteArray arrived;
};

}  // namespace

InnerLine::InnerLine(OtherEnd otherEnd)
{
    const auto end = std::make_shared<FarEnd>();
    end->answer = std::move(otherEnd);
    const std::lock_guard lock(lines().mutex);
    place = QStringLiteral("line %1 of the editor").arg(++lines().count);
    lines().byLocation.emplace(place, end);
}

InnerLine::~InnerLine()
{
    std::shared_ptr<FarEnd> end;
    {
        const std::lock_guard lock(lines().mutex);
        end = lines().byLocation.extract(place).mapped();
    }
    const std::lock_guard lock(end->mutex);
    end->answer = nullptr;
}

std::unique_ptr<QIODevice> InnerLine::deviceAt(const QString &location)
{
    const std::lock_guard lock(lines().mutex);
    const auto found = lines().byLocation.find(location);
    return found == lines().byLocation.end() ? nullptr : std::make_unique<NearEnd>(found->second);
}
